// The look at the disc that a script has made, before its end is told.
#pragma once

#include "disc/finding.h"
#include "examine/disc_traits.h"
#include "platform/result.h"
#include "runner/script_interpreter.h"

#include <memory>
#include <string>
#include <vector>

namespace corvane {

using shared_foreseen_run = std::shared_ptr<const foreseen_run>;

/// What is written in the file `foreseen` (native path; authoring/foreseen_run.h). To be read
/// before the script runs: whatever becomes of the file meanwhile, the disc is looked at. Fails,
/// with a sentence, if it is not there or cannot be read.
result<shared_foreseen_run> read_foreseen(const std::string& foreseen);

/// Reads the disc back and holds it against what was foreseen. What is wrong is printed as lines
/// that begin "ERR:", and given. Nobody looks at what a run has left that went wrong before.
///
/// `pause`: milliseconds between two lines that tell how much has been read.
std::vector<finding> look_at_disc(const shared_foreseen_run& foreseen, bool all_well,
                                  const look_output& out, int pause = 1000);

}  // namespace corvane
