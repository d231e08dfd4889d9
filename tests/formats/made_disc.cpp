#include "made_disc.h"

#include <numeric>

namespace corvane::testing_support {

namespace {

/// A cell: VOB and number, first sector, first sector of the last unit, last sector.
struct made_cell {
  unsigned vob = 1, cell = 1, first = 0, last_unit = 0, last = 0;
};

/// A command of each list: eight bytes of which the last two are set.
constexpr unsigned pre_command = 0xA1, post_command = 0xB1, cell_command = 0xC1;

/// Writes a chain of these cells, each a program of its own; gives how long it is.
std::size_t put_chain(made_bytes& to, std::size_t at, const std::vector<made_cell>& cells,
                      unsigned previous, unsigned next) {
  const auto count = static_cast<unsigned>(cells.size());
  to.all(at + 2, {count, count, 0x01, 0x02, 0x03, 0xC0 | 0x04});
  to.u32(at + 8, 0x00000180);                   // prohibited
  to.u16(at + 0x0C, 0x8000);                    // audio 1 is stream 0
  to.u16(at + 0x0E, 0x8300);                    // audio 2 is stream 3
  to.u32(at + 0x1C, 0x80000000U | 0x01020304);  // subpicture 1
  to.u16(at + 0x9C, next);
  to.u16(at + 0x9E, previous);
  to.all(at + 0xA2, {0, 5});  // in order, still of 5 seconds
  for (unsigned i = 0; i < 16; ++i)
    to.u32(at + 0xA4 + 4 * i, 0x00108000U + i);
  const std::size_t commands = 0xEC, programs = commands + 8 + 3 * 8, playback = programs + 4,
                    positions = playback + 24 * cells.size();
  to.u16(at + 0xE4, static_cast<unsigned>(commands));
  to.u16(at + commands, 1);
  to.u16(at + commands + 2, 1);
  to.u16(at + commands + 4, 1);
  to.u16(at + commands + 6, 8 + 3 * 8 - 1);
  to.u8(at + commands + 8 + 7, pre_command);
  to.u8(at + commands + 16 + 7, post_command);
  to.u8(at + commands + 24 + 7, cell_command);
  if (cells.empty())
    return programs;
  to.u16(at + 0xE6, static_cast<unsigned>(programs));
  to.u16(at + 0xE8, static_cast<unsigned>(playback));
  to.u16(at + 0xEA, static_cast<unsigned>(positions));
  for (unsigned i = 0; i < count; ++i) {
    const made_cell& c = cells[i];
    const std::size_t cell = at + playback + 24 * i;
    to.u8(at + programs + i, i + 1);
    to.all(cell, {0x0A, 0, i == 0 ? 0U : 255U, i, 0, 0, 0x10, 0xC0 | 0x15});
    to.u32(cell + 8, c.first);
    to.u32(cell + 16, c.last_unit);
    to.u32(cell + 20, c.last);
    to.u16(at + positions + 4 * i, c.vob);
    to.u8(at + positions + 4 * i + 3, c.cell);
  }
  return positions + 4 * cells.size();
}

/// Number of entries and, `length` bytes long, the last byte of a table.
void put_frame(made_bytes& to, std::size_t at, unsigned count, std::size_t length) {
  to.u16(at, count);
  to.u32(at + 4, static_cast<std::uint32_t>(length - 1));
}

/// A table of one chain, at an offset behind its only entry.
std::size_t put_menu_chain(made_bytes& to, std::size_t at, unsigned category,
                           const std::vector<made_cell>& cells) {
  to.u32(at + 8, category << 24);
  to.u32(at + 12, 16);
  const std::size_t length = 16 + put_chain(to, at + 16, cells, 0, 0);
  put_frame(to, at, 1, length);
  return length;
}

/// One table of menu chains for two languages.
void put_menus(made_bytes& to, std::size_t at, unsigned category, const char* first,
               const char* second, const std::vector<made_cell>& cells) {
  const std::size_t unit = 8 + 2 * 8;
  to.text(at + 8, first);
  to.text(at + 16, second);
  for (const std::size_t entry : {at + 8, at + 16}) {
    to.u8(entry + 3, 0x80);
    to.u32(entry + 4, unit);
  }
  put_frame(to, at, 2, unit + put_menu_chain(to, at + unit, category, cells));
}

void put_cells(made_bytes& to, std::size_t at, unsigned vobs, const std::vector<made_cell>& cells) {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const std::size_t entry = at + 8 + 12 * i;
    to.u16(entry, cells[i].vob);
    to.u8(entry + 2, cells[i].cell);
    to.u32(entry + 4, cells[i].first);
    to.u32(entry + 8, cells[i].last);
  }
  put_frame(to, at, vobs, 8 + 12 * cells.size());
}

void put_units(made_bytes& to, std::size_t at, const std::vector<std::uint32_t>& units) {
  to.u32(at, static_cast<std::uint32_t>(4 + 4 * units.size() - 1));
  for (std::size_t i = 0; i < units.size(); ++i)
    to.u32(at + 4 + 4 * i, units[i]);
}

unsigned sector(std::size_t at) {
  return static_cast<unsigned>(at / 2048);
}

/// The attributes of a titleset's titles.
void put_streams(made_bytes& to, std::size_t at) {
  to.all(at, {0x4E, 0x90});  // MPEG-2, NTSC, 16:9, no pan and scan; line 21, 352 wide
  to.u16(at + 2, 2);
  to.all(at + 4, {0x04, 0x05, 'd', 'e', 0, 1});          // AC-3 of 6 channels
  to.all(at + 12, {0x40 | 0x04, 0x41, 'e', 'n', 0, 3});  // MP2 of 2 channels, comments
  to.u16(at + 0x54, 1);
  to.all(at + 0x56, {0x01, 0, 'f', 'r', 0, 9});
}

const std::vector<made_cell> menu_cells{{1, 1, 0, 0, 9}, {1, 2, 10, 10, 19}};
const std::vector<made_cell> title_cells{{1, 1, 0, 20, 39}, {1, 2, 40, 70, 99}};

}  // namespace

