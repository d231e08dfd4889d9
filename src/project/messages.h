// The message boxes of this room's commands, in short.
#pragma once

#include "project/document.h"

#include <string>
#include <string_view>

namespace corvane {

/// A box with the one button OK.
void say(document& doc, icon picture, std::string text);

/// "<part> appears to be missing", critical; `part` in stored form.
void say_missing(document& doc, std::string_view part);

/// "File exists.  Overwrite?"
bool may_overwrite(document& doc);

}  // namespace corvane
