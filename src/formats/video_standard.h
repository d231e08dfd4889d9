// Which video standard an MPEG video stream is of.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// "PAL" or "NTSC" by the height of the pictures, which the stream's first sequence header states;
/// empty when there is none in these bytes or the height is of neither.
std::string video_standard_of(std::string_view stream_start);

/// Bytes of a stream that are enough to find its first sequence header.
inline constexpr std::size_t enough_for_a_header = std::size_t{64} * 1024;

}  // namespace corvane
