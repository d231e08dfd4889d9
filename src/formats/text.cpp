#include "formats/text.h"

#include "platform/text/utf8.h"

#include <algorithm>

namespace corvane {

std::vector<std::string> split(std::string_view text, char separator) {
  return split(text, std::string_view(&separator, 1));
}

std::vector<std::string> split(std::string_view text, std::string_view separator) {
  std::vector<std::string> pieces;
  if (text.empty())
    return pieces;
  for (;;) {
    const auto at = text.find(separator);
    pieces.emplace_back(text.substr(0, at));
    if (at == std::string_view::npos)
      return pieces;
    text.remove_prefix(at + separator.size());
  }
}

std::string join(const std::vector<std::string>& pieces, std::string_view separator) {
  std::string text;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (i != 0)
      text += separator;
    text += pieces[i];
  }
  return text;
}

std::string_view trim_left(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

std::string_view trim_right(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view trim(std::string_view text) {
  return trim_left(trim_right(text));
}

std::string replace_all(std::string_view text, std::string_view what, std::string_view with) {
  std::string replaced;
  replaced.reserve(text.size());
  for (;;) {
    const auto at = text.find(what);
    replaced += text.substr(0, at);
    if (at == std::string_view::npos)
      return replaced;
    replaced += with;
    text.remove_prefix(at + what.size());
  }
}

bool holds_control_character(std::string_view text) {
  return std::any_of(text.begin(), text.end(), is_control_character);
}

std::string lower(std::string_view text) {
  std::string lowered(text);
  for (char& c : lowered)
    if (c >= 'A' && c <= 'Z')
      c = static_cast<char>(c - 'A' + 'a');
  return lowered;
}

std::string upper(std::string_view text) {
  std::string raised(text);
  for (char& c : raised)
    if (c >= 'a' && c <= 'z')
      c = static_cast<char>(c - 'a' + 'A');
  return raised;
}

std::string in_double_quotes(std::string_view text) {
  std::string quoted = "\"";
  quoted += text;
  quoted += '"';
  return quoted;
}

}  // namespace corvane
