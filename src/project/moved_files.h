// Files of a project that are somewhere else now: a disk has another name, or a folder was moved.
#pragma once

#include "project/document.h"
#include "project/project.h"

#include <string>
#include <vector>

namespace corvane {

class file_lookup;

/// The stored paths that a project names and that are no files, each once, in the order of the
/// project: streams of titles, of menus, bitmaps of buttons, subtitles.
std::vector<std::string> missing_files(const project& p, file_lookup& files);

struct found_file {
  std::string missing;  ///< stored path
  std::string found;    ///< stored path of the file that has taken its place
  bool operator==(const found_file&) const = default;
};

/// Looks for files in a folder (native) and the folders below it: one of the same name. Of several,
/// the one with most folders of the same names above it; none where two are alike in that.
std::vector<found_file> look_for(const std::vector<std::string>& missing,
                                 const std::string& folder);

/// Asks for the folder of files that are missing, and takes those that are found there, until none
/// is missing or the user knows no folder. With what he has given up he is not asked again by the
/// same document. `files` knows the new ones afterwards. Returns whether `p` was changed.
bool offer_to_find_files(document& doc, project& p, file_lookup& files);

/// Puts the files that were found into the project's rows.
void take_found_files(project& p, const std::vector<found_file>& found);

}  // namespace corvane
