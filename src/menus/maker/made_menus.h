// The menus that were planned and laid out, as menus of the project: ordinary ones, which the
// menu editor knows, with a background video each.
//
// Whoever makes menus asks for them (`menus_for`), has the backgrounds drawn and made into videos,
// which takes time and other programs, and then puts them into the project (`put_menus`). Until
// then nothing has changed.
#pragma once

#include "menus/maker/menu_memory.h"
#include "menus/maker/page_layout.h"
#include "platform/result.h"
#include "project/document.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

struct menu_wishes {
  std::string design_id;
  menu_design design;
  menu_choices choices;
  bool is_wide = false;  ///< 16:9
  menu_texts texts;
  menu_moves moves;
  std::string folder;         ///< native, absolute: where the backgrounds will stand
  bool replaces_own = false;  ///< the menus that the user made himself go
  /// Changed only where no menu stays, since those that stay were made for the other.
  std::optional<bool> jump_table;
  bool sets_ends = true;           ///< titles end as the choices say; else their commands stay
  bool begins_with_menus = false;  ///< a first play that leads elsewhere goes; else it stays
  bool loops = false;              ///< menus begin again at their end: of a background that moves
  /// What else is remembered for making again, for whoever chooses: texts by names of his own.
  std::map<std::string, std::string> also;
};

struct menu_background {
  std::string m2v;  ///< native path of a file that is not there yet
  drawn_page page;
};

struct menu_to_make {
  std::string video;  ///< stored path of the background
  drawn_page page;
  menu_memory memory;  ///< with the buttons' records
  planned_menu planned;
  std::vector<menu_rectangle> buttons;  ///< of the entries, then of the ways
};

struct menus_to_make {
  std::vector<menu_to_make> menus;
  std::string sound;               ///< stored path of what all of them have; empty: none
  std::vector<std::string> notes;  ///< sentences: what is left out, shortened, or otherwise
  std::vector<menu_background> backgrounds() const;
};

/// Whether the disc begins elsewhere than with its first menu.
bool begins_elsewhere(const project& p);

/// What to make. `is_taken`: whether something has this native path. Fails, with a sentence, if
/// there would be no menu or the folder's name cannot stand in a project.
result<menus_to_make> menus_for(const project& p, const menu_wishes& wishes,
                                const text_measure& measure,
                                const std::function<bool(const std::string&)>& is_taken);

/// Puts them into the project, in one step that can be undone: in the place of those that the maker
/// made before, behind the user's own if there are none. Commands that led to a menu made before,
/// or to one of the user's, lead to the same. Hand-edited XML must have been discarded
/// (project/document.h, `custom`). The project must be as it was for `menus_for`. Gives what could
/// not be written beside the backgrounds, which only making again would need.
failure put_menus(document& doc, const menu_wishes& wishes, const menus_to_make& made);

/// Makes all backgrounds, or none and says why.
using background_maker = std::function<failure(const std::vector<menu_background>&)>;

/// All of it: asks about hand-edited XML, plans, has the backgrounds made, puts the menus. Gives
/// the notes. Fails with a sentence, empty if the user wants to keep the XML; nothing has changed
/// then.
result<std::vector<std::string>> make_menus(document& doc, const menu_wishes& wishes,
                                            const text_measure& measure,
                                            const background_maker& make);

}  // namespace corvane
