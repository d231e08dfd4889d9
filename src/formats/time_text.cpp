#include "formats/time_text.h"

#include "formats/numbers.h"
#include "formats/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace corvane {

std::string time_text(double seconds) {
  const long long hundredths = std::llround(std::clamp(seconds, 0.0, latest_time) * 100);
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%02lld:%02lld:%02lld.%02lld", hundredths / 360'000,
                hundredths / 6000 % 60, hundredths / 100 % 60, hundredths % 100);
  return text.data();
}

std::string clock_text(double seconds) {
  const std::int64_t all = std::llround(seconds);
  const std::int64_t hours = all / 3600, minutes = all / 60 % 60;
  const std::string end = ":" + two_digits(all % 60);
  return hours == 0 ? trimmed(minutes) + end : trimmed(hours) + ":" + two_digits(minutes) + end;
}

std::optional<double> typed_time(std::string_view text) {
  constexpr std::size_t most_pieces = 3, most_characters = 30;
  if (text.size() > most_characters)
    return std::nullopt;
  const std::vector<std::string> pieces = split(trim(text), ':');
  if (pieces.empty() || pieces.size() > most_pieces)
    return std::nullopt;
  for (const std::string& piece : pieces)
    if (!is_plain_number(piece) || piece.starts_with('.'))
      return std::nullopt;
  return seconds_of(pieces);
}

double seconds_of(const std::vector<std::string>& pieces) {
  double seconds = 0;
  for (const std::string& piece : pieces)
    seconds = seconds * 60 + leading_number(piece);
  return seconds;
}

}  // namespace corvane
