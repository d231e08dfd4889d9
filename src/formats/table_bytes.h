// Numbers in the bytes of a table, highest byte first: reading beyond the end gives zeros, so that
// a reader that forgets a check gives wrong values and nothing worse.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace corvane {

class table_bytes {
 public:
  table_bytes() = default;
  explicit table_bytes(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  std::size_t size() const { return bytes_.size(); }
  /// Whether `count` bytes from `at` on are there.
  bool holds(std::uint64_t at, std::uint64_t count) const {
    return at <= bytes_.size() && count <= bytes_.size() - at;
  }
  /// How many of them there are from `at` on.
  std::uint64_t left(std::uint64_t at) const { return at < bytes_.size() ? bytes_.size() - at : 0; }

  std::uint8_t u8(std::uint64_t at) const {
    return at < bytes_.size() ? bytes_[static_cast<std::size_t>(at)] : std::uint8_t{0};
  }
  std::uint16_t u16(std::uint64_t at) const {
    return static_cast<std::uint16_t>(u8(at) << 8 | u8(at + 1));
  }
  std::uint32_t u32(std::uint64_t at) const { return std::uint32_t{u16(at)} << 16 | u16(at + 2); }
  std::uint64_t u64(std::uint64_t at) const { return std::uint64_t{u32(at)} << 32 | u32(at + 4); }

  // Lowest byte first.
  std::uint16_t le16(std::uint64_t at) const {
    return static_cast<std::uint16_t>(u8(at + 1) << 8 | u8(at));
  }
  std::uint32_t le32(std::uint64_t at) const {
    return std::uint32_t{le16(at + 2)} << 16 | le16(at);
  }
  std::uint64_t le64(std::uint64_t at) const {
    return std::uint64_t{le32(at + 4)} << 32 | le32(at);
  }

  std::span<const std::uint8_t> all() const { return bytes_; }

  /// `Count` bytes from `at` on; zeros for those that are not there.
  template <std::size_t Count>
  std::array<std::uint8_t, Count> take(std::uint64_t at) const {
    std::array<std::uint8_t, Count> taken{};
    for (std::size_t i = 0; i < Count; ++i)
      taken[i] = u8(at + i);
    return taken;
  }

 private:
  std::span<const std::uint8_t> bytes_;
};

}  // namespace corvane