made_bytes made_manager() {
  namespace at = made_manager_at;
  made_bytes to(at::size);
  to.text(0, "DVDVIDEO-VMG");
  to.u32(0x0C, 7 + 20 + 7 - 1);
  to.u32(0x1C, 7 - 1);
  to.u16(0x20, 0x11);
  to.u32(0x22, 0x00FE0000);  // region 1 only
  to.u16(0x26, 1);
  to.u16(0x28, 1);
  to.u8(0x2A, 1);
  to.u16(0x3E, 1);
  to.text(0x40, "A PROVIDER");
  to.u32(0x80, 0x1FF);
  to.u32(0x84, at::first_play);
  to.u32(0xC0, 7);
  to.u32(0xC4, sector(at::titles));
  to.u32(0xC8, sector(at::menus));
  to.u32(0xD0, sector(at::copies));
  to.u32(0xD8, sector(at::cells));
  to.u32(0xDC, sector(at::units));
  to.all(0x100, {0x53, 0x00});  // PAL, 4:3
  to.all(at::titles + 8, {0x3C, 1, 0, 2, 0, 0, 1, 1});
  to.u32(at::titles + 8 + 8, 34);
  to.all(at::titles + 20, {0x3C, 1, 0, 1, 0, 0, 1, 2});
  to.u32(at::titles + 20 + 8, 34);
  put_frame(to, at::titles, 2, 8 + 2 * 12);
  put_menus(to, at::menus, 0x82, "de", "de", menu_cells);
  to.u32(at::copies + 8, 12);
  to.u32(at::copies + 12, 8 + 0x300 - 1);
  to.u32(at::copies + 16, 0x1234);
  to.u8(at::copies + 12 + 8, 0x43);
  put_streams(to, at::copies + 12 + 8 + 0x100);
  put_frame(to, at::copies, 1, 12 + 8 + 0x300);
  put_cells(to, at::cells, 1, menu_cells);
  put_units(to, at::units, {0, 10});
  put_chain(to, at::first_play, {}, 0, 0);
  return to;
}

