// How the parts of the menu editor's window tell its model what the user did.
#pragma once

#include "menus/menu_editor.h"

#include <functional>

namespace corvane {

/// Something the user did.
using menu_event = std::function<void(menu_editor&)>;

/// Hands what was typed in fields, then the event (if it is not null), to the model, and shows
/// what came of it.
using tell_event = std::function<void(const menu_event&)>;

}  // namespace corvane
