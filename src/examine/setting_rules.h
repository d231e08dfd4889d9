// Rules about what is set for titles: chapters, delays, languages, how many there are of each. They
// need no file of the disc.
#pragma once

#include "disc/disc_description.h"
#include "examine/rules.h"

#include <span>
#include <vector>

namespace corvane {

std::span<const rule> setting_rules();

/// All of them, in the order of titles.
std::vector<finding> setting_findings(const disc_description& d);

}  // namespace corvane
