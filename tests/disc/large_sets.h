// Sets of projects and discs that are too large for every run of the tests: a tenth of them is
// taken, always the same, and all of them with CORVANE_WHOLE_SETS (scripts/whole-sets.sh).
#pragma once

#include <cstdlib>

namespace corvane::disc {

inline int part_of_set(int all) {
  return std::getenv("CORVANE_WHOLE_SETS") == nullptr ? all / 10 : all;
}

}  // namespace corvane::disc
