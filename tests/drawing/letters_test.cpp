// Texts in the system's fonts: as large as they were measured, shaped and in the right order,
// legible on any picture.
#include "drawing/colours.h"
#include "drawing/inked_box.h"
#include "drawing/page_drawer.h"
#include "drawing/sample_pages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace corvane {
namespace {

using drawing_test::empty_page;
using drawing_test::inked_box;
using drawing_test::white;

page_drawing no_pictures(page_drawer& drawer, const drawn_page& page) {
  return drawer.draw(page, [](const std::string& file, double) {
    using had = result<std::shared_ptr<const shaped_picture>>;
    return file.empty() ? had::fail("none")
                        : had::ok(std::make_shared<const shaped_picture>(
                              drawing_test::sample_picture(file)));
  });
}

class Letters : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    auto made = make_page_drawer();
    ASSERT_TRUE(made) << made.error;
    drawer_ = std::move(*made);
  }
  static void TearDownTestSuite() { drawer_.reset(); }

  static text_style style_of(int size, const std::string& family = "DejaVu Sans") {
    text_style style;
    style.families = {family};
    style.size = size;
    return style;
  }

  /// A text alone on a page of this shape.
  static page_canvas drawn(const std::string& words, const text_style& style,
                           double pixel_aspect = 1, page_box box = {100, 100, 500, 300}) {
    drawn_page page = empty_page(480, false);
    page.pixel_aspect = pixel_aspect;
    page_text text;
    text.text = words;
    text.box = box;
    text.style = style;
    text.most_lines = 99;
    page.shapes.emplace_back(text);
    return no_pictures(*drawer_, page).canvas;
  }

  static page_box ink_of(const std::string& words, const text_style& style) {
    return inked_box(drawn(words, style), drawing_test::black);
  }

  /// The part of a page, as one can compare it.
  static std::vector<int> reds(const page_canvas& canvas, const page_box& box) {
    std::vector<int> all;
    for (int y = box.top; y < box.bottom(); ++y)
      for (int x = box.left; x < box.right(); ++x)
        all.push_back(canvas.at(x, y).red);
    return all;
  }

  static std::unique_ptr<page_drawer> drawer_;
};

std::unique_ptr<page_drawer> Letters::drawer_;

TEST_F(Letters, AreAsHighAsTheirSizeSays) {
  // Capitals of DejaVu Sans are 1493 of 2048 parts of an em high.
  for (const int size : {20, 48, 100, 200}) {
    const page_box ink = ink_of("H", style_of(size));
    EXPECT_NEAR(ink.height, size * 1493 / 2048.0, 1.5) << size;
  }
}

TEST_F(Letters, AreAsWideAsPixelsAreNarrow) {
  const double wide = drawer_->measure("Holidays in Brittany", style_of(40), 0, 1).width;
  for (const double pixel_aspect : {10.0 / 11, 40.0 / 33, 12.0 / 11, 16.0 / 11})
    EXPECT_NEAR(drawer_->measure("Holidays in Brittany", style_of(40), 0, pixel_aspect).width,
                wide / pixel_aspect, 1)
        << pixel_aspect;
}

/// Texts of all scripts, of any length, with letters that hang out of their lines.
std::string any_text(std::mt19937& random) {
  static const std::vector<std::string> pieces{
      "f",    "j", "Å",  "Qy",    "Word ", "fi", "'",  "–",  "W",    "ǼŴ",   "g\u0302\u0323",
      "שלום", "לְ", " ",  "مرحبا", "لا",    "ك",  "ёж", "ΑΒ", "123 ", "日本", "の",
      "한국", "…", "\n", "(",     ")",     "/",  "ᾯ"};
  std::string text;
  for (auto left = 1 + random() % 9; left > 0; --left)
    text += pieces[random() % pieces.size()];
  return text;
}

