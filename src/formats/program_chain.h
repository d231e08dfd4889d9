// Program chains (PGC): what plays, in which order, and what is done before, after and within.
//
// Sectors are those of the VOBs that the chain plays from, 0-based, with 2048 bytes each. Programs,
// cells, chains and commands are numbered from 1, as on the disc.
#pragma once

#include "formats/stream_attributes.h"
#include "formats/vm_command.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// A length in hours, minutes, seconds and frames of two decimal digits each.
struct playback_time {
  int hours = 0, minutes = 0, seconds = 0, frames = 0;
  int rate = 0;        ///< frames a second: 25 or 30 (which stands for 29.97); 0: none is stated
  bool valid = false;  ///< the digits are decimal ones, minutes, seconds and frames within bounds

  /// Seconds as the time states them. At 30 a second, pictures are counted as if there were 30: to
  /// show them takes 1001 / 1000 of that time.
  double total() const;

  bool operator==(const playback_time&) const = default;
};

playback_time read_playback_time(std::uint32_t code);

/// Which of a titleset's streams is audio stream n of a chain.
struct audio_control {
  bool present = false;
  int stream = 0;  ///< 0 to 7: added to the format's first stream number
  bool operator==(const audio_control&) const = default;
};

/// The same for subpictures, with a stream (0 to 31) for each way to show the picture.
struct subpicture_control {
  bool present = false;
  int standard = 0, wide = 0, letterbox = 0, pan_scan = 0;
  bool operator==(const subpicture_control&) const = default;
};

struct cell_playback {
  std::uint8_t block_mode = 0;  ///< 0: in no block, 1: first, 2: within, 3: last of a block
  std::uint8_t block_type = 0;  ///< 1: block of angles
  bool seamless = false;        ///< shown without a break after the cell before
  bool interleaved = false;
  bool clock_restarts = false;  ///< the clock of the stream begins anew here
  bool seamless_angle = false;
  bool still_after_each_unit = false;
  bool restricted = false;
  std::uint8_t kind = 0;  ///< of karaoke
  int still_seconds = 0;  ///< pause after it; 255: for ever
  int command = 0;        ///< number of the cell command that is done after it; 0: none
  playback_time time;
  std::uint32_t first_sector = 0, first_interleaved_end = 0, last_unit_sector = 0, last_sector = 0;
  int vob = 0, cell = 0;  ///< identity in the VOBs, from the table of cell positions

  bool operator==(const cell_playback&) const = default;
};

struct program_chain {
  std::uint64_t at = 0;  ///< where it stands in its file, in bytes
  playback_time time;
  std::uint32_t prohibited = 0;  ///< user operations, bit n as on the disc
  std::array<audio_control, 8> audio{};
  std::array<subpicture_control, 32> subpictures{};
  int next = 0, previous = 0, up = 0;       ///< chains; 0: none
  int playback_mode = 0;                    ///< 0: in order; otherwise random or shuffle
  int still_seconds = 0;                    ///< pause after it; 255: for ever
  std::array<std::uint32_t, 16> palette{};  ///< 00 Y Cr Cb
  std::vector<vm_command> pre, post, cell_commands;
  std::vector<int> programs;  ///< the first cell of each program
  std::vector<cell_playback> cells;
};

/// An entry of a table of chains.
struct chain_entry {
  bool entry = false;  ///< a player may enter here: a title's first, or a menu of a kind
  menu_kind menu = menu_kind::none;  ///< of menus
  int title = 0;                     ///< of titles: number in the titleset
  std::uint8_t block_mode = 0, block_type = 0;
  std::uint16_t parental = 0;  ///< mask of the levels that it is for; 0: all
  /// Null when it cannot be read. Entries that lead to the same bytes share one.
  std::shared_ptr<const program_chain> chain;
};

/// The menus in one language.
struct menu_language {
  std::string language;  ///< two letters; empty: none
  std::uint8_t language_extension = 0;
  std::uint8_t kinds = 0;           ///< which kinds there are: bit 7 root, 6 subpicture, ...
  std::vector<chain_entry> chains;  ///< number n is at n-1
};

}  // namespace corvane
