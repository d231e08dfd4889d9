// The last of an import, when its script has run: streams are finished, and get their names when
// all of them are whole.
#pragma once

#include "formats/video_finish.h"
#include "import/import_script.h"
#include "platform/result.h"

#include <string>

namespace corvane {

/// Finishes a video file (native path) in its place, in constant memory. After a failure the file
/// is of no use.
failure finish_video_file(const std::string& file, const video_finish& what);

/// What the video of a plan still needs. A copy stays byte for byte what it was, but for film that
/// lacks its pulldown flags.
video_finish finish_of(const import_plan& plan);

/// Finishes what the script has made and gives the files their names. When anything fails (the
/// reason names the file), nothing of the import is left and nothing that was there is replaced.
failure finish_import(const import_job& job);

/// Removes what an import that was stopped or failed has left: temporary files and notes, and no
/// others.
void remove_unfinished(const import_job& job);

}  // namespace corvane
