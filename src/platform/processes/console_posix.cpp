#include "platform/processes/console.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace corvane {

void use_callers_console() {
  // Standard output is there.
}

void use_utf8_console() {
  // Terminals take it already.
}

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
