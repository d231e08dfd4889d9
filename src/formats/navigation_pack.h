// The pack with which every unit (VOBU) of a disc's VOBs begins: presentation control (PCI, with
// the buttons of menus) and data search (DSI).
//
// Takes one sector. Sectors are 0-based: `sector` in the VOBs, others as offsets from this pack
// where a name says so. Times are of the 90 kHz clock, 32 bits. Reading fails on bytes that are no
// such pack; any other bytes give values, and the troubles of those that cannot be right.
#pragma once

#include "formats/program_chain.h"
#include "formats/table_trouble.h"
#include "formats/vm_command.h"
#include "platform/result.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace corvane {

struct menu_button {
  int colours = 0;                            ///< 1 to 3: its row of the colour table; 0: none
  int x0 = 0, y0 = 0, x1 = 0, y1 = 0;         ///< pixels, right and bottom edge included
  bool automatic = false;                     ///< acts as soon as it is selected
  int up = 0, down = 0, left = 0, right = 0;  ///< numbers of its neighbours, from 1
  vm_command command;
  bool operator==(const menu_button&) const = default;
};

/// The buttons of a unit (HLI).
struct highlight_information {
  int status = 0;  ///< 0: none here, 1: all new, 2: as before, 3: as before but for the commands
  std::uint32_t begins = 0, ends = 0, selection_ends = 0;
  int groups = 0;                       ///< 1 to 3
  std::array<int, 3> group_displays{};  ///< for which displays: 0 any, bits 1 wide, 2 letterbox, 4
                                        ///< pan and scan
  int first_number = 0;                 ///< offset of the buttons' numbers
  int buttons_stated = 0;               ///< in a group, as the table counts them
  int by_number = 0;                    ///< buttons that can be chosen by number
  int forced_selection = 0;             ///< button selected at the beginning; 0: none, 63: keep
  int forced_action = 0;                ///< button that acts at the end; 0: none, 63: the selected
  /// For row 1 to 3: selected, and acting; 4 x 4 bits of palette numbers and 4 x 4 bits of opacity,
  /// each for the codes 3 2 1 0.
  std::array<std::array<std::uint32_t, 2>, 3> colours{};
  std::vector<menu_button> buttons;  ///< all groups', one group after the other; at most 36

  /// Those of the first group: the others have them again for other displays.
  std::span<const menu_button> first_group() const {
    const auto stated = static_cast<std::size_t>(std::max(0, buttons_stated));
    return {buttons.data(), std::min(stated, buttons.size())};
  }
};

/// Where search finds another unit: sectors from this pack.
struct unit_search {
  std::uint32_t distance = 0;  ///< in sectors
  bool there = false;          ///< the disc says that there is one
};

struct navigation_pack {
  std::uint64_t clock = 0;  ///< of the pack's header, at 27 MHz
  /// The header of the pack and the system header, as they stand.
  std::array<std::uint8_t, 38> headers{};

  // Presentation control.
  std::uint32_t sector = 0;
  std::uint16_t category = 0;             ///< copy protection
  std::uint32_t prohibited = 0;           ///< user operations
  std::uint32_t begins = 0, ends = 0;     ///< presentation times of the unit
  std::uint32_t sequence_ends = 0;        ///< time of a sequence end code in it; 0: none
  playback_time elapsed;                  ///< of the cell, at the unit's beginning
  std::array<std::uint32_t, 9> angles{};  ///< where the other angles are, as on the disc
  highlight_information highlight;

  // Data search.
  std::uint32_t search_clock = 0;                 ///< of this pack, at 90 kHz
  std::uint32_t search_sector = 0;                ///< as `sector`
  std::uint32_t unit_end = 0;                     ///< last sector of the unit, from this pack
  std::array<std::uint32_t, 3> reference_ends{};  ///< ends of its first three I and P pictures
  int vob = 0, cell = 0;                          ///< identities
  playback_time search_elapsed;                   ///< as `elapsed`
  /// Bit 14: in an interleaved piece; 13: its first unit, 12: last.
  std::uint16_t interleaving = 0;
  std::uint32_t piece_end = 0;  ///< last sector of the interleaved piece, from this pack
  std::uint32_t vob_video_begins = 0, vob_video_ends = 0;  ///< presentation times of the VOB
  std::array<std::uint8_t, 128> sound_gaps{};              ///< of each stream, as on the disc
  std::array<std::uint32_t, 9> seamless_angles{};          ///< as `angles`
  unit_search next, previous;                              ///< unit
  unit_search next_video, previous_video;                  ///< unit with video
  std::array<std::uint32_t, 19> forward{}, backward{};     ///< steps in time, as on the disc
  std::array<std::uint16_t, 8> audio{};         ///< first pack of each stream, as on the disc
  std::array<std::uint32_t, 32> subpictures{};  ///< the same

  std::vector<table_trouble> troubles;  ///< `at`: byte of the sector
};

/// Whether the sector is one: a pack with both packets where they belong. Quick enough to be asked
/// of every sector of a disc.
bool is_navigation_pack(std::span<const std::uint8_t> sector);

/// Fails on what is none.
result<navigation_pack> read_navigation_pack(std::span<const std::uint8_t> sector);

}  // namespace corvane
