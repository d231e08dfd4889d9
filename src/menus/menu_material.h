// What can be done with a menu as a whole once it is there: move it, copy it, give it another video
// or audio. Each is a whole conversation through `prompts`.
//
// Each begins with the guard `custom`, takes the number of a menu (1-based; of one that there is
// not, nothing is done) and gives a sentence of what has changed, for the status bar; empty:
// nothing has.
#pragma once

#include "project/document.h"

#include <string>

namespace corvane {

/// The menu becomes menu `to`, which must be there; whatever names menus by number goes along.
std::string move_menu_command(document& doc, int menu, int to);

/// A copy behind all others, with the same video and audio and with buttons of its own.
std::string copy_menu_command(document& doc, int menu);

/// Asks for another video. One whose standard, size or proportions do not suit the project or its
/// other menus is refused with a message. Reads the beginnings of the menus' videos.
std::string menu_video_command(document& doc, int menu);

/// Asks for another audio; of a menu that has one, whether it is to have none.
std::string menu_audio_command(document& doc, int menu);

}  // namespace corvane
