// Which settings of a text subtitle spumux can be given.
#pragma once

#include "project/plain_texts.h"
#include "project/subtitle_rows.h"

namespace corvane {

/// Why text cannot be drawn with these settings, as the end of a sentence ("the left margin "x",
/// which is not a number"): a number that is none, or a text that would break the control file.
refusal why_not_drawable(const subtitle_settings& s);

}  // namespace corvane
