// Finds bytes other than zeros in a stretch of a stream whose end is not known when it begins,
// while the stream is read in slices.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace corvane {

class stray_bytes {
 public:
  /// A slice is there: `data` stays until the next one.
  void slice_begins(const std::uint8_t* data, std::size_t size, std::uint64_t position) {
    slice_ = data;
    begin_ = position;
    end_ = position + size;
  }
  /// The slice will go.
  void slice_ends() {
    if (watching_)
      look(end_);
  }

  /// The stretch begins at `position`, with `size` bytes; any earlier slice ends within those.
  void watch(std::uint64_t position, const std::uint8_t* bytes = nullptr, std::size_t size = 0) {
    watching_ = true;
    first_.reset();
    from_ = looked_ = position;
    const std::uint8_t* const found = std::find_if(bytes, bytes + size, not_zero);
    if (found != bytes + size)
      first_ = position + static_cast<std::uint64_t>(found - bytes);
    looked_ += size;
  }
  bool watching() const { return watching_; }

  /// The stretch ends before `position`; where it began, if it holds anything but zeros.
  std::optional<std::uint64_t> stop(std::uint64_t position) {
    look(std::min(position, end_));
    watching_ = false;
    return first_ && *first_ < position ? std::optional(from_) : std::nullopt;
  }

 private:
  static bool not_zero(std::uint8_t byte) { return byte != 0; }

  void look(std::uint64_t to) {
    looked_ = std::max(looked_, begin_);
    if (first_ || looked_ >= to)
      return;
    const std::uint8_t* const stop = slice_ + (to - begin_);
    const std::uint8_t* const found = std::find_if(slice_ + (looked_ - begin_), stop, not_zero);
    if (found != stop)
      first_ = begin_ + static_cast<std::uint64_t>(found - slice_);
    looked_ = to;
  }

  const std::uint8_t* slice_ = nullptr;
  std::uint64_t begin_ = 0, end_ = 0;  // of the slice
  bool watching_ = false;
  std::uint64_t from_ = 0, looked_ = 0;
  std::optional<std::uint64_t> first_;  // that is not zero, perhaps behind the end of the stretch
};

}  // namespace corvane
