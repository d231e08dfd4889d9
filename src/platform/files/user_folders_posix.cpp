#include "platform/files/user_folders_posix.h"

#include "platform/files/files.h"
#include "platform/files/paths.h"

#include <cstdlib>
#include <pwd.h>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace corvane {
namespace {

/// The folders that commands are looked up in. An entry that depends on the current folder ("",
/// ".") is left out: the links outlive it.
std::vector<std::string> command_folders() {
  std::string path = environment("PATH");
  if (path.empty())
    path = "/usr/local/bin:/usr/bin:/bin";
  std::vector<std::string> folders;
  for (std::string_view rest = path; !rest.empty();) {
    const auto colon = rest.find(':');
    const std::string_view folder = rest.substr(0, colon);
    if (is_absolute(folder))
      folders.emplace_back(folder);
    rest.remove_prefix(colon == std::string_view::npos ? rest.size() : colon + 1);
  }
  return folders;
}

}  // namespace

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

bool can_be_started(const std::string& path) {
  return file_exists(path) && ::access(path.c_str(), X_OK) == 0;
}

std::optional<std::string> command_on_path(const std::string& name) {
  for (const std::string& folder : command_folders())
    if (std::string path = join_path(folder, name); can_be_started(path))
      return path;
  return std::nullopt;
}

}  // namespace corvane
