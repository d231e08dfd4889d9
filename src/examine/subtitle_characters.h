// The characters of subtitle texts: how messages name them, and those for which spumux draws "_",
// since a font lacks them.
#pragma once

#include "formats/font_characters.h"
#include "formats/subtitle_cues.h"
#include "platform/text/utf8.h"
#include "project/font_list.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

inline constexpr std::uint32_t last_of_basic_plane = 0xFFFF;

/// "U+1F600".
std::string code_text(std::uint32_t code);

/// `"Ж" (U+0416), U+0009 and 3 more`.
std::string list_of_characters(const std::vector<std::uint32_t>& characters);

/// The characters of a text, in their order; bytes that are no UTF-8 are passed over.
template <typename Visit>
void for_each_character(std::string_view text, Visit visit) {
  while (!text.empty()) {
    const utf8_character c = first_character(text);
    if (c.length > 0)
      visit(c.code);
    text.remove_prefix(std::max<std::size_t>(c.length, 1));
  }
}

/// Those of the cue's lines (UTF-8) for which spumux draws "_", each once, in the order of the
/// text. Characters beyond the Basic Multilingual Plane, which it takes apart, are not among them.
std::vector<std::uint32_t> characters_lacked(const font_characters& font, const text_cue& cue);

/// The characters of installed fonts; each file is read once.
class font_shelf {
 public:
  /// `file`: as settings name it. Null if its characters are not known: it is not installed, cannot
  /// be read, or is of a kind that is not.
  const font_characters* find(const std::string& file, const font_list& installed);

 private:
  std::map<std::string, std::optional<font_characters>> fonts_;  // by path
};

}  // namespace corvane
