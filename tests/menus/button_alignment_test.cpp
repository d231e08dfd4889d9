// Buttons brought in line, spread out, made equal.
#include "menus/button_alignment.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace corvane {

static void PrintTo(const menu_rectangle& r, std::ostream* out) {
  *out << r.x0 << "," << r.y0 << "-" << r.x1 << "," << r.y1;
}

namespace {

using places = std::vector<menu_rectangle>;

const places three = {{100, 50, 200, 90}, {40, 100, 90, 103}, {300, 201, 361, 281}};

TEST(ButtonAlignment, EachComesToTheEdgeOrTheMiddleOfAll) {
  const struct {
    alignment to;
    places wanted;
  } table[] = {
      {alignment::left, {{40, 50, 140, 90}, {40, 100, 90, 103}, {40, 201, 101, 281}}},
      {alignment::right, {{261, 50, 361, 90}, {311, 100, 361, 103}, {300, 201, 361, 281}}},
      {alignment::centre, {{150, 50, 250, 90}, {175, 100, 225, 103}, {170, 201, 231, 281}}},
      {alignment::top, {{100, 50, 200, 90}, {40, 50, 90, 53}, {300, 50, 361, 130}}},
      {alignment::bottom, {{100, 241, 200, 281}, {40, 278, 90, 281}, {300, 201, 361, 281}}},
      {alignment::middle, {{100, 145, 200, 185}, {40, 164, 90, 167}, {300, 125, 361, 205}}},
  };
  for (const auto& row : table)
    EXPECT_EQ(aligned(three, row.to), row.wanted) << static_cast<int>(row.to);
  EXPECT_EQ(aligned({}, alignment::left), places());
}

TEST(ButtonAlignment, DistributedStandWithEqualGapsBetweenTheOutermost) {
  const places across = {{0, 0, 10, 5}, {500, 9, 520, 12}, {20, 3, 50, 9}, {60, 0, 61, 4}};
  // 500 - 10 - 30 - 1 = 459 of room: three gaps of 153.
  EXPECT_EQ(distributed(across, direction::across),
            (places{{0, 0, 10, 5}, {500, 9, 520, 12}, {163, 3, 193, 9}, {346, 0, 347, 4}}));
  const places down = {{0, 0, 10, 10}, {0, 30, 10, 40}, {0, 101, 10, 111}};
  EXPECT_EQ(distributed(down, direction::down),
            (places{{0, 0, 10, 10}, {0, 50, 10, 60}, {0, 101, 10, 111}}));
  const places two = {{0, 0, 10, 10}, {0, 30, 10, 40}};
  EXPECT_EQ(distributed(two, direction::down), two);
}

TEST(ButtonAlignment, DistributedWithoutRoomOverlapAndStayInThePicture) {
  const places crowded = {{0, 0, 100, 9}, {10, 0, 110, 9}, {20, 0, 120, 9}};
  for (const menu_rectangle& r : distributed(crowded, direction::across)) {
    EXPECT_GE(r.x0, 0);
    EXPECT_LE(r.x1, 120);
  }
  const places wide = {{0, 0, 100, 9}, {1, 0, 701, 9}, {2, 0, 12, 9}};
  EXPECT_EQ(distributed(wide, direction::across),
            (places{{0, 0, 100, 9}, {0, 0, 700, 9}, {2, 0, 12, 9}}));
}

TEST(ButtonAlignment, SameGapIsThatOfTheFirstTwoAndKeepsLinesEven) {
  const places across = {{300, 0, 310, 5}, {0, 0, 10, 5}, {17, 0, 30, 5}};
  EXPECT_EQ(with_same_gap(across, direction::across),
            (places{{37, 0, 47, 5}, {0, 0, 10, 5}, {17, 0, 30, 5}}));
  const places down = {{0, 10, 9, 20}, {0, 27, 9, 32}, {0, 90, 9, 92}};
  EXPECT_EQ(with_same_gap(down, direction::down),
            (places{{0, 10, 9, 20}, {0, 27, 9, 32}, {0, 40, 9, 42}}));
}

TEST(ButtonAlignment, SameSizeKeepsTheUpperLeftCornerUnlessThePictureEnds) {
  const places two = {{10, 10, 210, 110}, {700, 470, 710, 475}};
  EXPECT_EQ(with_same_width(two, 0), (places{{10, 10, 210, 110}, {519, 470, 719, 475}}));
  EXPECT_EQ(with_same_width(two, 1), (places{{10, 10, 20, 110}, {700, 470, 710, 475}}));
  EXPECT_EQ(with_same_height(two, 0, 479), (places{{10, 10, 210, 110}, {700, 379, 710, 479}}));
  EXPECT_EQ(with_same_height(two, 0, 575), (places{{10, 10, 210, 110}, {700, 470, 710, 570}}));
}

TEST(ButtonAlignment, EvenLinesAreTheNearestAroundTheButton) {
  const struct {
    menu_rectangle place, wanted;
  } table[] = {
      {{1, 10, 9, 20}, {1, 10, 9, 20}},     {{1, 11, 9, 20}, {1, 10, 9, 20}},
      {{1, 10, 9, 21}, {1, 10, 9, 22}},     {{1, 11, 9, 13}, {1, 10, 9, 14}},
      {{1, 0, 9, 3}, {1, 0, 9, 4}},         {{1, 400, 9, 479}, {1, 400, 9, 478}},
      {{1, 477, 9, 479}, {1, 476, 9, 478}}, {{1, 478, 9, 479}, {1, 476, 9, 478}},
  };
  for (const auto& row : table)
    EXPECT_EQ(on_even_lines(row.place, 479), row.wanted);
}

}  // namespace
}  // namespace corvane
