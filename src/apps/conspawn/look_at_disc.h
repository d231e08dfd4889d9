// The look at the disc that a script has made, before its end is told.
#pragma once

#include "runner/script_interpreter.h"

#include <string>

namespace corvane {

/// Reads the disc back and holds it against what is written in the file `foreseen` (native path;
/// authoring/foreseen_run.h). What is wrong is printed as lines that begin "ERR:". Without that
/// file, of a script that somebody runs by hand, nobody looks; nor does anybody at what a run has
/// left that went wrong before.
void look_at_disc(const std::string& foreseen, bool all_well, const line_printer& print);

}  // namespace corvane
