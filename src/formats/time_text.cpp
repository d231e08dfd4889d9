#include "formats/time_text.h"

#include "formats/numbers.h"
#include "formats/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <vector>

namespace corvane {
namespace {

constexpr std::string_view digits = "0123456789";

/// One or more digits, and after a point, if there is one, more of them.
bool is_plain_number(std::string_view text) {
  const std::size_t point = text.find_first_not_of(digits);
  if (point == 0 || point == std::string_view::npos)
    return point != 0 && !text.empty();
  return text[point] == '.' && text.find_first_not_of(digits, point + 1) == std::string_view::npos;
}

}  // namespace

std::string time_text(double seconds) {
  constexpr double latest = 32767.0 * 3600;  // as of a chapter time
  const long long hundredths = std::llround(std::clamp(seconds, 0.0, latest) * 100);
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%02lld:%02lld:%02lld.%02lld", hundredths / 360'000,
                hundredths / 6000 % 60, hundredths / 100 % 60, hundredths % 100);
  return text.data();
}

std::optional<double> typed_time(std::string_view text) {
  constexpr std::size_t most_pieces = 3, most_characters = 30;
  const std::vector<std::string> pieces = split(trim(text), ':');
  if (pieces.empty() || pieces.size() > most_pieces || text.size() > most_characters)
    return std::nullopt;
  double seconds = 0;
  for (const std::string& piece : pieces) {
    if (!is_plain_number(piece))
      return std::nullopt;
    seconds = seconds * 60 + leading_number(piece);
  }
  return seconds;
}

}  // namespace corvane
