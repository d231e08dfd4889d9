// The window in which the action of a button is picked by its name: titles with their lengths,
// chapters with their times, menus. Typing searches, the arrow keys go through the list, Enter
// takes.
#pragma once

#include "disc/disc_description.h"
#include "menus/menu_editor.h"

#include <optional>
#include <string>

class wxWindow;

namespace corvane {

class fact_store;

struct picked_action {
  std::string command;
  action_count how = action_count::same;  ///< what the other selected buttons do
};

/// Asks over `window`. Lengths that `facts` does not know are looked up meanwhile, in idle moments.
/// nullopt: nothing was picked.
std::optional<picked_action> ask_action(wxWindow& window, const menu_editor& editor,
                                        const disc_description& disc, fact_store& facts);

}  // namespace corvane
