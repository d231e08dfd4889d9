// Where the nodes and arrows of a disc's map stand.
#include "authoring/map_layout.h"

#include "authoring/random_maps.h"
#include "support/menu_of_actions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace corvane {
namespace {

using testing_support::menu_of_actions;
using testing_support::random_disc;

constexpr double near_enough = 0.01;

const map_box& box_of(const disc_map& map, const map_layout& layout, const map_place& place) {
  for (std::size_t i = 0; i < map.nodes.size(); ++i)
    if (map.nodes[i].place == place)
      return layout.boxes[i];
  throw std::out_of_range("no such node");
}

bool overlap(const map_box& a, const map_box& b) {
  return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height;
}

bool is_at_side(const map_point& p, const map_box& box) {
  const bool at_x =
      std::abs(p.x - box.x) < near_enough || std::abs(p.x - box.x - box.width) < near_enough;
  return at_x && p.y > box.y && p.y < box.y + box.height;
}

/// Whether two straight parts cross, not at their ends.
bool parts_cross(const map_point& a, const map_point& b, const map_point& c, const map_point& d) {
  const auto side = [](const map_point& p, const map_point& q, const map_point& r) {
    return (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x);
  };
  return side(a, b, c) * side(a, b, d) < -near_enough &&
         side(c, d, a) * side(c, d, b) < -near_enough;
}

/// Of the slanting parts between columns; those that arrows share count once.
int crossings(const map_layout& layout) {
  std::vector<std::pair<map_point, map_point>> parts;
  const auto is_there = [&parts](const map_point& a, const map_point& b) {
    return std::find(parts.begin(), parts.end(), std::pair(a, b)) != parts.end();
  };
  for (const laid_arrow& arrow : layout.arrows)
    for (std::size_t i = 0; i + 1 < arrow.points.size(); ++i) {
      const map_point& a = arrow.points[i];
      const map_point& b = arrow.points[i + 1];
      if (a.x != b.x && a.y != b.y && !is_there(a, b))
        parts.emplace_back(a, b);
    }
  int count = 0;
  for (std::size_t i = 0; i < parts.size(); ++i)
    for (std::size_t j = i + 1; j < parts.size(); ++j)
      count +=
          parts_cross(parts[i].first, parts[i].second, parts[j].first, parts[j].second) ? 1 : 0;
  return count;
}

void expect_sound(const disc_map& map, const map_layout& layout) {
  ASSERT_EQ(layout.boxes.size(), map.nodes.size());
  for (std::size_t i = 0; i < layout.boxes.size(); ++i) {
    const map_box& box = layout.boxes[i];
    EXPECT_GE(box.x, 0);
    EXPECT_GE(box.y, 0);
    EXPECT_LE(box.x + box.width, layout.width);
    EXPECT_LE(box.y + box.height, layout.height);
    for (std::size_t j = i + 1; j < layout.boxes.size(); ++j)
      EXPECT_FALSE(overlap(box, layout.boxes[j]))
          << name_of(map.nodes[i].place) << " and " << name_of(map.nodes[j].place);
  }
  EXPECT_EQ(std::set<std::size_t>(layout.order.begin(), layout.order.end()).size(),
            map.nodes.size());
  EXPECT_EQ(layout.order.size(), map.nodes.size());
  for (const laid_arrow& laid : layout.arrows) {
    const map_arrow& arrow = map.arrows[laid.arrow];
    ASSERT_GE(laid.points.size(), 2u);
    EXPECT_TRUE(is_at_side(laid.points.front(), box_of(map, layout, arrow.from)))
        << source_text(arrow);
    EXPECT_TRUE(is_at_side(laid.points.back(), box_of(map, layout, arrow.to)))
        << source_text(arrow);
    for (const map_point& p : laid.points) {
      EXPECT_TRUE(p.x >= 0 && p.x <= layout.width) << source_text(arrow);
      EXPECT_TRUE(p.y >= 0 && p.y <= layout.height) << source_text(arrow);
    }
  }
}

TEST(MapLayout, NodesOfRandomDiscsStandApartAndArrowsEndAtTheirs) {
  for (unsigned seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    const disc_map map = map_of(random_disc(seed), false);
    const map_layout layout = lay_out(map);
    expect_sound(map, layout);
    const auto leads = [](const map_arrow& a) { return a.end == map_arrow::end_kind::place; };
    EXPECT_EQ(static_cast<std::ptrdiff_t>(layout.arrows.size()),
              std::count_if(map.arrows.begin(), map.arrows.end(), leads));
    EXPECT_EQ(layout, lay_out(map)) << "the same map is laid out the same";
  }
}

TEST(MapLayout, ArrowsCrossNoMoreOftenThanInTheOrderOfNumbers) {
  int few = 0, simple = 0;
  for (unsigned seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    const disc_map map = map_of(random_disc(seed), false);
    few += crossings(lay_out(map));
    simple += crossings(lay_out(map, map_order::by_number));
  }
  EXPECT_LT(few, simple * 0.85);
}

TEST(MapLayout, OrdersMenusSoThatNoArrowCrossesWhereNoneHasTo) {
  disc_description d;
  d.titles.resize(4);
  for (disc_title& title : d.titles)
    title.post = command_of("exit");
  d.menus.push_back(menu_of_actions({"jump menu 3", "jump menu 2"}));
  d.menus.push_back(menu_of_actions({"jump title 4", "jump title 2"}));
  d.menus.push_back(menu_of_actions({"jump title 3", "jump title 1"}));
  const map_layout layout = lay_out(map_of(d, false));
  EXPECT_EQ(crossings(layout), 0);
}

TEST(MapLayout, StandsInColumnsByTheDistanceFromFirstPlay) {
  disc_description d;
  d.titles.resize(3);
  const disc_map map = map_of(d, false);
  const map_layout layout = lay_out(map);
  ASSERT_EQ(layout.boxes.size(), 4u);
  for (std::size_t i = 0; i + 1 < layout.boxes.size(); ++i)
    EXPECT_LT(layout.boxes[i].x + layout.boxes[i].width, layout.boxes[i + 1].x);
}

TEST(MapLayout, LongRowOfTitlesIsFoldedIntoAShapeThatFitsAWindow) {
  disc_description d;
  d.titles.resize(30);
  const disc_map map = map_of(d, false);
  const map_layout layout = lay_out(map);
  expect_sound(map, layout);
  EXPECT_LT(layout.width, 4 * layout.height);
}

TEST(MapLayout, TwelveMenusAndThirtyTitlesHaveAShapeThatFitsAWindow) {
  const disc_map map = map_of(random_disc(7, 12, 30), false);
  const map_layout layout = lay_out(map);
  expect_sound(map, layout);
  EXPECT_LT(layout.width, 4 * layout.height);
  EXPECT_LT(layout.height, 2 * layout.width);
}

TEST(MapLayout, NothingIsLaidOutAsNothing) {
  EXPECT_EQ(lay_out(disc_map()), map_layout());
}

TEST(MapLayout, CurvesGoFromTheFirstPointToTheLast) {
  const std::vector<map_point> points = {{0, 0}, {20, 0}, {20, 50}, {0, 50}, {-30, 80}};
  const auto curves = curves_of(points);
  ASSERT_FALSE(curves.empty());
  EXPECT_EQ(curves.back()[2], points.back());
  EXPECT_EQ(curves.front()[0], points.front());
}

}  // namespace
}  // namespace corvane
