// The preferences at start and the commands that change them.
#pragma once

#include "project/document.h"

namespace corvane {

/// Writes the defaults of absent keys ("framecount" = "1", "jumptable" = "False", "dvdregion" =
/// "NTSC"), then sets `jumptable`, `cleanup` (only for "yes") and `globalregion` from the store.
/// A stored region that is neither "NTSC" nor "PAL" counts as absent. Also sets the status text
/// the window starts with.
void start_up(document& doc);

/// `cleanup`: toggles the check mark and the preference ("yes" or empty).
void cleanup_command(document& doc);

/// `isocreate`: toggles the check mark.
void isocreate_command(document& doc);

/// `Comboregion`: the region becomes "NTSC" or "PAL" and the preference "dvdregion". Does nothing
/// while `Comboregion_enabled` is off.
void region_command(document& doc, const std::string& region);

/// "menusound": whether the sound of a menu is heard while the menu editor plays it: all but "no".
bool plays_menu_sound(const settings& prefs);
void keep_menu_sound(settings& prefs, bool plays);

}  // namespace corvane
