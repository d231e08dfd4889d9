// PNG files, as the library that looks into people's pictures reads them.
#include "drawing/png_file.h"

#include "media/source_probe.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

/// Something else in each pixel.
page_canvas many_colours(int width, int height, bool is_opaque) {
  page_canvas canvas(width, height);
  for (std::size_t i = 0; i < canvas.rgba.size(); ++i)
    canvas.rgba[i] = i % 4 == 3 ? (is_opaque ? 255 : static_cast<std::uint8_t>(i / 7))
                                : static_cast<std::uint8_t>(i * 31 + i / 97);
  return canvas;
}

picture read_back(const std::string& png) {
  const testing_support::temporary_folder folder;
  const auto shown = source_picture(folder.add("a.png", png), 0, 4096, 4096);
  EXPECT_TRUE(shown) << shown.error;
  return shown ? *shown : picture();
}

TEST(PngFile, IsReadBackAsItWas) {
  for (const auto& [width, height] : {std::pair(720, 480), {720, 576}, {1, 1}, {3, 2}}) {
    const picture written = on_colour(many_colours(width, height, true), {});
    const picture read = read_back(png_of(written));
    EXPECT_EQ(read.width, width);
    EXPECT_EQ(read.height, height);
    EXPECT_TRUE(read.rgb == written.rgb) << width;
  }
}

TEST(PngFile, HoldsWhatCanBeSeenThrough) {
  const page_canvas canvas = many_colours(64, 48, false);
  const picture seen = on_colour(canvas, {0, 0, 0, 255}), read = read_back(png_of(canvas));
  ASSERT_EQ(read.rgb.size(), seen.rgb.size());
  for (std::size_t i = 0; i < seen.rgb.size(); ++i)
    ASSERT_NEAR(read.rgb[i], seen.rgb[i], 1) << i;
}

}  // namespace
}  // namespace corvane
