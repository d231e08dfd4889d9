#include "platform/processes/standard_files.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace corvane {

// A file that is opened takes the lowest number that is free, and those below are taken by then.
void fill_standard_files() {
  for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    if (::fcntl(number, F_GETFD) < 0 && errno == EBADF)
      ::open("/dev/null", O_RDWR);
}

}  // namespace corvane
