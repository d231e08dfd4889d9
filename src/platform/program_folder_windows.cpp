#include "platform/files.h"
#include "platform/paths.h"
#include "platform/program_folder.h"
#include "platform/wide_windows.h"

#include <system_error>
#include <windows.h>

namespace corvane {

std::string program_folder() {
  return text_of(path_of(own_executable()).parent_path());
}

failure enter_program_folder(const std::string& folder) {
  if (const auto why = why_not_storable(folder))
    return "\"" + folder + "\" cannot be the program folder: its name " + *why;
  if (::SetCurrentDirectoryW(wide(folder).c_str()) == 0)
    return "the program folder \"" + folder + "\" cannot be entered: " +
           std::system_category().message(static_cast<int>(::GetLastError()));
  return std::nullopt;
}

bool tool_is_there(const std::string& folder, const std::string& name) {
  return file_exists(tool_path(folder, name));
}

}  // namespace corvane
