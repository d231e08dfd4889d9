// The rules behind what tools say and how they end, from the runner's tables
// (runner/tools/known_messages.h, tool_outcomes.h).
#pragma once

#include "examine/rules.h"

#include <span>

namespace corvane {

/// One for each identifier of the two tables. What its messages have in their places is left open
/// in the texts: "(...) cannot be opened".
std::span<const rule> tool_rules();

}  // namespace corvane
