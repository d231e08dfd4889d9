// Files dropped on the window, turned into the commands a user would have chosen.
#pragma once

#include "project/document.h"

#include <string>
#include <vector>

namespace corvane {

/// Runs the commands for files (native paths) dropped together: a project file is loaded; each
/// video starts a title with the dropped audio whose name goes with it (movie.m2v takes movie.ac3,
/// then movie.de.ac3 as further streams), asking for the audio where none was dropped; audio alone
/// is added to the selected title. Every question and refusal is the command's own. Files of other
/// kinds are named in one message.
///
/// Gives those that were refused as titles, but can be made into them by an import.
std::vector<std::string> drop_files(document& doc, const std::vector<std::string>& native_paths);

/// Those of them that drop_files would name as of another kind, but that are films: what
/// "import..." is for.
std::vector<std::string> films_to_import(const std::vector<std::string>& native_paths);

/// Likewise those that are pictures, of which stills can be made.
std::vector<std::string> pictures_for_stills(const std::vector<std::string>& native_paths);

}  // namespace corvane
