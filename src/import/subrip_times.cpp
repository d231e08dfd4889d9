#include "import/subrip_times.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <optional>

namespace corvane {
namespace {

constexpr std::string_view arrow = " --> ";
constexpr std::string_view form = "00:00:00,000";

bool is_time(std::string_view text) {
  if (text.size() != form.size())
    return false;
  for (std::size_t i = 0; i < form.size(); ++i)
    if (form[i] == '0' ? text[i] < '0' || text[i] > '9' : text[i] != form[i])
      return false;
  return true;
}

std::int64_t number_in(std::string_view digits) {
  std::int64_t number = 0;
  for (const char digit : digits)
    number = 10 * number + (digit - '0');
  return number;
}

std::int64_t milliseconds_of(std::string_view time) {
  return ((number_in(time.substr(0, 2)) * 60 + number_in(time.substr(3, 2))) * 60 +
          number_in(time.substr(6, 2))) *
             1000 +
         number_in(time.substr(9, 3));
}

std::string time_of_milliseconds(std::int64_t ms) {
  char text[32];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d,%03d", static_cast<int>(ms / 3'600'000),
                static_cast<int>(ms / 60'000 % 60), static_cast<int>(ms / 1000 % 60),
                static_cast<int>(ms % 1000));
  return text;
}

std::string at_speed(std::string_view time, source_ratio speed) {
  const std::int64_t ms = milliseconds_of(time);
  return time_of_milliseconds((2 * ms * speed.under + speed.over) / (2 * speed.over));
}

/// The line with other times; nullopt if it is none with times.
std::optional<std::string> times_at_speed(std::string_view line, source_ratio speed) {
  const std::size_t second = form.size() + arrow.size();
  if (line.size() < second + form.size() || line.substr(form.size(), arrow.size()) != arrow ||
      !is_time(line.substr(0, form.size())) || !is_time(line.substr(second, form.size())))
    return std::nullopt;
  return at_speed(line.substr(0, form.size()), speed) + std::string(arrow) +
         at_speed(line.substr(second, form.size()), speed) +
         std::string(line.substr(second + form.size()));
}

}  // namespace

std::string subrip_at_speed(std::string_view text, source_ratio speed) {
  std::string made;
  while (!text.empty()) {
    const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
    const std::string_view line = text.substr(0, size);
    if (const auto changed = times_at_speed(line, speed))
      made += *changed;
    else
      made += line;
    text.remove_prefix(size);
  }
  return made;
}

}  // namespace corvane
