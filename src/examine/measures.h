// Measures and counts as findings say them.
#pragma once

#include "formats/video_headers.h"

#include <cstdint>
#include <string>

namespace corvane {

/// With at most so many places behind the point, whatever the locale: "29.97", "25".
std::string decimal_text(double value, int places);

std::string size_text(const video_shape& shape);    ///< "720x480"
std::string aspect_text(const video_shape& shape);  ///< "4:3"; "square pixels" without proportions
std::string rate_text(double bits_a_second);        ///< "9.8 Mb/s", "384 kb/s" below a million
std::string seconds_text(double seconds);           ///< "24.5 s"

/// "1 picture", "3 pictures".
std::string count_text(std::uint64_t count, const std::string& one, const std::string& several);

}  // namespace corvane
