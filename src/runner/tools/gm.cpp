#include "runner/tools/gm.h"

#include <algorithm>

namespace corvane {

bool gm_ways::reads_errors(const tool_call& /*call*/) const {
  return true;
}

bool gm_ways::forgives(const program_end& end, std::string_view errors) const {
  if (end.how != program_end::kind::exited || end.number != 1)
    return false;
  bool said = false;
  while (!errors.empty()) {
    const std::string_view line = errors.substr(0, errors.find('\n'));
    errors.remove_prefix(std::min(errors.size(), line.size() + 1));
    if (line.find_first_not_of(" \r") == std::string_view::npos)
      continue;
    if (line.find("Non-conforming drawing primitive definition") == std::string_view::npos)
      return false;
    said = true;
  }
  return said;
}

}  // namespace corvane
