// The menu editor on records and rows that no editor wrote: a project file can hold anything.
#include "editor_test.h"
#include "formats/numbers.h"
#include "formats/text.h"
#include "menus/menu_editor.h"
#include "project/button_data.h"

namespace corvane {
namespace {

using testing_support::record_at;
using testing_support::rows;

const rows hostile_records = {
    "x",
    " ",
    " 1/2",
    "////////",
    "NaN/inf/-inf/1e9/exit/black/black",
    "99999999999999999999/-99999999999999999999/-99999999999999999999/99999999999999999999/a/b/c",
    "-2147483648/2147483647/2147483647/-2147483648/exit/black/black",
    " 300/ 300/ 200/ 200/exit/black/black",
    " 700/ 470/ 900/ 900/exit/black/black",
    "1.9/2.9/50.9/60.9/exit/black/black",
    " 0/ 0/ 100/ 3/exit/black/black/surplus/fields",
    " 0/ 0/ 100/ 3/exit/red/\xFF\xFE",
    " 0/ 0/ 100/ 3/exit/\\nowhere\\a.bmp/black",
    " 0/ 0/ 100/ 3/exit/black/\\nowhere\\a.bmp",
};

class MenuEditorHostile : public testing_support::editor_test {
 protected:
  void expect_inside(const std::string& record) {
    const menu_rectangle edges = edges_of(record);
    EXPECT_GE(edges.x0, 0) << record;
    EXPECT_GE(edges.y0, 0) << record;
    EXPECT_LE(edges.x1, 719) << record;
    EXPECT_LE(edges.y1, 479) << record;
    EXPECT_GT(edges.x1, edges.x0) << record;
    EXPECT_GT(edges.y1, edges.y0) << record;
    EXPECT_EQ(split(record, '/').size(), 7u) << record;
  }
};

TEST_F(MenuEditorHostile, RecordsStayAsTheyAreUntilTheirButtonIsPicked) {
  const std::string good = record_at(600, 400, 700, 403);
  menu_editor& e = edit(join(hostile_records, "|") + "|" + good);
  EXPECT_EQ(shown().Combo2.size(), hostile_records.size() + 1);
  e.choose(static_cast<int>(hostile_records.size()));
  e.scroll_x(10);
  for (std::size_t i = 0; i < hostile_records.size(); ++i)
    EXPECT_EQ(record(i), hostile_records[i]);
}

TEST_F(MenuEditorHostile, PickedRecordIsBroughtIntoThePicture) {
  for (const std::string& hostile : hostile_records) {
    if (trim(hostile).empty())
      continue;
    edit_first(hostile);
    expect_inside(record());
    EXPECT_EQ(parse_button(record()).action, parse_button(hostile).action);
    EXPECT_EQ(parse_button(record()).highlight, parse_button(hostile).highlight);
    EXPECT_EQ(parse_button(record()).select, parse_button(hostile).select);
  }
}

TEST_F(MenuEditorHostile, TallButtonKeepsItsHeight) {
  edit_first(record_at(10, 20, 110, 470));
  EXPECT_EQ(record(), record_at(10, 20, 110, 470));
}

TEST_F(MenuEditorHostile, PickingAnEmptyRecordShowsItsNumberOnly) {
  menu_editor& e = edit_first(record_at(10, 20, 110, 50) + "||" + record_at(10, 90, 110, 93));
  e.choose(1);
  EXPECT_EQ(shown().button, "2");
  EXPECT_EQ(shown().HScroll1.value, 10);
  EXPECT_EQ(shown().VScroll1.value, 20);
  EXPECT_EQ(record(1), "");
  e.delete_button();
  EXPECT_EQ(shown().List1, (rows{record_at(10, 20, 110, 50), record_at(10, 90, 110, 93)}));
}

TEST_F(MenuEditorHostile, EveryEventOnEveryRecordLeavesItInsideThePicture) {
  for (const std::string& hostile : hostile_records) {
    if (trim(hostile).empty())
      continue;
    menu_editor& e = edit_first(hostile);
    for (const int value : {-2147483647 - 1, -1, 0, 1, 300, 719, 100000, 2147483647}) {
      e.scroll_x(value);
      e.slide_width(value);
      e.scroll_y(value);
      e.slide_height(value);
      e.slide_thickness(value);
      e.move_by(value, value);
      e.size_by(value, value);
      e.move_to(value, value);
      e.type_leftpos(std::to_string(value));
      e.type_ypos(std::to_string(value));
      e.type_widthpos(std::to_string(value));
      e.type_heightpos(std::to_string(value));
      for (const dragged_edges edges :
           {dragged_edges{true, true, false, false}, dragged_edges{false, false, true, true},
            dragged_edges{true, true, true, true}, dragged_edges{}})
        e.drag_edges(edges, value, value);
      expect_inside(record());
      EXPECT_EQ(e.outline(), edges_of(record()));
    }
  }
}

TEST_F(MenuEditorHostile, MenuOfThousandsOfButtonsCanBeOpenedAndPicked) {
  std::string records = record_at(0, 0, 9, 3);
  for (int i = 1; i < 5000; ++i)
    records += "|" + record_at(0, 10 * i, 9, 10 * i + 3);
  menu_editor& e = edit(records);
  e.choose(4999);
  EXPECT_EQ(shown().button, "5000");
  EXPECT_EQ(e.others().size(), 4999u);
}

TEST_F(MenuEditorHostile, OptionsRowsThatAreDamagedLoad) {
  for (const std::string row : {"", "x", "1", "\t\t\t", "1\ta\tb\tc\td", "NaN\t\t\tNaN"}) {
    p.moremenuoptions = {row};
    const menu_editor& e = edit();
    EXPECT_GE(e.controls().thickness.value, e.controls().thickness.minimum) << row;
    EXPECT_LE(e.controls().thickness.value, e.controls().thickness.maximum) << row;
  }
  p.moremenuoptions.clear();
  EXPECT_EQ(edit().controls().spubegin, "00:00:00.0");
}

TEST_F(MenuEditorHostile, StoredThicknessIsKeptUnlessItIsMoved) {
  for (const int stored : {0, 1, 20, 21, 500}) {
    p.moremenuoptions = {"0\t00:00:00.0\t00:00:00.0\t" + std::to_string(stored)};
    menu_editor& e = edit(record_at(0, 0, 100, 3));
    EXPECT_LE(shown().thickness.minimum, stored);
    EXPECT_GE(shown().thickness.maximum, stored);
    EXPECT_TRUE(e.accept());
    EXPECT_EQ(parse_menu_options(p.moremenuoptions[0]).thickness, stored);
  }
}

TEST_F(MenuEditorHostile, MenuThatTheProjectDoesNotHaveOpensWithoutAVideo) {
  for (const int number : {0, -1, 2, 100000}) {
    p.indexer = number;
    const menu_editor& e = edit();
    EXPECT_EQ(e.video(), "") << number;
    EXPECT_TRUE(shown().List1.empty()) << number;
  }
}

TEST_F(MenuEditorHostile, ElementOfOneBlankIsAMenuWithoutButtons) {
  edit(" ");
  EXPECT_TRUE(shown().List1.empty());
  EXPECT_TRUE(shown().Combo2.empty());
}

}  // namespace
}  // namespace corvane
