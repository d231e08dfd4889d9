#include "project/subtitle_checks.h"

#include <cstddef>

namespace corvane {
namespace {

bool is_number(subtitle_field field) {
  switch (field) {
    case subtitle_field::horizontal_alignment:
    case subtitle_field::vertical_alignment:
    case subtitle_field::font_file:
    case subtitle_field::character_set:
      return false;
    default:
      return true;
  }
}

}  // namespace

refusal why_not_drawable(const subtitle_settings& s) {
  for (std::size_t i = 0; i < subtitle_field_count; ++i) {
    const auto field = static_cast<subtitle_field>(i);
    const std::string setting = std::string("the ") + name_of(field) + " " + shown_quoted(s[field]);
    if (is_number(field) && !is_decimal(s[field]))
      return setting + ", which is not a number";
    if (const refusal why = why_not_plain_text(s[field]))
      return setting + ", which " + *why;
  }
  return std::nullopt;
}

}  // namespace corvane
