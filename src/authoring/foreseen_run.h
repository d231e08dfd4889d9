// What the look at the finished disc must know: what the run was asked for, and what its material
// foresees. Written beside the script for conspawn, which looks (apps/conspawn).
#pragma once

#include "authoring/run_paths.h"
#include "examine/disc_traits.h"
#include "examine/examination.h"
#include "project/project.h"

#include <vector>

namespace corvane {

/// Of the project as it is now, with hand-edited XML of the XML's disc. `facts`: what is known of
/// its files; null: nothing. `accepted`: the errors in spite of which the disc is wanted.
foreseen_run foreseen_of(const project& p, const run_paths& where, const fact_store* facts,
                         const std::vector<finding>& accepted);

}  // namespace corvane
