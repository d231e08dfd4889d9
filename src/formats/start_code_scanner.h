// Finds the start codes of an MPEG video stream in slices of any size, as they are read.
#pragma once

#include "formats/start_code_mask.h"
#include "formats/video_headers.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace corvane {

/// Who is told of the start codes.
class start_code_sink {
 public:
  start_code_sink() = default;
  start_code_sink(const start_code_sink&) = delete;
  start_code_sink& operator=(const start_code_sink&) = delete;
  virtual ~start_code_sink() = default;

  /// The code 00 00 01 `code` begins at byte `position` of the stream; `bytes` are the
  /// `header_bytes` that follow it (zeros beyond the end of the stream).
  virtual void start_code_found(std::uint8_t code, std::uint64_t position,
                                const std::uint8_t* bytes) = 0;
};

/// Nothing is looked at twice, nothing is lost between two slices, and at most a few bytes are
/// kept.
class start_code_scanner {
 public:
  /// `sink` must outlive the scanner; `position` is that of the first byte that will be fed.
  explicit start_code_scanner(start_code_sink& sink, std::uint64_t position = 0)
      : sink_(sink), fed_(position) {}

  /// The next bytes of the stream.
  void feed(const std::uint8_t* data, std::size_t size);
  /// The stream has ended: tells of the codes in its last bytes.
  void finish();

 private:
  // 00 00 01 xx and the header behind it: a code is told of once all of that is there.
  static constexpr std::size_t whole = 4 + header_bytes;

  void look(const std::uint8_t* data, std::size_t size, std::uint64_t position);
  std::size_t look_at_blocks(const std::uint8_t* data, std::size_t end, std::uint64_t position);
  std::size_t look_at_wide_blocks(const std::uint8_t* data, std::size_t end,
                                  std::uint64_t position);
  void look_at_kept(std::size_t size, std::uint64_t position);
  void tell(std::uint64_t mask, const std::uint8_t* data, std::uint64_t position);

  start_code_sink& sink_;
  // The end of what was fed, not yet looked at, with the beginning of what follows; of a mask's
  // size.
  std::array<std::uint8_t, mask_bytes + 2> kept_{};
  static_assert(2 * (whole - 1) <= mask_bytes);
  std::size_t kept_size_ = 0;
  std::uint64_t fed_;  // the position behind it
};

}  // namespace corvane
