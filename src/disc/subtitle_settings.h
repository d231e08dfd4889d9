// How a text subtitle is drawn: the twelve settings, as texts.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace corvane {

/// The fields of a settings row, in its order.
enum class subtitle_field : std::size_t {
  horizontal_alignment,  ///< "left", "center", "right"
  vertical_alignment,    ///< "top", "center", "bottom"
  left_margin,           ///< margins in pixels
  right_margin,
  top_margin,
  bottom_margin,
  font_size,
  font_file,     ///< file name, lower case: "arial.ttf"
  movie_width,   ///< in pixels
  movie_height,  ///< two lines less than the picture has
  frame_rate,    ///< pictures a second
  character_set
};
inline constexpr std::size_t subtitle_field_count = 12;

/// The alignments that there are.
inline constexpr std::array<std::string_view, 3> halign_items = {"left", "center", "right"};
inline constexpr std::array<std::string_view, 3> valign_items = {"top", "center", "bottom"};

/// The field as messages call it: "left margin".
const char* name_of(subtitle_field field);

/// The texts of a settings row, as they were typed.
struct subtitle_settings {
  std::array<std::string, subtitle_field_count> fields;

  std::string& operator[](subtitle_field f) { return fields[static_cast<std::size_t>(f)]; }
  const std::string& operator[](subtitle_field f) const {
    return fields[static_cast<std::size_t>(f)];
  }
  bool operator==(const subtitle_settings&) const = default;
};

/// What a subtitle of a region ("NTSC" or "PAL") begins with. The heights, 478 and 574, are meant.
subtitle_settings default_subtitle_settings(std::string_view region);

}  // namespace corvane
