// Menu pixels, picture pixels, edges of records.
#include "menus/menu_geometry.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(MenuGeometry, LargestYFollowsTheRegion) {
  EXPECT_EQ(largest_y("PAL"), 575);
  EXPECT_EQ(largest_y("NTSC"), 479);
  EXPECT_EQ(largest_y(""), 479);
}

TEST(MenuGeometry, EdgesAreReadWithTheirBlanksAndUnreadableOnesAre0) {
  EXPECT_EQ(edges_of(" 10/ 20/-4/x/exit/black/black"), (menu_rectangle{10, 20, -4, 0}));
  EXPECT_EQ(edges_of(""), (menu_rectangle{}));
}

TEST(MenuGeometry, EdgesBelongToTheRectangle) {
  const menu_rectangle r{10, 20, 30, 40};
  EXPECT_TRUE(r.contains(10, 20));
  EXPECT_TRUE(r.contains(30, 40));
  EXPECT_FALSE(r.contains(9, 20));
  EXPECT_FALSE(r.contains(31, 40));
  EXPECT_FALSE(r.contains(10, 19));
  EXPECT_FALSE(r.contains(10, 41));
}

TEST(MenuGeometry, LargestCoordinatesAreThePicturesEnds) {
  for (const int ymax : {479, 575}) {
    const picture_scale scale{720, ymax + 1, ymax};
    EXPECT_EQ(scale.to_picture({0, 0, 719, ymax}), (menu_rectangle{0, 0, 720, ymax + 1}));
    EXPECT_EQ(scale.to_menu(720, ymax + 1), (menu_point{719, ymax}));
    EXPECT_EQ(scale.to_menu(0, 0), (menu_point{0, 0}));
  }
}

TEST(MenuGeometry, PictureOfHalfTheSizeHalvesTheOutline) {
  const picture_scale scale{360, 240, 479};
  EXPECT_EQ(scale.to_picture({100, 200, 300, 400}), (menu_rectangle{50, 100, 150, 200}));
  EXPECT_EQ(scale.to_menu(50, 100), (menu_point{100, 200}));
}

TEST(MenuGeometry, EveryMenuPixelComesBackFromAPictureAtLeastAsLarge) {
  for (const int width : {720, 1080, 1440}) {
    const picture_scale scale{width, width * 2 / 3, 479};
    for (int x = 0; x <= 719; ++x) {
      const int y = x * 479 / 719;
      const menu_rectangle there = scale.to_picture({x, y, x, y});
      EXPECT_EQ(scale.to_menu(there.x0, there.y0), (menu_point{x, y})) << width;
    }
  }
}

TEST(MenuGeometry, HostileCoordinatesStayDrawable) {
  const int least = -2147483647 - 1, most = 2147483647;
  const picture_scale scale{720, 480, 479};
  EXPECT_EQ(scale.to_picture({least, least, most, most}),
            (menu_rectangle{-30000, -30000, 30000, 30000}));
  EXPECT_EQ(scale.to_menu(most, least), (menu_point{30000, -30000}));
}

TEST(MenuGeometry, PictureWithoutSizeScalesToNothing) {
  const picture_scale scale{};
  EXPECT_EQ(scale.to_picture({1, 2, 3, 4}), (menu_rectangle{}));
  EXPECT_EQ(scale.to_menu(100, 100), (menu_point{}));
}

}  // namespace
}  // namespace corvane
