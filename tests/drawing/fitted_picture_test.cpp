// Pictures scaled for boxes of pixels that are not square.
#include "drawing/fitted_picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {

/// A white disc in the middle of black.
shaped_picture disc(int width, int height, double radius, double pixel_aspect = 1) {
  picture shown{width, height, {}};
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      const double right = (x + 0.5 - width / 2.0) * pixel_aspect, down = y + 0.5 - height / 2.0;
      shown.rgb.insert(shown.rgb.end(), 3, std::hypot(right, down) < radius ? 255 : 0);
    }
  return {std::move(shown), pixel_aspect};
}

int red_at(const picture& shown, int x, int y) {
  return shown.rgb[3 * static_cast<std::size_t>(y * shown.width + x)];
}

/// Pixels' worth of white in a row and in a column through the middle.
std::pair<double, double> white_across_and_down(const picture& shown) {
  double across = 0, down = 0;
  for (int x = 0; x < shown.width; ++x)
    across += red_at(shown, x, shown.height / 2) / 255.0;
  for (int y = 0; y < shown.height; ++y)
    down += red_at(shown, shown.width / 2, y) / 255.0;
  return {across, down};
}

TEST(FittedPicture, KeepsWhatIsRoundRound) {
  for (const page_fit fit : {page_fit::fill, page_fit::fit})
    for (const double pixel_aspect : {10.0 / 11, 40.0 / 33, 12.0 / 11, 16.0 / 11})
      for (const shaped_picture& source :
           {disc(640, 480, 150), disc(300, 700, 60), disc(720, 576, 200, 16.0 / 11)}) {
        const fitted_picture made = fitted(source, 240, 160, pixel_aspect, fit);
        const auto [across, down] = white_across_and_down(made.pixels);
        ASSERT_GT(down, 10);
        EXPECT_NEAR(across * pixel_aspect / down, 1, 0.04)
            << pixel_aspect << " " << source.pixels.width;
      }
}

TEST(FittedPicture, FillsTheBoxAndIsCutAsMuchOnBothSides) {
  const fitted_picture made = fitted(disc(640, 480, 150), 100, 200, 1, page_fit::fill);
  EXPECT_EQ(made.pixels.width, 100);
  EXPECT_EQ(made.pixels.height, 200);
  EXPECT_EQ(made.left, 0);
  EXPECT_EQ(made.top, 0);
  for (int x = 0; x < 50; ++x)
    EXPECT_NEAR(red_at(made.pixels, x, 100), red_at(made.pixels, 99 - x, 100), 1);
}

TEST(FittedPicture, IsWholeAndInTheMiddle) {
  const fitted_picture wide = fitted(disc(640, 320, 100), 100, 100, 1, page_fit::fit);
  EXPECT_EQ(wide.pixels.width, 100);
  EXPECT_EQ(wide.pixels.height, 50);
  EXPECT_EQ(wide.top, 25);
  const fitted_picture high = fitted(disc(320, 640, 100), 100, 100, 2, page_fit::fit);
  EXPECT_EQ(high.pixels.width, 25);
  EXPECT_EQ(high.pixels.height, 100);
  EXPECT_EQ(high.left, 37);
}

TEST(FittedPicture, OfOneColourHasThatColourToItsEdges) {
  const shaped_picture plain{{33, 21, std::vector<std::uint8_t>(std::size_t{3} * 33 * 21, 137)}, 1};
  for (const int size : {1, 7, 33, 400})
    for (const std::uint8_t byte : fitted(plain, size, size, 1.2, page_fit::fill).pixels.rgb)
      ASSERT_EQ(byte, 137) << size;
}

TEST(FittedPicture, OfTheSameSizeIsTheSame) {
  const shaped_picture source = disc(64, 48, 20);
  EXPECT_EQ(fitted(source, 64, 48, 1, page_fit::fill).pixels.rgb, source.pixels.rgb);
}

TEST(FittedPicture, HasTheMeanOfWhatItCovers) {
  shaped_picture lines{{64, 64, {}}, 1};
  for (int y = 0; y < 64; ++y)
    lines.pixels.rgb.insert(lines.pixels.rgb.end(), 64 * 3,
                            y % 2 == 0 ? std::uint8_t{200} : std::uint8_t{100});
  for (const std::uint8_t byte : fitted(lines, 8, 8, 1, page_fit::fill).pixels.rgb)
    EXPECT_NEAR(byte, 150, 8) << "every line counts";
}

TEST(FittedPicture, OfNothingIsNothing) {
  EXPECT_EQ(fitted({}, 10, 10, 1, page_fit::fill).pixels.width, 0);
  EXPECT_EQ(fitted(disc(5, 5, 1), 0, 10, 1, page_fit::fit).pixels.width, 0);
}

}  // namespace
}  // namespace corvane
