// "repeat...": how often the chosen button of a menu is to be there, and what the others do.
#pragma once

#include "menus/menu_editor.h"

#include <optional>

class wxWindow;

namespace corvane {

/// Asks over `window`, and tells meanwhile how many buttons there would be. nullopt: cancelled.
std::optional<repetition> ask_repetition(wxWindow& window, const menu_editor& editor);

}  // namespace corvane
