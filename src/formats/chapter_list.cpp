#include "formats/chapter_list.h"

#include "formats/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <system_error>

namespace corvane {
namespace {

constexpr std::string_view separators = ", ";

/// Digits alone, or nothing.
std::optional<double> whole_field(std::string_view text) {
  double value = 0;
  for (const char c : text) {
    if (!is_digit(c))
      return std::nullopt;
    value = value * 10 + (c - '0');
  }
  return value;
}

/// A number as the C library reads one, or nothing.
std::optional<double> last_field(std::string_view text) {
  if (text.empty())
    return 0;
  // Not "inf" and "nan".
  if (text.find_first_not_of("0123456789.eE+-") != std::string_view::npos)
    return std::nullopt;
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-'))
      return std::nullopt;
  }
  double value = 0;
  const char* const end = text.data() + text.size();
  const auto [read_to, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || read_to != end)
    return std::nullopt;
  return value;
}

}  // namespace

std::vector<std::string> chapter_entries(std::string_view list) {
  std::vector<std::string> entries;
  for (std::size_t at = list.find_first_not_of(separators); at != std::string_view::npos;) {
    const std::size_t end = std::min(list.find_first_of(separators, at), list.size());
    entries.emplace_back(list.substr(at, end - at));
    at = list.find_first_not_of(separators, end);
  }
  return entries;
}

std::optional<double> chapter_entry_seconds(std::string_view entry) {
  double seconds = 0;
  for (std::size_t colon = entry.find(':'); colon != std::string_view::npos;
       colon = entry.find(':')) {
    const std::optional<double> field = whole_field(entry.substr(0, colon));
    if (!field)
      return std::nullopt;
    seconds = seconds * 60 + *field;
    entry.remove_prefix(colon + 1);
  }
  const std::optional<double> last = last_field(entry);
  if (!last || !std::isfinite(seconds * 60 + *last))
    return std::nullopt;
  return seconds * 60 + *last;
}

}  // namespace corvane
