// The window in which a command is picked by its name: titles with their lengths, chapters with
// their times, menus. Typing searches, the arrow keys go through the list, Enter takes.
#pragma once

#include "disc/disc_description.h"
#include "menus/lead_commands.h"
#include "menus/menu_editor.h"

#include <wx/string.h>

#include <functional>
#include <optional>
#include <string>

class wxWindow;

namespace corvane {

class fact_store;

struct picked_action {
  std::string command;
  action_count how = action_count::same;  ///< what the other selected buttons do
};

/// What is picked.
struct action_question {
  wxString caption;
  lead_source from;  ///< whose command it becomes
  std::string now;   ///< that command as it stands; the list begins on it
  int buttons = 1;   ///< that get one; more than one are asked about
  /// How many of them will get one; needed for more than one.
  std::function<int(const picked_action&)> outlook;
};

/// Asks over `window`. Lengths that `facts` does not know are looked up meanwhile, in idle moments.
/// nullopt: nothing was picked.
std::optional<picked_action> ask_action(wxWindow& window, const action_question& question,
                                        const disc_description& disc, fact_store& facts);

/// About the selected buttons of the editor.
std::optional<picked_action> ask_action(wxWindow& window, const menu_editor& editor,
                                        const disc_description& disc, fact_store& facts);

}  // namespace corvane
