// The row formats of menus.
#include "project/menu_rows.h"

#include "formats/numbers.h"
#include "project/project.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using rows = std::vector<std::string>;

TEST(ButtonRecord, FirstButtonIsABlackUnderlineThatExits) {
  const button_record b = parse_button(first_button);
  EXPECT_EQ(b.x0, " 0");
  EXPECT_EQ(b.y0, "0");
  EXPECT_EQ(b.x1, "100");
  EXPECT_EQ(b.y1, "3");
  EXPECT_EQ(b.action, "exit");
  EXPECT_EQ(b.highlight, "black");
  EXPECT_EQ(b.select, "black");
}

TEST(ButtonRecord, TextAndPartsAreTheSame) {
  for (const std::string record :
       {" 0/0/100/3/exit/black/black", " 10/ 20/ 110/ 23/jump title 1/\\home\\u\\a b.bmp/cyan",
        "-4/ 0/ 96/ 3/jump title 2 chapter 3/C:\\a.bmp/C:\\b.bmp"})
    EXPECT_EQ(button_text(parse_button(record)), record);
}

TEST(ButtonRecord, NumbersAreReadWithTheirBlanks) {
  const button_record b = parse_button(" 10/ 20/-4/x/jump menu 3/red/blue");
  EXPECT_EQ(leading_whole(b.x0), 10);
  EXPECT_EQ(leading_whole(b.x1), -4);
  EXPECT_EQ(leading_whole(b.y1), 0);
}

TEST(ButtonRecord, FieldsThatAreNotThereAreEmpty) {
  for (const std::string record : {"", " ", " 1", " 1/2/3", "////"}) {
    const button_record b = parse_button(record);
    EXPECT_EQ(b.select, "") << record;
    EXPECT_EQ(b.highlight, "") << record;
  }
}

TEST(ButtonRecord, FieldsBeyondTheSeventhAreDropped) {
  EXPECT_EQ(button_text(parse_button("1/2/3/4/exit/black/blue/green/9")),
            "1/2/3/4/exit/black/blue");
}

TEST(ButtonRecord, ABackslashMakesAValueABitmap) {
  EXPECT_TRUE(is_bitmap("C:\\a.bmp"));
  EXPECT_TRUE(is_bitmap("\\home\\u\\a.bmp"));
  for (const std::string& colour : button_colours)
    EXPECT_FALSE(is_bitmap(colour)) << colour;
}

TEST(ButtonRecord, ColoursAreOfferedInThisOrder) {
  EXPECT_EQ(button_colours, (rows{"black", "brown", "orange", "yellow", "green", "blue", "white",
                                  "grey", "magenta", "cyan"}));
}

TEST(ButtonRecord, EdgesAreWrittenWithALeadingBlankUnlessNegative) {
  button_record b = button_with_edges(10, 0, 110, -4);
  b.action = "exit";
  b.highlight = "cyan";
  b.select = "grey";
  EXPECT_EQ(button_text(b), " 10/ 0/ 110/-4/exit/cyan/grey");
}

TEST(ButtonRecord, FieldsCannotHoldWhatSeparatesThemOrNamesABitmap) {
  for (const std::string text : {"", "exit", "jump title 1 chapter  2", "\xC3\xA4", "a;b,c:d"})
    EXPECT_FALSE(why_not_a_field(text)) << text;
  EXPECT_EQ(why_not_a_field("a/b"), "contains \"/\"");
  EXPECT_EQ(why_not_a_field("a|b"), "contains \"|\"");
  EXPECT_EQ(why_not_a_field("a\\b"), "contains \"\\\"");
  for (const std::string text : {"\t", "a\n", "\r", "\x7f", "\x01"})
    EXPECT_EQ(why_not_a_field(text), "contains a line break, a tab or another control character");
}

TEST(MenuOptions, EditedRowHasNumbersWithLeadingBlanks) {
  EXPECT_EQ(menu_options_text({true, "00:00:01.5", "00:00:59.0", 12}),
            " 1\t00:00:01.5\t00:00:59.0\t 12");
  EXPECT_EQ(menu_options_text({}), " 0\t00:00:00.0\t00:00:00.0\t 1");
}

