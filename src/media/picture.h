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

/// The largest sides and the most pixels of any picture made here. What claims to have more is
/// damage, and would cost memory.
inline constexpr int largest_side = 16'384;
inline constexpr std::int64_t most_pixels = 40'000'000;

/// Decodes a Windows bitmap (1, 2, 4, 8, 16, 24 or 32 bits a pixel, run-length coded ones too) or a
/// JPEG file by its native path. Fails on any other file, on damaged ones and on too large ones.
result<picture> read_picture(const std::string& path);

}  // namespace corvane
