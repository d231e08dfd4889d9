// Whole pages, with letters that are blocks.
#include "drawing/page_drawer.h"

#include "drawing/block_letters.h"
#include "drawing/colours.h"
#include "drawing/inked_box.h"
#include "drawing/sample_pages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

namespace corvane {
namespace {

using drawing_test::black;
using drawing_test::empty_page;
using drawing_test::green;
using drawing_test::white;
using had_picture = result<std::shared_ptr<const shaped_picture>>;

had_picture plain_picture(const std::string& file, double seconds) {
  if (file == "missing")
    return had_picture::fail("there is no such file");
  shaped_picture shown{{200, 100, {}}, 1};
  for (int i = 0; i < 200 * 100; ++i)
    shown.pixels.rgb.insert(shown.pixels.rgb.end(), {10, static_cast<std::uint8_t>(seconds), 30});
  return had_picture::ok(std::make_shared<const shaped_picture>(std::move(shown)));
}

page_drawing drawn(const drawn_page& page) {
  page_drawer drawer(std::make_unique<drawing_test::block_letters>());
  return drawer.draw(page, plain_picture);
}

TEST(PageDrawer, DrawsPagesOfBothStandards) {
  for (const int height : {480, 576}) {
    const page_canvas canvas = drawn(empty_page(height, false)).canvas;
    EXPECT_EQ(canvas.width, 720);
    EXPECT_EQ(canvas.height, height);
    EXPECT_EQ(canvas.at(719, height - 1), black)
        << "the background that there is unless it is said";
  }
}

TEST(PageDrawer, PutsTheFirstShapeLowest) {
  drawn_page page = empty_page(480, false);
  page.shapes.emplace_back(page_rectangle{{10, 10, 100, 100}, 0, white, 0, {}});
  page.shapes.emplace_back(page_rectangle{{20, 20, 10, 10}, 0, green, 0, {}});
  const page_canvas canvas = drawn(page).canvas;
  EXPECT_EQ(canvas.at(15, 15), white);
  EXPECT_EQ(canvas.at(25, 25), green);
}

TEST(PageDrawer, LeavesAVideosPlaceTransparent) {
  drawn_page page = empty_page(480, false);
  page.background = video_background{};
  page.shapes.emplace_back(page_rectangle{{10, 10, 100, 100}, 0, {255, 255, 255, 100}, 0, {}});
  const page_canvas canvas = drawn(page).canvas;
  EXPECT_EQ(canvas.at(5, 5).alpha, 0);
  EXPECT_EQ(canvas.at(50, 50), (page_colour{255, 255, 255, 100}));
}

TEST(PageDrawer, ShadesAPictureAndColoursWhatIsBesideIt) {
  drawn_page page = empty_page(480, false);
  picture_background background{"photo", page_fit::fit, green, {0, 0, 0, 0}};
  page.background = background;
  page_canvas canvas = drawn(page).canvas;
  EXPECT_EQ(canvas.at(360, 240), (page_colour{10, 0, 30, 255}));
  EXPECT_EQ(canvas.at(360, 0), green);
  background.fit = page_fit::fill;
  background.shade = {0, 0, 0, 128};
  page.background = background;
  canvas = drawn(page).canvas;
  EXPECT_EQ(canvas.at(360, 0), (page_colour{5, 0, 15, 255}));
}

TEST(PageDrawer, DrawsAThumbnailOfItsTimeWithItsBorder) {
  drawn_page page = empty_page(576, true);
  page_thumbnail film;
  film.file = "film";
  film.seconds = 77;
  film.box = {100, 100, 90, 70};
  film.border = 3;
  film.border_colour = white;
  page.shapes.emplace_back(film);
  const page_drawing made = drawn(page);
  EXPECT_THAT(made.missing, testing::IsEmpty());
  EXPECT_EQ(made.canvas.at(145, 135), (page_colour{10, 77, 30, 255}));
  EXPECT_EQ(made.canvas.at(145, 102), white);
  EXPECT_EQ(made.canvas.at(145, 103), (page_colour{10, 77, 30, 255}));
  EXPECT_EQ(made.canvas.at(101, 135), white);
  EXPECT_EQ(drawing_test::inked_box(made.canvas, black), film.box);
}

TEST(PageDrawer, TellsOfPicturesThatCannotBeHad) {
  drawn_page page = empty_page(480, false);
  page.background = picture_background{"missing", page_fit::fill, green, {}};
  page_thumbnail film;
  film.file = "missing";
  film.seconds = 12;
  film.box = {100, 100, 90, 70};
  page.shapes.emplace_back(film);
  const page_drawing made = drawn(page);
  ASSERT_EQ(made.missing.size(), 2u);
  EXPECT_EQ(made.missing[1].file, "missing");
  EXPECT_EQ(made.missing[1].seconds, 12);
  EXPECT_EQ(made.missing[1].why, "there is no such file");
  EXPECT_EQ(made.canvas.at(145, 135), film.without);
}

TEST(PageDrawer, DrawsTheSameTwice) {
  const drawn_page page = drawing_test::sample_pages().front().page;
  EXPECT_TRUE(drawn(page).canvas.rgba == drawn(page).canvas.rgba);
}

TEST(PageDrawer, TakesPagesAsTheyCome) {
  EXPECT_EQ(drawn(empty_page(0, false)).canvas.rgba.size(), 0u);
  drawn_page page = empty_page(480, false);
  page.width = 1 << 30;
  page.height = 1;
  EXPECT_EQ(drawn(page).canvas.width, 4096);
  page = empty_page(480, false);
  page_thumbnail film;
  film.file = "film";
  film.box = {-50, -50, 100000, 2000};
  page.shapes.emplace_back(film);
  page_text text;
  text.text = "a";
  text.box = {700, 470, -5, 0};
  page.shapes.emplace_back(text);
  EXPECT_EQ(drawn(page).canvas.at(0, 0), (page_colour{10, 0, 30, 255}));
}

}  // namespace
}  // namespace corvane
