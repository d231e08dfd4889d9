// The rule about a project as a whole: that a run takes it. What a run refuses is known further up
// (authoring/checks.h), which words it.
#pragma once

#include "examine/rules.h"

#include <span>
#include <string>

namespace corvane {

std::span<const rule> project_rules();

/// `refusal`: what a run would tell.
finding refused_project(std::string refusal);

}  // namespace corvane
