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

}  // namespace corvane
