// A picture in memory, and one from a still picture file.
#pragma once

#include "platform/result.h"

#include <cstdint>
#include <string>
#include <vector>

namespace corvane {

/// `width` x `height` pixels of red, green and blue, a byte each: rows from the top, pixels from
/// the left, nothing between the rows.
struct picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> rgb;
};

/// Decodes a Windows bitmap (1, 2, 4, 8, 16, 24 or 32 bits a pixel, run-length coded ones too) or a
/// JPEG file by its native path. Fails on any other file, on damaged ones and on too large ones.
result<picture> read_picture(const std::string& path);

}  // namespace corvane
