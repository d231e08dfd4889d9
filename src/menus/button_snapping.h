// To what a button is drawn while it is dragged: edges and middles of the other buttons, the safe
// areas, the middle of the picture, and even lines. Pure arithmetic; menu pixels.
#pragma once

#include "menus/menu_geometry.h"

#include <span>
#include <vector>

namespace corvane {

/// A line that what is dragged stands on: to be drawn while it is dragged.
struct snap_guide {
  enum class kind { button, safe_area, picture_middle };
  kind what = kind::button;
  bool upright = false;  ///< at x = `at`, from y = `from` to `to`; else at y = `at`, from x
  int at = 0, from = 0, to = 0;
  bool operator==(const snap_guide&) const = default;
};

/// What of a rectangle is drawn to lines. With none it only comes to even lines.
struct snapped_parts {
  bool left = true, centre = true, right = true;
  bool top = true, middle = true, bottom = true;
};

struct snapping {
  int dx = 0, dy = 0;  ///< by how much to move it further
  std::vector<snap_guide> guides;
};

/// How far from a line it still draws.
inline constexpr int snap_reach = 4;

/// The safe areas of a picture: 90 % (action) and 80 % (titles) of it, on even lines.
menu_rectangle action_safe_rectangle(int ymax);
menu_rectangle title_safe_rectangle(int ymax);

/// How `place` is drawn to the lines that are near. Edges are drawn to edges, middles to middles,
/// to the nearest of all. Where no line is near above or below, the first of its upper and lower
/// edge that is drawn at all comes to an even line.
snapping snapped(const menu_rectangle& place, std::span<const menu_rectangle> others, int ymax,
                 const snapped_parts& parts = {});

}  // namespace corvane
