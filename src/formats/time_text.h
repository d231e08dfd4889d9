// Positions in a video as a person reads and types them: hours, minutes, seconds and hundredths;
// and lengths as a person reads them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Later than any video, in seconds; also what the arithmetic with times can hold.
inline constexpr double latest_time = 32767.0 * 3600;

/// "01:02:05.50" for 3725.5 seconds, rounded to hundredths.
std::string time_text(double seconds);

/// A length, rounded to seconds, which are not negative: "0:20", "12:34", "1:02:03".
std::string clock_text(double seconds);

/// The seconds of "01:02:05.50", "2:05.5" or "5": up to three plain numbers between ":", with
/// blanks around. Returns nullopt if it is anything else.
std::optional<double> typed_time(std::string_view text);

/// The seconds of numbers that stand for hours, minutes and seconds, the last for seconds.
double seconds_of(const std::vector<std::string>& pieces);

}  // namespace corvane
