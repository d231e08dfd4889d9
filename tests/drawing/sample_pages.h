// Pages as menus have them, in several styles, for tests and for looking at (draw_pages.cpp).
#pragma once

#include "drawing/fitted_picture.h"
#include "formats/drawn_page.h"

#include <string>
#include <utility>
#include <vector>

namespace corvane::drawing_test {

struct named_page {
  std::string name;
  drawn_page page;
};

/// A page without anything on it: 480 or 576 lines.
drawn_page empty_page(int height, bool is_wide);

/// Three styles in both standards and both shapes: a list on a gradient, a grid of thumbnails on a
/// picture, texts over a bright picture. Files that they name: "film" and "photo".
std::vector<named_page> sample_pages();

/// What stands for those files: a circle on colours, and one that is as bright as pictures become.
shaped_picture sample_picture(const std::string& file);

}  // namespace corvane::drawing_test
