// Tables of discs made by hand: bytes that are set number by number, and written from what the
// formats say, not with the reader's code.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace corvane::testing_support {

class made_bytes {
 public:
  explicit made_bytes(std::size_t size) : bytes(size) {}

  // Highest byte first.
  void u8(std::size_t at, unsigned value) { bytes.at(at) = static_cast<std::uint8_t>(value); }
  void u16(std::size_t at, unsigned value) {
    u8(at, value >> 8 & 0xFF);
    u8(at + 1, value & 0xFF);
  }
  void u32(std::size_t at, std::uint32_t value) {
    u16(at, value >> 16);
    u16(at + 2, value & 0xFFFF);
  }
  // Lowest byte first.
  void le16(std::size_t at, unsigned value) {
    u8(at, value & 0xFF);
    u8(at + 1, value >> 8 & 0xFF);
  }
  void le32(std::size_t at, std::uint32_t value) {
    le16(at, value & 0xFFFF);
    le16(at + 2, value >> 16);
  }
  void text(std::size_t at, std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i)
      u8(at + i, static_cast<unsigned char>(text[i]));
  }
  void all(std::size_t at, const std::vector<unsigned>& values) {
    for (std::size_t i = 0; i < values.size(); ++i)
      u8(at + i, values[i]);
  }

  std::vector<std::uint8_t> bytes;
};

}  // namespace corvane::testing_support
