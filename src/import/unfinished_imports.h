// What an import leaves when its program is killed: the files under temporary names, which a small
// file of the program folder lists while it runs, so that the next import removes them.
//
// To be called with the folder's lock taken. `app`: the program folder, native.
#pragma once

#include "import/import_script.h"
#include "platform/result.h"

#include <string>

namespace corvane {

/// Lists what the import makes before it is whole, beside what an earlier one has left.
failure note_unfinished(const std::string& app, const import_job& job);

/// Removes what is listed, and the list when nothing of it is left: what cannot be removed, and
/// what lies in a folder that is not there now, stays in it. Only files with the names that imports
/// give are touched, whatever the list holds.
void remove_left_imports(const std::string& app);

}  // namespace corvane
