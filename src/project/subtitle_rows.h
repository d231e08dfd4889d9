// The row formats of text subtitles, built and split here only. A title has a row of its files in
// project::subtitledata ("<none>", or stored paths joined by "/") and one of their settings in
// project::subtitleoptions: settings rows of twelve fields joined by ",", each followed by "|". The
// n-th file and the n-th settings row belong together.
#pragma once

#include "disc/subtitle_settings.h"
#include "project/project.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Splits a settings row; fields that are not there are empty, more than twelve are left out.
subtitle_settings parse_subtitle_settings(std::string_view row);
std::string subtitle_settings_text(const subtitle_settings& settings);

/// How many fields a settings row has: twelve, unless somebody wrote it by hand.
std::size_t subtitle_fields_in(std::string_view row);

/// Why a typed text cannot be a field ("contains ","", for a message); nullopt if it can. "," and
/// "|" would cut the row, a control character the project file's line.
std::optional<std::string> why_not_a_subtitle_field(std::string_view text);

/// The settings rows of a `subtitleoptions` row, and back.
std::vector<std::string> subtitle_settings_rows(std::string_view options);
std::string subtitle_options_text(const std::vector<std::string>& settings_rows);

/// The settings rows of a title (1-based), at least one and one for each of so many files. Files
/// that were added and not accepted have none: the last ones serve, and where there are none, those
/// of a new title.
std::vector<std::string> title_settings_rows(const project& p, int title, std::size_t files);

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
