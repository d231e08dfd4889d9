// One cue of a text subtitle as the disc will show it: the picture that spumux made of it.
#pragma once

#include "platform/result.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct drawn_cue {
  int number = 1;                  ///< which cue of its file, 1-based
  double begin = 0;                ///< when it is shown, in seconds of the title
  double end = 0;                  ///< when it goes
  int width = 720, height = 480;   ///< of the whole frame, in pixels
  std::vector<std::uint8_t> rgba;  ///< width * height * 4 bytes, rows from the top; where the video
                                   ///< shows, the last of the four is 0
};

/// A colour as discs have it: Y, Cr, Cb.
using disc_colour = std::array<std::uint8_t, 3>;

/// Paints a subpicture unit (a DVD's run-length encoded picture and its list of commands) on the
/// frame, whose size is set; `palette` holds the colours that the unit's numbers mean. Fails when
/// the unit is cut off, its commands are unknown or its picture leads out of it or out of
/// the frame. Bytes may be hostile.
failure paint_unit(std::string_view unit, const std::vector<disc_colour>& palette, drawn_cue& cue);

}  // namespace corvane
