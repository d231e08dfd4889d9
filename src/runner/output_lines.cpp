#include "runner/output_lines.h"

#include "formats/text.h"

namespace corvane {
namespace {

constexpr std::string_view error_begin = "ERR";

/// Whether `what` stands in the text right after `before`. The search is for the first character
/// of `what`, which should be a rare one.
bool follows(std::string_view text, std::string_view before, std::string_view what) {
  for (std::size_t at = text.find(what); at != std::string_view::npos; at = text.find(what, at + 1))
    if (at >= before.size() && text.substr(at - before.size(), before.size()) == before)
      return true;
  return false;
}

}  // namespace

bool is_error_line(std::string_view line) {
  return line.starts_with(error_begin) || line.starts_with(starred_error) ||
         follows(line, " ", starred_error);
}

bool holds_error_line(std::string_view normalized) {
  return follows(normalized, "\r\n ", error_begin) || follows(normalized, " ", starred_error);
}

bool holds_marker_line(std::string_view normalized) {
  return follows(normalized, "\r\n ", end_marker) || follows(normalized, "\r\n", end_marker);
}

std::string step_in_line(std::string_view line) {
  const auto name = line.find_first_not_of('*');
  if (!line.starts_with('*') || name == std::string_view::npos || is_error_line(line))
    return {};
  line.remove_prefix(name);
  return std::string(trim_left(line.substr(0, line.find_last_not_of(". ") + 1)));
}

std::string step_line(std::string_view name) {
  return "*" + std::string(name) + ".....";
}

}  // namespace corvane
