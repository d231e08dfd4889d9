// The last of an import, when its script has run: streams are finished, and get their names when
// all of them are whole.
#pragma once

#include "formats/video_finish.h"
#include "import/import_script.h"
#include "platform/result.h"

#include <cstddef>
#include <string>

namespace corvane {

/// Finishes a video file (native path) in its place, in constant memory. After a failure the file
/// is of no use.
failure finish_video_file(const std::string& file, const video_finish& what);

/// What the video of a plan still needs: the code at its end, without which mplex drops the last
/// picture, and pulldown flags. All other bytes of a copy stay what they were.
video_finish finish_of(const import_plan& plan);

/// Finishes what the script has made and gives the files their names. When anything fails (the
/// reason names the file), nothing of the import is left and nothing that was there is replaced.
/// Subtitles lose what spumux would draw as letters; those without any text get no file.
failure finish_import(const import_job& job);

/// Whether a text (0-based) of an import that is finished has anything to say, and so a file.
bool has_text(const import_job& job, std::size_t number);

/// Makes the folder (native path, absolute) where there is none, and looks whether anything can be
/// written into it. The reason is a sentence with what to do.
failure prepare_import_folder(const std::string& folder);

/// Removes what an import that was stopped or failed has left: temporary files and notes, and no
/// others.
void remove_unfinished(const import_job& job);

}  // namespace corvane
