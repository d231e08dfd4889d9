// A subpicture as the disc has it: the picture of a menu's buttons, and what a player makes of it
// when a button is highlighted or pressed; or a text subtitle.
//
// A subpicture unit holds a run-length encoded picture of four codes (its odd lines after its even
// ones) and a list of timed commands. Its own colours are those of a menu at rest. A player that
// highlights a button shows the dots within the button's rectangle in other colours: those of the
// button's group, one set for highlighted and one for pressed. Colours are numbers of the program
// chain's palette, opacity goes from 0 to 15.
#pragma once

#include "platform/result.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace corvane::disc {

/// What the four codes of a subpicture look like.
struct code_looks {
  std::array<int, 4> colour{};   ///< entries of the palette
  std::array<int, 4> opacity{};  ///< 0 (nothing to see) to 15

  /// From 32 bits as navigation packets have them: eight times four, the colours of codes 3 to 0,
  /// then their opacities.
  static code_looks of(std::uint32_t bits);
};

struct subpicture {
  int x0 = 0, y0 = 0, x1 = -1, y1 = -1;  ///< pixels, right and bottom edge included
  bool forced = false;                   ///< shown even when subpictures are switched off
  code_looks at_rest;
  std::vector<std::uint8_t> codes;  ///< 0 to 3, line by line
  double begins = 0, ends = 0;      ///< seconds from its packet's time on; no end stated: 0

  /// The code at a place; -1 outside of the picture.
  int code_at(int x, int y) const;
};

/// A part of the picture in pixels, right and bottom edge included.
struct area {
  int x0 = 0, y0 = 0, x1 = 0, y1 = 0;
};

/// The part in which anything is to be seen at rest; nothing when all of it is transparent.
std::optional<area> seen_at_rest(const subpicture& picture);

/// Decodes one unit. Fails when it is cut off or its picture leads out of it.
result<subpicture> decode_subpicture(const std::vector<std::uint8_t>& unit);

struct dot {
  int red = 0, green = 0, blue = 0;  ///< 0 to 255
  int opacity = 0;                   ///< 0 to 15; at 0 the colour says nothing
};

/// An entry of the palette, 00 Y Cr Cb, as a colour.
dot colour_of(std::uint32_t entry);

}  // namespace corvane::disc
