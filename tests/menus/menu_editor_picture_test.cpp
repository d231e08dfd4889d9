// The menu editor's picture: the outline, the other buttons, dragging and keys.
#include "editor_test.h"
#include "menus/menu_editor.h"

namespace corvane {
namespace {

using testing_support::record_at;

/// Button 1 of 100 x 40 at 200, 100, which is chosen; button 2 of 50 x 3 at 400, 300.
class MenuEditorPicture : public testing_support::editor_test {
 protected:
  menu_editor& edit_two() {
    return edit_first(record_at(200, 100, 300, 140) + "|" + record_at(400, 300, 450, 303));
  }
};

TEST_F(MenuEditorPicture, OutlineIsTheChosenButtonAndTheOthersAreFaint) {
  menu_editor& e = edit_two();
  EXPECT_EQ(e.outline(), (menu_rectangle{200, 100, 300, 140}));
  ASSERT_EQ(e.others().size(), 1u);
  EXPECT_EQ(e.others()[0].index, 1);
  EXPECT_EQ(e.others()[0].edges, (menu_rectangle{400, 300, 450, 303}));
  e.choose(1);
  EXPECT_EQ(e.outline(), (menu_rectangle{400, 300, 450, 303}));
  EXPECT_EQ(e.others()[0].index, 0);
}

TEST_F(MenuEditorPicture, WithoutAChosenButtonAllAreFaint) {
  menu_editor& e = edit(record_at(0, 0, 100, 3) + "| |" + record_at(0, 9, 100, 12));
  EXPECT_FALSE(e.outline());
  ASSERT_EQ(e.others().size(), 2u);
  EXPECT_EQ(e.others()[1].index, 2);
}

TEST_F(MenuEditorPicture, ButtonThatStaysOutlinedWhenABlankOneIsChosenIsNotFaintToo) {
  menu_editor& e = edit_first(record_at(0, 0, 100, 3) + "| |" + record_at(0, 9, 100, 12));
  e.choose(1);
  EXPECT_EQ(e.outline(), (menu_rectangle{0, 0, 100, 3}));
  ASSERT_EQ(e.others().size(), 1u);
  EXPECT_EQ(e.others()[0].index, 2);
}

TEST_F(MenuEditorPicture, DraggingMovesTheButtonAndStopsAtTheEdges) {
  menu_editor& e = edit_two();
  e.move_to(10, 20);
  EXPECT_EQ(record(), record_at(10, 20, 110, 60));
  EXPECT_EQ(shown().HScroll1.value, 10);
  EXPECT_EQ(shown().ypos, " 20");
  e.move_to(-50, -50);
  EXPECT_EQ(record(), record_at(0, 0, 100, 40));
  e.move_to(5000, 5000);
  EXPECT_EQ(record(), record_at(619, 439, 719, 479));
  EXPECT_EQ(record(1), record_at(400, 300, 450, 303));
}

TEST_F(MenuEditorPicture, ArrowKeysMoveByAPixelAndStopAtTheEdges) {
  menu_editor& e = edit_two();
  e.move_by(1, -1);
  EXPECT_EQ(record(), record_at(201, 99, 301, 139));
  e.move_to(0, 0);
  e.move_by(-1, -1);
  EXPECT_EQ(record(), record_at(0, 0, 100, 40));
}

TEST_F(MenuEditorPicture, ArrowKeysWithAModifierSizeFromTheTopLeftCorner) {
  menu_editor& e = edit_two();
  e.size_by(1, -1);
  EXPECT_EQ(record(), record_at(200, 100, 301, 139));
  e.size_by(-1000, -1000);
  EXPECT_EQ(record(), record_at(200, 100, 206, 102));
  e.size_by(1000, 1000);
  EXPECT_EQ(record(), record_at(200, 100, 719, 479));
}

TEST_F(MenuEditorPicture, DraggedEdgeMovesAndTheOppositeOneStays) {
  menu_editor& e = edit_two();
  const auto drag = [&](dragged_edges edges, int x, int y) { e.drag_edges(edges, x, y); };
  drag({.left = true}, 150, 0);
  EXPECT_EQ(record(), record_at(150, 100, 300, 140));
  drag({.right = true}, 350, 0);
  EXPECT_EQ(record(), record_at(150, 100, 350, 140));
  drag({.top = true}, 0, 90);
  EXPECT_EQ(record(), record_at(150, 90, 350, 140));
  drag({.bottom = true}, 0, 150);
  EXPECT_EQ(record(), record_at(150, 90, 350, 150));
  drag({.left = true, .bottom = true}, 160, 160);
  EXPECT_EQ(record(), record_at(160, 90, 350, 160));
}

TEST_F(MenuEditorPicture, DraggedEdgeStopsAtTheLeastSizeAndAtThePicture) {
  menu_editor& e = edit_two();
  e.drag_edges({.left = true}, 700, 0);
  EXPECT_EQ(record(), record_at(294, 100, 300, 140));
  e.drag_edges({.left = true}, -700, 0);
  EXPECT_EQ(record(), record_at(0, 100, 300, 140));
  e.drag_edges({.right = true}, -700, 0);
  EXPECT_EQ(record(), record_at(0, 100, 6, 140));
  e.drag_edges({.right = true}, 5000, 0);
  EXPECT_EQ(record(), record_at(0, 100, 719, 140));
  e.drag_edges({.top = true}, 0, 470);
  EXPECT_EQ(record(), record_at(0, 138, 719, 140));
  e.drag_edges({.top = true}, 0, -5);
  EXPECT_EQ(record(), record_at(0, 0, 719, 140));
  e.drag_edges({.bottom = true}, 0, -5);
  EXPECT_EQ(record(), record_at(0, 0, 719, 2));
  e.drag_edges({.bottom = true}, 0, 5000);
  EXPECT_EQ(record(), record_at(0, 0, 719, 479));
}

TEST_F(MenuEditorPicture, BitmapButtonMovesButCannotBeSized) {
  const std::string bitmap = " 200/ 100/ 300/ 140/exit/\\a\\b.bmp/\\a\\b.bmp";
  menu_editor& e = edit_first(bitmap);
  e.drag_edges({.right = true, .bottom = true}, 400, 400);
  e.size_by(5, 5);
  e.slide_width(5);
  e.slide_height(5);
  e.type_widthpos("5");
  e.type_heightpos("5");
  EXPECT_EQ(record(), bitmap);
  e.move_by(1, 1);
  EXPECT_EQ(record(), " 201/ 101/ 301/ 141/exit/\\a\\b.bmp/\\a\\b.bmp");
}

TEST_F(MenuEditorPicture, WhatIsOutlinedMovesAlsoAfterAnotherButtonWasAdded) {
  menu_editor& e = edit_two();
  e.add_button();
  e.move_by(5, 0);
  EXPECT_EQ(shown().Combo2_text, "button1");
  EXPECT_EQ(record(0), record_at(205, 100, 305, 140));
  EXPECT_EQ(record(2), record_at(400, 300, 450, 303));
  e.add_button();
  e.drag_edges({.right = true}, 400, 0);
  EXPECT_EQ(record(0), record_at(205, 100, 400, 140));
  EXPECT_EQ(record(3), record_at(400, 300, 450, 303));
}

TEST_F(MenuEditorPicture, FirstAddedButtonCanBeMovedAtOnce) {
  menu_editor& e = edit();
  e.add_button();
  e.move_by(5, 6);
  EXPECT_EQ(record(), record_at(5, 6, 105, 9));
}

TEST_F(MenuEditorPicture, PlaceBelongsToTheOutlinedButtonFirstThenToTheOneDrawnLast) {
  menu_editor& e = edit(record_at(0, 0, 100, 40) + "|" + record_at(50, 0, 150, 40) + "|" +
                        record_at(90, 0, 190, 40));
  EXPECT_EQ(e.button_at(95, 20), 2);
  e.choose(0);
  EXPECT_EQ(e.button_at(95, 20), 0);
  EXPECT_EQ(e.button_at(100, 40), 0);
  EXPECT_EQ(e.button_at(101, 20), 2);
  EXPECT_EQ(e.button_at(191, 20), -1);
  EXPECT_EQ(e.button_at(95, 41), -1);
}

TEST_F(MenuEditorPicture, ClickOnAnotherButtonsPlacePicksIt) {
  menu_editor& e = edit_two();
  e.choose(e.button_at(425, 301));
  EXPECT_EQ(shown().Combo2_text, "button2");
  EXPECT_EQ(e.outline(), (menu_rectangle{400, 300, 450, 303}));
  e.choose(e.button_at(0, 0));
  EXPECT_EQ(shown().Combo2_text, "button2");
}

}  // namespace
}  // namespace corvane
