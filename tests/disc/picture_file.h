// A PNG file, decoded.
#pragma once

#include "command.h"
#include "subpicture.h"

#include <string>

namespace corvane::disc {

struct picture_file {
  int width = 0, height = 0;
  std::string bytes;  ///< red, green, blue of each pixel, line by line

  /// Whether this is the colour that the buttons' pictures mean by "nothing here".
  bool is_clear(int x, int y) const;
  dot at(int x, int y) const;  ///< opacity 15, or 0 where it is clear
};

/// Decodes with ffmpeg, which has not drawn it. Fails the test when it cannot be read.
picture_file read_png(const std::string& native_path, int width, int height);

}  // namespace corvane::disc
