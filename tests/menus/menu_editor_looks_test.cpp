// The menu editor's commands for the looks of buttons.
#include "editor_test.h"
#include "formats/text.h"
#include "menus/menu_editor.h"

namespace corvane {
namespace {

using testing_support::rows;
using indices = std::vector<int>;

class MenuEditorLooks : public testing_support::editor_test {
 protected:
  static std::string button(int number, const std::string& looks) {
    const int x = 20 + number % 6 * 115, y = 20 + number / 6 * 60;
    return " " + std::to_string(x) + "/ " + std::to_string(y) + "/ " + std::to_string(x + 90) +
           "/ " + std::to_string(y + 20) + "/a" + std::to_string(number) + "/" + looks;
  }
  /// Looks of each button in turn.
  static std::string in_turns(int count, int looks) {
    rows all;
    for (int i = 0; i < count; ++i)
      all.push_back(button(i, button_colours[static_cast<std::size_t>(i % looks)] + "/white"));
    return join(all, "|");
  }
  /// "action highlight" of each record.
  rows told() const {
    rows all;
    for (const std::string& r : shown().List1)
      all.push_back(parse_button(r).action + " " + parse_button(r).highlight);
    return all;
  }
};

TEST_F(MenuEditorLooks, OrderTakesNumbersActionsAndPlacesAlongInOneStep) {
  menu_editor& e = edit(button(0, "green/white") + "|" + button(1, "blue/white") + "|" +
                        button(2, "green/black") + "|" + button(3, "green/white"));
  e.select({1, 3}, 3);
  const rows before = shown().List1;
  e.order_by_look();
  EXPECT_EQ(told(), (rows{"a0 green", "a3 green", "a1 blue", "a2 green"}));
  EXPECT_EQ(record(1), before[3]);
  EXPECT_EQ(e.selected(), (indices{1, 2}));
  EXPECT_EQ(shown().button, "2");
  EXPECT_EQ(e.undo_name(), "order by look");
  e.undo();
  EXPECT_EQ(shown().List1, before);
  EXPECT_EQ(e.undo_name(), std::nullopt);
}

TEST_F(MenuEditorLooks, BlankRecordsAreNoButtonsAndGoBehind) {
  menu_editor& e = edit(button(0, "green/white") + "| |" + button(1, "blue/white") + "|" +
                        button(2, "green/white"));
  e.order_by_look();
  EXPECT_EQ(told(), (rows{"a0 green", "a2 green", "a1 blue", " "}));
}

TEST_F(MenuEditorLooks, CuresAreThoseOfTheMenuAsItIs) {
  menu_editor& e = edit(in_turns(36, 6));
  EXPECT_FALSE(e.are_looks_good());
  EXPECT_TRUE(e.cures_for_looks().order);
  e.order_by_look();
  EXPECT_FALSE(e.cures_for_looks().order);
  EXPECT_FALSE(e.cures_for_looks().fewer);
}

TEST_F(MenuEditorLooks, FewerLooksGivesTheChosenFewAnotherOneInOneStep) {
  menu_editor& e = edit("|" + in_turns(10, 10) + "|" + button(10, "brown/white"));
  const std::optional<fewer_looks> plan = e.cures_for_looks().fewer;
  ASSERT_TRUE(plan);
  EXPECT_EQ(plan->buttons, indices{10}) << "records, the blank one included";
  EXPECT_EQ(plan->as, 2);
  e.choose(10);
  e.use_fewer_looks();
  EXPECT_EQ(told()[10], "a9 brown");
  EXPECT_EQ(shown().Colorhighlight, "brown") << "its values are shown";
  EXPECT_FALSE(e.cures_for_looks().fewer);
  EXPECT_EQ(e.undo_name(), "fewer looks");
  e.undo();
  EXPECT_EQ(told()[10], "a9 cyan");
  EXPECT_FALSE(e.is_changed());
}

TEST_F(MenuEditorLooks, OfNineLooksOf36ButtonsFewerAreMadeAndOrderedInOneStep) {
  menu_editor& e = edit(in_turns(36, 9));
  e.use_fewer_looks();
  EXPECT_FALSE(e.cures_for_looks().fewer);
  EXPECT_FALSE(e.cures_for_looks().order);
  e.undo();
  EXPECT_FALSE(e.is_changed());
}

TEST_F(MenuEditorLooks, BitmapsKeepTheirs) {
  rows records;
  for (int i = 0; i < 10; ++i)
    records.push_back(button(i, "C:\\" + std::to_string(i) + ".bmp/C:\\x.bmp"));
  EXPECT_FALSE(edit(join(records, "|")).cures_for_looks().fewer);
}

TEST_F(MenuEditorLooks, SameLookIsThatOfTheChosenButton) {
  menu_editor& e = edit(button(0, "green/white") + "|" + button(1, "blue/grey") + "|" +
                        button(2, "cyan/cyan") + "|" + button(3, "C:\\a.bmp/C:\\b.bmp"));
  e.choose(1);
  e.make_same_look();
  EXPECT_EQ(e.undo_name(), std::nullopt) << "nothing to one alone";
  e.select({0, 1}, 1);
  e.make_same_look();
  EXPECT_EQ(told(), (rows{"a0 blue", "a1 blue", "a2 cyan", "a3 C:\\a.bmp"}));
  EXPECT_EQ(e.undo_name(), "same look of 2 buttons");
  e.select({2, 3}, 2);
  e.make_same_look();
  EXPECT_EQ(told()[3], "a3 cyan");
  e.undo();
  e.select({2, 3}, 3);
  e.type_leftpos("10");
  e.make_same_look();
  EXPECT_EQ(parse_button(record(2)).select, "C:\\b.bmp");
  const menu_rectangle r = edges_of(record(2));
  EXPECT_EQ(r.x1 - r.x0, 90) << "a bitmap brings its size";
}

}  // namespace
}  // namespace corvane
