// Every button of a disc, pressed on libdvdnav's machine.
#pragma once

#include "disc.h"

#include <string>

namespace corvane::disc {

/// Plays the disc in a folder or image from its start, goes to every menu that a player can get
/// to, presses every button and lets the titles that come play to their end. Fills in
/// `contents::begins_with` and each button's `leads_to` and `then`; those of menus that no way
/// leads to stay empty.
void press_all_buttons(const std::string& native_path, contents& on_disc);

}  // namespace corvane::disc
