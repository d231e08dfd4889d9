#include "examine/subtitle_characters.h"

#include "formats/arabic_forms.h"
#include "platform/files/files.h"
#include "platform/text/fonts.h"

#include <array>
#include <set>

namespace corvane {
namespace {

constexpr std::uint32_t blank = 0x20, first_visible = blank + 1;

/// Whether FriBidi, with which spumux orders the letters of a line, takes the character out: it
/// only directs others, or is no character.
bool is_taken_out(std::uint32_t code) {
  struct range {
    std::uint32_t first, last;
  };
  constexpr std::array taken_out = {
      range{0x0001, 0x0008}, range{0x000E, 0x001B}, range{0x007F, 0x0084}, range{0x0086, 0x009F},
      range{0x00AD, 0x00AD}, range{0x180E, 0x180E}, range{0x200B, 0x200F}, range{0x202A, 0x202E},
      range{0x2060, 0x206F}, range{0xFDD0, 0xFDEF}, range{0xFEFF, 0xFEFF}, range{0xFFF0, 0xFFF8},
      range{0xFFFE, 0xFFFF}};
  return std::any_of(taken_out.begin(), taken_out.end(),
                     [code](const range& one) { return code >= one.first && code <= one.last; });
}

/// Whether spumux draws "_" for the character. What is beyond the Basic Multilingual Plane is told
/// of by itself.
bool is_lacked(const font_characters& font, std::uint32_t code) {
  if (code == blank || code > last_of_basic_plane || is_taken_out(code))
    return false;
  const std::uint32_t form = isolated_form(code);
  const bool drawn = font.holds(form) || (form != code && font.holds(form + 1));
  return code < blank || !drawn;  // spumux takes no control character from a font
}

// Control characters and line breaks would act where the text is read.
bool can_be_shown(std::uint32_t code) {
  const bool control = code >= 0x7F && code <= 0xA0, breaks = code == 0x2028 || code == 0x2029;
  return code >= first_visible && !control && !breaks;
}

}  // namespace

std::string code_text(std::uint32_t code) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  constexpr std::size_t least = 4;
  std::string hex;
  for (std::uint32_t rest = code; rest > 0 || hex.size() < least; rest /= 16)
    hex.insert(hex.begin(), digits[rest % 16]);
  return "U+" + hex;
}

std::string list_of_characters(const std::vector<std::uint32_t>& characters) {
  constexpr std::size_t most_listed = 5;
  const std::size_t shown = characters.size() > most_listed + 1 ? most_listed : characters.size();
  std::string list;
  for (std::size_t i = 0; i < shown; ++i) {
    if (i > 0)
      list += i + 1 == characters.size() ? " and " : ", ";
    if (!can_be_shown(characters[i]))
      list += code_text(characters[i]);
    else
      list += "\"" + utf8_text(characters[i]) + "\" (" + code_text(characters[i]) + ")";
  }
  if (shown < characters.size())
    list += " and " + std::to_string(characters.size() - shown) + " more";
  return list;
}

std::vector<std::uint32_t> characters_lacked(const font_characters& font, const text_cue& cue) {
  std::vector<std::uint32_t> lacked;
  std::set<std::uint32_t> known;
  for (std::size_t i = 0; i < std::min(cue.text.size(), most_cue_lines); ++i)
    for_each_character(cue.text[i], [&](std::uint32_t code) {
      if (is_lacked(font, code) && known.insert(code).second)
        lacked.push_back(code);
    });
  return lacked;
}

const font_characters* font_shelf::find(const std::string& file, const font_list& installed) {
  constexpr std::uintmax_t largest = std::uintmax_t{64} << 20;
  const std::optional<std::string> path = installed.path_of_file(file);
  if (!path)
    return nullptr;
  const auto [known, is_new] = fonts_.try_emplace(*path);
  if (is_new)
    if (const result<std::string> bytes = read_file(font_place(*path), largest))
      known->second = read_font_characters(
          {reinterpret_cast<const std::uint8_t*>(bytes->data()), bytes->size()});
  return known->second ? &*known->second : nullptr;
}

}  // namespace corvane
