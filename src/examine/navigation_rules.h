// Rules about where a disc's commands lead, and what of it a viewer can get to. They need no file
// of the disc.
#pragma once

#include "disc/command_target.h"
#include "disc/disc_description.h"
#include "examine/rules.h"

#include <span>
#include <string_view>
#include <vector>

namespace corvane {

std::span<const rule> navigation_rules();

/// All commands that lead nowhere, are not allowed where they stand, or that dvdauthor cannot read;
/// titles and menus that nothing leads to; menus that nothing leads out of. `customxml` is the
/// hand-edited navigation XML that `d` was read from; empty if `d` is that of the rows.
std::vector<finding> navigation_findings(const disc_description& d,
                                         std::string_view customxml = {});

/// Commands that lead to another file than before titles or menus changed their numbers: `led_to`,
/// in the order of `command_targets`. One whose text has changed since is left out, and so is one
/// whose number there is no more.
std::vector<finding> moved_command_findings(const disc_description& d,
                                            const std::vector<command_target>& led_to);

}  // namespace corvane
