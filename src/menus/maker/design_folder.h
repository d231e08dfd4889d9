// Where designs are found: those that come with the program, and the user's own.
#pragma once

#include "menus/maker/menu_design.h"
#include "platform/result.h"

#include <string>
#include <vector>

namespace corvane {

/// A file that ends with ".design".
struct found_design {
  std::string id;              ///< the file's name without its ending: "amber"
  std::string file;            ///< native path
  bool is_own = false;         ///< the user's
  result<menu_design> design;  ///< or why it cannot be used
};

/// "designs" beside the program, or where systems keep what programs share; empty if neither is
/// there.
std::string program_designs_folder();

/// "my designs" in the program folder (platform/files/program_folder.h); it need not be there.
std::string own_designs_folder(const std::string& app);

/// All designs of the folders (native; empty or missing ones have none), by their names. One of the
/// user's takes the place of the program's with the same file name.
std::vector<found_design> designs_in(const std::string& of_program, const std::string& own);

/// The one that is called so, by its file's name without the ending or by the name that it states,
/// whatever its letters' case; or a file's path. Fails with a sentence.
result<found_design> design_named(const std::vector<found_design>& designs,
                                  const std::string& name);

/// Reads a design file (native path).
found_design design_at(const std::string& file);

}  // namespace corvane
