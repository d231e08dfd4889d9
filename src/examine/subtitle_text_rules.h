// Rules about the text of subtitle files: what will not show, or not when and as its author meant.
#pragma once

#include "disc/disc_description.h"
#include "examine/rules.h"
#include "formats/font_characters.h"
#include "formats/subtitle_cues.h"
#include "platform/files/paths.h"
#include "project/font_list.h"
#include "project/subtitle_file.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace corvane {

std::span<const rule> subtitle_text_rules();

/// The cues that spumux reads of a file with these settings.
subtitle_cues cues_of(const subtitle_file& file, const subtitle_settings& settings);

/// A file's text as UTF-8; nullopt if nobody can say what characters its bytes are.
std::optional<std::string> utf8_of(const subtitle_file& file, const subtitle_settings& settings);

/// Whether the first cue of a file is no text, but the rate of its pictures ("{1}{1}23.976").
bool is_rate_line(subtitle_format format, const text_cue& cue);

/// What one file's text gives, in the order of its times; of each rule the first twenty. `file` was
/// read from `path`. `seconds`: how long the title is; not set: not compared. `font`: what the font
/// of the settings has; null: not looked at.
std::vector<finding> subtitle_text_findings(const subtitle_file& file,
                                            const subtitle_settings& settings, finding_item item,
                                            const std::string& path, std::optional<double> seconds,
                                            const font_characters* font = nullptr);

/// What spumux will draw instead of a font that is not installed. A note for the font that settings
/// begin with, which nobody chose.
std::vector<finding> subtitle_font_findings(const disc_description& d, const font_list& installed);

/// All titles' subtitles; reads their files, and of their fonts those that are among the
/// `installed`; null: fonts are not looked at. `title_seconds`: not set or missing: not compared.
/// Of a title that has more than 32 subtitles the first 32 are read.
std::vector<finding> subtitle_findings(const disc_description& d, path_style style,
                                       std::span<const std::optional<double>> title_seconds = {},
                                       const font_list* installed = nullptr);

}  // namespace corvane
