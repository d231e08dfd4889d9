// The row formats of text subtitles, built and split here only. A title has a row of its files in
// project::subtitledata ("<none>", or stored paths joined by "/") and one of their settings in
// project::subtitleoptions: settings rows of twelve fields joined by ",", each followed by "|". The
// n-th file and the n-th settings row belong together.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

/// Splits a settings row; fields that are not there are empty, more than twelve are left out.
subtitle_settings parse_subtitle_settings(std::string_view row);
std::string subtitle_settings_text(const subtitle_settings& settings);

/// How many fields a settings row has: twelve, unless somebody wrote it by hand.
std::size_t subtitle_fields_in(std::string_view row);

/// Why a typed text cannot be a field ("contains ","", for a message); nothing when it can. "," and
/// "|" would cut the row, a control character the project file's line.
std::optional<std::string> why_not_a_subtitle_field(std::string_view text);

/// The settings rows of a `subtitleoptions` row, and back.
std::vector<std::string> subtitle_settings_rows(std::string_view options);
std::string subtitle_options_text(const std::vector<std::string>& settings_rows);

/// A new title's `subtitleoptions` row:
/// "center,bottom,60,60,30,30,28.0,arial.ttf,720,478,29.97,ISO-8859-1|" for "NTSC", else with
/// height 574 and rate 25.
std::string default_subtitleoptions(std::string_view region);

/// The `subtitledata` row of a title without subtitles.
inline constexpr std::string_view no_subtitles = "<none>";

/// The stored paths of a `subtitledata` row, and the row with one more.
std::vector<std::string> subtitle_paths(std::string_view row);
std::string with_subtitle(std::string_view row, std::string_view path);

}  // namespace corvane
