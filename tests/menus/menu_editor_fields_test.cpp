// The menu editor's typed fields: their bounds, odd texts, and what a record cannot hold.
#include "editor_test.h"
#include "menus/menu_editor.h"

namespace corvane {
namespace {

using testing_support::record_at;
using testing_support::rows;

/// One button of 100 x 40 at 200, 100.
class MenuEditorFields : public testing_support::editor_test {
 protected:
  static std::string start() { return record_at(200, 100, 300, 140); }
  menu_editor& edit_button() { return edit_first(start()); }
};

TEST_F(MenuEditorFields, LeftPositionIsAcceptedBelow719MinusTheWidth) {
  menu_editor& e = edit_button();
  e.type_leftpos("618");
  EXPECT_EQ(record(), record_at(618, 100, 718, 140));
  EXPECT_EQ(shown().leftpos, " 618");
  for (const std::string text : {"619", "620", "9999", "99999999999999999999"}) {
    e.type_leftpos(text);
    EXPECT_EQ(record(), record_at(618, 100, 718, 140)) << text;
    EXPECT_EQ(shown().leftpos, " 618") << text;
  }
}

TEST_F(MenuEditorFields, WidthIsAcceptedBelow719MinusTheLeftPosition) {
  menu_editor& e = edit_button();
  e.type_widthpos("518");
  EXPECT_EQ(record(), record_at(200, 100, 718, 140));
  for (const std::string text : {"519", "600", "99999999999999999999"}) {
    e.type_widthpos(text);
    EXPECT_EQ(record(), record_at(200, 100, 718, 140)) << text;
    EXPECT_EQ(shown().widthpos, " 518") << text;
  }
}

TEST_F(MenuEditorFields, YPositionIsAcceptedBelowTheLargestYMinusTheHeight) {
  menu_editor& e = edit_button();
  e.type_ypos("438");
  EXPECT_EQ(record(), record_at(200, 438, 300, 478));
  for (const std::string text : {"439", "480", "99999999999999999999"}) {
    e.type_ypos(text);
    EXPECT_EQ(record(), record_at(200, 438, 300, 478)) << text;
  }
  p.globalregion = "PAL";
  menu_editor& pal = edit_button();
  pal.type_ypos("534");
  EXPECT_EQ(record(), record_at(200, 534, 300, 574));
  pal.type_ypos("535");
  EXPECT_EQ(record(), record_at(200, 534, 300, 574));
}

TEST_F(MenuEditorFields, HeightIsAcceptedBelow300WhereverTheButtonStands) {
  menu_editor& e = edit_button();
  e.type_heightpos("299");
  EXPECT_EQ(record(), record_at(200, 100, 300, 399));
  for (const std::string text : {"300", "301", "99999999999999999999"}) {
    e.type_heightpos(text);
    EXPECT_EQ(record(), record_at(200, 100, 300, 399)) << text;
    EXPECT_EQ(shown().heightpos, " 299") << text;
  }
}

TEST_F(MenuEditorFields, HeightThatWouldReachOutMovesTheButtonUp) {
  menu_editor& e = edit_first(record_at(200, 439, 300, 479));
  e.type_heightpos("299");
  EXPECT_EQ(record(), record_at(200, 180, 300, 479));
  EXPECT_EQ(shown().VScroll1.value, 180);
  EXPECT_EQ(shown().ypos, " 180");
}

TEST_F(MenuEditorFields, BoundsLookAtTheWholePartOfTheValue) {
  menu_editor& e = edit_button();
  e.type_leftpos("618.9");
  EXPECT_EQ(record(), record_at(618, 100, 718, 140));
  e.type_heightpos("299.99");
  EXPECT_EQ(record(), record_at(618, 100, 718, 399));
}

TEST_F(MenuEditorFields, NumbersAreReadAsFarAsTheyGo) {
  menu_editor& e = edit_button();
  const std::vector<std::pair<std::string, int>> texts = {{"  42", 42}, {"4 3", 43}, {"44px", 44},
                                                          {"+45", 45},  {"46.", 46}, {"047", 47}};
  for (const auto& [text, x0] : texts) {
    e.type_leftpos(text);
    EXPECT_EQ(shown().HScroll1.value, x0) << text;
    EXPECT_EQ(shown().leftpos, " " + std::to_string(x0)) << text;
  }
}

TEST_F(MenuEditorFields, TextWithoutANumberIsIgnored) {
  menu_editor& e = edit_button();
  for (const std::string text : {"", " ", "abc", "NaN", "inf", "-", ".", "px 5", "\xC3\xA4"}) {
    e.type_leftpos(text);
    e.type_ypos(text);
    e.type_widthpos(text);
    e.type_heightpos(text);
    EXPECT_EQ(record(), start()) << text;
  }
}

TEST_F(MenuEditorFields, NegativeValuesGoToTheEndOfTheRange) {
  menu_editor& e = edit_button();
  e.type_leftpos("-4");
  e.type_ypos("-99999999999999999999");
  e.type_widthpos("-1");
  e.type_heightpos("0");
  EXPECT_EQ(record(), record_at(0, 0, 6, 2));
  EXPECT_EQ(shown().leftpos, " 0");
  EXPECT_EQ(shown().widthpos, " 6");
  EXPECT_EQ(shown().heightpos, " 2");
}

TEST_F(MenuEditorFields, AnyOtherActionCanBeTyped) {
  menu_editor& e = edit_button();
  for (const std::string text : {"jump title 2", "jump  cell 3", "g2=1", "\xC3\xA4rger", ""}) {
    e.set_action(text);
    EXPECT_EQ(shown().Combo1, text);
    EXPECT_EQ(parse_button(record()).action, text);
    EXPECT_EQ(parse_button(record()).select, "black");
  }
}

TEST_F(MenuEditorFields, ActionThatWouldBreakTheRecordIsRefused) {
  menu_editor& e = edit_button();
  e.set_action("jump title 1");
  const std::string before = record();
  const std::string control = "contains a line break, a tab or another control character";
  const std::vector<std::pair<std::string, std::string>> texts = {
      {"a/b", "contains \"/\""},
      {"a|b", "contains \"|\""},
      {"a\\b", "contains \"\\\""},
      {"a\tb", control},
      {"a\nb", control},
      {"a\rb", control},
      {std::string("a\0b", 3), control}};
  for (const auto& [text, why] : texts) {
    expect_refusal("The action \"" + (why == control ? "a?b" : text) + "\" cannot be used: it " +
                   why + ".");
    e.set_action(text);
    EXPECT_TRUE(ask.all_asked()) << why;
    EXPECT_EQ(record(), before) << why;
    EXPECT_EQ(shown().Combo1, "jump title 1") << why;
  }
}

TEST_F(MenuEditorFields, TimesThatWouldBreakTheOptionsRowAreRefused) {
  menu_editor& e = edit_button();
  e.set_spubegin("00:00:01.0");
  e.set_spuend("00:00:02.0");
  expect_refusal(
      "The spu begin \"1?2\" cannot be used: it contains a line break, a tab or another control "
      "character.");
  e.set_spubegin("1\t2");
  expect_refusal(
      "The spu end \"1?2\" cannot be used: it contains a line break, a tab or another control "
      "character.");
  e.set_spuend("1\n2");
  EXPECT_EQ(shown().spubegin, "00:00:01.0");
  EXPECT_EQ(shown().spuend, "00:00:02.0");
}

TEST_F(MenuEditorFields, RefusalsWithAMessageAreCounted) {
  menu_editor& e = edit(record_at(0, 0, 100, 50));
  expect_choose_first();
  e.type_leftpos("20");
  EXPECT_EQ(e.refusals(), 1);
  e.choose(0);
  e.type_leftpos("900");  // ignored, without a word
  e.set_action("jump title 1");
  EXPECT_EQ(e.refusals(), 1);
  expect_refusal("The action \"a/b\" cannot be used: it contains \"/\".");
  e.set_action("a/b");
  EXPECT_EQ(e.refusals(), 2);
}

TEST_F(MenuEditorFields, ColoursTakeOnlyTheTenNames) {
  menu_editor& e = edit_button();
  for (const std::string& colour : button_colours) {
    e.set_highlight(colour);
    e.set_select(colour);
    EXPECT_EQ(parse_button(record()).highlight, colour);
    EXPECT_EQ(parse_button(record()).select, colour);
  }
  const std::string before = record();
  for (const std::string text : {"red", "", "a/b", "C:\\a.bmp"}) {
    e.set_highlight(text);
    e.set_select(text);
    EXPECT_EQ(record(), before) << text;
  }
}

// Scroll bars and sliders ------------------------------------------------------------------------

TEST_F(MenuEditorFields, ScrollBarsStopAtTheEndsOfThePicture) {
  menu_editor& e = edit_button();
  e.scroll_x(10000);
  e.scroll_y(10000);
  EXPECT_EQ(record(), record_at(619, 439, 719, 479));
  e.scroll_x(-5);
  e.scroll_y(-5);
  EXPECT_EQ(record(), record_at(0, 0, 100, 40));
}

TEST_F(MenuEditorFields, NtscButtonOfHeightHStopsAt479MinusH) {
  for (const int height : {2, 3, 40, 299}) {
    menu_editor& e = edit_first(record_at(0, 0, 100, height));
    EXPECT_EQ(shown().VScroll1.maximum, 479 - height);
    e.scroll_y(479);
    EXPECT_EQ(record(), record_at(0, 479 - height, 100, 479));
  }
}

TEST_F(MenuEditorFields, WideningAtTheRightEdgePushesTheButtonLeft) {
  menu_editor& e = edit_first(record_at(619, 0, 719, 40));
  e.slide_width(300);
  EXPECT_EQ(record(), record_at(419, 0, 719, 40));
  EXPECT_EQ(shown().HScroll1.value, 419);
  EXPECT_EQ(shown().HScroll1.maximum, 419);
  EXPECT_EQ(shown().HScroll1.large_step, 300);
  EXPECT_EQ(shown().leftpos, " 419");
  e.slide_width(100000);
  EXPECT_EQ(record(), record_at(0, 0, 719, 40));
}

TEST_F(MenuEditorFields, PickingASmallerButtonThanCanBeSetLeavesItsSize) {
  menu_editor& e = edit_button();
  p.menubuttons = {" 10/ 20/ 13/ 21/exit/black/black"};
  e.recallbuttondata();
  e.choose(0);
  EXPECT_EQ(record(), record_at(10, 20, 13, 21));
  e.move_by(5, 5);
  EXPECT_EQ(record(), record_at(15, 25, 18, 26));
}

TEST_F(MenuEditorFields, SlidersKeepADrawableSize) {
  menu_editor& e = edit_button();
  e.slide_width(-5);
  e.slide_height(-5);
  EXPECT_EQ(record(), record_at(200, 100, 206, 102));
  e.slide_height(100000);
  EXPECT_EQ(record(), record_at(200, 0, 206, 479));
}

}  // namespace
}  // namespace corvane
