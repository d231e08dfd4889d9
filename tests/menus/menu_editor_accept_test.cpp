// The menu editor's accept: what is refused, what is written back.
#include "authoring/row_checks.h"
#include "authoring/texts_of_project.h"
#include "editor_test.h"
#include "menus/menu_editor.h"

namespace corvane {
namespace {

using testing_support::record_at;
using testing_support::rows;
using testing_support::why_not_menus;

class MenuEditorAccept : public testing_support::editor_test {
 protected:
  MenuEditorAccept() { p.dvdsizetext = "as it was"; }
};

TEST_F(MenuEditorAccept, WritesRecordsAndOptionsAndClearsTheSavedFlag) {
  menu_editor& e = edit();
  e.add_button();
  e.choose(0);
  e.slide_height(40);
  e.slide_thickness(3);
  e.add_button();
  e.choose(1);
  e.scroll_y(200);
  e.set_loop(true);
  e.set_spubegin("00:00:01.0");
  e.set_spuend("00:00:02.5");
  EXPECT_TRUE(e.accept());
  EXPECT_EQ(p.menubuttons, (rows{" 0/ 0/ 100/ 40/exit/black/black| 0/ 200/ 100/ "
                                 "240/exit/black/black",
                                 ""}));
  EXPECT_EQ(p.moremenuoptions, rows{" 1\t00:00:01.0\t00:00:02.5\t 3"});
  EXPECT_TRUE(p.buttondata.empty());
  EXPECT_EQ(p.saved, 0);
  EXPECT_EQ(p.dvdsizetext, "0 titles\r\n1 menus\r\n0.000 gig total");
}

TEST_F(MenuEditorAccept, OfTheSecondMenuLeavesTheFirstAlone) {
  p.menulist.push_back(p.menulist[0]);
  p.moremenuoptions.emplace_back(new_menu_options);
  p.menubuttons = {record_at(1, 2, 3, 4), "", ""};
  p.indexer = 2;
  menu_editor e(doc, pictures);
  e.recallbuttondata();
  e.add_button();
  EXPECT_TRUE(e.accept());
  EXPECT_EQ(p.menubuttons, (rows{record_at(1, 2, 3, 4), first_button, ""}));
  EXPECT_EQ(p.moremenuoptions, (rows{new_menu_options, " 0\t00:00:00.0\t00:00:00.0\t 1"}));
}

TEST_F(MenuEditorAccept, TwoNewButtonsOverlapUntilOneIsMoved) {
  menu_editor& e = edit();
  e.add_button();
  e.add_button();
  expect_refusal("button1 intersects with button2");
  EXPECT_FALSE(e.accept());
  EXPECT_EQ(p.menubuttons, (rows{"", ""}));
  EXPECT_EQ(p.moremenuoptions, rows{new_menu_options});
  EXPECT_EQ(p.saved, 1);
  EXPECT_EQ(p.dvdsizetext, "as it was");

  e.choose(1);
  e.scroll_y(4);
  EXPECT_TRUE(e.accept());
  EXPECT_EQ(p.menubuttons[0], std::string(first_button) + "| 0/ 4/ 100/ 7/exit/black/black");
}

TEST_F(MenuEditorAccept, WithoutButtonsStoresTheEmptyElementAndKeepsTheOptions) {
  p.moremenuoptions = {"1\tx\ty\t9"};
  menu_editor& e = edit_first(record_at(0, 0, 100, 3));
  e.delete_button();
  e.set_loop(false);
  EXPECT_TRUE(e.accept());
  EXPECT_EQ(p.menubuttons, (rows{"", ""}));
  EXPECT_EQ(p.moremenuoptions, rows{"1\tx\ty\t9"});
  EXPECT_TRUE(p.buttondata.empty());
  EXPECT_EQ(p.saved, 0);
}

TEST_F(MenuEditorAccept, WhateverIsSizedAndMovedCanBeAuthored) {
  for (const std::string region : {"NTSC", "PAL"}) {
    p.globalregion = region;
    menu_editor& e = edit();
    e.add_button();
    for (const int size : {-1000, 1000}) {
      for (const int position : {-1000, 1000}) {
        e.choose(0);
        e.size_by(size, size);
        e.move_by(position, position);
        ASSERT_TRUE(e.accept());
        EXPECT_EQ(why_not_menus(p, native_style()), std::nullopt) << record();
      }
    }
  }
}

TEST_F(MenuEditorAccept, ThirtySixButtonsPassAndThe37thIsLeftToTheRunsCheck) {
  menu_editor& e = edit();
  const auto add_apart = [&e](int i) {
    e.add_button();
    e.choose(i);
    e.move_to(0, 12 * i);
  };
  for (int i = 0; i < 36; ++i)
    add_apart(i);
  EXPECT_TRUE(e.accept());
  EXPECT_EQ(buttoncount(p, 1), 36);
  EXPECT_EQ(why_not_menus(p, native_style()), std::nullopt);
  add_apart(36);
  EXPECT_TRUE(e.accept());
  EXPECT_EQ(why_not_menus(p, native_style()),
            "Button 37 of menu 1 is one too many: the menu has 37 buttons, but a DVD menu holds at "
            "most 36.  Please edit the menu and delete some.");
}

TEST_F(MenuEditorAccept, FrameThickerThanItsButtonIsAccepted) {
  menu_editor& e = edit_first(record_at(0, 0, 100, 6));
  e.slide_thickness(20);
  EXPECT_TRUE(e.accept());
  EXPECT_EQ(p.moremenuoptions, rows{" 0\t00:00:00.0\t00:00:00.0\t 20"});
  EXPECT_EQ(why_not_menus(p, native_style()), std::nullopt);
}

TEST_F(MenuEditorAccept, UntouchedRecordsAreWrittenBackAsTheyWere) {
  const std::string records = "10/20/110/23/exit/blue/cyan|5/40/7/44/jump menu 1/red/red";
  EXPECT_TRUE(edit(records).accept());
  EXPECT_EQ(p.menubuttons[0], records);
}

TEST_F(MenuEditorAccept, MissingVideoIsToldBySizeAndStillAccepted) {
  p.menulist = {folder.stored("gone.m2v") + "/"};
  menu_editor& e = edit();
  e.add_button();
  expect_missing(folder.path("gone.m2v"));
  EXPECT_TRUE(e.accept());
  EXPECT_EQ(p.menubuttons[0], first_button);
  EXPECT_EQ(p.dvdsizetext, "as it was");
}

TEST_F(MenuEditorAccept, CloseAndReopenShowsWhatWasAccepted) {
  menu_editor& e = edit();
  e.add_button();
  e.choose(0);
  e.move_to(30, 40);
  e.set_loop(true);
  EXPECT_TRUE(e.accept());
  edit_first(std::string(p.menubuttons[0]));
  EXPECT_EQ(shown().HScroll1.value, 30);
  EXPECT_TRUE(shown().Check1);
}

}  // namespace
}  // namespace corvane
