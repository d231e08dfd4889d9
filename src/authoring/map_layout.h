// Where the nodes and arrows of a disc's map stand: in columns by their distance from first play,
// in an order in which few arrows cross.
//
// A pure function of the map: the same map is always laid out the same. Lengths are units of the
// drawing, which are pixels at 100 %; x to the right, y down, the whole from 0, 0.
//
// An arrow leaves from the row of its button or title's end, at the side that its target is on, and
// arrives at the side of the target's head. One that has to pass other columns goes through lanes
// between their nodes, which arrows to the same target share. When there are many columns they
// stand in bands, one below the other.
#pragma once

#include "examine/disc_map.h"

#include <array>
#include <cstddef>
#include <vector>

namespace corvane {

struct map_point {
  double x = 0, y = 0;
  bool operator==(const map_point&) const = default;
};

struct map_box {
  double x = 0, y = 0, width = 0, height = 0;
  bool operator==(const map_box&) const = default;
};

/// How nodes are made up. Each has a head, with a picture on its left, and a row for each exit.
namespace map_measures {
inline constexpr double width = 236;
inline constexpr double head = 66;
inline constexpr double first_play_head = 34;
inline constexpr double row = 18;
inline constexpr double foot = 6;   ///< below the rows
inline constexpr double inset = 8;  ///< of texts and pictures
inline constexpr double picture_width = 72, picture_height = 54;
}  // namespace map_measures

struct laid_arrow {
  std::size_t arrow = 0;  ///< of the map's arrows
  std::vector<map_point> points;
  bool operator==(const laid_arrow&) const = default;
};

struct map_layout {
  std::vector<map_box> boxes;      ///< one for each node of the map
  std::vector<laid_arrow> arrows;  ///< of those that lead to a place
  std::vector<std::size_t> order;  ///< the nodes column by column, each from its top
  double width = 0, height = 0;
  bool operator==(const map_layout&) const = default;
};

enum class map_order {
  few_crossings,
  by_number,  ///< as nodes are first met; what `few_crossings` is held against
};

map_layout lay_out(const disc_map& map, map_order order = map_order::few_crossings);

/// The middle of an exit's row, from the top of its node. `exit`: 1-based.
double exit_height(const map_place& place, int exit);

/// The line of an arrow as Bezier curves, each from the end of the one before (the first from the
/// first point): two control points and its end.
std::vector<std::array<map_point, 3>> curves_of(const std::vector<map_point>& points);

/// Of the same node's arrows the one for this exit starts here, at its right side.
map_point exit_point(const map_box& box, const map_place& place, int exit);

}  // namespace corvane
