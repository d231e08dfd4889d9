#include "platform/user_folders_posix.h"

#include "platform/paths.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace corvane {

std::string environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

std::string home_folder() {
  const std::string home = environment("HOME");
  if (is_absolute(home))
    return home;
  const passwd* const user = ::getpwuid(::getuid());
  return user == nullptr || user->pw_dir == nullptr ? std::string("/") : std::string(user->pw_dir);
}

}  // namespace corvane
