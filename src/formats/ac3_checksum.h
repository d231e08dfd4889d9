// The checksum of frames of AC-3 or E-AC-3.
//
// One random change in 32,768 stays unseen, since of the checksum's polynomial one factor is looked
// at and x + 1 is not; every change of one or two bits in a frame of up to 4,095 bytes is seen.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace corvane {

/// Whether the bytes fit the checksums that they carry; `frame` is all of it.
bool checksum_fits(std::span<const std::uint8_t> frame);

/// Several frames of one size at once, which takes a fraction of the time.
class checksum_of_frames {
 public:
  static constexpr std::size_t frames = 16;

  /// `size`: of one frame, in bytes, at least 2.
  explicit checksum_of_frames(std::size_t size);

  std::size_t size() const { return size_; }
  /// Whether each fits. `all` are `frames` whole frames, one behind the other.
  bool fit(std::span<const std::uint8_t> all) const;

 private:
  std::size_t size_;
  unsigned expected_;
};

}  // namespace corvane
