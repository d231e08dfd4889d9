// What is on a DVD-Video disc, read back from a folder or an image.
//
// Read with libdvdread from the IFO files; times come from the navigation packets of the streams
// themselves (90 kHz clock), so that they are those a player sees. Numbers are 1-based as on the
// disc; times are seconds from the start of the title.
#pragma once

#include "formats/vm_command.h"
#include "platform/result.h"
#include "subpicture.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvane::disc {

struct audio_stream {
  std::string format;    ///< "ac3", "mp2", "lpcm", "dts", ...
  int channels = 0;      ///< as the disc states them
  std::string language;  ///< two letters; empty: not stated
  int packets = 0;       ///< packets of this stream found at the start of the title
  double begins = 0;     ///< first sound against the first picture; negative: sound is earlier
};

/// A subtitle of a title.
struct cue {
  double begins = 0, ends = 0;  ///< seconds of the title
  subpicture picture;
};

struct subpicture_stream {
  std::string language;      ///< two letters; empty: not stated
  std::optional<cue> first;  ///< nothing: the stream holds none that can be read
};

struct picture_format {
  std::string standard;  ///< "NTSC" or "PAL"
  std::string aspect;    ///< "4:3" or "16:9"
  std::string size;      ///< "720x480"
};

/// A program chain: what plays and what is done around it.
struct program_chain {
  double seconds = 0;
  int still_seconds = 0;  ///< pause after it; 255: for ever
  std::vector<vm_command> pre, post, cell;
};

struct title {
  int number = 0;
  int titleset = 0;
  int number_in_titleset = 0;
  picture_format picture;
  program_chain chain;
  std::vector<double> chapters;  ///< start times; the first is 0
  std::vector<audio_stream> audio;
  std::vector<subpicture_stream> subpictures;
  std::array<std::uint32_t, 16> palette{};  ///< of the subpictures, 00 Y Cr Cb
  std::vector<double> units;                ///< start times of its units of video (VOBU)
};

struct button {
  int x0 = 0, y0 = 0, x1 = 0, y1 = 0;         ///< pixels, right and bottom edge included
  int up = 0, down = 0, left = 0, right = 0;  ///< numbers of the neighbours
  vm_command command;
  code_looks highlighted, pressed;  ///< of the dots within the button, in these states

  // Where it leads, once somebody has pressed it (walk.h); empty: nobody has.
  std::string leads_to;  ///< "title 1 chapter 2", "menu 2", "stopped", or "failed: " and why
  std::string then;      ///< what follows the title that it leads to
};

enum class button_state { highlighted, pressed };

/// The picture of a menu's buttons.
struct overlay {
  subpicture picture;
  std::array<std::uint32_t, 16> palette{};  ///< 00 Y Cr Cb

  /// What a player shows at a place while this button (null: none) is in that state.
  dot at(int x, int y, const button* lit, button_state state) const;
};

struct menu {
  int titleset = 0;      ///< 0: menu of the whole disc
  int number = 0;        ///< number of its program chain in its language
  std::string language;  ///< two letters
  std::string entry;     ///< "root", "title", ... when a player's key leads here, else empty
  program_chain chain;
  std::vector<button> buttons;
  std::vector<std::string> sounds;  ///< formats of the audio streams that have packets
  std::optional<overlay> shown;     ///< nothing: the menu has no picture of its buttons
};

struct contents {
  int titlesets = 0;
  int forbidden_regions = 0;  ///< bit n: not in region n+1; 0: plays everywhere
  std::optional<program_chain> first_play;
  std::vector<title> titles;
  std::vector<menu> menus;
  std::string begins_with;  ///< what a player shows first (walk.h); empty: nobody has looked
};

/// Reads the disc in a folder (the one that holds VIDEO_TS) or in an image. Fails when there is
/// none or a table that every disc has cannot be read.
result<contents> read_disc(const std::string& native_path);

}  // namespace corvane::disc
