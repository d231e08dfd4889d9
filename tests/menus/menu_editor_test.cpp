// The menu editor: load, adding, choosing and deleting buttons, the record of each change.
#include "menus/menu_editor.h"

#include "editor_test.h"

namespace corvane {
namespace {

using testing_support::record_at;
using testing_support::rows;

class MenuEditor : public testing_support::editor_test {};

// Load -------------------------------------------------------------------------------------------

TEST_F(MenuEditor, LoadsWithoutAButtonChosenAndTheScrollBarsOfTheFirstButton) {
  const menu_editor& e = edit();
  const menu_editor_controls& c = e.controls();
  EXPECT_EQ(c.indexer, 1);
  EXPECT_TRUE(c.List1.empty());
  EXPECT_TRUE(c.Combo2.empty());
  EXPECT_EQ(c.Combo2_text, "");
  EXPECT_EQ(c.button, "");
  EXPECT_EQ(c.Slider2.value, 3);
  EXPECT_EQ(c.VScroll1.maximum, 479 - 3);
  EXPECT_EQ(c.Slider1.value, 100);
  EXPECT_EQ(c.HScroll1.maximum, 719 - 100);
  EXPECT_FALSE(c.thickness.enabled);
  EXPECT_FALSE(c.bitmap_mode);
  EXPECT_FALSE(c.Check2);
  EXPECT_FALSE(e.outline());
}

TEST_F(MenuEditor, LargestYIs479ForNtscAnd575ForPal) {
  EXPECT_EQ(edit().ymax(), 479);
  p.globalregion = "PAL";
  EXPECT_EQ(edit().ymax(), 575);
  EXPECT_EQ(shown().VScroll1.maximum, 575 - 3);
}

TEST_F(MenuEditor, NewMenusOptionsAreShown) {
  edit();
  EXPECT_FALSE(shown().Check1);
  EXPECT_EQ(shown().spubegin, "00:00:00.0");
  EXPECT_EQ(shown().spuend, "00:00:00.0");
  EXPECT_EQ(shown().thickness.value, 1);
}

TEST_F(MenuEditor, AcceptedMenusOptionsAreShown) {
  p.moremenuoptions = {" 1\t00:00:01.5\t00:00:59.0\t 12"};
  edit();
  EXPECT_TRUE(shown().Check1);
  EXPECT_EQ(shown().spubegin, "00:00:01.5");
  EXPECT_EQ(shown().spuend, "00:00:59.0");
  EXPECT_EQ(shown().thickness.value, 12);
}

TEST_F(MenuEditor, ActionsAreTheChaptersOfEachTitleThenExitThenTheMenus) {
  add_files_and_title({"one.vob"});
  add_files_and_title({"two.vob"});
  p.chapters = {"00:00:00.00,00:05:00.00", "00:00:00.00"};
  p.menulist.push_back(p.menulist[0]);
  edit();
  EXPECT_EQ(shown().Combo1_items,
            (rows{"jump title 1 chapter  1", "jump title 1 chapter  2", "jump title 2 chapter  1",
                  "exit", "jump menu 1", "jump menu 2"}));
}

TEST_F(MenuEditor, TitleWithoutChaptersAndChaptersWithoutTitleOfferNoAction) {
  add_files_and_title({"one.vob"});
  add_files_and_title({"two.vob"});
  add_files_and_title({"three.vob"});
  p.chapters = {"", "00:00:00.00"};
  edit();
  EXPECT_EQ(shown().Combo1_items, (rows{"jump title 2 chapter  1", "exit", "jump menu 1"}));
  p.chapters = {"", "00:00:00.00", "", "00:00:00.00"};
  edit();
  EXPECT_EQ(shown().Combo1_items, (rows{"jump title 2 chapter  1", "exit", "jump menu 1"}));
}

TEST_F(MenuEditor, VideoIsTheMenusNativePath) {
  EXPECT_EQ(edit().video(), folder.path("menu.m2v"));
}

TEST_F(MenuEditor, RecalledButtonsAreListedAndNoneIsChosen) {
  p.buttondata = {"left over"};
  edit(record_at(0, 0, 100, 3) + "|" + record_at(0, 9, 100, 12));
  EXPECT_EQ(shown().List1, (rows{record_at(0, 0, 100, 3), record_at(0, 9, 100, 12)}));
  EXPECT_EQ(shown().Combo2, (rows{"button1", "button2"}));
  EXPECT_EQ(shown().Combo2_text, "");
  EXPECT_TRUE(p.buttondata.empty());
}

TEST_F(MenuEditor, VideoThatCannotBePlayedIsTold) {
  const std::string text =
      "It appears you do not have a mpeg2 directshow filter installed.  Please install one to "
      "accurately use the menu editor.";
  menu_editor& e = edit();
  for (const int width : {0, 100}) {
    expect_refusal(text);
    e.playback_check(width, width == 0 ? 0 : 480);
    EXPECT_TRUE(ask.all_asked()) << width;
  }
  e.playback_check(101, 480);
}

TEST_F(MenuEditor, VideoOfTheOtherRegionsHeightIsTold) {
  menu_editor& ntsc = edit();
  ntsc.playback_check(720, 480);
  ntsc.playback_check(720, 550);
  expect_refusal("selected menu appears to not be NTSC (720x480), but continuing anyway.");
  ntsc.playback_check(720, 551);
  EXPECT_TRUE(ask.all_asked());

  p.globalregion = "PAL";
  menu_editor& pal = edit();
  pal.playback_check(720, 576);
  pal.playback_check(720, 550);
  expect_refusal("selected menu appears to not be PAL (720x576), but continuing anyway.");
  pal.playback_check(720, 549);
  EXPECT_TRUE(ask.all_asked());
}

// Adding -----------------------------------------------------------------------------------------

TEST_F(MenuEditor, FirstButtonIsTheLiteralRecordWithOneBlank) {
  menu_editor& e = edit();
  e.add_button();
  EXPECT_EQ(shown().List1, rows{" 0/0/100/3/exit/black/black"});
  EXPECT_EQ(shown().Combo2, rows{"button1"});
  EXPECT_EQ(shown().Combo2_text, "button1");
  EXPECT_EQ(shown().button, "1");
}

TEST_F(MenuEditor, FirstButtonIs100By3At00AndItsThicknessIsDisabled) {
  menu_editor& e = edit();
  e.add_button();
  e.choose(0);
  EXPECT_EQ(record(), " 0/ 0/ 100/ 3/exit/black/black");
  EXPECT_EQ(e.outline(), (menu_rectangle{0, 0, 100, 3}));
  EXPECT_FALSE(shown().thickness.enabled);
}

TEST_F(MenuEditor, FurtherButtonIsACopyOfTheLastRecord) {
  const std::string last = " 7/8/ 90/ 30/jump menu 1/cyan/white";
  menu_editor& e = edit(record_at(0, 300, 100, 303) + "|" + last);
  e.add_button();
  EXPECT_EQ(record(2), last);
  EXPECT_EQ(shown().Combo2, (rows{"button1", "button2", "button3"}));
  EXPECT_EQ(shown().button, "3");
}

TEST_F(MenuEditor, AddedButtonIsNotShownUntilItIsPicked) {
  menu_editor& e = edit_first(record_at(0, 0, 100, 3) + "|" + record_at(50, 60, 150, 90));
  e.add_button();
  EXPECT_EQ(shown().button, "3");
  EXPECT_EQ(shown().HScroll1.value, 0);
  EXPECT_EQ(e.outline(), (menu_rectangle{0, 0, 100, 3}));
  e.choose(2);
  EXPECT_EQ(shown().HScroll1.value, 50);
  EXPECT_EQ(e.outline(), (menu_rectangle{50, 60, 150, 90}));
}

TEST_F(MenuEditor, ChangeRightAfterAddingGoesIntoTheNewRecord) {
  menu_editor& e = edit();
  e.add_button();
  e.scroll_x(20);
  EXPECT_EQ(record(), " 20/ 0/ 120/ 3/exit/black/black");
  EXPECT_EQ(e.outline(), (menu_rectangle{20, 0, 120, 3}));
  e.add_button();
  e.scroll_y(40);
  EXPECT_EQ(record(0), " 20/ 0/ 120/ 3/exit/black/black");
  EXPECT_EQ(record(1), " 20/ 40/ 120/ 43/exit/black/black");
}

// Choosing ---------------------------------------------------------------------------------------

TEST_F(MenuEditor, ChoosingShowsTheRecordInEveryControl) {
  menu_editor& e = edit(record_at(0, 0, 9, 9) + "| 10/ 20/ 110/ 50/jump title 2/cyan/white");
  e.choose(1);
  const menu_editor_controls& c = e.controls();
  EXPECT_EQ(c.Combo2_text, "button2");
  EXPECT_EQ(c.Combo2_index, 1);
  EXPECT_EQ(c.button, "2");
  EXPECT_EQ(c.Combo1, "jump title 2");
  EXPECT_EQ(c.Colorhighlight, "cyan");
  EXPECT_EQ(c.ColorSelect, "white");
  EXPECT_EQ(c.HScroll1.value, 10);
  EXPECT_EQ(c.HScroll1.maximum, 719 - 100);
  EXPECT_EQ(c.HScroll1.large_step, 100);
  EXPECT_EQ(c.VScroll1.value, 20);
  EXPECT_EQ(c.VScroll1.maximum, 479 - 30);
  EXPECT_EQ(c.VScroll1.large_step, 30);
  EXPECT_EQ(c.Slider1.value, 100);
  EXPECT_EQ(c.Slider2.value, 30);
  EXPECT_EQ(c.leftpos, " 10");
  EXPECT_EQ(c.ypos, " 20");
  EXPECT_EQ(c.widthpos, " 100");
  EXPECT_EQ(c.heightpos, " 30");
  EXPECT_TRUE(c.thickness.enabled);
  EXPECT_EQ(record(1), " 10/ 20/ 110/ 50/jump title 2/cyan/white");
}

TEST_F(MenuEditor, NumberIsTheChoosersTextFromTheSeventhCharacterOn) {
  std::string records = record_at(0, 0, 9, 3);
  for (int i = 1; i < 12; ++i)
    records += "|" + record_at(0, 9 * i, 9, 9 * i + 3);
  menu_editor& e = edit(records);
  e.choose(11);
  EXPECT_EQ(shown().Combo2_text, "button12");
  EXPECT_EQ(shown().button, "12");
}

TEST_F(MenuEditor, ChoosingWritesTheRecordInTheEditorsNumberForm) {
  edit_first("10/20/110/23/exit/blue/cyan");
  EXPECT_EQ(record(), " 10/ 20/ 110/ 23/exit/blue/cyan");
}

TEST_F(MenuEditor, ChoosingAnEntryThatIsNotThereIsNoChange) {
  menu_editor& e = edit_first(record_at(5, 5, 105, 8));
  for (const int index : {-1, 1, 100}) {
    e.choose(index);
    EXPECT_EQ(shown().Combo2_text, "button1") << index;
  }
}

TEST_F(MenuEditor, EveryChangeIsWrittenIntoTheChosenRecordOnly) {
  menu_editor& e = edit(record_at(0, 0, 100, 3) + "|" + record_at(0, 50, 100, 53));
  e.choose(1);
  e.scroll_x(10);
  e.scroll_y(60);
  e.slide_width(200);
  e.slide_height(40);
  e.set_action("jump menu 1");
  e.set_highlight("orange");
  e.set_select("grey");
  EXPECT_EQ(record(0), record_at(0, 0, 100, 3));
  EXPECT_EQ(record(1), " 10/ 60/ 210/ 100/jump menu 1/orange/grey");
}

TEST_F(MenuEditor, ThicknessIsEnabledForBoxesOfHeightFourAndMore) {
  menu_editor& e = edit_first(record_at(0, 0, 100, 4));
  EXPECT_TRUE(shown().thickness.enabled);
  e.slide_thickness(7);
  EXPECT_EQ(shown().thickness.value, 7);
  e.slide_height(3);
  EXPECT_FALSE(shown().thickness.enabled);
  e.slide_thickness(2);
  EXPECT_EQ(shown().thickness.value, 7);
  e.slide_height(5);
  EXPECT_TRUE(shown().thickness.enabled);
}

TEST_F(MenuEditor, ThicknessKeepsToItsRange) {
  menu_editor& e = edit_first(record_at(0, 0, 100, 40));
  e.slide_thickness(1000);
  EXPECT_EQ(shown().thickness.value, 20);
  e.slide_thickness(-1);
  EXPECT_EQ(shown().thickness.value, 1);
}

TEST_F(MenuEditor, ThicknessBelongsToTheMenuAndStaysWhenAnotherButtonIsChosen) {
  menu_editor& e = edit_first(record_at(0, 0, 100, 40) + "|" + record_at(0, 50, 100, 90));
  e.slide_thickness(5);
  e.choose(1);
  EXPECT_EQ(shown().thickness.value, 5);
}

// Without a chosen button ------------------------------------------------------------------------

TEST_F(MenuEditor, EveryChangeWithoutAChosenButtonIsRefused) {
  menu_editor& e = edit(record_at(0, 0, 100, 3));
  const menu_editor_controls before = e.controls();
  const auto refused = [&](const char* name, auto change) {
    expect_choose_first();
    change();
    EXPECT_TRUE(ask.all_asked()) << name;
    EXPECT_EQ(shown().List1, before.List1) << name;
    EXPECT_EQ(shown().HScroll1.value, before.HScroll1.value) << name;
    EXPECT_EQ(shown().Slider1.value, before.Slider1.value) << name;
    EXPECT_EQ(shown().Combo1, before.Combo1) << name;
    EXPECT_EQ(shown().Colorhighlight, before.Colorhighlight) << name;
    EXPECT_EQ(shown().ColorSelect, before.ColorSelect) << name;
  };
  refused("HScroll1", [&] { e.scroll_x(1); });
  refused("VScroll1", [&] { e.scroll_y(1); });
  refused("Slider1", [&] { e.slide_width(9); });
  refused("Slider2", [&] { e.slide_height(9); });
  refused("leftpos", [&] { e.type_leftpos("9"); });
  refused("ypos", [&] { e.type_ypos("9"); });
  refused("widthpos", [&] { e.type_widthpos("9"); });
  refused("heightpos", [&] { e.type_heightpos("9"); });
  refused("Combo1", [&] { e.set_action("jump menu 1"); });
  refused("Colorhighlight", [&] { e.set_highlight("cyan"); });
  refused("ColorSelect", [&] { e.set_select("cyan"); });
  refused("removebmp", [&] { e.removebmp(); });
  refused("deletebutton", [&] { e.delete_button(); });
  refused("arrow key", [&] { e.move_by(1, 0); });
  refused("arrow key with modifier", [&] { e.size_by(1, 0); });
}

TEST_F(MenuEditor, LeavingAFieldUnchangedWithoutAChosenButtonAsksNothing) {
  menu_editor& e = edit(record_at(0, 0, 100, 3));
  e.type_leftpos(shown().leftpos);
  e.type_ypos(shown().ypos);
  e.type_widthpos(shown().widthpos);
  e.type_heightpos(shown().heightpos);
  e.set_action(shown().Combo1);
  e.set_spubegin(shown().spubegin);
}

// Deleting ---------------------------------------------------------------------------------------

TEST_F(MenuEditor, DeletingRenumbersTheOthersInOrder) {
  const rows all = {record_at(0, 0, 9, 3), record_at(0, 10, 9, 13), record_at(0, 20, 9, 23)};
  menu_editor& e = edit(all[0] + "|" + all[1] + "|" + all[2]);
  e.choose(1);
  e.delete_button();
  EXPECT_EQ(shown().List1, (rows{all[0], all[2]}));
  EXPECT_EQ(shown().Combo2, (rows{"button1", "button2"}));
}

TEST_F(MenuEditor, AfterDeletingTheNextButtonIsChosenAndShown) {
  const rows all = {record_at(0, 0, 9, 3), record_at(40, 10, 49, 13), record_at(0, 20, 9, 23)};
  menu_editor& e = edit_first(all[0] + "|" + all[1] + "|" + all[2]);
  e.delete_button();
  EXPECT_EQ(shown().Combo2_text, "button1");
  EXPECT_EQ(shown().button, "1");
  EXPECT_EQ(e.outline(), (menu_rectangle{40, 10, 49, 13}));
  e.scroll_x(300);
  EXPECT_EQ(shown().List1, (rows{record_at(300, 10, 309, 13), all[2]}));
}

TEST_F(MenuEditor, AfterDeletingTheLastInOrderTheOneBeforeItIsChosen) {
  const rows all = {record_at(0, 0, 9, 3), record_at(40, 10, 49, 13)};
  menu_editor& e = edit(all[0] + "|" + all[1]);
  e.choose(1);
  e.delete_button();
  EXPECT_EQ(shown().Combo2_text, "button1");
  EXPECT_EQ(e.outline(), (menu_rectangle{0, 0, 9, 3}));
}

TEST_F(MenuEditor, AfterDeletingTheOnlyButtonNoneIsChosenAndNothingCanBeChanged) {
  menu_editor& e = edit_first(record_at(0, 0, 9, 3));
  e.delete_button();
  EXPECT_EQ(shown().Combo2_text, "");
  EXPECT_EQ(shown().Combo2_index, -1);
  EXPECT_EQ(shown().button, "");
  EXPECT_FALSE(e.outline());
  expect_choose_first();
  e.scroll_x(300);
  EXPECT_TRUE(shown().List1.empty());
}

TEST_F(MenuEditor, WhatIsShownAfterAddingBelongsToAnotherButtonUntilTheNewOneIsPicked) {
  menu_editor& e = edit_first(record_at(0, 0, 100, 3));
  EXPECT_FALSE(e.shows_another());
  e.add_button();
  EXPECT_TRUE(e.shows_another());
  e.choose(1);
  EXPECT_FALSE(e.shows_another());
  e.delete_button();
  EXPECT_FALSE(e.shows_another());
  e.delete_button();
  EXPECT_FALSE(e.shows_another());  // none is chosen: a change is refused with a message
}

TEST_F(MenuEditor, DeletingTheLastButtonLeavesNone) {
  menu_editor& e = edit_first(record_at(0, 0, 9, 3));
  e.delete_button();
  EXPECT_TRUE(shown().List1.empty());
  EXPECT_TRUE(shown().Combo2.empty());
  e.add_button();
  EXPECT_EQ(shown().List1, rows{first_button});
}

TEST_F(MenuEditor, DeletingAfterAddingRemovesTheNewButton) {
  menu_editor& e = edit_first(record_at(0, 0, 9, 3) + "|" + record_at(0, 10, 9, 13));
  e.add_button();
  e.delete_button();
  EXPECT_EQ(shown().List1, (rows{record_at(0, 0, 9, 3), record_at(0, 10, 9, 13)}));
}

TEST_F(MenuEditor, DeletingWithoutButtonsDoesNothing) {
  edit().delete_button();
  EXPECT_TRUE(shown().List1.empty());
}

// Options ----------------------------------------------------------------------------------------

TEST_F(MenuEditor, AdvancedIsShownWhenChecked) {
  menu_editor& e = edit();
  e.set_advanced(true);
  EXPECT_TRUE(shown().Check2);
  e.set_advanced(false);
  EXPECT_FALSE(shown().Check2);
}

TEST_F(MenuEditor, ClosingWithoutAcceptDiscardsEveryChange) {
  const project before = p;
  {
    menu_editor& e = edit_first(record_at(0, 0, 100, 3));
    e.scroll_x(50);
    e.add_button();
    e.set_loop(true);
    e.set_spubegin("00:00:09.0");
  }
  EXPECT_EQ(p.menubuttons, (rows{record_at(0, 0, 100, 3), ""}));
  EXPECT_EQ(p.moremenuoptions, before.moremenuoptions);
  EXPECT_TRUE(p.buttondata.empty());
  EXPECT_EQ(p.saved, 1);
}

}  // namespace
}  // namespace corvane
