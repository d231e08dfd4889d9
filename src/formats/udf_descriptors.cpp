#include "formats/udf_descriptors.h"

#include "platform/text/utf8.h"

#include <algorithm>

namespace corvane {

namespace {

/// The checksum of what follows a tag (CRC of 16 bits, polynomial 1021).
std::uint16_t checksum(std::span<const std::uint8_t> bytes) {
  unsigned sum = 0;
  for (const std::uint8_t byte : bytes) {
    sum ^= static_cast<unsigned>(byte) << 8;
    for (int bit = 0; bit < 8; ++bit)
      sum = (sum & 0x8000U) != 0 ? (sum << 1 ^ 0x1021U) & 0xFFFFU : sum << 1 & 0xFFFFU;
  }
  return static_cast<std::uint16_t>(sum);
}

constexpr std::uint64_t tag_size = 16;

/// A letter of a name; what is none is shown as such.
std::string shown(std::uint32_t letter) {
  return utf8_text(letter == 0 || (letter >= 0xD800 && letter < 0xE000) ? 0xFFFD : letter);
}

}  // namespace

std::optional<std::string> why_not_tag(const table_bytes& descriptor, int kind,
                                       std::optional<std::uint32_t> place) {
  if (!descriptor.holds(0, tag_size))
    return "is not there";
  if (tag_of(descriptor) != kind)
    return "is no descriptor of its kind";
  unsigned sum = 0;
  for (std::uint64_t i = 0; i < tag_size; ++i)
    sum += i == 4 ? 0U : descriptor.u8(i);
  if ((sum & 0xFFU) != descriptor.u8(4))
    return "has a tag with a wrong sum";
  const std::uint64_t length = descriptor.le16(10);
  if (!descriptor.holds(tag_size, length))
    return "has a tag that counts more bytes than there are";
  if (checksum(descriptor.all().subspan(tag_size, static_cast<std::size_t>(length))) !=
      descriptor.le16(8))
    return "has a wrong checksum";
  if (place && descriptor.le32(12) != *place)
    return "says that it stands in sector " + std::to_string(descriptor.le32(12));
  return std::nullopt;
}

std::string udf_text(std::span<const std::uint8_t> bytes) {
  std::string text;
  if (bytes.empty())
    return text;
  const table_bytes letters(bytes.subspan(1));
  if (bytes[0] != 16) {
    for (std::uint64_t i = 0; i < letters.size(); ++i)
      text += shown(letters.u8(i));
    return text;
  }
  for (std::uint64_t i = 0; i + 2 <= letters.size(); i += 2) {
    std::uint32_t letter = letters.u16(i);
    const std::uint32_t next = letters.holds(i + 2, 2) ? letters.u16(i + 2) : std::uint16_t{0};
    if (letter >= 0xD800 && letter < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
      letter = 0x10000 + ((letter - 0xD800) << 10) + (next - 0xDC00);
      i += 2;
    }
    text += shown(letter);
  }
  return text;
}

std::string udf_field(const table_bytes& descriptor, std::uint64_t at, std::uint64_t size) {
  if (!descriptor.holds(at, size))
    return {};
  const std::uint64_t length = std::min<std::uint64_t>(descriptor.u8(at + size - 1), size - 1);
  std::string text = udf_text(
      descriptor.all().subspan(static_cast<std::size_t>(at), static_cast<std::size_t>(length)));
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

}  // namespace corvane
