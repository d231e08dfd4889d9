// What commands led to before titles or menus were removed or moved, which gives the others new
// numbers while the commands keep the ones they name. Known as long as the project is open; no file
// holds it.
//
// A command is forgotten when its editor is accepted, where it can be seen; one whose text has
// changed meanwhile counts no more, nor does one that leads there again
// (examine/navigation_rules.h).
#pragma once

#include "project/project.h"

#include <vector>

namespace corvane {

/// To be called before titles or menus change their numbers. What is noted of a command that has
/// the same text stays: where it led first. A title that goes on with the next one always does.
void note_command_targets(project& p);

/// What is noted, for a check. With hand-edited XML nothing: it was written after titles and menus
/// had moved, and its commands name its own.
std::vector<command_target> noted_command_targets(const project& p);

/// Menu `menu` (1-based) has been removed with its buttons; those behind it have moved up.
void forget_removed_menu(project& p, int menu);

/// The editor of this menu's buttons was accepted; that of first play and the titles' commands.
void forget_targets_of_menu(project& p, int menu);
void forget_targets_of_titles(project& p);

}  // namespace corvane
