// The course of time stamps or clock references that begin again at 0 after some hours.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

namespace corvane {

/// How far it is from one time to another, by the shorter way, on a clock that begins again at 0
/// after `turn`.
constexpr std::int64_t way_between(std::uint64_t from, std::uint64_t to, std::uint64_t turn) {
  const std::uint64_t ahead = (to % turn + turn - from % turn) % turn;
  return ahead > turn / 2 ? static_cast<std::int64_t>(ahead) - static_cast<std::int64_t>(turn)
                          : static_cast<std::int64_t>(ahead);
}

/// Times with nothing missing between them: they may come in any order, each not far from the one
/// before.
class time_stretch {
 public:
  explicit time_stretch(std::uint64_t turn) : turn_(turn) {}

  void add(std::uint64_t time) {
    if (!begin_)
      begin_ = newest_ = time;
    at_ += way_between(newest_, time, turn_);
    newest_ = time;
    lowest_ = std::min(lowest_, at_);
    highest_ = std::max(highest_, at_);
  }

  /// Of a stretch that is not empty, as they stand.
  std::uint64_t earliest() const { return reached(lowest_); }
  std::uint64_t latest() const { return reached(highest_); }
  std::uint64_t length() const { return static_cast<std::uint64_t>(highest_ - lowest_); }

 private:
  std::uint64_t reached(std::int64_t at) const {
    const auto turn = static_cast<std::int64_t>(turn_);
    return (*begin_ + static_cast<std::uint64_t>((at % turn + turn) % turn)) % turn_;
  }

  std::uint64_t turn_;
  std::optional<std::uint64_t> begin_;
  std::uint64_t newest_ = 0;
  std::int64_t at_ = 0, lowest_ = 0, highest_ = 0;  // since begin_
};

}  // namespace corvane
