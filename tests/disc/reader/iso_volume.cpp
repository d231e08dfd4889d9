#include "iso_volume.h"

#include "platform/files/files.h"

#include <cstdint>
#include <string_view>

namespace corvane::disc {

namespace {

constexpr std::size_t sector_bytes = 2048;
constexpr std::size_t first_descriptor = 16, last_descriptor = 64, anchor_sector = 256;

std::uint8_t byte_at(std::string_view head, std::size_t at) {
  return static_cast<std::uint8_t>(head[at]);
}

void read_primary(std::string_view sector, iso_volume& volume) {
  volume.name = std::string(sector.substr(40, 32));
  volume.name.erase(volume.name.find_last_not_of(' ') + 1);
  for (std::size_t i = 4; i-- > 0;)  // little-endian copy of a both-endian number
    volume.sectors = volume.sectors << 8 | byte_at(sector, 80 + i);
}

/// A descriptor tag: identifier 2, and a checksum over the tag's other fifteen bytes.
bool is_anchor(std::string_view sector) {
  unsigned sum = 0;
  for (std::size_t i = 0; i < 16; ++i)
    if (i != 4)
      sum += byte_at(sector, i);
  const unsigned identifier = byte_at(sector, 0) | unsigned{byte_at(sector, 1)} << 8;
  const unsigned place = byte_at(sector, 12) | unsigned{byte_at(sector, 13)} << 8;
  return identifier == 2 && (sum & 0xff) == byte_at(sector, 4) && place == anchor_sector;
}

}  // namespace

result<iso_volume> read_iso_volume(const std::string& native_path) {
  const auto head = first_bytes(native_path, (anchor_sector + 1) * sector_bytes);
  if (!head)
    return result<iso_volume>::fail(head.error);
  const std::string_view bytes = *head;
  iso_volume volume;
  bool primary = false, between = false;
  for (std::size_t s = first_descriptor; s < last_descriptor; ++s) {
    if ((s + 1) * sector_bytes > bytes.size())
      break;
    const std::string_view sector = bytes.substr(s * sector_bytes, sector_bytes);
    const std::string_view mark = sector.substr(1, 5);
    if (mark == "CD001" && byte_at(sector, 0) == 1) {
      read_primary(sector, volume);
      primary = true;
    } else if (mark == "BEA01") {
      between = true;
    } else if (between && (mark == "NSR02" || mark == "NSR03")) {
      volume.udf_recognised = true;
    } else if (mark == "TEA01") {
      break;
    }
  }
  if (!primary)
    return result<iso_volume>::fail("not an ISO 9660 image");
  if ((anchor_sector + 1) * sector_bytes <= bytes.size())
    volume.udf_anchor = is_anchor(bytes.substr(anchor_sector * sector_bytes, sector_bytes));
  return result<iso_volume>::ok(std::move(volume));
}

}  // namespace corvane::disc
