// What of a finished disc follows from its material, of which the user was told before the run.
#pragma once

#include "disc/finding.h"
#include "examine/disc_traits.h"

#include <vector>

namespace corvane {

/// Makes warnings of errors of the disc: of those that follow from material whose errors the user
/// accepted, and of as many breaks in a title's times as its ready files have.
void soften_what_was_told(std::vector<finding>& of_disc, const foreseen_run& asked);

}  // namespace corvane
