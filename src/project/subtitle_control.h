// The control file that tells spumux to draw one text subtitle file.
#pragma once

#include "platform/files/paths.h"
#include "project/font_list.h"
#include "project/subtitle_rows.h"

#include <string>

namespace corvane {

/// The text for a subtitle file (path native in `style`), every line ended by CR LF. Where the
/// system is not Windows a font that is installed is named by its path; one that is not stays as it
/// is stored, and spumux says which one it takes instead.
std::string subtitle_control_text(const std::string& file, const subtitle_settings& s,
                                  const font_list& fonts, path_style style);

}  // namespace corvane
