// The streams of the media tests (make_streams.sh), and their pictures as the ffmpeg program gives
// them.
#pragma once

#include "media/picture.h"
#include "platform/files/paths.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane::media_test {

/// Native path of a stream.
inline std::string stream(std::string_view name) {
  return join_path(CORVANE_MEDIA_STREAMS, name);
}

/// All pictures of a file, in the order shown, decoded and converted by the ffmpeg program.
/// `width` and `height` are those of every picture; empty when ffmpeg fails.
std::vector<picture> pictures_by_ffmpeg(const std::string& file, int width, int height);

/// Whether two pictures are equal in size and in every byte.
bool same(const picture& a, const picture& b);

}  // namespace corvane::media_test
