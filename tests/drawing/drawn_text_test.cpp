// Where texts stand on a page and how they are made to fit, with letters that are blocks.
#include "drawing/drawn_text.h"

#include "drawing/block_letters.h"
#include "drawing/colours.h"
#include "drawing/inked_box.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

using drawing_test::black;
using drawing_test::block_letters;
using drawing_test::inked_box;
using drawing_test::white;
using testing::ElementsAre;

class DrawnText : public testing::Test {
 protected:
  static page_text text_of(const std::string& words, page_box box) {
    page_text text;
    text.text = words;
    text.box = box;
    text.style.size = 20;
    return text;
  }

  page_canvas drawn(const page_text& text, double pixel_aspect = 1) {
    page_canvas canvas(200, 200);
    put_box(canvas, {0, 0, 200, 200}, drawing_test::blue);
    texts_.draw(canvas, text, pixel_aspect);
    return canvas;
  }

  page_box ink_of(const page_text& text, double pixel_aspect = 1) {
    return inked_box(drawn(text, pixel_aspect), drawing_test::blue);
  }

  block_letters letters_;
  text_drawer texts_{letters_};
};

TEST_F(DrawnText, IsMeasuredByItsLettersAndByTheFontsLines) {
  const text_extent extent = texts_.measure("ab c", {}, 0, 1);
  text_style style;
  style.size = 20;
  EXPECT_EQ(texts_.measure("a", style, 0, 1), (text_extent{12, 24, {"a"}}));
  EXPECT_EQ(texts_.measure("a\nbcd", style, 0, 1), (text_extent{44, 48, {"a", "bcd"}}));
  EXPECT_EQ(texts_.measure("", style, 0, 1), (text_extent{0, 24, {""}}));
  EXPECT_EQ(extent.lines.size(), 1u);
}

TEST_F(DrawnText, IsAsNarrowAsPixelsAreWide) {
  text_style style;
  style.size = 20;
  EXPECT_EQ(texts_.measure("abcd", style, 0, 1).width, 60);
  EXPECT_EQ(texts_.measure("abcd", style, 0, 10.0 / 11).width, 66);
  EXPECT_EQ(texts_.measure("abcd", style, 0, 16.0 / 11).width, 42);
  EXPECT_EQ(texts_.measure("abcd", style, 0, 16.0 / 11).height, 24);
}

TEST_F(DrawnText, TakesOutlineAndShadowInToo) {
  text_style style;
  style.size = 20;
  style.outline = 2;
  EXPECT_EQ(texts_.measure("a", style, 0, 1), (text_extent{16, 28, {"a"}}));
  style.shadow = 3;
  EXPECT_EQ(texts_.measure("a", style, 0, 1), (text_extent{19, 31, {"a"}}));
  EXPECT_EQ(texts_.measure("a", style, 0, 2).width, 6 + 2 * 1 + 2);
}

TEST_F(DrawnText, IsWrappedAtTheWidthWithOutlineAndShadow) {
  text_style style;
  style.size = 20;
  EXPECT_THAT(texts_.measure("ab cd", style, 76, 1).lines, ElementsAre("ab cd"));
  EXPECT_THAT(texts_.measure("ab cd", style, 75, 1).lines, ElementsAre("ab", "cd"));
  style.outline = 1;
  EXPECT_THAT(texts_.measure("ab cd", style, 77, 1).lines, ElementsAre("ab", "cd"));
}

TEST_F(DrawnText, StandsWhereItIsAligned) {
  page_text text = text_of("ab", {20, 30, 100, 60});
  text.down = page_align::begin;
  EXPECT_EQ(ink_of(text), (page_box{20, 34, 28, 14})) << "on the font's line, not at its letters";
  text.across = page_align::end;
  text.down = page_align::end;
  EXPECT_EQ(ink_of(text), (page_box{92, 70, 28, 14}));
  text.across = page_align::middle;
  text.down = page_align::middle;
  EXPECT_EQ(ink_of(text), (page_box{56, 52, 28, 14}));
}

TEST_F(DrawnText, AlignsEachLineByItself) {
  page_text text = text_of("abc\na", {20, 30, 100, 60});
  text.most_lines = 2;
  text.across = page_align::end;
  const page_canvas canvas = drawn(text);
  EXPECT_EQ(canvas.at(119, 60 + 5), white) << "the second line";
  EXPECT_EQ(canvas.at(107, 60 + 5), drawing_test::blue);
  EXPECT_EQ(canvas.at(108, 60 + 5), white);
}