TEST_F(Letters, StandWithinWhatWasMeasuredToThePixel) {
  std::mt19937 random(1);  // NOLINT: the same each time
  const std::vector<std::string> families{"sans", "DejaVu Serif", "monospace"};
  for (int round = 0; round < 100; ++round) {
    const std::string words = any_text(random);
    text_style style = style_of(10 + static_cast<int>(random() % 50), families[random() % 3]);
    style.bold = random() % 3 == 0;
    style.italic = random() % 3 == 0;
    style.outline = static_cast<int>(random() % 4);
    style.outline_colour = {255, 0, 0, 255};
    style.shadow = static_cast<int>(random() % 3) * 2;
    style.shadow_colour = {0, 255, 0, 255};
    const double pixel_aspect =
        std::vector{10.0 / 11, 40.0 / 33, 12.0 / 11, 16.0 / 11}[random() % 4];
    const text_extent extent = drawer_->measure(words, style, 300, pixel_aspect);
    ASSERT_LE(extent.width, 300) << words;
    page_box box{80, 20, extent.width, extent.height};
    if (extent.width == 0 || extent.height > 440)
      continue;
    // In a box that is just as large nothing is cut off: the same is drawn in a larger one.
    page_canvas small = drawn(words, style, pixel_aspect, box);
    box.width = 300;
    const page_box room{box.left, box.top, box.width, 440};
    drawn_page page = empty_page(480, false);
    page.pixel_aspect = pixel_aspect;
    page_text text;
    text.text = words;
    text.box = room;
    text.style = style;
    text.most_lines = 99;
    text.down = page_align::begin;
    page.shapes.emplace_back(text);
    const page_canvas large = no_pictures(*drawer_, page).canvas;
    const page_box ink = inked_box(large, drawing_test::black);
    EXPECT_GE(ink.left, box.left) << words;
    EXPECT_GE(ink.top, box.top) << words;
    EXPECT_LE(ink.right(), box.left + extent.width) << words << " " << style.size;
    EXPECT_LE(ink.bottom(), box.top + extent.height) << words << " " << style.size;
    EXPECT_GE(ink.width, extent.width - 2 - style.outline) << words << ": no wider than it must be";
    EXPECT_TRUE(small.rgba == large.rgba) << words << " " << style.size;
  }
}

TEST_F(Letters, OfHebrewRunFromTheRight) {
  const text_style style = style_of(60);
  const page_canvas both = drawn("אל", style), last = drawn("ל", style);
  const page_box whole = inked_box(both, drawing_test::black),
                 alone = inked_box(last, drawing_test::black);
  const page_box at_left{whole.left, alone.top, alone.width - 1, alone.height};
  EXPECT_GT(whole.width, alone.width + 10);
  EXPECT_EQ(reds(both, at_left), reds(last, {alone.left, alone.top, alone.width - 1, alone.height}))
      << "the second letter stands at the left";
}

TEST_F(Letters, OfArabicAreShapedByTheirNeighbours) {
  const text_style style = style_of(60);
  const std::string joined = "بيت", apart = "ب\u200Cي\u200Cت";
  const page_box together = ink_of(joined, style), single = ink_of(apart, style);
  EXPECT_LT(together.width, single.width * 9 / 10) << "joined letters are narrower";
  // Lam and alef become one letter.
  EXPECT_LT(ink_of("لا", style).width, ink_of("ل\u200Cا", style).width);
}

TEST_F(Letters, OfTheirScriptsAreInTheSystemsFonts) {
  // One stroke across is low; the sign for a letter that no font has is a box.
  const text_style style = style_of(80);
  const page_box one = ink_of("一", style);
  EXPECT_GT(one.width, 50);
  EXPECT_LT(one.height, 20) << "no font for Chinese or Japanese: ./scripts/setup.sh --test";
  EXPECT_LT(ink_of("ー", style).height, 20) << "no font for Japanese";
  EXPECT_LT(ink_of("ㅡ", style).height, 20) << "no font for Korean";
}