made_bytes made_titleset() {
  namespace at = made_titleset_at;
  made_bytes to(at::size);
  to.text(0, "DVDVIDEO-VTS");
  to.u32(0x0C, 9 + 20 + 100 + 9 - 1);
  to.u32(0x1C, 9 - 1);
  to.u16(0x20, 0x11);
  to.u32(0x80, 0x3D7);
  to.u32(0xC0, 9);
  to.u32(0xC4, 9 + 20);
  to.u32(0xC8, sector(at::chapters));
  to.u32(0xCC, sector(at::chains));
  to.u32(0xD0, sector(at::menus));
  to.u32(0xD4, sector(at::time_maps));
  to.u32(0xD8, sector(at::menu_cells));
  to.u32(0xDC, sector(at::menu_units));
  to.u32(0xE0, sector(at::cells));
  to.u32(0xE4, sector(at::units));
  to.all(0x100, {0x43, 0x00});
  put_streams(to, 0x200);
  to.u32(at::chapters + 8, 16);
  to.u32(at::chapters + 12, 24);
  to.all(at::chapters + 16, {0, 1, 0, 1, 0, 1, 0, 2, 0, 2, 0, 1});
  put_frame(to, at::chapters, 2, 28);
  const std::size_t first = 8 + 2 * 8;
  to.u32(at::chains + 8, 0x81000000);
  to.u32(at::chains + 12, first);
  const std::size_t second = first + put_chain(to, at::chains + first, title_cells, 0, 2);
  to.u32(at::chains + 16, 0x82000000);
  to.u32(at::chains + 20, static_cast<std::uint32_t>(second));
  const std::size_t end = second + put_chain(to, at::chains + second, {title_cells[1]}, 1, 0);
  put_frame(to, at::chains, 2, end);
  put_menus(to, at::menus, 0x83, "en", "de", menu_cells);
  to.u32(at::time_maps + 8, 16);
  to.u32(at::time_maps + 12, 28);
  to.all(at::time_maps + 16, {4, 0, 0, 2});
  to.u32(at::time_maps + 20, 20);
  to.u32(at::time_maps + 24, 0x80000000U | 70);
  put_frame(to, at::time_maps, 2, 32);
  put_cells(to, at::menu_cells, 1, menu_cells);
  put_units(to, at::menu_units, {0, 10});
  put_cells(to, at::cells, 1, title_cells);
  put_units(to, at::units, {0, 20, 40, 70});
  return to;
}

made_bytes made_navigation_pack() {
  made_bytes to(2048);
  to.all(0, {0, 0, 1, 0xBA, 0x44, 0, 4, 0, 0x0C, 1, 0x01, 0x89, 0xC3, 0xF8});
  to.all(0x0E, {0, 0, 1, 0xBB, 0, 0x12});
  to.all(0x26, {0, 0, 1, 0xBF, 0x03, 0xD4, 0x00});
  const std::size_t pci = 0x2D, highlight = pci + 96;
  to.u32(pci, 40);
  to.u32(pci + 12, 90000);
  to.u32(pci + 16, 135000);
  to.all(pci + 24, {0, 0, 0x05, 0xC0 | 0x12});
  to.u16(highlight, 1);
  to.u32(highlight + 2, 90000);
  to.u32(highlight + 6, 0xFFFFFFFF);
  to.u32(highlight + 10, 0xFFFFFFFF);
  to.u16(highlight + 14, 0x1000 | 0x0100);  // one group, for wide displays
  to.all(highlight + 16, {0, 3, 3, 0, 2, 0});
  for (unsigned i = 0; i < 6; ++i)
    to.u32(highlight + 22 + 4 * i, 0x32100FF0 + i);
  // Colours 2; x 100 to 250; y 52 to 79, acting at once; up 3, down 2, left 1, right 1.
  const std::size_t button = highlight + 46;
  to.all(button, {0x80 | 100 >> 4, (100 & 15) << 4, 250});
  to.all(button + 3, {0x40 | 52 >> 4, (52 & 15) << 4, 79, 3, 2, 1, 1});
  to.all(button + 10, {0x30, 0x02, 0, 0, 0, 5, 0, 0});
  // 720 x 576: all ten bits.
  to.all(button + 18, {0x40 | 700 >> 4, (700 & 15) << 4 | 719 >> 8, 719 & 255});
  to.all(button + 21, {560 >> 4, (560 & 15) << 4 | 575 >> 8, 575 & 255, 1, 3, 2, 2});
  to.all(button + 36, {0, 0, 10, 0, 0, 10, 2, 1, 3, 3});
  to.all(0x400, {0, 0, 1, 0xBF, 0x03, 0xFA, 0x01});
  const std::size_t dsi = 0x407;
  to.u32(dsi, 89000);
  to.u32(dsi + 4, 40);
  to.u32(dsi + 8, 29);
  to.u32(dsi + 12, 11);
  to.u32(dsi + 16, 15);
  to.u32(dsi + 20, 19);
  to.u16(dsi + 24, 1);
  to.u8(dsi + 27, 2);
  to.all(dsi + 28, {0, 0, 0x05, 0xC0 | 0x12});
  to.u32(dsi + 44, 45000);
  to.u32(dsi + 48, 450000);
  to.u32(dsi + 234, 0x80000000U | 30);
  to.u32(dsi + 314, 30);
  to.u32(dsi + 318, 20);
  to.u32(dsi + 398, 0x3FFFFFFF);
  to.u32(dsi + 238, 0x3FFFFFFF);
  to.u32(dsi + 322, 20);
  to.u16(dsi + 402, 4);
  to.u32(dsi + 418, 0x80000007);
  return to;
}