TEST_F(DrawnText, HasItsOutlineAllAroundAndItsShadowBelow) {
  page_text text = text_of("a", {50, 50, 60, 60});
  text.style.outline = 2;
  text.style.outline_colour = black;
  text.style.shadow = 5;
  text.style.shadow_colour = {255, 0, 0, 255};
  text.down = page_align::begin;
  const page_canvas canvas = drawn(text);
  EXPECT_EQ(inked_box(canvas, drawing_test::blue), (page_box{50, 54, 12 + 4 + 5, 14 + 4 + 5}));
  EXPECT_EQ(canvas.at(58, 62), white);
  EXPECT_EQ(canvas.at(51, 62), black);
  EXPECT_EQ(canvas.at(58, 55), black);
  EXPECT_EQ(canvas.at(64, 62), black);
  EXPECT_EQ(canvas.at(69, 70), (page_colour{255, 0, 0, 255}));
  EXPECT_EQ(canvas.at(52, 74), drawing_test::blue) << "no shadow at the lower left";
}

TEST_F(DrawnText, IsMadeSmallerUntilItFits) {
  page_text text = text_of("abcdefgh", {10, 10, 80, 30});
  text.least_size = 5;
  const page_box ink = ink_of(text);
  EXPECT_LE(ink.width, 80);
  EXPECT_GE(ink.width, 70) << "no smaller than it must be";
  EXPECT_EQ(texts_.measure(text.text, text.style, 0, 1).width, 124) << "it would not have fit";
}

TEST_F(DrawnText, IsMadeSmallerWhereItsLinesAreTooHigh) {
  page_text text = text_of("ab\nab\nab", {10, 10, 80, 40});
  text.most_lines = 3;
  text.least_size = 5;
  text.style.size = 30;
  const page_box ink = ink_of(text);
  EXPECT_LE(ink.height, 40);
  EXPECT_GE(ink.height, 25);
}

TEST_F(DrawnText, EndsWithDotsWhereItIsNotToBeSmaller) {
  const page_box whole = ink_of(text_of("abcde", {10, 10, 76, 30}));
  EXPECT_EQ(whole.width, 76);
  // The dots are a block, too: three letters and they.
  EXPECT_EQ(ink_of(text_of("abcde", {10, 10, 75, 30})).width, 60);
  page_text two = text_of("ab cd ef", {10, 10, 44, 60});
  two.most_lines = 2;
  EXPECT_EQ(ink_of(two).width, 44) << "\"cd\" and dots";
}

TEST_F(DrawnText, LeavesOutLinesThatTheBoxIsTooLowFor) {
  page_text text = text_of("ab\ncd\nef", {10, 10, 60, 50});
  text.most_lines = 9;
  const page_box ink = ink_of(text);
  EXPECT_EQ(ink.width, 44) << "dots behind the second line";
  EXPECT_LE(ink.height, 50);
}

TEST_F(DrawnText, ChangesNothingBesideItsBox) {
  page_text text = text_of("abc", {50, 50, 7, 9});
  text.style.outline = 4;
  text.style.shadow = 6;
  const page_box ink = ink_of(text);
  EXPECT_GE(ink.left, 50);
  EXPECT_GE(ink.top, 50);
  EXPECT_LE(ink.right(), 57);
  EXPECT_LE(ink.bottom(), 59);
  EXPECT_GT(ink.width, 0);
}

TEST_F(DrawnText, IsInTheFirstFamilyThatIsThere) {
  page_text text = text_of("a", {0, 0, 100, 100});
  text.style.families = {"none of these", "blocks", "others"};
  drawn(text);
  EXPECT_EQ(letters_.last_family, "blocks");
  text.style.families = {"none of these"};
  text.text = "b";
  drawn(text);
  EXPECT_EQ(letters_.last_family, "sans");
}

TEST_F(DrawnText, DrawsALineOnceForMeasuringAndForEachPage) {
  const page_text text = text_of("abc", {0, 0, 100, 100});
  texts_.measure(text.text, text.style, 0, 1);
  drawn(text);
  drawn(text);
  EXPECT_EQ(letters_.drawn, 1);
}

TEST_F(DrawnText, OfEndlessLengthIsMeasuredAndCutWithoutBeingDrawn) {
  const page_text text = text_of(std::string(100000, 'a'), {0, 0, 100, 100});
  EXPECT_GT(texts_.measure(text.text, text.style, 0, 1).width, 100000);
  EXPECT_EQ(letters_.drawn, 0);
  EXPECT_LE(ink_of(text).width, 100);
}

}  // namespace
}  // namespace corvane
