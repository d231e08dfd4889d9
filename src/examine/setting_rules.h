// Rules about what is set for titles: chapters, delays, languages, how many there are of each. Of
// the disc's files they need the length of the titles alone.
#pragma once

#include "disc/disc_description.h"
#include "examine/rules.h"

#include <optional>
#include <span>
#include <vector>

namespace corvane {

std::span<const rule> setting_rules();

/// All of them, in the order of titles. `title_seconds`: how long the video of each title lasts;
/// not set or missing: not compared.
std::vector<finding> setting_findings(const disc_description& d,
                                      std::span<const std::optional<double>> title_seconds = {});

}  // namespace corvane
