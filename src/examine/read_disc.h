// What is on a finished disc, read back from its tables and navigation packs: titles, menus, first
// play, and what cannot be right. Knows nothing of what was asked for.
//
// Takes the files of a folder or an image (formats/disc_files.h). Reads all IFO and BUP files and
// one sector of each unit of the VOBs, and no more of them. Fails only when there is no video
// manager or `go_on` says stop; damage is told in `troubles`, and what it leaves is given. Whatever
// the files hold, time and memory are bounded by their size.
//
// Times are seconds by the clock of the streams (90 kHz in navigation packs), from the beginning of
// the title or menu. Numbers are 1-based, as on the disc.
#pragma once

#include "examine/unit_trouble.h"
#include "formats/disc_files.h"
#include "formats/ifo.h"
#include "formats/navigation_pack.h"
#include "platform/result.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace corvane {

/// Something wrong, and the file in which it is: "VIDEO_TS/VTS_01_0.IFO".
struct disc_trouble {
  std::string file;
  std::string what;
  bool operator==(const disc_trouble&) const = default;
};

/// A unit (VOBU) of a VOB, as its navigation pack tells.
struct disc_unit {
  std::uint32_t sector = 0;  ///< of the VOBs
  std::uint32_t last_sector = 0;
  std::uint32_t begins = 0, ends = 0;  ///< presentation times, 90 kHz
  int vob = 0, cell = 0;
  // As in `navigation_pack`.
  std::array<std::uint32_t, 3> reference_ends{};
  std::array<std::uint16_t, 8> audio{};
  /// The buttons that are on the screen; null: none. Units that have the same share them.
  std::shared_ptr<const highlight_information> highlight;
};

/// The menu or title VOBs of a titleset, or the menu VOBs of the video manager (titleset 0).
struct disc_vobs {
  int titleset = 0;
  bool menus = false;
  std::vector<std::string> files;           ///< paths, in their order
  std::vector<std::uint64_t> file_sectors;  ///< in each of them
  std::uint64_t sectors = 0;                ///< in all
  std::vector<disc_unit> units;             ///< those that VOBU_ADMAP names and that are there
};

struct disc_cell {
  int vob = 0, cell = 0;
  double begins = 0, seconds = 0;
};

struct disc_audio_stream {
  audio_attributes attributes;
  int id = 0;  ///< in the program stream: first_stream() of its format, plus its number
};

struct disc_subpicture_stream {
  subpicture_attributes attributes;
  int id = 0;  ///< 0x20 and its number, for the display that the title is made for
};

/// What plays from one chain.
struct disc_chain {
  std::shared_ptr<const program_chain> tables;  ///< never null
  double seconds = 0;
  std::vector<disc_cell> cells;
  std::vector<double> programs;  ///< when each program begins
  std::vector<double> units;     ///< when each unit begins
  /// The first buttons that come up; null: none do.
  std::shared_ptr<const highlight_information> highlight;
};

struct disc_title_contents {
  int number = 0, titleset = 0, number_in_titleset = 0;
  int angles = 1;
  disc_chain chain;              ///< that of its first chapter
  std::vector<double> chapters;  ///< of the first chain
  video_attributes video;
  std::vector<disc_audio_stream> audio;  ///< those that the chain has
  std::vector<disc_subpicture_stream> subpictures;
};

struct disc_menu_contents {
  int titleset = 0;  ///< 0: of the whole disc
  int number = 0;    ///< of its chain, in its language
  std::string language;
  menu_kind entry = menu_kind::none;  ///< the key that leads here
  disc_chain chain;
  video_attributes video;
};

struct disc_contents {
  video_manager manager;
  std::vector<titleset> titlesets;  ///< titleset n at n-1; of one that is missing: empty
  std::shared_ptr<const program_chain> first_play;  ///< null: none
  std::vector<disc_title_contents> titles;
  std::vector<disc_menu_contents> menus;
  std::vector<disc_vobs> vobs;
  std::vector<disc_trouble> troubles;       ///< at most some hundreds
  std::vector<unit_trouble> unit_troubles;  ///< the same
};

/// `go_on` is asked now and then; false: stop. It may be empty.
result<disc_contents> read_disc(disc_files& files, const std::function<bool()>& go_on = {});

}  // namespace corvane
