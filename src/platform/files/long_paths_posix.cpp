#include "platform/files/long_paths.h"

namespace corvane {

std::optional<std::size_t> longest_path() {
  return std::nullopt;
}

}  // namespace corvane
