// The preferences at start and the commands that change them.
#pragma once

#include "project/workbench.h"

namespace corvane {

/// Writes the defaults of absent keys ("framecount" = "1", "jumptable" = "False", "dvdregion" =
/// "NTSC"), then sets `jumptable`, `cleanup` (only for "yes") and `globalregion` from the store.
/// A stored region that is neither "NTSC" nor "PAL" counts as absent. Also sets the status text
/// the window starts with.
void start_up(workbench& w);

/// `cleanup`: toggles the check mark and the preference ("yes" or empty).
void cleanup_command(workbench& w);

/// `isocreate`: toggles the check mark.
void isocreate_command(workbench& w);

/// `Comboregion`: the region becomes "NTSC" or "PAL" and the preference "dvdregion". Does nothing
/// while `Comboregion_enabled` is off.
void region_command(workbench& w, const std::string& region);

}  // namespace corvane
