#include "platform/files/program_folder.h"

#include <array>
#include <climits>
#include <cstddef>
#include <cstdlib>
#include <unistd.h>

namespace corvane {

std::string own_executable() {
  std::array<char, PATH_MAX> path{};
  const ssize_t length = ::readlink("/proc/self/exe", path.data(), path.size());
  if (length <= 0)
    return {};
  return std::string(path.data(), static_cast<std::size_t>(length));
}

std::vector<std::string> utf8_arguments(int argc, char** argv) {
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; ++i)
    arguments.emplace_back(argv[i]);
  return arguments;
}

std::string argument_text(int argc, char** argv) {
  std::string text;
  for (int i = 1; i < argc; ++i)
    text += (i == 1 ? "" : " ") + std::string(argv[i]);
  return text;
}

}  // namespace corvane
