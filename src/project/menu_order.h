// Menus change places, are copied and get other streams, and what names them goes along: buttons,
// the ends of titles, first play, and what is noted of commands (project/moved_commands.h).
//
// Menus are 1-based and must exist.
#pragma once

#include "project/project.h"

#include <string>
#include <vector>

namespace corvane {

/// What a move has changed beside the order.
struct menu_renumbering {
  int buttons = 0;            ///< how many have another action text
  std::vector<int> titles;    ///< that end with another text, 1-based
  std::vector<int> too_long;  ///< that would, but their row has no room for it
  bool first_play = false;
  /// A typed command reads or sets the register that holds a menu's number, which no text shows.
  bool uses_register = false;
};

/// The menu becomes menu `to`; those between take the places that are free then.
menu_renumbering move_menu(project& p, int menu, int to);

/// Behind all others: the same streams and options, and buttons of its own. Gives its number.
int copy_menu(project& p, int menu);

/// Another video or audio (stored path; an empty audio is none). Its buttons and options stay.
void set_menu_video(project& p, int menu, const std::string& video);
void set_menu_audio(project& p, int menu, const std::string& audio);

}  // namespace corvane
