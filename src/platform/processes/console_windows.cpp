#include "platform/processes/console.h"

#include <cstdio>
#include <cstdlib>
#include <windows.h>

namespace corvane {

void use_callers_console() {
  const HANDLE led = ::GetStdHandle(STD_OUTPUT_HANDLE);
  if (led != nullptr && led != INVALID_HANDLE_VALUE && ::GetFileType(led) != FILE_TYPE_UNKNOWN)
    return;
  if (::AttachConsole(ATTACH_PARENT_PROCESS) != 0)
    static_cast<void>(std::freopen("CONOUT$", "w", stdout));
}

void use_utf8_console() {
  // The code page is the console's, which other programs go on using.
  static const UINT old_code_page = ::GetConsoleOutputCP();
  if (old_code_page == 0)
    return;
  ::SetConsoleOutputCP(CP_UTF8);
  std::atexit([] { ::SetConsoleOutputCP(old_code_page); });
}

bool output_is_terminal() {
  DWORD mode = 0;
  return ::GetConsoleMode(::GetStdHandle(STD_OUTPUT_HANDLE), &mode) != 0;
}

int terminal_width() {
  CONSOLE_SCREEN_BUFFER_INFO info{};
  if (::GetConsoleScreenBufferInfo(::GetStdHandle(STD_OUTPUT_HANDLE), &info) == 0)
    return 80;
  return info.srWindow.Right - info.srWindow.Left + 1;
}

}  // namespace corvane
