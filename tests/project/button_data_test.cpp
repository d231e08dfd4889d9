// Button data between the project and the menu editor.
#include "project/button_data.h"

#include "project/menu_rows.h"
#include "project/project.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using rows = std::vector<std::string>;

TEST(ButtonData, StoringJoinsTheRowsAndEmptiesTheTransferList) {
  project p;
  p.menubuttons = {"old", "old"};
  p.buttondata = {"1/a", "2/b", "3/c"};
  storebuttondata(p, 2);
  EXPECT_EQ(p.menubuttons, (rows{"old", "1/a|2/b|3/c"}));
  EXPECT_TRUE(p.buttondata.empty());
}

TEST(ButtonData, StoringOneRowHasNoSeparator) {
  project p;
  p.buttondata = {"1/a"};
  storebuttondata(p, 1);
  EXPECT_EQ(p.menubuttons, rows{"1/a"});
}

TEST(ButtonData, StoringNoRowsLeavesTheEmptyElement) {
  project p;
  p.menubuttons = {"1/a"};
  storebuttondata(p, 1);
  EXPECT_EQ(p.menubuttons, rows{""});
}

TEST(ButtonData, StoringForAMenuBeyondTheArrayGrowsIt) {
  project p;
  p.buttondata = {"1/a"};
  storebuttondata(p, 3);
  EXPECT_EQ(p.menubuttons, (rows{"", "", "1/a"}));
}

TEST(ButtonData, StoringForNoMenuStoresNothing) {
  using number = std::int16_t;
  for (const number menu : {number{0}, number{-1}, number{-32768}}) {
    project p;
    p.menubuttons = {"1/a"};
    p.buttondata = {"2/b"};
    storebuttondata(p, menu);
    EXPECT_EQ(p.menubuttons, rows{"1/a"}) << menu;
    EXPECT_TRUE(p.buttondata.empty()) << menu;
  }
}

TEST(ButtonData, RecallingSplitsTheElementAndEmptiesTheTransferList) {
  project p;
  p.menubuttons = {"", "1/a|2/b"};
  p.buttondata = {"left over"};
  EXPECT_EQ(recallbuttondata(p, 2), (rows{"1/a", "2/b"}));
  EXPECT_TRUE(p.buttondata.empty());
  EXPECT_EQ(p.menubuttons[1], "1/a|2/b");
}

TEST(ButtonData, RecallingTheEmptyElementGivesNoButtons) {
  project p;
  EXPECT_TRUE(recallbuttondata(p, 1).empty());
}

TEST(ButtonData, RecallingTheElementOfOneBlankGivesNoButtons) {
  project p;
  p.menubuttons = {" "};
  EXPECT_TRUE(recallbuttondata(p, 1).empty());
}

TEST(ButtonData, RecallingKeepsRecordsThatDescribeNoButton) {
  project p;
  p.menubuttons = {"1/a|| |2/b"};
  EXPECT_EQ(recallbuttondata(p, 1), (rows{"1/a", "", " ", "2/b"}));
}

TEST(ButtonData, RecallingAMenuThatIsNotThereGivesNoButtons) {
  project p;
  p.menubuttons = {"1/a"};
  using number = std::int16_t;
  for (const number menu : {number{0}, number{-1}, number{2}, number{32767}, number{-32768}})
    EXPECT_TRUE(recallbuttondata(p, menu).empty()) << menu;
  p.menubuttons.clear();
  EXPECT_TRUE(recallbuttondata(p, 1).empty());
}

TEST(ButtonData, EditedMenuFillsOptionsRowsThatAreMissing) {
  project p;
  p.menulist = {"a/", "b/"};
  store_edited_menu(p, 2, {"1/a"}, "options");
  EXPECT_EQ(p.moremenuoptions, (rows{new_menu_options, "options"}));
  EXPECT_EQ(p.menubuttons, (rows{"", "1/a"}));
}

}  // namespace
}  // namespace corvane
