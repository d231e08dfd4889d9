#include "formats/ifo.h"

#include "formats/ifo_reader.h"

#include <algorithm>
#include <string_view>

namespace corvane {

namespace {

// Places in the head that both kinds of file have.
constexpr std::uint64_t last_sector_at = 0x0C, last_ifo_sector_at = 0x1C, version_at = 0x20,
                        category_at = 0x22, last_byte_at = 0x80, menu_vobs_at = 0xC0,
                        menu_streams_at = 0x100;

/// Tells and returns false when the bytes are no file of this kind.
bool begins_with(ifo_reader& reader, std::string_view identifier, const std::string& table) {
  if (reader.file.size() < disc_sector_size) {
    reader.tell(table, 0,
                "is cut off: the file has " + std::to_string(reader.file.size()) + " bytes");
    return false;
  }
  const auto first = reader.file.take<12>(0);
  if (std::equal(first.begin(), first.end(), identifier.begin(), identifier.end(),
                 [](std::uint8_t byte, char c) { return byte == static_cast<std::uint8_t>(c); }))
    return true;
  reader.tell(table, 0, "does not begin with \"" + std::string(identifier) + "\"");
  return false;
}

file_head read_head(ifo_reader& reader, const std::string& table) {
  file_head head;
  head.last_sector = reader.file.u32(last_sector_at);
  head.last_ifo_sector = reader.file.u32(last_ifo_sector_at);
  head.version = reader.file.u16(version_at);
  head.category = reader.file.u32(category_at);
  head.last_byte = reader.file.u32(last_byte_at);
  head.menu_vobs_sector = reader.file.u32(menu_vobs_at);
  const std::uint64_t stated = (std::uint64_t{head.last_ifo_sector} + 1) * disc_sector_size;
  if (stated != reader.file.size())
    reader.tell(table, last_ifo_sector_at,
                "states a file of " + std::to_string(stated) + " bytes; it has " +
                    std::to_string(reader.file.size()));
  // The copy at the end is as long as the file.
  if (std::uint64_t{head.last_sector} < 2 * std::uint64_t{head.last_ifo_sector} + 1)
    reader.tell(table, last_sector_at, "leaves no room for its own copy");
  return head;
}

std::string provider_of(const table_bytes& file) {
  std::string text;
  for (const std::uint8_t byte : file.take<32>(0x40))
    text += static_cast<char>(byte);
  text.erase(text.find_last_not_of(std::string_view(" \0", 2)) + 1);
  return text;
}

void must_have(ifo_reader& reader, std::uint64_t pointer, const std::string& table,
               const char* what) {
  if (reader.file.u32(pointer) == 0)
    reader.tell(table, pointer, std::string("names no ") + what);
}

}  // namespace

video_manager read_video_manager(std::span<const std::uint8_t> file) {
  static const std::string table = "VMGI_MAT";
  video_manager manager;
  ifo_reader reader(table_bytes(file), manager.troubles);
  if (!begins_with(reader, "DVDVIDEO-VMG", table))
    return manager;
  manager.head = read_head(reader, table);
  manager.forbidden_regions = static_cast<int>(manager.head.category >> 16 & 0xFF);
  manager.volumes = reader.file.u16(0x26);
  manager.volume = reader.file.u16(0x28);
  manager.side = reader.file.u8(0x2A);
  manager.titlesets = reader.file.u16(0x3E);
  manager.provider = provider_of(reader.file);
  manager.position_code = reader.file.u64(0x60);
  manager.menu_streams = read_stream_attributes(reader, menu_streams_at, table, true);
  if (const std::uint32_t first_play = reader.file.u32(0x84); first_play != 0)
    manager.first_play = reader.chain_at(first_play, "FP_PGC");
  must_have(reader, 0xC4, table, "TT_SRPT");
  manager.titles = read_titles(reader, 0xC4);
  manager.menus = read_menus(reader, 0xC8, "VMGM_PGCI_UT");
  manager.titlesets_again = read_titleset_copies(reader, 0xD0);
  manager.menu_vobs = read_vob_addresses(reader, 0xD8, 0xDC, "VMGM_");
  check_video_manager(reader, manager);
  return manager;
}

titleset read_titleset(std::span<const std::uint8_t> file) {
  static const std::string table = "VTSI_MAT";
  titleset set;
  ifo_reader reader(table_bytes(file), set.troubles);
  if (!begins_with(reader, "DVDVIDEO-VTS", table))
    return set;
  set.head = read_head(reader, table);
  set.title_vobs_sector = reader.file.u32(0xC4);
  set.menu_streams = read_stream_attributes(reader, menu_streams_at, table, true);
  set.title_streams = read_stream_attributes(reader, 0x200, table, false);
  must_have(reader, 0xC4, table, "VOBs of titles");
  must_have(reader, 0xC8, table, "VTS_PTT_SRPT");
  must_have(reader, 0xCC, table, "VTS_PGCIT");
  must_have(reader, 0xE0, table, "VTS_C_ADT");
  must_have(reader, 0xE4, table, "VTS_VOBU_ADMAP");
  set.titles = read_chapters(reader, 0xC8);
  if (const auto chains = reader.table_at(0xCC, "VTS_PGCIT"))
    set.chains = read_chains(reader, *chains, false);
  set.menus = read_menus(reader, 0xD0, "VTSM_PGCI_UT");
  set.time_maps = read_time_maps(reader, 0xD4);
  set.menu_vobs = read_vob_addresses(reader, 0xD8, 0xDC, "VTSM_");
  set.title_vobs = read_vob_addresses(reader, 0xE0, 0xE4, "VTS_");
  check_titleset(reader, set);
  return set;
}

}  // namespace corvane
