#include "project/plain_texts.h"

#include "formats/text.h"
#include "formats/xml_characters.h"
#include "platform/files/long_paths.h"
#include "platform/text/utf8.h"
#include "project/messages.h"

namespace corvane {
refusal why_too_long(std::string_view native, path_style style) {
  const auto most = style == native_style() ? longest_path() : std::nullopt;
  const std::size_t length = windows_length(native);
  if (!most || length <= *most)
    return std::nullopt;
  return "has " + std::to_string(length) + " characters, but this Windows takes " +
         std::to_string(*most) + " (long paths are not enabled in it)";
}

refusal why_not_usable_path(std::string_view native, path_style style) {
  if (native.empty())
    return "is empty";
  if (const refusal why = why_not_storable(native, style))
    return why;
  if (!is_absolute(native, style))
    return "is not a full path";
  return why_too_long(native, style);
}

refusal why_not_plain_text(std::string_view text) {
  if (!is_utf8(text))
    return "contains bytes that are not UTF-8 text";
  for (const char c : text) {
    if (is_control_character(c))
      return "contains a control character";
    if (c == '"' || c == '\'')
      return "contains a quote";
    if (c == '<')
      return "contains a less-than sign (<)";
  }
  if (first_character_not_allowed(text) != std::string_view::npos)
    return "contains a character that no text may contain (U+FFFE or U+FFFF)";
  return std::nullopt;
}

}  // namespace corvane
