// Rules about where a disc's commands lead, and what of it a viewer can get to. They need no file
// of the disc.
#pragma once

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

}  // namespace corvane
