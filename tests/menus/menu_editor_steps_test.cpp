// The menu editor's steps: undo, redo, their names; what closing asks.
#include "editor_test.h"
#include "menus/menu_editor.h"

#include <functional>
#include <vector>

namespace corvane {
namespace {

using testing_support::record_at;
using testing_support::rows;

class MenuEditorSteps : public testing_support::editor_test {
 protected:
  menu_editor& edit_two() {
    return edit_first(record_at(100, 100, 200, 140) + "|" + record_at(400, 300, 450, 302));
  }
  static std::string next_undone(const menu_editor& e) { return e.undo_name().value_or("none"); }
  static std::string next_redone(const menu_editor& e) { return e.redo_name().value_or("none"); }

  void expect_keep_question(answer reply) {
    ask.expect(box("The menu has been changed.  Do you want to keep what was changed?\n\n"
                   "Yes: it is kept, as with \"accept\".\nNo: it is discarded.\n"
                   "Cancel: back to the menu.",
                   icon::exclamation, buttons::yes_no_cancel),
               reply);
  }
};

TEST_F(MenuEditorSteps, NothingIsUndoneBeforeSomethingWasChanged) {
  menu_editor& e = edit_two();
  e.choose(1);
  e.choose(0);
  e.set_advanced(true);
  EXPECT_EQ(next_undone(e), "none");
  EXPECT_EQ(next_redone(e), "none");
  e.undo();
  e.redo();
  EXPECT_EQ(record(), record_at(100, 100, 200, 140));
}

TEST_F(MenuEditorSteps, EveryEventIsAStepOfItsName) {
  menu_editor& e = edit_two();
  const std::vector<std::pair<const char*, std::function<void()>>> events = {
      {"move button 1", [&] { e.scroll_x(7); }},
      {"move button 1", [&] { e.scroll_y(8); }},
      {"size button 1", [&] { e.slide_width(70); }},
      {"size button 1", [&] { e.slide_height(30); }},
      {"move button 1", [&] { e.type_leftpos("20"); }},
      {"move button 1", [&] { e.type_ypos("22"); }},
      {"size button 1", [&] { e.type_widthpos("33"); }},
      {"size button 1", [&] { e.type_heightpos("44"); }},
      {"action of button 1", [&] { e.set_action("jump menu 1"); }},
      {"highlight of button 1", [&] { e.set_highlight("cyan"); }},
      {"select of button 1", [&] { e.set_select("white"); }},
      {"box thickness", [&] { e.slide_thickness(5); }},
      {"loop menu", [&] { e.set_loop(true); }},
      {"spu begin", [&] { e.set_spubegin("00:00:01.0"); }},
      {"spu end", [&] { e.set_spuend("00:00:02.0"); }},
      {"move button 1", [&] { e.move_by(1, 1); }},
      {"size button 1", [&] { e.size_by(1, 1); }},
      {"add button", [&] { e.add_button(); }},
      {"delete button 3", [&] { e.delete_button(); }},
  };
  std::vector<menu_editor_controls> before;
  for (const auto& [name, event] : events) {
    before.push_back(e.controls());
    event();
    EXPECT_EQ(next_undone(e), name);
  }
  for (std::size_t i = events.size(); i-- > 0;) {
    EXPECT_EQ(next_undone(e), events[i].first);
    e.undo();
    EXPECT_TRUE(is_same_menu(e.controls(), before[i])) << events[i].first << " " << i;
    EXPECT_EQ(e.controls().Combo2_index, before[i].Combo2_index) << i;
    EXPECT_EQ(e.controls().leftpos, before[i].leftpos) << i;
    EXPECT_EQ(e.controls().Combo2, before[i].Combo2) << i;
    EXPECT_EQ(next_redone(e), events[i].first);
  }
  EXPECT_EQ(next_undone(e), "none");
}

TEST_F(MenuEditorSteps, RedoneAreTheSameStepsUntilAnotherIsDone) {
  menu_editor& e = edit_two();
  e.set_highlight("cyan");
  e.set_select("white");
  e.undo();
  e.undo();
  EXPECT_EQ(shown().Colorhighlight, "black");
  e.redo();
  EXPECT_EQ(shown().Colorhighlight, "cyan");
  EXPECT_EQ(shown().ColorSelect, "black");
  EXPECT_EQ(next_redone(e), "select of button 1");
  e.set_select("blue");
  EXPECT_EQ(next_redone(e), "none");
  e.undo();
  e.undo();
  EXPECT_EQ(record(), record_at(100, 100, 200, 140));
}

TEST_F(MenuEditorSteps, RunOfOneSliderOrScrollBarOrOfTheArrowKeysIsOneStep) {
  menu_editor& e = edit_two();
  for (int i = 0; i < 5; ++i)
    e.slide_width(110 + i);
  for (int i = 0; i < 5; ++i)
    e.scroll_x(i);
  for (int i = 0; i < 5; ++i)
    e.move_by(1, 2);
  for (int i = 2; i < 7; ++i)
    e.slide_thickness(i);
  e.undo();
  EXPECT_EQ(shown().thickness.value, 1);
  e.undo();
  EXPECT_EQ(record(), record_at(4, 100, 118, 140));
  e.undo();
  EXPECT_EQ(record(), record_at(100, 100, 214, 140));
  e.undo();
  EXPECT_EQ(record(), record_at(100, 100, 200, 140));
  EXPECT_EQ(next_undone(e), "none");
}

TEST_F(MenuEditorSteps, RunEndsWhenAnotherButtonIsChosenAndWhenItIsUndone) {
  menu_editor& e = edit_two();
  e.slide_width(120);
  e.choose(1);
  e.choose(0);
  e.slide_width(130);
  e.undo();
  EXPECT_EQ(record(), record_at(100, 100, 220, 140));
  e.slide_width(140);
  e.undo();
  EXPECT_EQ(record(), record_at(100, 100, 220, 140));
}

TEST_F(MenuEditorSteps, DragIsOneStepAndTheNextDragAnother) {
  menu_editor& e = edit_two();
  e.begin_drag();
  e.move_to(104, 120);
  e.move_to(300, 200);
  e.end_drag();
  e.begin_drag();
  e.move_to(310, 220);
  e.drag_edges({.right = true}, 500, 0);
  e.end_drag();
  e.undo();
  EXPECT_EQ(record(), record_at(300, 200, 400, 240));
  e.undo();
  EXPECT_EQ(record(), record_at(100, 100, 200, 140));
  EXPECT_EQ(next_undone(e), "none");
}

TEST_F(MenuEditorSteps, ArrowKeysAfterADragAreAStepOfTheirOwn) {
  menu_editor& e = edit_two();
  e.begin_drag();
  e.move_to(300, 200);
  e.end_drag();
  e.move_by(1, 0);
  e.undo();
  EXPECT_EQ(record(), record_at(300, 200, 400, 240));
}

TEST_F(MenuEditorSteps, DragThatPicksAnotherButtonIsNamedForIt) {
  menu_editor& e = edit_first(record_at(100, 100, 200, 140) + "| 600/ 300/ 900/ 302/exit/red/red");
  e.begin_drag();
  e.choose(1);
  e.move_to(300, 200);
  e.end_drag();
  EXPECT_EQ(next_undone(e), "move button 2");
  e.undo();
  EXPECT_EQ(record(1), " 600/ 300/ 900/ 302/exit/red/red");
  EXPECT_EQ(next_undone(e), "none");
}

TEST_F(MenuEditorSteps, DragAwayAndBackIsNoStep) {
  menu_editor& e = edit_two();
  e.set_action("jump menu 1");
  e.begin_drag();
  e.move_to(300, 200);
  e.move_to(100, 100);
  e.end_drag();
  EXPECT_EQ(next_undone(e), "action of button 1");
}

TEST_F(MenuEditorSteps, UndoneDeletionBringsTheButtonBackAndChoosesIt) {
  menu_editor& e = edit_two();
  e.delete_button();
  EXPECT_EQ(next_undone(e), "delete button 1");
  e.undo();
  EXPECT_EQ(shown().List1, (rows{record_at(100, 100, 200, 140), record_at(400, 300, 450, 302)}));
  EXPECT_EQ(shown().Combo2, (rows{"button1", "button2"}));
  EXPECT_EQ(shown().button, "1");
  EXPECT_EQ(e.outline(), (menu_rectangle{100, 100, 200, 140}));
}

TEST_F(MenuEditorSteps, WhatIsOpenedOutInTheWindowIsNotUndone) {
  menu_editor& e = edit_two();
  e.set_loop(true);
  e.set_advanced(true);
  e.undo();
  EXPECT_TRUE(shown().Check2);
  EXPECT_FALSE(shown().Check1);
}

TEST_F(MenuEditorSteps, ChoosingAButtonThatReachesOutOfThePictureIsAStep) {
  menu_editor& e = edit(" 700/ 470/ 900/ 900/exit/black/black");
  e.choose(0);
  EXPECT_EQ(next_undone(e), "bring button 1 into the picture");
  e.undo();
  EXPECT_EQ(record(), " 700/ 470/ 900/ 900/exit/black/black");
}

TEST_F(MenuEditorSteps, MenuOfThousandsOfButtonsForgetsItsOldestSteps) {
  std::string records = record_at(0, 0, 9, 3);
  for (int i = 1; i < 5000; ++i)
    records += "|" + record_at(0, 10, 9, 13);
  menu_editor& e = edit(records);
  for (int i = 0; i < 200; ++i)
    e.set_loop(i % 2 == 0);
  int undone = 0;
  for (; e.undo_name(); ++undone)
    e.undo();
  EXPECT_GE(undone, 90);
  EXPECT_LT(undone, 110);
}

// Closing ----------------------------------------------------------------------------------------

TEST_F(MenuEditorSteps, ClosingAsksNothingWhenNothingWasChanged) {
  menu_editor& e = edit("10/20/110/24/exit/black/black|" + record_at(0, 50, 100, 54));
  EXPECT_TRUE(e.may_close());
  e.choose(0);  // writes the numbers in the editor's own form
  e.choose(1);
  e.set_advanced(true);
  EXPECT_TRUE(e.may_close());
  e.scroll_x(9);
  e.undo();
  EXPECT_TRUE(e.may_close());
  e.set_loop(true);
  e.set_loop(false);
  EXPECT_TRUE(e.may_close());
}

TEST_F(MenuEditorSteps, ClosingKeepsWhatWasChangedAsAcceptDoes) {
  menu_editor& e = edit_two();
  e.scroll_x(9);
  expect_keep_question(answer::yes);
  EXPECT_TRUE(e.may_close());
  EXPECT_EQ(p.menubuttons[0], record_at(9, 100, 109, 140) + "|" + record_at(400, 300, 450, 302));
  EXPECT_EQ(p.saved, 0);
}

TEST_F(MenuEditorSteps, ClosingStaysWhenWhatIsToBeKeptIsRefused) {
  menu_editor& e = edit_two();
  e.add_button();
  expect_keep_question(answer::yes);
  expect_refusal("button2 intersects with button3");
  EXPECT_FALSE(e.may_close());
  EXPECT_EQ(p.menubuttons[0], record_at(100, 100, 200, 140) + "|" + record_at(400, 300, 450, 302));
}

TEST_F(MenuEditorSteps, ClosingDiscardsOnlyWhenToldTo) {
  menu_editor& e = edit_two();
  const rows before = p.menubuttons;
  e.set_loop(true);
  expect_keep_question(answer::cancel);
  EXPECT_FALSE(e.may_close());
  expect_keep_question(answer::no);
  EXPECT_TRUE(e.may_close());
  EXPECT_EQ(p.menubuttons, before);
  EXPECT_EQ(p.saved, 1);
}

}  // namespace
}  // namespace corvane
