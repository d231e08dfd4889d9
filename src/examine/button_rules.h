// Rules about menus as a viewer sees and uses them: where buttons stand, how they look, when they
// come up, which the arrow keys lead to. They need no file of the disc.
#pragma once

#include "disc/disc_description.h"
#include "examine/rules.h"

#include <optional>
#include <span>
#include <vector>

namespace corvane {

std::span<const rule> button_rules();

/// All findings about menus and their buttons, in the order of both. `menu_seconds`: how long each
/// menu's stream is; not set or missing: not looked at. Menus of hand-edited XML whose stream
/// another program made have no edges here and are passed over.
std::vector<finding> button_findings(const disc_description& d,
                                     std::span<const std::optional<double>> menu_seconds = {});

}  // namespace corvane
