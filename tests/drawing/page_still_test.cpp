// Pages become stills of a disc: by the tools of this system, and read back.
#include "drawing/page_drawer.h"
#include "drawing/png_file.h"
#include "drawing/sample_pages.h"
#include "import/picture_still.h"
#include "media/source_probe.h"
#include "media/video_file.h"
#include "platform/files/paths.h"
#include "runner/script_interpreter.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace corvane {
namespace {

namespace fs = std::filesystem;
using drawing_test::empty_page;

class noting_still_host final : public system_script_host {
 public:
  using system_script_host::system_script_host;
  void print(std::string_view text) override { printed += text; }
  std::string printed;
};

struct made_still {
  picture shown;
  video_shape shape;
};

class PageStill : public testing::Test {
 protected:
  PageStill() {
    fs::create_directories(path_of(folder_.path("app/bin")));
    for (const char* const tool : {"gm", "jpeg2yuv", "mpeg2enc"})
      fs::create_symlink("/usr/bin/" + std::string(tool),
                         path_of(folder_.path("app/bin/" + std::string(tool) + ".exe")));
    auto made = make_page_drawer();
    EXPECT_TRUE(made) << made.error;
    if (made)
      drawer_ = std::move(*made);
  }

  page_canvas drawn(const drawn_page& page) {
    return drawer_
        ->draw(page,
               [](const std::string&, double) {
                 return result<std::shared_ptr<const shaped_picture>>::fail("none");
               })
        .canvas;
  }

  /// The way of a picture that somebody chooses for a still.
  made_still made(const drawn_page& page) {
    const std::string png = folder_.add("page.png", png_of(on_colour(drawn(page), {})));
    const auto source = still_source_at(png, probe_source);
    EXPECT_TRUE(source) << source.error;
    if (!source)
      return {};
    EXPECT_TRUE(source->is_drawn_for_disc());
    picture_still still{*source, {}, folder_.path("page.m2v"), true};
    still.choices.standard = page.height == 576 ? video_standard::pal : video_standard::ntsc;
    still.choices.aspect = page.is_wide ? disc_aspect::sixteen_nine : disc_aspect::four_three;
    const picture_geometry geometry = geometry_of(*source, still.choices);
    EXPECT_FALSE(geometry.is_scaled() || geometry.has_bars() || geometry.is_cropped(source->shown));
    const std::string app = folder_.path("app");
    noting_still_host host(folder_.path("app/bin"));
    EXPECT_TRUE(run_script(picture_still_script(app, still), host)) << host.printed;
    EXPECT_THAT(settle_picture_still(app, still, run_outcome::success).warnings,
                testing::IsEmpty());
    auto video = video_file::open(still.m2v);
    EXPECT_TRUE(video) << video.error;
    const auto first = video ? (*video)->first_picture() : result<picture>::fail("");
    return first ? made_still{*first, (*video)->shape()} : made_still();
  }

  testing_support::temporary_folder folder_;
  std::unique_ptr<page_drawer> drawer_;
};

std::array<double, 3> mean_of(const picture& shown, const page_box& box) {
  std::array<double, 3> sum{};
  for (int y = box.top; y < box.bottom(); ++y)
    for (int x = box.left; x < box.right(); ++x)
      for (std::size_t i = 0; i < 3; ++i)
        sum[i] += shown.rgb[3 * static_cast<std::size_t>(y * shown.width + x) + i];
  for (double& value : sum)
    value /= box.width * box.height;
  return sum;
}

/// The smallest box around all that is bright.
page_box bright_box(const picture& shown) {
  constexpr int bright = 100;
  int left = shown.width, right = 0, top = shown.height, bottom = 0;
  for (int y = 0; y < shown.height; ++y)
    for (int x = 0; x < shown.width; ++x)
      if (shown.rgb[3 * static_cast<std::size_t>(y * shown.width + x) + 1] > bright) {
        left = std::min(left, x);
        right = std::max(right, x + 1);
        top = std::min(top, y);
        bottom = y + 1;
      }
  return {left, top, right - left, bottom - top};
}

TEST_F(PageStill, HasThePagesColoursWithinThreeLevels) {
  const std::vector<page_colour> colours{
      {200, 30, 60, 255},   {10, 128, 0, 255},    {90, 140, 220, 255}, {128, 128, 128, 255},
      {255, 255, 255, 255}, {0, 0, 0, 255},       {240, 200, 10, 255}, {120, 60, 200, 255},
      {20, 30, 70, 255},    {235, 235, 200, 255}, {255, 0, 0, 255},    {0, 0, 255, 255}};
  for (const int height : {480, 576})
    for (const bool is_wide : {false, true}) {
      drawn_page page = empty_page(height, is_wide);
      page.background = colour_background{{40, 60, 90, 255}, {40, 60, 90, 255}};
      const auto place = [](std::size_t i) {
        return page_box{60 + 150 * static_cast<int>(i % 4), 60 + 120 * static_cast<int>(i / 4), 120,
                        90};
      };
      for (std::size_t i = 0; i < colours.size(); ++i)
        page.shapes.emplace_back(page_rectangle{place(i), 0, colours[i], 0, {}});
      const made_still still = made(page);
      ASSERT_EQ(still.shown.width, 720);
      ASSERT_EQ(still.shown.height, height);
      EXPECT_EQ(still.shape.aspect_code, is_wide ? 3 : 2);
      for (std::size_t i = 0; i < colours.size(); ++i) {
        const page_box box = place(i);
        const auto mean = mean_of(still.shown, {box.left + 20, box.top + 20, 80, 50});
        EXPECT_NEAR(mean[0], colours[i].red, 3) << "colour " << i << ", " << height;
        EXPECT_NEAR(mean[1], colours[i].green, 3) << "colour " << i << ", " << height;
        EXPECT_NEAR(mean[2], colours[i].blue, 3) << "colour " << i << ", " << height;
      }
    }
}

TEST_F(PageStill, HasItsTextsWhereTheyWereMeasured) {
  for (const int height : {480, 576})
    for (const bool is_wide : {false, true}) {
      drawn_page page = empty_page(height, is_wide);
      page_text text;
      text.text = "Harbour 日本 שלום";
      text.style.size = 40;
      text.style.outline = 1;
      text.style.outline_colour = {255, 255, 255, 255};
      const text_extent extent = drawer_->measure(text.text, text.style, 0, page.pixel_aspect);
      text.box = {131, 203, extent.width, extent.height};
      page.shapes.emplace_back(text);
      const page_box ink = bright_box(on_colour(drawn(page), {}));
      const made_still still = made(page);
      ASSERT_EQ(still.shown.height, height);
      const page_box found = bright_box(still.shown);
      EXPECT_NEAR(found.left, ink.left, 1);
      EXPECT_NEAR(found.right(), ink.right(), 1);
      EXPECT_NEAR(found.top, ink.top, 1);
      EXPECT_NEAR(found.bottom(), ink.bottom(), 1);
      EXPECT_GE(found.left, text.box.left);
      EXPECT_LE(found.right(), text.box.right());
      EXPECT_GE(found.top, text.box.top);
      EXPECT_LE(found.bottom(), text.box.bottom());
    }
}

}  // namespace
}  // namespace corvane
