// Lengths as a person reads them.
#pragma once

#include <string>

namespace corvane {

/// "1:32:05", "2:05".
std::string clock_text(double seconds);

}  // namespace corvane
