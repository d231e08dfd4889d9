// Where several buttons stand after they were brought in line, spread out or made equal. Pure
// arithmetic on their rectangles: none is moved out of the picture by it, but those of unequal size
// may come to overlap.
#pragma once

#include "menus/menu_geometry.h"

#include <cstddef>
#include <vector>

namespace corvane {

enum class alignment { left, centre, right, top, middle, bottom };

/// Each is moved to the edge, or to the middle, of what all of them take up. The middle of an odd
/// remainder is the one further left or up.
std::vector<menu_rectangle> aligned(std::vector<menu_rectangle> places, alignment to);

enum class direction { across, down };

/// The outermost ones stay; the others stand between them with equal gaps, which may differ by a
/// pixel. In the order in which they stand; fewer than three stay as they are.
std::vector<menu_rectangle> distributed(std::vector<menu_rectangle> places, direction along);

/// The first in the order in which they stand stays; behind each comes the gap that is between the
/// first two, kept even downwards so that lines stay even.
std::vector<menu_rectangle> with_same_gap(std::vector<menu_rectangle> places, direction along);

/// All get the size of `as` (0-based); their upper left corners stay. What would reach out of the
/// picture (719, `ymax`) moves back into it.
std::vector<menu_rectangle> with_same_width(std::vector<menu_rectangle> places, std::size_t as);
std::vector<menu_rectangle> with_same_height(std::vector<menu_rectangle> places, std::size_t as,
                                             int ymax);

/// The upper and the lower edge on even lines, as interlaced pictures want them: the nearest ones
/// above the one and below the other that are in the picture.
menu_rectangle on_even_lines(menu_rectangle place, int ymax);

}  // namespace corvane
