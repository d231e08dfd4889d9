// Pictures of a file that somebody has, as a viewer would see them. A file of the module with the
// reader.
#pragma once

#include "media/ffmpeg_source_file.h"

#include <cstdint>
#include <optional>

namespace corvane {

/// How a picture is to be shown: with left and right changed first, then turned clockwise.
struct picture_turn {
  int degrees = 0;  ///< 0, 90, 180 or 270
  bool mirrored = false;
};

/// By the matrix that the container has for a stream, of which only what turns and mirrors counts.
picture_turn turn_of(const AVStream& stream);

/// By what a picture says of itself: a photograph's orientation.
picture_turn turn_of(const AVFrame& frame);

/// The first picture of a stream of one.
frame_ptr only_picture(source_demuxer& source, const AVStream& stream);

/// As source_picture.
result<picture> picture_from(source_demuxer& source, double seconds, int most_width,
                             int most_height);

}  // namespace corvane