namespace {

void both32(made_bytes& to, std::size_t at, std::uint32_t value) {
  to.le32(at, value);
  to.u32(at + 4, value);
}

/// Writes a directory record; gives where the next one goes.
std::size_t put_record(made_bytes& to, std::size_t at, std::string_view name, std::size_t place,
                       std::size_t size, bool folder) {
  const std::size_t length = (33 + name.size() + 1) / 2 * 2;
  to.u8(at, static_cast<unsigned>(length));
  both32(to, at + 2, static_cast<std::uint32_t>(place));
  both32(to, at + 10, static_cast<std::uint32_t>(size));
  to.u8(at + 25, folder ? 2 : 0);
  to.u8(at + 32, static_cast<unsigned>(name.size()));
  to.text(at + 33, name);
  return at + length;
}

void put_iso9660(made_bytes& to) {
  using namespace std::string_view_literals;
  namespace s = made_image_at;
  const std::size_t primary = s::primary * 2048;
  to.text(primary, "\1CD001\1"sv);
  to.text(primary + 40, "A DISC                          ");
  both32(to, primary + 80, s::size);
  to.le16(primary + 128, 2048);
  to.u16(primary + 130, 2048);
  const std::size_t paths = 10 + 16;
  both32(to, primary + 132, paths);
  to.le32(primary + 140, s::low_paths);
  to.u32(primary + 148, s::high_paths);
  put_record(to, primary + 156, "\0"sv, s::root, 2048, true);
  to.text((s::primary + 1) * 2048,
          "\xFF"
          "CD001\1"sv);

  const std::size_t low = s::low_paths * 2048, high = s::high_paths * 2048;
  to.u8(low, 1);
  to.le32(low + 2, s::root);
  to.le16(low + 6, 1);
  to.u8(low + 10, 8);
  to.le32(low + 12, s::folder);
  to.le16(low + 16, 1);
  to.text(low + 18, "VIDEO_TS");
  to.u8(high, 1);
  to.u32(high + 2, s::root);
  to.u16(high + 6, 1);
  to.u8(high + 10, 8);
  to.u32(high + 12, s::folder);
  to.u16(high + 16, 1);
  to.text(high + 18, "VIDEO_TS");

  std::size_t at = put_record(to, s::root * 2048, "\0"sv, s::root, 2048, true);
  at = put_record(to, at, "\1"sv, s::root, 2048, true);
  put_record(to, at, "VIDEO_TS", s::folder, 2048, true);
  at = put_record(to, s::folder * 2048, "\0"sv, s::folder, 2048, true);
  at = put_record(to, at, "\1"sv, s::root, 2048, true);
  at = put_record(to, at, "VIDEO_TS.IFO;1", s::manager, 4096, false);
  put_record(to, at, "VTS_01_1.VOB;1", s::video, 10000, false);
}

constexpr std::size_t file_set = 0, root_entry = 1, folder_entry = 2, manager_entry = 4,
                      video_entry = 6;  // blocks of the partition

/// A descriptor's tag, for `size` bytes behind it, of sector or block `place`.
void put_tag(made_bytes& to, std::size_t at, unsigned kind, std::size_t size, std::size_t place) {
  to.le16(at, kind);
  to.le16(at + 2, 2);
  to.le16(at + 10, static_cast<unsigned>(size));
  to.le32(at + 12, static_cast<std::uint32_t>(place));
  seal(to, at);
}

void put_sequence(made_bytes& to, std::size_t first) {
  namespace s = made_image_at;
  using namespace std::string_view_literals;
  std::size_t at = first * 2048;
  put_tag(to, at, 1, 496, first);
  at += 2048;
  to.text(at + 84,
          "\x08"
          "A DISC"sv);
  to.u8(at + 84 + 127, 7);
  to.le32(at + 212, 2048);
  to.le32(at + 248, 2048);
  to.le32(at + 252, file_set);
  to.le32(at + 268, 1);
  to.le32(at + 432, 2048);
  to.le32(at + 436, s::integrity);
  to.all(at + 440, {1, 6, 1, 0, 0, 0});
  put_tag(to, at, 6, 430, first + 1);
  at += 2048;
  to.le32(at + 188, s::partition);
  to.le32(at + 192, s::size - s::partition);
  put_tag(to, at, 5, 496, first + 2);
  put_tag(to, at + 2048, 8, 496, first + 3);
}

void put_entry(made_bytes& to, std::size_t block, bool folder, std::size_t place,
               std::size_t size) {
  const std::size_t at = (made_image_at::partition + block) * 2048;
  to.u8(at + 27, folder ? 4 : 5);
  to.le32(at + 56, static_cast<std::uint32_t>(size));
  to.le32(at + 172, 8);
  to.le32(at + 176, static_cast<std::uint32_t>(size));
  to.le32(at + 180, static_cast<std::uint32_t>(place - made_image_at::partition));
  put_tag(to, at, 261, 168, block);
}

/// Writes a file identifier; gives where the next one goes.
std::size_t put_identifier(made_bytes& to, std::size_t at, std::string_view name, unsigned flags,
                           std::size_t block) {
  const std::size_t letters = name.empty() ? 0 : name.size() + 1;
  const std::size_t length = (38 + letters + 3) / 4 * 4;
  to.u8(at + 18, flags);
  to.u8(at + 19, static_cast<unsigned>(letters));
  to.le32(at + 20, 2048);
  to.le32(at + 24, static_cast<std::uint32_t>(block));
  if (!name.empty()) {
    to.u8(at + 38, 8);
    to.text(at + 39, name);
  }
  put_tag(to, at, 257, length - 16, at / 2048 - made_image_at::partition);
  return at + length;
}

void put_udf(made_bytes& to) {
  namespace s = made_image_at;
  for (std::size_t i = 0; i < 3; ++i)
    to.text((s::recognition + i) * 2048 + 1, i == 0 ? "BEA01\1" : i == 1 ? "NSR02\1" : "TEA01\1");
  put_sequence(to, s::sequence);
  put_sequence(to, s::reserve);
  to.le32(s::integrity * 2048 + 28, 1);
  put_tag(to, s::integrity * 2048, 9, 100, s::integrity);
  const std::size_t anchor = s::anchor * 2048;
  to.le32(anchor + 16, 4 * 2048);
  to.le32(anchor + 20, s::sequence);
  to.le32(anchor + 24, 4 * 2048);
  to.le32(anchor + 28, s::reserve);
  put_tag(to, anchor, 2, 496, s::anchor);
  const std::size_t set = (s::partition + file_set) * 2048;
  to.le32(set + 400, 2048);
  to.le32(set + 404, root_entry);
  put_tag(to, set, 256, 496, file_set);

  std::size_t at = put_identifier(to, s::udf_root * 2048, "", 2 | 8, root_entry);
  at = put_identifier(to, at, "VIDEO_TS", 2, folder_entry);
  put_entry(to, root_entry, true, s::udf_root, at - s::udf_root * 2048);
  at = put_identifier(to, s::udf_folder * 2048, "", 2 | 8, root_entry);
  at = put_identifier(to, at, "VIDEO_TS.IFO", 0, manager_entry);
  at = put_identifier(to, at, "VTS_01_1.VOB", 0, video_entry);
  put_entry(to, folder_entry, true, s::udf_folder, at - s::udf_folder * 2048);
  put_entry(to, manager_entry, false, s::manager, 4096);
  put_entry(to, video_entry, false, s::video, 10000);
}

}  // namespace

