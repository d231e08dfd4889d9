// The message boxes of this room's commands, in short.
#pragma once

#include "project/workbench.h"

#include <string>
#include <string_view>

namespace corvane {

/// A box with the one button OK.
void say(workbench& w, icon picture, std::string text);

/// "<part> appears to be missing", critical; `part` in stored form.
void say_missing(workbench& w, std::string_view part);

/// "File exists.  Overwrite?"
bool may_overwrite(workbench& w);

/// Text that may hold anything, as a message can carry it: control characters and bytes that are
/// not UTF-8 become "?".
std::string shown(std::string_view text);

/// The same, shortened with "..." when it is longer than `most` bytes.
std::string shown_short(std::string_view text, std::size_t most = 60);

}  // namespace corvane
