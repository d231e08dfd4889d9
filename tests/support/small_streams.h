// The smallest streams that a disc takes: one picture, one frame of sound. For tests with stand-in
// tools, whose material is looked at all the same.
#pragma once

#include "disc/disc_description.h"

#include <cstddef>
#include <initializer_list>
#include <string>

namespace corvane::testing_support {

inline std::string bytes_of(std::initializer_list<int> values) {
  std::string bytes;
  for (const int value : values)
    bytes += static_cast<char>(value);
  return bytes;
}

/// An I picture of 720 pixels' width, MP@ML, closed group, end code. `aspect_code` 2 is 4:3.
inline std::string small_video(video_standard standard = video_standard::ntsc,
                               int aspect_code = 2) {
  const bool pal = standard == video_standard::pal;
  std::string bytes;
  // Sequence header: size, aspect and rate; 8 Mb/s, a buffer of 112 units.
  bytes += bytes_of({0, 0, 1, 0xB3, 0x2D, pal ? 0x02 : 0x01, pal ? 0x40 : 0xE0,
                     aspect_code << 4 | (pal ? 3 : 4), 0x13, 0x88, 0x23, 0x80});
  bytes += bytes_of({0, 0, 1, 0xB5, 0x14, 0x82, 0, 1, 0, 0});  // sequence extension
  bytes += bytes_of({0, 0, 1, 0xB8, 0, 8, 0, 0x40});           // closed group
  bytes += bytes_of({0, 0, 1, 0x00, 0, 0x0F, 0xFF, 0xF8});     // I picture
  bytes += bytes_of({0, 0, 1, 0xB5, 0x8F, 0xFF, 0xF3, 0xC1, 0x80});
  const int slices = pal ? 36 : 30;
  for (int slice = 1; slice <= slices; ++slice)
    bytes += bytes_of({0, 0, 1, slice, 0x13, 0xF8, 0x7D, 0x29});
  return bytes + bytes_of({0, 0, 1, 0xB7});
}

/// A frame of MPEG audio layer II: 48 kHz, stereo, 192 kb/s, 24 ms.
inline std::string small_sound() {
  std::string frame = bytes_of({0xFF, 0xFD, 0xA4, 0x00});
  frame.resize(std::size_t{576}, 'x');
  return frame;
}

}  // namespace corvane::testing_support
