// Rules about menus as a viewer sees and uses them: where buttons stand, how they look, when they
// come up, which the arrow keys lead to. They need no file of the disc.
#pragma once

#include "disc/disc_description.h"
#include "examine/menu_facts.h"
#include "examine/rules.h"

#include <span>
#include <vector>

namespace corvane {

std::span<const rule> button_rules();

/// All findings about menus and their buttons, in the order of both. `facts`: of each menu's
/// stream; what is not set or missing is not looked at. Menus of hand-edited XML whose stream
/// another program made have no edges here; of them only the number of buttons is looked at.
std::vector<finding> button_findings(const disc_description& d,
                                     std::span<const menu_facts> facts = {});

}  // namespace corvane
