// The menu editor with several buttons: selecting, moving, placing, ordering, copying, repeating.
#include "editor_test.h"
#include "formats/text.h"
#include "menus/menu_editor.h"

namespace corvane {
namespace {

using testing_support::record_at;
using testing_support::rows;
using indices = std::vector<int>;

class MenuEditorSelection : public testing_support::editor_test {
 protected:
  /// Three of 100 x 40, 60 below each other, with actions of their own; the first is chosen.
  menu_editor& edit_three() {
    return edit_first(
        " 100/ 100/ 200/ 140/one/black/black| 100/ 160/ 200/ 200/two/black/black|"
        " 100/ 220/ 200/ 260/three/black/black");
  }
  /// "x0,y0-x1,y1 action".
  std::string at(std::size_t i) const {
    const menu_rectangle r = edges_of(record(i));
    return std::to_string(r.x0) + "," + std::to_string(r.y0) + "-" + std::to_string(r.x1) + "," +
           std::to_string(r.y1) + " " + parse_button(record(i)).action;
  }
  rows actions() const {
    rows all;
    for (const std::string& r : shown().List1)
      all.push_back(parse_button(r).action);
    return all;
  }
};

TEST_F(MenuEditorSelection, ChoosingSelectsOneAndSelectingChoosesOneOfThem) {
  menu_editor& e = edit_three();
  EXPECT_EQ(e.selected(), indices{0});
  e.select({2, 0}, 2);
  EXPECT_EQ(e.selected(), (indices{0, 2}));
  EXPECT_EQ(shown().button, "3");
  EXPECT_TRUE(e.is_selected(0));
  EXPECT_FALSE(e.is_selected(1));
  e.select({0, 1, 7, -1}, 5);
  EXPECT_EQ(e.selected(), (indices{0, 1}));
  EXPECT_EQ(shown().button, "2");
  e.select({}, 0);
  EXPECT_EQ(e.selected(), indices{});
  EXPECT_EQ(shown().button, "");
  e.select_all();
  EXPECT_EQ(e.selected(), (indices{0, 1, 2}));
  e.choose(1);
  EXPECT_EQ(e.selected(), indices{1});
  EXPECT_FALSE(e.is_changed());
}

TEST_F(MenuEditorSelection, SelectedButtonsAreBroughtIntoThePictureAsChosenOnesAre) {
  for (const char* hostile :
       {"x", " 300/ 300/ 200/ 200/exit/a/b", " 700/ 470/ 900/ 900/x/a/b",
        "1.9/2.9/50.9/60.9/exit/a/b", "-9/-9/-3/-3/exit/a/b/c", " 0/ 0/ 9999999999/ 3/exit/a/b"}) {
    edit(hostile).choose(0);
    const std::string chosen = record();
    edit(std::string(hostile) + "|" + record_at(0, 0, 9, 3)).select({0, 1}, 1);
    EXPECT_EQ(record(0), chosen);
  }
}

TEST_F(MenuEditorSelection, BlankRecordsCannotBeSelected) {
  menu_editor& e = edit(record_at(0, 0, 9, 3) + "| |" + record_at(0, 9, 9, 12));
  e.select_all();
  EXPECT_EQ(e.selected(), (indices{0, 2}));
}

TEST_F(MenuEditorSelection, PressWithMoreJoinsAndLeavesAndWithoutKeepsThemTogether) {
  menu_editor& e = edit_three();
  e.press(2, true);
  EXPECT_EQ(e.selected(), (indices{0, 2}));
  EXPECT_EQ(shown().button, "3");
  e.press(0, false);
  EXPECT_EQ(e.selected(), (indices{0, 2}));
  EXPECT_EQ(shown().button, "1");
  e.press(0, true);
  EXPECT_EQ(e.selected(), indices{2});
  EXPECT_EQ(shown().button, "3");
  e.press(2, true);  // the last one stays
  EXPECT_EQ(e.selected(), indices{2});
  e.press(1, false);
  EXPECT_EQ(e.selected(), indices{1});
}

TEST_F(MenuEditorSelection, PressWithoutAPointerGoesFromButtonToButton) {
  menu_editor& e = edit(record_at(0, 0, 9, 3) + "| |" + record_at(0, 9, 9, 12));
  e.press_next(false, false);
  EXPECT_EQ(e.selected(), indices{0});
  e.press_next(false, true);  // the blank one is none
  EXPECT_EQ(e.selected(), (indices{0, 2}));
  EXPECT_EQ(shown().button, "3");
  e.press_next(false, false);  // there is none behind the last
  EXPECT_EQ(e.selected(), (indices{0, 2}));
  e.press_next(true, false);
  EXPECT_EQ(e.selected(), indices{0});
  e.press_next(true, true);
  EXPECT_EQ(e.selected(), indices{0});
  menu_editor& none = edit(record_at(0, 0, 9, 3) + "|" + record_at(0, 9, 9, 12));
  none.press_next(true, false);
  EXPECT_EQ(none.selected(), indices{1});
}

TEST_F(MenuEditorSelection, SelectedButtonsMoveTogetherAndStopTogetherAtTheEdge) {
  menu_editor& e = edit_three();
  e.select({0, 2}, 0);
  e.move_by(10, -20);
  EXPECT_EQ(at(0), "110,80-210,120 one");
  EXPECT_EQ(at(1), "100,160-200,200 two");
  EXPECT_EQ(at(2), "110,200-210,240 three");
  EXPECT_EQ(shown().leftpos, " 110");
  e.move_by(-1000, 1000);
  EXPECT_EQ(at(0), "0,319-100,359 one");
  EXPECT_EQ(at(2), "0,439-100,479 three");
  EXPECT_EQ(e.undo_name(), "move 2 buttons");
  e.undo();
  EXPECT_EQ(at(0), "100,100-200,140 one");
  EXPECT_EQ(e.selected(), (indices{0, 2}));
}

TEST_F(MenuEditorSelection, ButtonsBesideEachOtherStopTogetherAtTheEdge) {
  menu_editor& e = edit(record_at(100, 100, 200, 140) + "|" + record_at(300, 100, 400, 140));
  e.select_all();
  e.move_by(-500, 0);
  EXPECT_EQ(at(0), "0,100-100,140 exit");
  EXPECT_EQ(at(1), "200,100-300,140 exit");
}

TEST_F(MenuEditorSelection, DraggedButtonsDoNotDrawEachOther) {
  menu_editor& e = edit(record_at(200, 100, 250, 120) + "|" + record_at(400, 200, 450, 220));
  e.select_all();
  e.begin_drag();
  e.move_to(402, 202);
  EXPECT_EQ(at(0), "202,102-252,122 exit");
  e.move_to(404, 204);  // those that it left a moment ago do not, either
  EXPECT_EQ(at(1), "404,204-454,224 exit");
  e.end_drag();
}

TEST_F(MenuEditorSelection, DragIsDrawnToLinesAndTellsThem) {
  menu_editor& e = edit_three();
  e.choose(2);
  e.begin_drag();
  e.move_to(198, 161);  // beside the second
  EXPECT_EQ(at(2), "200,160-300,200 three");
  EXPECT_FALSE(e.guides().empty());
  e.move_to(400, 301);
  EXPECT_EQ(at(2), "400,300-500,340 three");  // on an even line
  EXPECT_TRUE(e.guides().empty());
  e.move_to(198, 161);
  EXPECT_FALSE(e.guides().empty());
  e.hold({.free = true});
  e.move_to(198, 161);
  EXPECT_EQ(at(2), "198,161-298,201 three");
  EXPECT_TRUE(e.guides().empty());
  e.end_drag();
  EXPECT_TRUE(e.guides().empty());
  e.move_to(203, 161);  // no drag: nothing draws it
  EXPECT_EQ(at(2), "203,161-303,201 three");
}

TEST_F(MenuEditorSelection, DragThatKeepsItsDirectionMovesAcrossOrDown) {
  menu_editor& e = edit_three();
  e.begin_drag();
  e.hold({.keeps_direction = true});
  e.move_to(400, 130);
  EXPECT_EQ(at(0), "400,100-500,140 one");
  e.move_to(130, 400);
  EXPECT_EQ(at(0), "100,400-200,440 one");
  e.end_drag();
}

TEST_F(MenuEditorSelection, DragAcrossAloneLeavesAnOddLineAlone) {
  menu_editor& e = edit_first(record_at(100, 101, 200, 141));
  e.begin_drag();
  e.move_to(500, 101);
  EXPECT_EQ(record(), record_at(500, 101, 600, 141));
  e.end_drag();
}

TEST_F(MenuEditorSelection, DraggedEdgesAreDrawnToLinesToo) {
  menu_editor& e = edit_three();
  e.choose(2);
  e.begin_drag();
  e.drag_edges({.right = true}, 253, 0);
  EXPECT_EQ(at(2), "100,220-253,260 three");
  e.drag_edges({.right = true}, 202, 0);
  EXPECT_EQ(at(2), "100,220-200,260 three");
  e.drag_edges({.bottom = true}, 0, 301);
  EXPECT_EQ(at(2), "100,220-200,300 three");
  e.end_drag();
}

TEST_F(MenuEditorSelection, DragOfSeveralIsOneStepReckonedFromItsBegin) {
  menu_editor& e = edit_three();
  e.select({0, 1}, 1);
  e.begin_drag();
  e.move_to(5000, 5000);
  EXPECT_EQ(at(1), "619,439-719,479 two");
  e.move_to(310, 300);
  EXPECT_EQ(at(0), "310,240-410,280 one");
  EXPECT_EQ(at(1), "310,300-410,340 two");
  e.end_drag();
  e.undo();
  EXPECT_EQ(at(0), "100,100-200,140 one");
  EXPECT_FALSE(e.undo_name());
}

TEST_F(MenuEditorSelection, CommandsPlaceTheSelectedAndAreSteps) {
  const char* const records =
      " 100/ 100/ 200/ 140/one/black/black| 110/ 161/ 190/ 201/two/black/black|"
      " 300/ 221/ 400/ 241/three/black/black";
  const struct {
    const char* step;
    void (*command)(menu_editor&);
    const char* second;
    const char* third;
  } table[] = {
      {"align 3 buttons", [](menu_editor& e) { e.align(alignment::left); }, "100,161-180,201 two",
       "100,221-200,241 three"},
      {"distribute 3 buttons", [](menu_editor& e) { e.distribute(direction::down); },
       "110,160-190,200 two", "300,221-400,241 three"},
      {"same gap of 3 buttons", [](menu_editor& e) { e.make_gaps_equal(direction::down); },
       "110,161-190,201 two", "300,222-400,242 three"},
      {"same width of 3 buttons", [](menu_editor& e) { e.make_same_width(); },
       "110,161-210,201 two", "300,221-400,241 three"},
      {"same height of 3 buttons", [](menu_editor& e) { e.make_same_height(); },
       "110,161-190,201 two", "300,221-400,261 three"},
      {"even lines of 3 buttons", [](menu_editor& e) { e.put_on_even_lines(); },
       "110,160-190,202 two", "300,220-400,242 three"},
  };
  for (const auto& row : table) {
    menu_editor& e = edit(records);
    row.command(e);  // nothing is selected
    EXPECT_FALSE(e.is_changed()) << row.step;
    e.select({0, 1, 2}, 0);
    row.command(e);
    EXPECT_EQ(at(0), "100,100-200,140 one") << row.step;
    EXPECT_EQ(at(1), row.second) << row.step;
    EXPECT_EQ(at(2), row.third) << row.step;
    EXPECT_EQ(e.undo_name(), row.step);
    e.undo();
    EXPECT_FALSE(e.is_changed()) << row.step;
  }
}

TEST_F(MenuEditorSelection, TheChosenOneGivesItsSize) {
  menu_editor& e = edit_three();
  e.choose(1);
  e.slide_width(60);
  e.slide_height(30);
  e.select({0, 1, 2}, 1);
  e.make_same_width();
  e.make_same_height();
  EXPECT_EQ(at(0), "100,100-160,130 one");
  EXPECT_EQ(at(2), "100,220-160,250 three");
}

TEST_F(MenuEditorSelection, BitmapsKeepTheirSize) {
  menu_editor& e =
      edit(record_at(100, 100, 200, 140) + "| 300/ 300/ 350/ 320/exit/\\a\\b.bmp/\\a\\b.bmp");
  e.select({0, 1}, 0);
  e.make_same_width();
  e.make_same_height();
  EXPECT_EQ(at(1), "300,300-350,320 exit");
  e.align(alignment::left);
  EXPECT_EQ(at(1), "100,300-150,320 exit");
}

TEST_F(MenuEditorSelection, OrderChangesWithActionsAndKeepsWhatIsChosen) {
  menu_editor& e = edit_three();
  e.move_down();
  EXPECT_EQ(actions(), (rows{"two", "one", "three"}));
  EXPECT_EQ(e.undo_name(), "button 2 down in the list");
  EXPECT_FALSE(e.shows_another());
  EXPECT_EQ(shown().button, "2");
  EXPECT_EQ(shown().Combo1, "one");
  e.scroll_x(7);
  EXPECT_EQ(at(1), "7,100-107,140 one");
  e.move_down();
  e.move_down();  // it is the last
  EXPECT_EQ(actions(), (rows{"two", "three", "one"}));
  e.select({1, 2}, 2);
  e.move_up();
  EXPECT_EQ(actions(), (rows{"three", "one", "two"}));
  e.move_up();
  EXPECT_EQ(actions(), (rows{"three", "one", "two"}));
  EXPECT_EQ(e.selected(), (indices{0, 1}));
  EXPECT_EQ(e.undo_name(), "2 buttons up in the list");
  e.undo();
  EXPECT_EQ(actions(), (rows{"two", "three", "one"}));
}

TEST_F(MenuEditorSelection, MovedBeforeAnotherTheyKeepTheirOrder) {
  menu_editor& e = edit_three();
  e.move_before(3);
  EXPECT_EQ(actions(), (rows{"two", "three", "one"}));
  EXPECT_EQ(shown().button, "3");
  e.select({0, 2}, 0);
  e.move_before(1);
  EXPECT_EQ(actions(), (rows{"two", "one", "three"}));
  EXPECT_EQ(e.selected(), (indices{0, 1}));
  e.move_before(0);
  e.move_before(-5);
  EXPECT_EQ(actions(), (rows{"two", "one", "three"}));
  e.move_before(99);
  EXPECT_EQ(actions(), (rows{"three", "two", "one"}));
}

TEST_F(MenuEditorSelection, DeletingSeveralChoosesTheNext) {
  menu_editor& e = edit_three();
  e.select({0, 1}, 0);
  e.delete_selected();
  EXPECT_EQ(actions(), rows{"three"});
  EXPECT_EQ(shown().button, "1");
  EXPECT_EQ(e.undo_name(), "delete 2 buttons");
  e.undo();
  EXPECT_EQ(actions(), (rows{"one", "two", "three"}));
  EXPECT_EQ(e.selected(), (indices{0, 1}));
  e.choose(2);
  e.delete_selected();
  EXPECT_EQ(actions(), (rows{"one", "two"}));
  EXPECT_EQ(shown().button, "2");
}

TEST_F(MenuEditorSelection, CopiesStandBelowOrBesideAndAreSelected) {
  menu_editor& e = edit_first(record_at(100, 100, 200, 140));
  e.duplicate();
  EXPECT_EQ(at(1), "100,150-200,190 exit");
  EXPECT_EQ(e.selected(), indices{1});
  EXPECT_EQ(e.outline(), (menu_rectangle{100, 150, 200, 190}));
  EXPECT_EQ(e.undo_name(), "duplicate button 1");
  edit_first(record_at(100, 440, 200, 470)).duplicate();
  EXPECT_EQ(at(1), "210,440-310,470 exit");
  edit_first(record_at(600, 440, 700, 470)).duplicate();
  EXPECT_EQ(at(1), "610,430-710,460 exit");
  menu_editor& three = edit_three();
  three.select({0, 2}, 0);
  three.duplicate();
  EXPECT_EQ(at(3), "100,270-200,310 one");
  EXPECT_EQ(at(4), "100,390-200,430 three");
  EXPECT_EQ(three.selected(), (indices{3, 4}));
}

TEST_F(MenuEditorSelection, RepeatedButtonsGoOnWithTheNextChapters) {
  add_files_and_title({"one.vob"});
  p.chapters = {"00:00:00.00,00:05:00.00,00:10:00.00"};
  menu_editor& e = edit_first(" 100/ 100/ 200/ 140/jump title 1/cyan/white");
  EXPECT_EQ(e.usual_repetition(), action_count::titles);
  e.set_action("jump title 1 chapter  1");
  EXPECT_EQ(e.usual_repetition(), action_count::chapters);
  const repetition four{.across = 2, .down = 2, .gap_across = 20, .gap_down = 10};
  EXPECT_EQ(e.outlook(four).wanted, 4);
  EXPECT_EQ(e.outlook(four).made, 3);
  EXPECT_TRUE(e.outlook(four).no_more_actions);
  EXPECT_FALSE(e.outlook(four).picture_is_full);
  e.repeat(four);
  EXPECT_EQ(at(1), "220,100-320,140 jump title 1 chapter  2");
  EXPECT_EQ(at(2), "100,150-200,190 jump title 1 chapter  3");
  EXPECT_EQ(shown().List1.size(), 3u);
  EXPECT_EQ(parse_button(record(2)).highlight, "cyan");
  EXPECT_EQ(e.selected(), (indices{0, 1, 2}));
  EXPECT_EQ(shown().button, "1");
  EXPECT_EQ(e.undo_name(), "repeat button 1");
  e.undo();
  EXPECT_EQ(shown().List1.size(), 1u);
  const repetition high{.down = 20, .gap_down = 20, .actions = action_count::same};
  EXPECT_EQ(e.outlook(high).made, 6);
  EXPECT_TRUE(e.outlook(high).picture_is_full);
}

TEST_F(MenuEditorSelection, CommandsWithoutAButtonDoNothing) {
  menu_editor& e = edit();
  e.select_all();
  e.duplicate();
  e.repeat({.across = 3});
  e.align(alignment::top);
  e.put_on_even_lines();
  e.move_up();
  e.move_down();
  e.move_before(0);
  e.press(0, true);
  e.delete_selected();
  EXPECT_TRUE(shown().List1.empty());
  EXPECT_FALSE(e.undo_name());
}

}  // namespace
}  // namespace corvane
