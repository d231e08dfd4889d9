// Which part of a page is not as it was.
#pragma once

#include "drawing/page_canvas.h"

#include <algorithm>

namespace corvane::drawing_test {

/// The smallest box around all pixels that are not of this colour; none: 0 wide and high.
inline page_box inked_box(const page_canvas& canvas, page_colour paper) {
  int left = canvas.width, right = 0, top = canvas.height, bottom = 0;
  for (int y = 0; y < canvas.height; ++y)
    for (int x = 0; x < canvas.width; ++x)
      if (!(canvas.at(x, y) == paper)) {
        left = std::min(left, x);
        right = std::max(right, x + 1);
        top = std::min(top, y);
        bottom = y + 1;
      }
  return left < right ? page_box{left, top, right - left, bottom - top} : page_box{};
}

}  // namespace corvane::drawing_test