TEST(MenuRow, TextOfAMenuWithoutAudioEndsInASlash) {
  EXPECT_EQ(menu_row_text({"C:\\m.m2v", ""}), "C:\\m.m2v/");
  EXPECT_EQ(menu_row_text({"C:\\m.m2v", "C:\\m.ac3"}), "C:\\m.m2v/C:\\m.ac3");
}

TEST(MenuOptions, NewMenuHasNoLoopNoTimesAndThicknessOne) {
  const menu_options o = parse_menu_options(new_menu_options);
  EXPECT_FALSE(o.loop);
  EXPECT_EQ(o.spu_begin, "00:00:00.0");
  EXPECT_EQ(o.spu_end, "00:00:00.0");
  EXPECT_EQ(o.thickness, 1);
}

TEST(MenuOptions, NumbersOfAnAcceptedMenuHaveLeadingBlanks) {
  const menu_options o = parse_menu_options(" 1\t00:00:01.5\t00:00:59.0\t 12");
  EXPECT_TRUE(o.loop);
  EXPECT_EQ(o.spu_begin, "00:00:01.5");
  EXPECT_EQ(o.spu_end, "00:00:59.0");
  EXPECT_EQ(o.thickness, 12);
}

TEST(MenuOptions, OnlyAFlagOfOneLoops) {
  for (const std::string flag : {"1", " 1", "1 ", "01", "1.0"})
    EXPECT_TRUE(parse_menu_options(flag + "\t00:00:00.0\t00:00:00.0\t1").loop) << flag;
  for (const std::string flag : {"0", " 0", "2", " 2", "-1", "10", "1.5", "True", "", " "})
    EXPECT_FALSE(parse_menu_options(flag + "\t00:00:00.0\t00:00:00.0\t1").loop) << flag;
}

TEST(MenuOptions, ADamagedRowReadsAsFarAsItGoes) {
  EXPECT_EQ(parse_menu_options("").spu_begin, "00:00:00.0");
  EXPECT_EQ(parse_menu_options("1").thickness, 1);
  EXPECT_TRUE(parse_menu_options("1").loop);
  EXPECT_EQ(parse_menu_options("x\ty\tz\tmany").thickness, 0);
}

TEST(MenuRow, AudioMayBeEmpty) {
  EXPECT_EQ(parse_menu_row("C:\\m.m2v/").video, "C:\\m.m2v");
  EXPECT_EQ(parse_menu_row("C:\\m.m2v/").audio, "");
  EXPECT_EQ(parse_menu_row("C:\\m.m2v/C:\\m.ac3").audio, "C:\\m.ac3");
  EXPECT_EQ(parse_menu_row("").video, "");
  EXPECT_EQ(parse_menu_row("C:\\m.m2v").audio, "");
}

TEST(MenuButtons, RecordsStandInButtonOrder) {
  project p;
  p.menubuttons = {"1/a|2/b", "", " "};
  EXPECT_EQ(button_records(p, 1), (rows{"1/a", "2/b"}));
  EXPECT_EQ(buttoncount(p, 1), 2);
}

TEST(MenuButtons, AMenuWhoseEditorWasNeverAcceptedHasNone) {
  project p;
  p.menubuttons = {""};
  EXPECT_TRUE(button_records(p, 1).empty());
  EXPECT_EQ(buttoncount(p, 1), 0);
}

TEST(MenuButtons, TheElementOfOneBlankDescribesNoButtonButCountsAsOnePiece) {
  project p;
  p.menubuttons = {" "};
  EXPECT_TRUE(button_records(p, 1).empty());
  EXPECT_EQ(buttoncount(p, 1), 1);
}

TEST(MenuButtons, AMenuThatIsNotThereHasNone) {
  project p;
  for (const int menu : {0, -1, 2, 100}) {
    EXPECT_TRUE(button_records(p, menu).empty()) << menu;
    EXPECT_EQ(buttoncount(p, menu), 0) << menu;
  }
  p.menubuttons.clear();
  EXPECT_EQ(buttoncount(p, 1), 0);
}

}  // namespace
}  // namespace corvane
