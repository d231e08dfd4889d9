#include "project/subtitle_checks.h"

#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace corvane {
namespace {

// For a picture of 100,000 spumux works on each subtitle for minutes.
constexpr int most_pixels = 2048;

/// The following give the end of a sentence about the setting ("which is not a number").
refusal why_not_one_of(std::string_view text, const std::array<std::string_view, 3>& all) {
  if (std::find(all.begin(), all.end(), text) != all.end())
    return std::nullopt;
  return "which is neither " + std::string(all[0]) + ", " + std::string(all[1]) + " nor " +
         std::string(all[2]);
}

refusal why_not_above_0(std::string_view text) {
  if (!is_decimal(text))
    return "which is not a number";
  if (trim(text).starts_with('-') || text.find_first_of("123456789") == std::string_view::npos)
    return "which is not above 0";
  return std::nullopt;
}

refusal why_not_pixels(std::string_view text) {
  if (!is_decimal(text))
    return "which is not a number";
  const std::string_view number = trim(text);
  if (number.starts_with('-') || number.find('.') != std::string_view::npos)
    return "which is not a whole number of pixels";
  if (text.ends_with(' '))
    return "which ends with a blank";
  if (leading_number(number) > most_pixels)
    return "which is more than " + std::to_string(most_pixels) + " pixels";
  return std::nullopt;
}

refusal why_not_a_value(subtitle_field field, std::string_view text) {
  switch (field) {
    case subtitle_field::horizontal_alignment:
      return why_not_one_of(text, halign_items);
    case subtitle_field::vertical_alignment:
      return why_not_one_of(text, valign_items);
    case subtitle_field::font_size:
    case subtitle_field::frame_rate:
      return why_not_above_0(text);
    case subtitle_field::font_file:
    case subtitle_field::character_set:
      return std::nullopt;
    default:
      return why_not_pixels(text);
  }
}

}  // namespace

refusal why_not_drawable(const subtitle_settings& s) {
  for (std::size_t i = 0; i < subtitle_field_count; ++i) {
    const auto field = static_cast<subtitle_field>(i);
    const std::string setting =
        std::string("the ") + name_of(field) + " " + sanitized_quoted(s[field]);
    if (const refusal why = why_not_plain_text(s[field]))
      return setting + ", which " + *why;
    if (const refusal why = why_not_a_value(field, s[field]))
      return setting + ", " + *why;
  }
  return std::nullopt;
}

}  // namespace corvane
