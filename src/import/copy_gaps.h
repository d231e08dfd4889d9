// Gaps in recordings: packets that are missing inside a stream, as after a bad reception. What
// comes after a gap stands where it was by its times in the source, but a stream that is copied has
// no times, and all behind the gap would come too early.
#pragma once

#include "import/import_script.h"

namespace corvane {

/// Looks at what was copied, under its temporary names, and has each stream with gaps encoded
/// instead, which fills them: with silence, or the picture before. Returns whether the plan is
/// another one now, and its script must run again.
///
/// Only multiplexes are looked at, MPEG's program and transport streams: what other containers
/// state of lengths is not exact enough. Reads all that was copied.
bool encode_what_has_gaps(import_job& job);

}  // namespace corvane
