// What only a stream's bytes tell, when it has been copied out of its file: that a disc does not
// take it as it is after all, or that there are gaps in it.
//
// Gaps stand in recordings: packets that are missing inside a stream, as after a bad reception.
// What comes after a gap stands where it was by its times in the source, but a stream that is
// copied has no times, and all behind the gap would come too early.
#pragma once

#include "examine/file_facts.h"
#include "import/import_script.h"

#include <functional>

namespace corvane {

/// Looks at what was copied, under its temporary names; `made` is in the video. Has encoded instead
/// each stream with gaps, which fills them with silence or the picture before, and a video that has
/// findings which encoding cures. Returns whether the plan is another one now, and its script must
/// run again.
///
/// Gaps are looked for in multiplexes alone, MPEG's program and transport streams: what other
/// containers state of lengths is not exact enough. Reads all sound that was copied, as long as
/// `goes_on` says that it is wanted.
bool encode_what_cannot_stay(
    import_job& job, const file_facts& made,
    const std::function<bool()>& goes_on = [] { return true; });

}  // namespace corvane
