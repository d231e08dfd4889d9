// Tables that are lists of numbers: titles, chapters, addresses, times, attributes.
#include "formats/ifo_reader.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

constexpr std::size_t head = 8;

/// The bounds of part n of a table that begins with a list of places: from its place to the next
/// part's, the last to the table's end.
struct part_range {
  std::uint64_t begin = 0, end = 0;
};

std::vector<part_range> parts_of(ifo_reader& reader, const table_range& table) {
  const std::size_t count = reader.entries_in(table, head, 4, reader.file.u16(table.begin));
  const auto place_at = [&](std::size_t i) {
    return table.begin + std::uint64_t{reader.file.u32(table.begin + head + 4 * i)};
  };
  std::vector<part_range> parts;
  for (std::size_t i = 0; i < count; ++i) {
    part_range part{place_at(i), i + 1 < count ? place_at(i + 1) : table.end};
    if (part.begin < table.begin + head + 4 * count || part.begin > table.end) {
      reader.tell(table.name, table.begin + head + 4 * i, "points out of itself");
      part = {};
    } else if (part.end < part.begin || part.end > table.end) {
      reader.tell(table.name, table.begin + head + 4 * i,
                  "has its part " + std::to_string(i + 1) + " end where it cannot");
      part.end = table.end;
    }
    parts.push_back(part);
  }
  return parts;
}

std::vector<chapter_entry> chapters_in(ifo_reader& reader, const table_range& table,
                                       const part_range& part) {
  constexpr std::uint64_t size = 4, most = 999;
  std::uint64_t count = (part.end - part.begin) / size;
  if (count > most) {
    reader.tell(table.name, part.begin, "has a title of " + std::to_string(count) + " chapters");
    count = most;
  }
  if (!reader.may_read(count * size)) {
    reader.tell(table.name, part.begin, "overlaps other tables");
    return {};
  }
  std::vector<chapter_entry> chapters;
  for (std::uint64_t at = part.begin; count > 0; --count, at += size)
    chapters.push_back({reader.file.u16(at), reader.file.u16(at + 2)});
  return chapters;
}

time_map time_map_in(ifo_reader& reader, const table_range& table, const part_range& part) {
  constexpr std::uint64_t map_head = 4, size = 4;
  time_map map;
  if (part.end - part.begin < map_head) {
    reader.tell(table.name, part.begin, "has a map that ends before its first entry");
    return map;
  }
  map.step = reader.file.u8(part.begin);
  const std::uint64_t stated = reader.file.u16(part.begin + 2);
  const std::uint64_t room = (part.end - part.begin - map_head) / size;
  const std::uint64_t count = std::min(stated, room);
  if (stated > room)
    reader.tell(table.name, part.begin + 2, "has a map of more entries than there is room for");
  if (!reader.may_read(count * size)) {
    reader.tell(table.name, part.begin, "overlaps other tables");
    return map;
  }
  for (std::uint64_t i = 0; i < count; ++i) {
    const std::uint32_t entry = reader.file.u32(part.begin + map_head + i * size);
    map.sectors.push_back(entry & 0x7FFFFFFFU);
    map.clock_breaks.push_back((entry & 0x80000000U) != 0);
  }
  return map;
}

}  // namespace

std::vector<title_entry> read_titles(ifo_reader& reader, std::uint64_t pointer) {
  constexpr std::size_t size = 12;
  const auto table = reader.table_at(pointer, "TT_SRPT");
  if (!table)
    return {};
  const std::size_t count = reader.entries_in(*table, head, size, reader.file.u16(table->begin));
  std::vector<title_entry> titles(count);
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint64_t at = table->begin + head + i * size;
    title_entry& title = titles[i];
    title.playback = reader.file.u8(at);
    title.angles = reader.file.u8(at + 1);
    title.chapters = reader.file.u16(at + 2);
    title.parental = reader.file.u16(at + 4);
    title.titleset = reader.file.u8(at + 6);
    title.number_in_titleset = reader.file.u8(at + 7);
    title.titleset_sector = reader.file.u32(at + 8);
  }
  return titles;
}

std::vector<titleset_copy> read_titleset_copies(ifo_reader& reader, std::uint64_t pointer) {
  constexpr std::uint64_t attributes = 8, titles = attributes + 0x100, least = 0x162;
  const auto table = reader.table_at(pointer, "VMG_VTS_ATRT");
  if (!table)
    return {};
  std::vector<titleset_copy> copies;
  for (const part_range& part : parts_of(reader, *table)) {
    titleset_copy& copy = copies.emplace_back();
    if (part.end - part.begin < least)
      reader.tell(table->name, part.begin, "has no room for the attributes of a titleset");
    else if (!reader.may_read(part.end - part.begin))
      reader.tell(table->name, part.begin, "overlaps other tables");
    else
      copy = {reader.file.u32(part.begin + 4),
              read_stream_attributes(reader, part.begin + attributes, table->name, true),
              read_stream_attributes(reader, part.begin + titles, table->name, false)};
  }
  return copies;
}

std::vector<std::vector<chapter_entry>> read_chapters(ifo_reader& reader, std::uint64_t pointer) {
  const auto table = reader.table_at(pointer, "VTS_PTT_SRPT");
  std::vector<std::vector<chapter_entry>> titles;
  if (table)
    for (const part_range& part : parts_of(reader, *table))
      titles.push_back(chapters_in(reader, *table, part));
  return titles;
}

std::vector<time_map> read_time_maps(ifo_reader& reader, std::uint64_t pointer) {
  const auto table = reader.table_at(pointer, "VTS_TMAPT");
  std::vector<time_map> maps;
  if (table)
    for (const part_range& part : parts_of(reader, *table))
      maps.push_back(time_map_in(reader, *table, part));
  return maps;
}

vob_addresses read_vob_addresses(ifo_reader& reader, std::uint64_t cells, std::uint64_t units,
                                 const std::string& prefix) {
  constexpr std::size_t cell_size = 12, unit_size = 4, unit_head = 4;
  vob_addresses addresses;
  if (const auto table = reader.table_at(cells, prefix + "C_ADT")) {
    addresses.vobs = reader.file.u16(table->begin);
    const std::size_t count =
        reader.entries_in(*table, head, cell_size, (table->end - table->begin - head) / cell_size);
    for (std::size_t i = 0; i < count; ++i) {
      const std::uint64_t at = table->begin + head + i * cell_size;
      addresses.cells.push_back({reader.file.u16(at), reader.file.u8(at + 2),
                                 reader.file.u32(at + 4), reader.file.u32(at + 8)});
    }
  }
  if (const auto table = reader.table_at(units, prefix + "VOBU_ADMAP", unit_head, 0)) {
    const std::size_t count = reader.entries_in(
        *table, unit_head, unit_size, (table->end - table->begin - unit_head) / unit_size);
    for (std::size_t i = 0; i < count; ++i)
      addresses.units.push_back(reader.file.u32(table->begin + unit_head + i * unit_size));
  }
  return addresses;
}

}  // namespace corvane
