#include "platform/files/program_folder.h"
#include "platform/text/utf16_windows.h"

#include <cstddef>
#include <cwchar>
#include <windows.h>
// After windows.h, whose types it uses.
#include <shellapi.h>

namespace corvane {

std::string own_executable() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length =
        ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return utf8_of_utf16(path);
    }
    path.resize(path.size() * 2);
  }
}

std::vector<std::string> utf8_arguments(int, char**) {
  std::vector<std::string> arguments;
  int count = 0;
  wchar_t** const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  if (words == nullptr)
    return arguments;
  for (int i = 1; i < count; ++i)
    arguments.push_back(utf8_of_utf16(words[i]));
  ::LocalFree(words);
  return arguments;
}

std::string argument_text(int, char**) {
  return std::string(after_program(utf8_of_utf16(::GetCommandLineW())));
}

}  // namespace corvane
