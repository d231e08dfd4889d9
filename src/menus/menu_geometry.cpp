#include "menus/menu_geometry.h"

#include "formats/numbers.h"
#include "project/menu_rows.h"

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {

/// `value` of `from` as part of `to`.
int scaled(int value, int from, int to) {
  constexpr double drawable = 30000;
  if (from <= 0)
    return 0;
  const double exact = static_cast<double>(value) * to / from;
  return static_cast<int>(std::clamp(std::floor(exact + 0.5), -drawable, drawable));
}

}  // namespace

int largest_y(std::string_view region) {
  return region == "PAL" ? 575 : 479;
}

menu_rectangle edges_of(std::string_view record) {
  const button_record b = parse_button(record);
  return {leading_whole(b.x0), leading_whole(b.y0), leading_whole(b.x1), leading_whole(b.y1)};
}

menu_rectangle picture_scale::to_picture(const menu_rectangle& r) const {
  return {scaled(r.x0, largest_x, width), scaled(r.y0, ymax, height),
          scaled(r.x1, largest_x, width), scaled(r.y1, ymax, height)};
}

menu_point picture_scale::to_menu(int x, int y) const {
  return {scaled(x, width, largest_x), scaled(y, height, ymax)};
}

}  // namespace corvane
