// A subpicture unit: a picture that a disc lays over the video, of a text subtitle or of the
// buttons of a menu. It holds run lengths of four codes, the lines of both fields apart, and lists
// of timed commands that say where the picture stands and how the codes look.
//
// Takes one unit: what its packets carry, without the first byte of each. Pixels are those of the
// whole frame. Any bytes may be read; time and memory are bounded by their number.
#pragma once

#include "platform/result.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace corvane {

/// How the codes 0 to 3 look.
struct code_looks {
  std::array<std::uint8_t, 4> colour{};   ///< entries of the palette, 0 to 15
  std::array<std::uint8_t, 4> opacity{};  ///< 0 (nothing to see) to 15
  bool operator==(const code_looks&) const = default;
};

/// Of 32 bits: the colours of codes 3 to 0, then their opacities, four bits each
/// (highlight_information::colours).
code_looks code_looks_of(std::uint32_t bits);

/// Dots of one code beside each other. Both ends are included.
struct subpicture_run {
  int y = 0, x0 = 0, x1 = 0;
  std::uint8_t code = 0;  ///< 0 to 3
  bool operator==(const subpicture_run&) const = default;
};

struct subpicture {
  int x0 = 0, y0 = 0, x1 = 0, y1 = 0;  ///< right and bottom edge included
  code_looks at_rest;                  ///< while no button is highlighted
  std::vector<subpicture_run> runs;    ///< all of the picture, line by line, from left to right
};

/// Fails, with what can stand behind "the subpicture", when the unit is cut off, its commands are
/// unknown, or its picture leads out of it or out of the frame. Of several lists of commands the
/// last word counts.
result<subpicture> read_subpicture(std::span<const std::uint8_t> unit, int frame_width,
                                   int frame_height);

/// When a unit comes up and goes, in seconds from its time stamp on. Not set: nothing in it says
/// so.
struct subpicture_times {
  std::optional<double> begins, ends;
  bool operator==(const subpicture_times&) const = default;
};

/// Of a whole unit; nullopt when its commands cannot be read.
std::optional<subpicture_times> read_subpicture_times(std::span<const std::uint8_t> unit);

/// The bytes that a unit states to have, once its first two are there; else 0.
std::size_t stated_unit_size(std::span<const std::uint8_t> unit);

struct rgb_colour {
  std::uint8_t red = 0, green = 0, blue = 0;
  bool operator==(const rgb_colour&) const = default;
};

/// An entry of a palette (00 Y Cr Cb), as a television shows it.
rgb_colour colour_of_entry(std::uint32_t entry);

}  // namespace corvane
