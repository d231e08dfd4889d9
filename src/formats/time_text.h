// Positions in a video as a person reads and types them: hours, minutes, seconds and hundredths.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// "01:02:05.50" for 3725.5 seconds, rounded to hundredths.
std::string time_text(double seconds);

/// The seconds of "01:02:05.50", "2:05.5" or "5": up to three plain numbers between ":", with
/// blanks around. Returns nullopt if it is anything else.
std::optional<double> typed_time(std::string_view text);

}  // namespace corvane
