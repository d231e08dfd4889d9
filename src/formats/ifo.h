// The tables of a DVD-Video disc: VIDEO_TS.IFO (video manager) and VTS_nn_0.IFO (titleset), or the
// copies in .BUP files.
//
// Takes all bytes of the file. Gives every value that could be read, and the troubles: what is
// damaged is left out or has its initial value, and the rest is read all the same. Each offset and
// each count is checked against the file; no bytes crash the reader, and its time and memory are
// bounded by a small multiple of the file's size.
//
// Numbers of titles, chapters, chains, programs and cells are 1-based, as on the disc; sectors of
// the file and of VOBs are 0-based, with 2048 bytes each. Tables are named in troubles as the
// format names them. What contradicts another table of the same file is a trouble too (a chapter
// whose program is not there); what would need another file to be known is not looked at.
#pragma once

#include "formats/program_chain.h"
#include "formats/stream_attributes.h"
#include "formats/table_trouble.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace corvane {

/// Bytes of a sector, in which places of tables and VOBs are counted.
inline constexpr std::size_t disc_sector_size = 2048;

/// Where a cell of a VOB lies (C_ADT).
struct cell_address {
  int vob = 0, cell = 0;
  std::uint32_t first_sector = 0, last_sector = 0;
  bool operator==(const cell_address&) const = default;
};

/// The cells and units (VOBU) of menu or title VOBs.
struct vob_addresses {
  int vobs = 0;                      ///< how many VOBs C_ADT states
  std::vector<cell_address> cells;   ///< C_ADT
  std::vector<std::uint32_t> units;  ///< VOBU_ADMAP: first sector of each unit
};

/// A title of the disc (TT_SRPT).
struct title_entry {
  std::uint8_t playback = 0;  ///< playback type, as on the disc
  int angles = 0, chapters = 0;
  std::uint16_t parental = 0;
  int titleset = 0, number_in_titleset = 0;
  std::uint32_t titleset_sector = 0;  ///< of VTS_nn_0.IFO, from that of VIDEO_TS.IFO
  bool operator==(const title_entry&) const = default;
};

/// What VIDEO_TS.IFO says again of a titleset's streams (VTS_ATRT).
struct titleset_copy {
  std::uint32_t category = 0;
  stream_attributes menus, titles;
};

/// What both kinds of file begin with. Sectors of tables and VOBs count from the file's first one;
/// 0: there is none.
struct file_head {
  std::uint32_t last_sector = 0;      ///< of IFO, VOBs and BUP together
  std::uint32_t last_ifo_sector = 0;  ///< of the IFO
  int version = 0;                    ///< 0x10: 1.0, 0x11: 1.1
  std::uint32_t category = 0;
  std::uint32_t last_byte = 0;  ///< of the head itself
  std::uint32_t menu_vobs_sector = 0;
};

struct video_manager {
  file_head head;
  int volumes = 0, volume = 0, side = 0;
  int titlesets = 0;
  int forbidden_regions = 0;  ///< bit n: not in region n+1; 0: plays everywhere
  std::string provider;       ///< without the blanks and zeros at its end
  std::uint64_t position_code = 0;
  stream_attributes menu_streams;
  std::shared_ptr<const program_chain> first_play;  ///< FP_PGC; null: none
  std::vector<title_entry> titles;                  ///< title n is at n-1
  std::vector<menu_language> menus;
  std::vector<titleset_copy> titlesets_again;  ///< titleset n at n-1
  vob_addresses menu_vobs;
  std::vector<table_trouble> troubles;
};

/// Where a chapter begins (VTS_PTT_SRPT).
struct chapter_entry {
  int chain = 0, program = 0;
  bool operator==(const chapter_entry&) const = default;
};

/// Sectors at even steps of a chain's time (VTS_TMAPT).
struct time_map {
  int step = 0;  ///< seconds from one entry to the next; the first entry is one step in
  std::vector<std::uint32_t> sectors;  ///< first sectors of units
  std::vector<bool> clock_breaks;      ///< for each: the clock is not continuous with the next
};

struct titleset {
  file_head head;
  std::uint32_t title_vobs_sector = 0;
  stream_attributes menu_streams, title_streams;
  std::vector<std::vector<chapter_entry>> titles;  ///< chapters of title n at n-1
  std::vector<chain_entry> chains;                 ///< VTS_PGCIT: chain n at n-1
  std::vector<menu_language> menus;
  std::vector<time_map> time_maps;  ///< of chain n at n-1
  vob_addresses menu_vobs, title_vobs;
  std::vector<table_trouble> troubles;
};

/// Larger IFO files are none: what reads them from a disc need not take in more.
inline constexpr std::size_t largest_ifo = std::size_t{16} * 1024 * 1024;

/// Bytes that do not begin with "DVDVIDEO-VMG" or are shorter than the head have that one trouble
/// and nothing else.
video_manager read_video_manager(std::span<const std::uint8_t> file);

/// The same for "DVDVIDEO-VTS".
titleset read_titleset(std::span<const std::uint8_t> file);

}  // namespace corvane
