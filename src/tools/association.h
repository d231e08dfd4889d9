// The association of project files (.cvp) with the program, so that opening one in the file manager
// starts the program with it.
//
// Windows: a registry script in the program folder, handed to regedit, which asks the user and says
// what came of it. Linux: a desktop entry, a MIME type and icons among the user's own data, and the
// default in mimeapps.list; doing it again when all that stands offers to take it away.
#pragma once

#include "platform/files/paths.h"
#include "platform/processes/desktop.h"
#include "project/document.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {

inline constexpr std::string_view project_mime_type = "application/x-corvane-project";
inline constexpr std::string_view desktop_entry_name = "corvane.desktop";

/// extension.reg for the program folder `app` (Windows form), lines ended by CR LF.
std::string registry_script(std::string_view app);

/// removeextension.reg: takes back what the other set.
std::string registry_removal_script();

/// corvane.desktop for the executable `program` (POSIX form).
std::string desktop_entry(std::string_view program);

/// The MIME type of project files, for the shared MIME database.
std::string mime_type_xml();

/// Whether a mimeapps.list names Corvane first for project files, and the list without it.
bool is_default_in(std::string_view mimeapps);
std::string without_corvane(std::string_view mimeapps);

/// What the command needs of the program around it.
struct association_equipment {
  std::string app;          ///< program folder, native and absolute
  std::string program;      ///< own executable, native and absolute
  std::string icon;         ///< the program's picture, SVG
  desktop_folders folders;  ///< the user's own; not used on Windows
  desktop& user_desktop;
  path_style style = native_style();
};

enum class association_result {
  associated,  ///< Windows: regedit has the script. Linux: done (a message was shown)
  kept,        ///< it stood already, and stays
  removed,     ///< it stood already, and the user wanted it gone
  incomplete,  ///< something could not be written or run; a message was shown
};

/// "register .cvp extension". The project is not touched.
association_result register_command(document& doc, const association_equipment& e);

}  // namespace corvane
