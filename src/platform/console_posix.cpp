#include "platform/console.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace corvane {

utf8_console::utf8_console() : old_code_page_(0) {}
utf8_console::~utf8_console() = default;

bool output_is_terminal() {
  return ::isatty(STDOUT_FILENO) == 1;
}

int terminal_width() {
  winsize size{};
  if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0)
    return 80;
  return size.ws_col;
}

}  // namespace corvane
