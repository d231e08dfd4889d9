// The times in a SubRip text as ffmpeg writes it, for a film that is made faster.
#pragma once

#include "formats/source_facts.h"

#include <string>
#include <string_view>

namespace corvane {

/// The text with all times of its "00:00:01,500 --> 00:00:03,000" lines divided by `speed`, to the
/// nearest millisecond; all else, and lines that only look alike, stay as they are.
std::string subrip_at_speed(std::string_view text, source_ratio speed);

}  // namespace corvane
