// What a disc's menus show, against the pictures that the run left in the program folder.
#pragma once

#include "picture_file.h"
#include "studio.h"

#include <string>

namespace corvane::disc {

/// highlight<menu>.png or select<menu>.png of the last run.
std::string picture_path(const studio& s, const std::string& kind, int menu);

/// For each menu with pictures and each of its buttons: highlighted and pressed, a player shows
/// that button as it was drawn, at least one dot of it, and nothing else. `height` is that of the
/// pictures.
void expect_disc_shows_what_was_drawn(const studio& s, const contents& disc, int height = 480);

}  // namespace corvane::disc
