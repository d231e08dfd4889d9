// What commands led to before titles or menus were removed or moved, which gives the others new
// numbers while the commands keep the ones they name. Known as long as the project is open; no file
// holds it.
//
// A command is forgotten when its editor is accepted, where it can be seen; one whose text has
// changed meanwhile counts no more, nor does one that leads there again
// (examine/navigation_rules.h).
#pragma once

#include "disc/menu_numbers.h"
#include "project/document.h"
#include "project/project.h"

#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// To be called before titles or menus change their numbers. What is noted of a command that has
/// the same text stays: where it led first. A title that goes on with the next one always does.
void note_command_targets(project& p);

/// What is noted, for a check. With hand-edited XML nothing: it was written after titles and menus
/// had moved, and its commands name its own.
std::vector<command_target> noted_command_targets(const project& p);

/// A command that leads to something else now.
struct moved_command {
  command_target before;           ///< of whom it is, its text, and what it led to
  std::optional<std::string> now;  ///< the text with which it leads there again; nullopt if that is
                                   ///< gone, or the project has it more than once
};

/// All of them, in the order of `command_targets`; none with hand-edited XML.
std::vector<moved_command> moved_commands(const project& p);

/// "The command after title 1 and buttons 1 and 3 of menu 2 lead elsewhere than before."; empty if
/// none does.
std::string moved_commands_note(const std::vector<moved_command>& moved);

/// Writes the texts with which commands lead to what they led to before, where there are such.
void carry_commands_along(document& doc);

/// Menu `menu` (1-based) has been removed with its buttons; those behind it have moved up.
void forget_removed_menu(project& p, int menu);

/// So many menus have been inserted before the one that was `menu` (1-based).
void note_inserted_menus(project& p, int menu, int count);

/// What led to the menu with one video (stored paths) leads to the one with another, which has been
/// made in its place.
void follow_video(project& p, const std::string& before, const std::string& now);

/// A menu (1-based) is about to get another video: what led to it still does.
void follow_menu(project& p, int menu, const std::string& now);

/// Menus have other numbers now, and all commands have been given them.
void renumber_noted_menus(project& p, const number_of_menu_now& now);

/// The editor of this menu's buttons was accepted; that of first play and the titles' commands.
void forget_targets_of_menu(project& p, int menu);
void forget_targets_of_titles(project& p);

}  // namespace corvane