void seal(made_bytes& image, std::size_t at) {
  // Division of the bytes, as one long binary number, by x^16 + x^12 + x^5 + 1.
  const std::size_t size = image.bytes[at + 10] + image.bytes[at + 11] * std::size_t{256};
  unsigned rest = 0;
  for (std::size_t bit = 0; bit < size * 8; ++bit) {
    const unsigned next = image.bytes[at + 16 + bit / 8] >> (7 - bit % 8) & 1U;
    const bool subtract = ((rest >> 15 & 1U) ^ next) != 0;
    rest = (rest << 1 & 0xFFFFU) ^ (subtract ? 0x1021U : 0U);
  }
  image.le16(at + 8, rest);
  image.u8(at + 4, 0);
  const auto tag = image.bytes.begin() + static_cast<std::ptrdiff_t>(at);
  image.u8(at + 4, std::accumulate(tag, tag + 16, 0U) & 0xFFU);
}

made_bytes made_image() {
  namespace s = made_image_at;
  made_bytes to(s::size * 2048);
  put_iso9660(to);
  put_udf(to);
  for (std::size_t i = 0; i < 4096; ++i)
    to.u8(s::manager * 2048 + i, 1);
  for (std::size_t i = 0; i < 10000; ++i)
    to.u8(s::video * 2048 + i, 2);
  return to;
}

std::string texts(const std::vector<table_trouble>& troubles) {
  std::string text;
  for (const table_trouble& trouble : troubles)
    text += trouble.text() + "\n";
  return text;
}

}  // namespace corvane::testing_support
