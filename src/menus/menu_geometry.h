// Rectangles of buttons, in menu pixels (x 0 to 719; y 0 to `ymax`, 479 for NTSC and 575 for PAL)
// and in the pixels of the picture that a window shows of the menu.
#pragma once

#include <string_view>

namespace corvane {

/// The largest x of both regions.
inline constexpr int largest_x = 719;

/// The largest y: 575 for "PAL", else 479.
int largest_y(std::string_view region);

struct menu_point {
  int x = 0, y = 0;
  bool operator==(const menu_point&) const = default;
};

/// A rectangle. Of a record that somebody wrote by hand it can be anything, also turned around.
struct menu_rectangle {
  int x0 = 0, y0 = 0, x1 = 0, y1 = 0;
  bool contains(int x, int y) const { return x0 <= x && x <= x1 && y0 <= y && y <= y1; }
  bool operator==(const menu_rectangle&) const = default;
};

/// The edges of a button record; what is not a number is 0.
menu_rectangle edges_of(std::string_view record);

/// Menu pixels to picture pixels and back, rounded to the nearest: 719 and `ymax` are the picture's
/// right and bottom ends. Coordinates are kept within +-30000, which every toolkit can draw.
struct picture_scale {
  int width = 0, height = 0;  ///< of the picture, in pixels; 0 gives 0
  int ymax = 0;
  menu_rectangle to_picture(const menu_rectangle& r) const;
  menu_point to_menu(int x, int y) const;
};

}  // namespace corvane
