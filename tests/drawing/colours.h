// Colours of the tests' pages.
#pragma once

#include "formats/drawn_page.h"

namespace corvane::drawing_test {

inline constexpr page_colour black{0, 0, 0, 255}, white{255, 255, 255, 255}, red{255, 0, 0, 255},
    blue{0, 0, 255, 255}, green{0, 200, 0, 255};

}  // namespace corvane::drawing_test
