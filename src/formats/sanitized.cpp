#include "formats/sanitized.h"

#include "platform/text/utf8.h"

#include <algorithm>

namespace corvane {
std::string sanitized(std::string_view text) {
  const bool readable = is_utf8(text);
  std::string clean(text);
  std::replace_if(
      clean.begin(), clean.end(),
      [readable](char c) {
        return is_control_character(c) || (!readable && static_cast<unsigned char>(c) >= 0x80);
      },
      '?');
  return clean;
}

std::string sanitized_short(std::string_view text, std::size_t most) {
  if (text.size() <= most)
    return sanitized(text);
  std::size_t end = most;
  while (end > 0 && continues_character(text[end]))
    --end;
  return sanitized(text.substr(0, end)) + "...";
}

std::string sanitized_quoted(std::string_view text) {
  return "\"" + sanitized_short(text, 200) + "\"";
}

}  // namespace corvane
