#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/files/program_folder.h"
#include "platform/text/utf16_windows.h"

#include <system_error>
#include <windows.h>

namespace corvane {
namespace {

/// The lock's file, which every run makes, is the proof. In "Program Files" it cannot be made.
failure why_not_writable(const std::string& folder) {
  const HANDLE file = ::CreateFileW(utf16(join_path(folder, "corvane.lock")).c_str(), GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE)
    return std::system_category().message(static_cast<int>(::GetLastError()));
  ::CloseHandle(file);
  return std::nullopt;
}

}  // namespace

std::string program_folder() {
  return text_of(path_of(own_executable()).parent_path());
}

failure enter_program_folder(const std::string& folder) {
  if (const auto why = why_not_storable(folder))
    return "\"" + folder + "\" cannot be the program folder: its name " + *why;
  if (::SetCurrentDirectoryW(utf16(folder).c_str()) == 0)
    return "the program folder \"" + folder + "\" cannot be entered: " +
           std::system_category().message(static_cast<int>(::GetLastError()));
  if (const failure why = why_not_writable(folder))
    return "nothing can be written into the program folder \"" + folder + "\": " + *why +
           ".  The files of a run go there: please put the program into a folder of your own";
  remove_left_parts(folder);
  return std::nullopt;
}

bool tool_is_there(const std::string& folder, const std::string& name) {
  return file_exists(tool_path(folder, name));
}

}  // namespace corvane
