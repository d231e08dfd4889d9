// How far ffmpeg is, by the line that it prints once a second:
//
//   frame=  120 fps= 48 q=2.0 size=    1024kB time=00:00:04.00 bitrate=2097.2kbits/s speed=1.6x
#pragma once

#include <optional>
#include <string_view>

namespace corvane {

struct encoder_progress {
  double seconds = 0;                         ///< of the title that are done, in this pass
  std::optional<double> pictures_a_second{};  ///< not of what is only copied
  std::optional<double> speed{};              ///< seconds of the title in a second
  bool operator==(const encoder_progress&) const = default;
};

/// By the last such line in a piece of output, whose line ends may be blanks, as the runner makes
/// them; nullopt if there is none with a time. A line that is cut off before its speed is none.
std::optional<encoder_progress> encoder_progress_in(std::string_view output);

}  // namespace corvane
