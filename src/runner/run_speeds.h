// How fast this machine does each kind of a run's work: kept between runs in a small file of the
// program folder, so that the next run's time is known from its beginning.
#pragma once

#include "runner/run_plan.h"

#include <array>
#include <string>
#include <string_view>

namespace corvane {

/// Seconds for a unit of each kind of work, by its number in `work_kind`.
using work_costs = std::array<double, work_kinds>;

/// Of an ordinary machine of which nothing is known yet.
work_costs usual_costs();

/// As the file holds them: a line "multiplex 7.5e-09" for each kind. What is missing in a text, or
/// no likely time, is the usual one.
work_costs parse_costs(std::string_view text);
std::string costs_text(const work_costs& costs);

}  // namespace corvane
