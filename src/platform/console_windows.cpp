#include "platform/console.h"

#include <windows.h>

namespace corvane {

utf8_console::utf8_console() : old_code_page_(::GetConsoleOutputCP()) {
  ::SetConsoleOutputCP(CP_UTF8);
}

utf8_console::~utf8_console() {
  // The code page is the console's, which other programs go on using.
  if (old_code_page_ != 0)
    ::SetConsoleOutputCP(old_code_page_);
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