TEST_F(Letters, WithoutBlanksAreWrappedWithinTheBox) {
  const text_extent extent =
      drawer_->measure("夏休みにブルターニュの海を見に行きました", style_of(30), 200, 1);
  EXPECT_GE(extent.lines.size(), 3u);
  EXPECT_LE(extent.width, 200);
  EXPECT_GE(extent.width, 160);
}

TEST_F(Letters, OfFamiliesThatAreMissingAreThoseOfTheNextOne) {
  text_style style = style_of(40);
  const page_canvas sans = drawn("Rag", style);
  style.families = {"No such family at all", "DejaVu Sans"};
  EXPECT_TRUE(drawn("Rag", style).rgba == sans.rgba);
  style.families = {"DejaVu Serif"};
  EXPECT_FALSE(drawn("Rag", style).rgba == sans.rgba);
}

TEST_F(Letters, AreBoldAndItalic) {
  text_style style = style_of(40);
  const page_box plain = ink_of("minimum", style);
  style.bold = true;
  EXPECT_GT(ink_of("minimum", style).width, plain.width + 10);
  style.bold = false;
  style.italic = true;
  EXPECT_NE(reds(drawn("l", style), {100, 100, 100, 300}),
            reds(drawn("l", style_of(40)), {100, 100, 100, 300}));
}

/// How bright a colour is on a screen, 0 to 1.
double luminance(page_colour colour) {
  const auto linear = [](int value) {
    const double part = value / 255.0;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) + 0.0722 * linear(colour.blue);
}

/// The contrast to white of the darkest pixel on the straight way between two.
double contrast_between(const page_canvas& canvas, int x, int y, int right, int down) {
  constexpr int steps = 8;
  double darkest = 1;
  for (int step = 0; step <= steps; ++step)
    darkest = std::min(darkest, luminance(canvas.at(x + (right * step + steps / 2) / steps,
                                                    y + (down * step + steps / 2) / steps)));
  return (1 + 0.05) / (darkest + 0.05);
}

TEST_F(Letters, WithAnOutlineAreLegibleOnTheBrightestPicture) {
  drawn_page page = empty_page(480, false);
  page.background = picture_background{"film", page_fit::fill, {}, {0, 0, 0, 0}};
  const page_canvas bare = no_pictures(*drawer_, page).canvas;
  page_text text;
  text.text = "Legible";
  text.box = {20, 40, 500, 100};  // where the picture is brightest
  text.style = style_of(40);
  text.style.outline = 2;
  text.style.outline_colour = {0, 0, 0, 255};
  page.shapes.emplace_back(text);
  const page_canvas canvas = no_pictures(*drawer_, page).canvas;
  // Between the letters and the picture as it was there is always the outline; a contrast of three
  // to one is what large letters need.
  int letters = 0;
  constexpr int reach = 5;
  for (int y = 40; y < 140; ++y)
    for (int x = 20; x < 520; ++x) {
      if (!(canvas.at(x, y) == white))
        continue;
      ++letters;
      for (int down = -reach; down <= reach; ++down)
        for (int right = -reach; right <= reach; ++right)
          if (canvas.at(x + right, y + down) == bare.at(x + right, y + down)) {
            ASSERT_GT(contrast_between(canvas, x, y, right, down), 3)
                << x << " " << y << " " << right << " " << down;
          }
    }
  EXPECT_GT(letters, 300);
}

TEST_F(Letters, AreTheSameWhateverWasDrawnBefore) {
  const text_style style = style_of(33);
  const page_canvas before = drawn("Same", style, 40.0 / 33);
  std::mt19937 random(2);  // NOLINT: the same each time
  for (int i = 0; i < 30; ++i)
    drawer_->measure(any_text(random), style_of(70), 0, 1);
  EXPECT_TRUE(drawn("Same", style, 40.0 / 33).rgba == before.rgba);
}

}  // namespace
}  // namespace corvane
