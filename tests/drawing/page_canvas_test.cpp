// Colours, rectangles and gradients of a page.
#include "drawing/page_canvas.h"

#include "drawing/colours.h"

#include <gtest/gtest.h>

#include <numbers>

namespace corvane {
namespace {

using drawing_test::black;
using drawing_test::red;
using drawing_test::white;

page_canvas canvas_of(int width, int height, page_colour colour) {
  page_canvas canvas(width, height);
  put_box(canvas, {0, 0, width, height}, colour);
  return canvas;
}

/// How many pixels' worth of white there is.
double white_in(const page_canvas& canvas) {
  double sum = 0;
  for (int y = 0; y < canvas.height; ++y)
    for (int x = 0; x < canvas.width; ++x)
      sum += canvas.at(x, y).red / 255.0;
  return sum;
}

TEST(PageCanvas, IsTransparentWhereNothingIs) {
  page_canvas canvas(4, 3);
  EXPECT_EQ(canvas.at(3, 2), (page_colour{0, 0, 0, 0}));
  put_box(canvas, {1, 1, 1, 1}, {200, 100, 50, 128});
  EXPECT_EQ(canvas.at(1, 1), (page_colour{200, 100, 50, 128}));
  EXPECT_EQ(canvas.at(2, 1).alpha, 0);
  EXPECT_EQ(canvas.at(1, 2).alpha, 0);
}

TEST(PageCanvas, MixesWhatIsPutOverIt) {
  page_canvas canvas = canvas_of(1, 1, white);
  put_over(canvas, 0, 0, {0, 0, 0, 128});
  EXPECT_EQ(canvas.at(0, 0), (page_colour{127, 127, 127, 255}));
  page_canvas glass = canvas_of(1, 1, {255, 0, 0, 128});
  put_over(glass, 0, 0, {0, 0, 255, 128});
  EXPECT_EQ(glass.at(0, 0).alpha, 192);
  EXPECT_EQ(glass.at(0, 0).red, 85) << "a third of what is seen";
  EXPECT_EQ(glass.at(0, 0).blue, 170);
}

TEST(PageCanvas, TakesWhatLiesBesideIt) {
  page_canvas canvas = canvas_of(4, 4, black);
  put_box(canvas, {-5, -5, 7, 7}, red);
  put_rectangle(canvas, {{3, 3, 50, 50}, 0, white, 0, {}}, 1);
  put_picture(canvas, {2, 1, {9, 9, 9, 8, 8, 8}}, -1, 3);
  put_mask(canvas, {3, -1, 4, 2, {1, 255, 255, 255, 255, 0, 0, 0}}, white, {0, 0, 4, 4});
  EXPECT_EQ(canvas.at(1, 1), red);
  EXPECT_EQ(canvas.at(2, 2), black);
  EXPECT_EQ(canvas.at(3, 3), white);
  EXPECT_EQ(canvas.at(0, 3), (page_colour{8, 8, 8, 255}));
  EXPECT_EQ(canvas.at(3, 0), white);
}

TEST(PageCanvas, IsSeenOnAColour) {
  page_canvas canvas(2, 1);
  put_box(canvas, {1, 0, 1, 1}, {0, 0, 0, 128});
  const picture seen = on_colour(canvas, {200, 100, 0, 0});
  EXPECT_EQ(seen.rgb, (std::vector<std::uint8_t>{200, 100, 0, 100, 50, 0}));
}

TEST(PageGradient, RunsFromColourToColour) {
  using direction = colour_background::direction;
  const auto drawn = [](direction towards) {
    page_canvas canvas(64, 48);
    put_background(canvas, {black, white, towards}, 1);
    return canvas;
  };
  const page_canvas down = drawn(direction::down);
  EXPECT_EQ(down.at(0, 0).red, 3);
  EXPECT_EQ(down.at(63, 0).red, 3);
  EXPECT_EQ(down.at(30, 47).red, 252);
  const page_canvas right = drawn(direction::right);
  EXPECT_EQ(right.at(0, 40).green, 2);
  EXPECT_EQ(right.at(63, 0).green, 253);
  const page_canvas slanted = drawn(direction::down_right);
  EXPECT_EQ(slanted.at(0, 0).blue, 2);
  EXPECT_EQ(slanted.at(63, 47).blue, 253);
  EXPECT_EQ(slanted.at(63, 0).blue, slanted.at(40, 23).blue);
  const page_canvas up = drawn(direction::up_right);
  EXPECT_EQ(up.at(0, 47).blue, 2);
  EXPECT_EQ(up.at(63, 0).blue, 253);
  const page_canvas outward = drawn(direction::outward);
  EXPECT_LE(outward.at(32, 24).red, 5);
  for (const int x : {0, 63})
    for (const int y : {0, 47})
      EXPECT_EQ(outward.at(x, y).red, 250);
  EXPECT_NEAR(outward.at(0, 24).red, outward.at(32, 0).red, 3);
}

TEST(PageGradient, OfOneColourIsThatColour) {
  page_canvas canvas(5, 5);
  put_background(canvas, {red, red, colour_background::direction::up_right}, 1.2);
  for (int y = 0; y < 5; ++y)
    for (int x = 0; x < 5; ++x)
      EXPECT_EQ(canvas.at(x, y), red);
}

TEST(PageRectangle, WithoutRoundCornersIsItsBox) {
  page_canvas canvas = canvas_of(20, 20, black);
  put_rectangle(canvas, {{3, 4, 10, 11}, 0, white, 0, {}}, 10.0 / 11.0);
  EXPECT_EQ(white_in(canvas), 110);
  EXPECT_EQ(canvas.at(3, 4), white);
  EXPECT_EQ(canvas.at(12, 14), white);
}

TEST(PageRectangle, OfRoundCornersHasAnEllipsesAreaOnPixelsThatAreNotSquare) {
  for (const double pixel_aspect : {10.0 / 11, 1.0, 40.0 / 33, 16.0 / 11}) {
    constexpr int lines = 40;
    const int width = static_cast<int>(lines / pixel_aspect + 0.5);
    page_canvas canvas = canvas_of(100, 60, black);
    put_rectangle(canvas, {{5, 5, width, lines}, lines / 2, white, 0, {}}, pixel_aspect);
    const double area = std::numbers::pi / 4 * width * lines;
    EXPECT_NEAR(white_in(canvas), area, area / 60) << pixel_aspect;
    EXPECT_EQ(canvas.at(5, 5), black);
    EXPECT_EQ(canvas.at(5 + width / 2, 5 + lines / 2), white);
  }
}

TEST(PageRectangle, HasItsBorderWithin) {
  page_canvas canvas = canvas_of(40, 40, black);
  put_rectangle(canvas, {{10, 10, 20, 20}, 0, {0, 0, 0, 0}, 3, white}, 1);
  EXPECT_EQ(white_in(canvas), 20 * 20 - 14 * 14);
  EXPECT_EQ(canvas.at(12, 20), white);
  EXPECT_EQ(canvas.at(13, 20), black);
  EXPECT_EQ(canvas.at(9, 20), black);
}

TEST(PageRectangle, HasABorderAsThickOnTheScreenAcrossAsDown) {
  page_canvas canvas = canvas_of(60, 60, black);
  put_rectangle(canvas, {{10, 10, 40, 40}, 0, {0, 0, 0, 0}, 4, white}, 16.0 / 11);
  double across = 0, down = 0;
  for (int at = 10; at < 30; ++at) {
    across += canvas.at(at, 30).red / 255.0;
    down += canvas.at(30, at).red / 255.0;
  }
  EXPECT_NEAR(down, 4, 0.01);
  EXPECT_NEAR(across * 16 / 11, 4, 0.03);
}

TEST(PageRectangle, ShowsNothingBetweenItsBorderAndItsColour) {
  page_canvas canvas = canvas_of(60, 60, black);
  put_rectangle(canvas, {{5, 5, 50, 50}, 12, white, 3, white}, 40.0 / 33);
  page_canvas whole = canvas_of(60, 60, black);
  put_rectangle(whole, {{5, 5, 50, 50}, 12, white, 0, {}}, 40.0 / 33);
  for (int y = 0; y < 60; ++y)
    for (int x = 0; x < 60; ++x)
      EXPECT_NEAR(canvas.at(x, y).red, whole.at(x, y).red, 1) << x << " " << y;
}

TEST(PageRectangle, IsSeenThroughAsItsColourSays) {
  page_canvas canvas = canvas_of(10, 10, black);
  put_rectangle(canvas, {{0, 0, 10, 10}, 0, {255, 255, 255, 51}, 0, {}}, 1);
  EXPECT_EQ(canvas.at(5, 5), (page_colour{51, 51, 51, 255}));
}

}  // namespace
}  // namespace corvane
