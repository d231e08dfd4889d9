// What the menu maker remembers of menus that it made, so that they can be made again when titles
// have changed, with the texts and places that the user has given them.
//
// The project's file has no place for it. So beside each background ("titles-1.m2v") stands a small
// text ("titles-1.menu"): it goes wherever the background goes, and is right again when making was
// undone, since each making has backgrounds of its own. Without it a menu is the user's own.
#pragma once

#include "disc/disc_description.h"
#include "menus/maker/menu_plan.h"
#include "menus/maker/page_layout.h"
#include "platform/result.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct project;

/// A button as it was made.
struct remembered_button {
  std::string key;     ///< as `move_key` gives it
  std::string record;  ///< of the project's row
  bool operator==(const remembered_button&) const = default;
};

/// What stands beside one background.
struct menu_memory {
  std::string menu;                         ///< the planned menu's key
  std::string design;                       ///< id (menus/maker/design_folder.h)
  bool is_wide = false;                     ///< 16:9
  menu_choices choices;                     ///< but for `chapters_of`
  std::vector<std::string> chapters_of;     ///< stored paths of the titles' videos
  menu_texts texts;                         ///< the user's
  menu_moves moves;                         ///< likewise
  std::string look;                         ///< the design as it was used, as a design file has it
  std::map<std::string, std::string> also;  ///< as `menu_wishes` has it
  std::vector<remembered_button> buttons;
  bool operator==(const menu_memory&) const = default;
};

std::string memory_text(const menu_memory& memory);

/// Gives the same back. Fails, with a clause, if the text is none of `memory_text`.
result<menu_memory> read_memory(std::string_view text);

/// "titles-1.menu" beside "titles-1.m2v", native.
std::string memory_file(const std::string& m2v);

/// Of the project's menus.
struct remembered_menus {
  std::map<int, menu_memory> made;  ///< those that the maker made, by their numbers
  /// As they were chosen last, for making again: with the titles' numbers of now, the user's texts,
  /// and the places of all buttons that were moved in the menu editor or before.
  std::string design;
  bool is_wide = false;
  menu_choices choices;
  menu_texts texts;
  menu_moves moves;
  std::string look;
  std::map<std::string, std::string> also;
  std::vector<std::string> notes;  ///< what making again does not keep
};

/// Reads what stands beside the menus of the project.
remembered_menus menus_made_before(const project& p);

}  // namespace corvane
