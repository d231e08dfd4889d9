// What has to hold of any bytes.
#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the program, and says what does not hold.
inline void must(bool holds, const char* what) {
  if (holds)
    return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}
