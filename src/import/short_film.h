// Films that have become shorter than they were planned, since their source could not be read to
// its end: a damaged file that states more than it holds, or one that was cut off or went away
// while it was read. ffmpeg takes this for the end and is content.
#pragma once

#include "examine/file_facts.h"
#include "import/import_script.h"
#include "platform/result.h"

#include <string>

namespace corvane {

/// Seconds that are missing at the end of the video that was made, of which this is known. 0: it is
/// whole, or nobody knows how long it should be.
double missing_seconds(const import_job& job, const file_facts& made);

/// Fits what stands under temporary names, and the plan, to a video that lacks so many seconds:
/// sound that was made lasts as long, and no chapter comes later. Fails when a file cannot be
/// changed; the reason names it.
failure end_earlier(import_job& job, double missing);

/// Whether the source is not what it was when it was looked into; of no use for what is not known.
bool source_has_changed(const import_job& job);

/// "the last 0:30 of it could not be read and are missing".
std::string missing_text(const import_plan& plan, double missing);

}  // namespace corvane
