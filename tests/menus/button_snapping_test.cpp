// To which lines a dragged button is drawn.
#include "menus/button_snapping.h"

#include <gtest/gtest.h>

#include <vector>

namespace corvane {
namespace {

using guide_kind = snap_guide::kind;

const std::vector<menu_rectangle> one = {{200, 100, 300, 140}};

TEST(ButtonSnapping, SafeAreasAreOnEvenLinesInBothRegions) {
  EXPECT_EQ(action_safe_rectangle(479), (menu_rectangle{36, 24, 684, 456}));
  EXPECT_EQ(title_safe_rectangle(479), (menu_rectangle{72, 48, 648, 432}));
  EXPECT_EQ(action_safe_rectangle(575), (menu_rectangle{36, 30, 684, 546}));
  EXPECT_EQ(title_safe_rectangle(575), (menu_rectangle{72, 58, 648, 518}));
}

TEST(ButtonSnapping, EdgesAreDrawnToEdgesAndMiddlesToMiddles) {
  const struct {
    const char* what;
    menu_rectangle place;
    int dx, dy;
  } table[] = {
      {"left to left", {203, 300, 243, 310}, -3, 0},
      {"left to right", {297, 300, 337, 310}, 3, 0},
      {"right to left", {158, 300, 198, 310}, 2, 0},
      {"right to right", {252, 300, 302, 310}, -2, 0},
      {"middle to middle", {229, 300, 269, 310}, 1, 0},
      {"just within reach", {204, 300, 244, 310}, -4, 0},
      {"just out of reach", {205, 300, 241, 310}, 0, 0},
      {"the nearest of all", {199, 300, 303, 310}, 1, 0},
      {"top to top", {400, 102, 500, 172}, 0, -2},
      {"top to bottom", {400, 137, 500, 187}, 0, 3},
      {"bottom to top", {400, 81, 500, 99}, 0, 1},
      {"middle to middle of lines", {400, 112, 500, 132}, 0, -2},
      {"no edge to a middle", {249, 300, 289, 310}, 0, 0},
      {"middle of the picture's lines", {400, 222, 500, 262}, 0, -2},
      {"both", {203, 102, 243, 172}, -3, -2},
      {"safe area of actions", {34, 300, 55, 310}, 2, 0},
      {"safe area of titles", {600, 300, 650, 310}, -2, 0},
      {"lower safe area", {400, 400, 500, 458}, 0, -2},
      {"middle of the picture", {321, 300, 401, 310}, -1, 0},
  };
  for (const auto& row : table) {
    const snapping s = snapped(row.place, one, 479);
    EXPECT_EQ(s.dx, row.dx) << row.what;
    EXPECT_EQ(s.dy, row.dy) << row.what;
  }
}

TEST(ButtonSnapping, WithoutALineNearTheUpperEdgeComesToAnEvenLine) {
  EXPECT_EQ(snapped({500, 301, 550, 311}, one, 479).dy, -1);
  EXPECT_EQ(snapped({500, 302, 550, 312}, one, 479).dy, 0);
  EXPECT_TRUE(snapped({500, 301, 550, 311}, one, 479).guides.empty());
}

TEST(ButtonSnapping, OnlyThePartsThatAreDraggedAreDrawn) {
  const menu_rectangle place{203, 102, 243, 171};
  const snapped_parts right{false, false, true, false, false, false};
  EXPECT_EQ(snapped(place, one, 479, right).dx, 0);
  EXPECT_EQ(snapped(place, one, 479, right).dy, 0);
  const snapped_parts bottom{false, false, false, false, false, true};
  EXPECT_EQ(snapped(place, one, 479, bottom).dx, 0);
  EXPECT_EQ(snapped(place, one, 479, bottom).dy, -1);  // to an even line
  const snapped_parts left{true, false, false, false, false, false};
  EXPECT_EQ(snapped(place, one, 479, left).dx, -3);
}

TEST(ButtonSnapping, GuidesAreTheLinesOnWhichItStandsThenAndReachOverBoth) {
  const snapping s = snapped({203, 300, 243, 310}, one, 479);
  ASSERT_EQ(s.guides.size(), 1u);
  EXPECT_EQ(s.guides[0], (snap_guide{guide_kind::button, true, 200, 100, 310}));
  // A place of the same size meets both edges and the middle.
  EXPECT_EQ(snapped({201, 300, 301, 310}, one, 479).guides.size(), 3u);
  // Two buttons on one line: it is one guide, over all of them.
  const std::vector<menu_rectangle> two = {{200, 100, 300, 140}, {200, 400, 280, 420}};
  const snapping upright = snapped({203, 300, 243, 310}, two, 479);
  ASSERT_EQ(upright.guides.size(), 1u);
  EXPECT_EQ(upright.guides[0], (snap_guide{guide_kind::button, true, 200, 100, 420}));
  const snapping lying = snapped({400, 102, 500, 172}, one, 479);
  ASSERT_EQ(lying.guides.size(), 1u);
  EXPECT_EQ(lying.guides[0], (snap_guide{guide_kind::button, false, 100, 200, 500}));
  EXPECT_EQ(snapped({34, 300, 55, 310}, one, 479).guides[0].what, guide_kind::safe_area);
  EXPECT_EQ(snapped({321, 300, 401, 310}, one, 479).guides[0].what, guide_kind::picture_middle);
}

}  // namespace
}  // namespace corvane
