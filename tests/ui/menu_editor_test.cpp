// A user's way through the menu editor, with the real window over a real menu video.
#include "ui/gtk_sight.h"
#include "ui/main_window.h"
#include "ui/menu_editor_fixture.h"

#include <gmock/gmock.h>

namespace corvane::testing_support {
namespace {

const char* const box1 = " 100/ 100/ 300/ 160/jump title 1 chapter  1/yellow/white";
const char* const box2 = " 100/ 200/ 300/ 260/exit/cyan/white";
const char* const line3 = " 100/ 300/ 300/ 303/jump menu 1/orange/white";

class MenuEditorWindow : public menu_editor_test {
 protected:
  void open_new() {
    add_menu(real_video());
    open();
  }
  void open_three() {
    add_menu(real_video(), {box1, box2, line3});
    open();
  }
  /// Replaces the text of a field and stays in it.
  static void stand_typed(const std::string& name, const std::string& text) {
    click_control(name);
    press("ctrl+a");
    type_text(text);
    EXPECT_EQ(text_of(name), text);
  }
};

TEST_F(MenuEditorWindow, DisablesTheMainWindowWhileItIsOpen) {
  open_new();
  EXPECT_EQ(ask_ui([] {
              return dynamic_cast<wxTopLevelWindow*>(control("tsmenu"))->GetTitle().ToStdString();
            }),
            "titleset menu");
  EXPECT_FALSE(ask_ui([this] { return window_->IsEnabled(); }));
  // The window manager closes the window that has the keyboard.
  EXPECT_TRUE(
      wait_until([] { return dynamic_cast<wxTopLevelWindow*>(control("tsmenu"))->IsActive(); }));
  press("alt+F4");
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("tsmenu") == nullptr; }));
  EXPECT_TRUE(ask_ui([this] { return window_->IsEnabled(); }));
  EXPECT_EQ(closed_, 1);
}

TEST_F(MenuEditorWindow, FocusStandsOnTheSecondControl) {
  open_new();
  EXPECT_TRUE(wait_until([] {
    const wxWindow* focus = wxWindow::FindFocus();
    return focus != nullptr && focus->GetName() == "Command1";
  }));
}

TEST_F(MenuEditorWindow, LabelsKeysLeadToTheFieldsInWhichIsTyped) {
  open_new();
  press("alt+a");
  press("F4");
  const std::pair<const char*, const char*> fields[] = {
      {"alt+l", "leftpos"}, {"alt+y", "ypos"}, {"alt+w", "widthpos"}, {"alt+h", "heightpos"}};
  for (const auto& [keys, name] : fields) {
    press(keys);
    EXPECT_TRUE(wait_until([name] {
      const wxWindow* const focus = wxWindow::FindFocus();
      return focus != nullptr && focus->GetName() == name;
    })) << keys;
    press("ctrl+a");
    type_text("50");
    press("Return");
  }
  EXPECT_EQ(place(), "50 50 50 50");
}

TEST_F(MenuEditorWindow, GoesWithTheMainWindowWithoutAWord) {
  open_new();
  on_ui([this] { window_->Close(true); });
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("main") == nullptr; }));
  EXPECT_FALSE(is_open());
  EXPECT_EQ(closed_, 0);
}

TEST_F(MenuEditorWindow, EscapeClosesItAndAsksAboutWhatWasChanged) {
  open_new();
  click_control("Command1");
  press("Escape");
  answer_keep_question("Cancel");
  EXPECT_TRUE(is_open());
  press("ctrl+z");
  press("Escape");
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("tsmenu") == nullptr; }));
  EXPECT_EQ(closed_, 1);
}

TEST_F(MenuEditorWindow, EveryControlHasItsNameForScreenReaders) {
  open_new();
  click_control("Check2");
  for (const char* name :
       {"Combo2",         "button",       "indexer",   "HScroll1",     "VScroll1",  "Slider1",
        "Slider2",        "leftpos",      "ypos",      "widthpos",     "heightpos", "Combo1",
        "Colorhighlight", "ColorSelect",  "thickness", "Check1",       "Check2",    "spubegin",
        "spuend",         "bmphighlight", "bmpselect", "MediaPlayer1", "Command1",  "deletebutton",
        "Command2",       "position"}) {
    EXPECT_TRUE(is_shown(name)) << name;
    EXPECT_EQ(ask_ui([&name] { return accessible_name(*control(name)); }), name);
  }
}

TEST_F(MenuEditorWindow, TipsSayWhatTheControlsAreFor) {
  open_new();
  const auto tip = [](const char* name) {
    return ask_ui([&] { return std::string(control(name)->GetToolTipText().utf8_str()); });
  };
  EXPECT_EQ(tip("Check1"), "loop the menu (don't use this if you use a still menu without audio)");
  EXPECT_EQ(tip("Check2"), "more advanced options for the menu/buttons");
  EXPECT_EQ(tip("bmphighlight"), "use a 2 bit rle bmp image as the button");
  EXPECT_EQ(tip("bmpselect"),
            "by default, the select buton is the same as the highlight.  This can be changed here");
  EXPECT_EQ(tip("removebmp"), "revert back to a primitive underline/box");
  EXPECT_EQ(tip("Combo1"), "the command that is executed when the button is pressed");
}

TEST_F(MenuEditorWindow, FirstButtonIsAThinBlackLineInTheCorner) {
  open_new();
  click_control("Command1");
  EXPECT_EQ(text_of("Combo2"), "button1");
  EXPECT_EQ(text_of("button"), "1");
  choose(1);
  EXPECT_EQ(place(), "0 0 100 3");
  EXPECT_EQ(text_of("Combo1"), "exit");
  EXPECT_EQ(text_of("Colorhighlight"), "black");
  EXPECT_FALSE(is_enabled("thickness"));
}

TEST_F(MenuEditorWindow, SecondButtonAsItWasAddedIsRefusedAtAccept) {
  open_new();
  click_control("Command1");
  click_control("Command1");
  EXPECT_EQ(text_of("Combo2"), "button2");
  accept();
  const seen_dialog seen = answer_message("button1 intersects with button2", "OK");
  EXPECT_EQ(seen.picture, "warning");
  EXPECT_TRUE(no_dialog());
  ASSERT_TRUE(is_open());
  EXPECT_EQ(stored(), "");

  choose(2);
  type_into("ypos", "50");
  accept();
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("tsmenu") == nullptr; }));
  EXPECT_EQ(stored(), " 0/0/100/3/exit/black/black| 0/ 50/ 100/ 53/exit/black/black");
  EXPECT_EQ(p_.moremenuoptions[0], " 0\t00:00:00.0\t00:00:00.0\t 1");
  EXPECT_TRUE(ask_ui([this] { return window_->IsEnabled(); }));
  EXPECT_EQ(closed_, 1);
}

TEST_F(MenuEditorWindow, ButtonThatStandsInTheChooserCanBePickedAgain) {
  open_new();
  click_control("Command1");
  click_control("Command1");
  EXPECT_EQ(place(), "");
  choose(2);  // the entry that is there already
  type_into("leftpos", "200");
  EXPECT_EQ(place(), "200 0 100 3");
  choose(1);
  EXPECT_EQ(place(), "0 0 100 3");
}

TEST_F(MenuEditorWindow, ClosingWithoutAcceptChangesNothingWhenToldToDiscard) {
  open_three();
  const project before = p_;
  choose(1);
  type_into("leftpos", "20");
  click_control("Check1");
  click_control("deletebutton");
  discard();
  EXPECT_EQ(p_.menubuttons, before.menubuttons);
  EXPECT_EQ(p_.moremenuoptions, before.moremenuoptions);
  EXPECT_EQ(p_.saved, before.saved);
  EXPECT_EQ(closed_, 1);
}

TEST_F(MenuEditorWindow, ClosingWithAPlaceTypedSaysNothing) {
  open_new();  // without a button, a place is refused with a message
  stand_typed("leftpos", "44");
  close();
  EXPECT_TRUE(no_dialog());
  EXPECT_TRUE(ask_ui([this] { return window_->IsEnabled(); }));
  EXPECT_EQ(stored(), "");
  EXPECT_EQ(closed_, 1);
}

TEST_F(MenuEditorWindow, ClosingWithAnActionTypedSaysNothing) {
  open_three();
  const std::string before = stored();
  choose(1);
  stand_typed("Combo1", "a/b");
  close();
  EXPECT_TRUE(no_dialog());
  EXPECT_TRUE(ask_ui([this] { return window_->IsEnabled(); }));
  EXPECT_EQ(stored(), before);
  EXPECT_EQ(closed_, 1);
}

TEST_F(MenuEditorWindow, DoesNotCloseUnderItsOwnMessage) {
  open_new();
  type_into("leftpos", "44");
  ASSERT_TRUE(wait_until([] { return look_at_dialog().has_value(); }));
  window_test::close("tsmenu");
  EXPECT_TRUE(is_open());
  EXPECT_EQ(closed_, 0);
  answer_message("Please add/select a button first", "OK");
  EXPECT_TRUE(no_dialog());
  EXPECT_TRUE(is_open());
  close();
  EXPECT_EQ(closed_, 1);
}

TEST_F(MenuEditorWindow, DoesNotCloseUnderItsOwnFileDialog) {
  open_three();
  choose(1);
  click_control("Check2");
  click_control("bmphighlight");
  ASSERT_TRUE(wait_until([] { return look_at_dialog().has_value(); }));
  window_test::close("tsmenu");
  EXPECT_TRUE(is_open());
  cancel_dialog("select a 4 bit bitmap image");
  EXPECT_TRUE(is_open());
  close();
  EXPECT_EQ(closed_, 1);
}

TEST_F(MenuEditorWindow, ExistingButtonsAreRecalledAndShownWhenPicked) {
  open_three();
  EXPECT_EQ(text_of("Combo2"), "");
  EXPECT_EQ(text_of("button"), "");
  choose(2);
  EXPECT_EQ(text_of("button"), "2");
  EXPECT_EQ(place(), "100 200 200 60");
  EXPECT_EQ(slider("Slider1"), 200);
  EXPECT_EQ(slider("Slider2"), 60);
  EXPECT_EQ(scroll_bar("HScroll1"), 100);
  EXPECT_EQ(scroll_bar("VScroll1"), 200);
  EXPECT_EQ(text_of("Combo1"), "exit");
  EXPECT_EQ(text_of("Colorhighlight"), "cyan");
  EXPECT_EQ(text_of("ColorSelect"), "white");
  EXPECT_TRUE(is_enabled("thickness"));
}

TEST_F(MenuEditorWindow, DraggingMovesTheButton) {
  open_three();
  choose(1);
  drag(on_picture(200, 130), on_picture(260, 100));
  EXPECT_EQ(place(), "160 70 200 60");
  EXPECT_EQ(scroll_bar("HScroll1"), 160);
  EXPECT_EQ(scroll_bar("VScroll1"), 70);
}

TEST_F(MenuEditorWindow, DraggingEndsAtThePicture) {
  open_three();
  choose(1);
  drag(on_picture(200, 130), on_picture(40, 120));
  EXPECT_EQ(place(), "0 90 200 60");
}

TEST_F(MenuEditorWindow, ButtonCannotBeMovedBelowThePicture) {
  open_three();
  choose(1);
  drag(on_picture(200, 130), on_picture(200, 470));
  EXPECT_EQ(place(), "100 419 200 60");  // 479 - 60
}

TEST_F(MenuEditorWindow, DraggingEdgesAndCornersSizesTheButton) {
  open_three();
  choose(1);
  drag(on_picture(300, 130), on_picture(350, 130));
  EXPECT_EQ(place(), "100 100 250 60");
  drag(on_picture(200, 100), on_picture(200, 80));
  EXPECT_EQ(place(), "100 80 250 80");
  drag(on_picture(100, 160), on_picture(60, 190));
  EXPECT_EQ(place(), "60 80 290 110");
  EXPECT_EQ(slider("Slider1"), 290);
  EXPECT_EQ(slider("Slider2"), 110);
}

TEST_F(MenuEditorWindow, DraggingAnEdgeOverTheOtherKeepsTheLeastSize) {
  open_three();
  choose(1);
  drag(on_picture(300, 130), on_picture(20, 130));
  EXPECT_EQ(place(), "100 100 6 60");
}

TEST_F(MenuEditorWindow, ArrowKeysMoveByAPixelAndWithShiftSizeByOne) {
  open_three();
  choose(1);
  click_at(on_picture(200, 130));
  press("Right");
  press("Right");
  press("Up");
  EXPECT_EQ(place(), "102 99 200 60");
  press("Left");
  press("Down");
  EXPECT_EQ(place(), "101 100 200 60");
  press("shift+Right");
  press("shift+Down");
  EXPECT_EQ(place(), "101 100 201 61");
  press("shift+Left");
  press("shift+Up");
  EXPECT_EQ(place(), "101 100 200 60");
}

TEST_F(MenuEditorWindow, ClickOnAnotherButtonPicksIt) {
  open_three();
  choose(1);
  click_at(on_picture(200, 230));
  EXPECT_EQ(text_of("Combo2"), "button2");
  EXPECT_EQ(place(), "100 200 200 60");
  click_at(on_picture(200, 304));  // a line is met from a little way off
  EXPECT_EQ(text_of("button"), "3");
  EXPECT_EQ(place(), "100 300 200 3");
}

TEST_F(MenuEditorWindow, PressOnAnotherButtonDragsThatOne) {
  open_three();
  choose(1);
  drag(on_picture(200, 230), on_picture(500, 230));
  EXPECT_EQ(text_of("button"), "2");
  EXPECT_EQ(place(), "400 200 200 60");
  choose(1);
  EXPECT_EQ(place(), "100 100 200 60");
}

TEST_F(MenuEditorWindow, AddedButtonIsDraggedAwayFromTheOneItCopies) {
  open_three();
  choose(3);
  click_control("Command1");
  drag(on_picture(200, 301), on_picture(200, 351));
  EXPECT_EQ(text_of("button"), "4");
  EXPECT_EQ(place(), "100 350 200 3");
  choose(3);
  EXPECT_EQ(place(), "100 300 200 3");
}

TEST_F(MenuEditorWindow, TypedPlacesApplyOnEnterAndOnLeaving) {
  open_three();
  choose(1);
  type_into("leftpos", "33");
  type_into("ypos", "44", "Tab");
  type_into("widthpos", "155", "Tab");
  type_into("heightpos", "66");
  EXPECT_EQ(place(), "33 44 155 66");
  EXPECT_TRUE(is_open());
  EXPECT_EQ(scroll_bar("HScroll1"), 33);
  EXPECT_EQ(slider("Slider2"), 66);
}

TEST_F(MenuEditorWindow, TypedPlacesOutOfBoundsAreIgnored) {
  open_three();
  choose(1);
  type_into("heightpos", "300");
  type_into("widthpos", "619");  // 719 - 100
  type_into("leftpos", "519");   // 719 - 200
  type_into("ypos", "419");      // 479 - 60
  type_into("ypos", "letters");
  EXPECT_TRUE(no_dialog());
  EXPECT_EQ(place(), "100 100 200 60");
  type_into("widthpos", "618");
  type_into("heightpos", "299");
  EXPECT_EQ(place(), "100 100 618 299");
}

TEST_F(MenuEditorWindow, WhatStandsTypedInAFieldCountsAtAccept) {
  open_three();
  choose(1);
  click_control("leftpos");
  press("ctrl+a");
  type_text("7");
  accept();
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("tsmenu") == nullptr; }));
  EXPECT_EQ(stored().substr(0, stored().find('|')),
            " 7/ 100/ 207/ 160/jump title 1 chapter  1/yellow/white");
}

TEST_F(MenuEditorWindow, ActionRefusedAtAcceptKeepsTheEditorOpen) {
  open_three();
  choose(1);
  stand_typed("Combo1", "a/b");
  press("alt+e");
  ASSERT_TRUE(wait_until([] { return look_at_dialog().has_value(); }));
  EXPECT_EQ(top_dialog()->picture, "warning");
  press("Return");
  EXPECT_TRUE(no_dialog());
  ASSERT_TRUE(is_open());
  EXPECT_EQ(text_of("Combo1"), "jump title 1 chapter  1");
  EXPECT_EQ(closed_, 0);
  press("alt+e");
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("tsmenu") == nullptr; }));
  EXPECT_EQ(stored(), std::string(box1) + "|" + box2 + "|" + line3);
}

TEST_F(MenuEditorWindow, PlaceRefusedAtAcceptKeepsTheEditorOpen) {
  open_three();
  stand_typed("leftpos", "44");
  press("alt+e");
  answer_message("Please add/select a button first", "OK");
  EXPECT_TRUE(no_dialog());
  EXPECT_TRUE(is_open());
  EXPECT_EQ(closed_, 0);
}

TEST_F(MenuEditorWindow, PlaceOutOfBoundsAtAcceptIsIgnored) {
  open_three();
  choose(1);
  stand_typed("leftpos", "900");
  press("alt+e");
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("tsmenu") == nullptr; }));
  EXPECT_TRUE(no_dialog());
  EXPECT_EQ(stored(), std::string(box1) + "|" + box2 + "|" + line3);
}

TEST_F(MenuEditorWindow, ScrollBarsAndSlidersWorkOnTheSelectedButton) {
  open_three();
  choose(1);
  click_control("Slider1");
  press("Home");
  EXPECT_EQ(place(), "100 100 6 60");
  click_control("Slider2");
  press("Home");
  EXPECT_EQ(place(), "100 100 6 2");
  press("Right");
  EXPECT_EQ(place(), "100 100 6 3");
  const wxRect bar = ask_ui([] { return control("HScroll1")->GetScreenRect(); });
  click_at(wxPoint(bar.GetRight() - 30, bar.y + bar.height / 2));
  EXPECT_GT(scroll_bar("HScroll1"), 100);
  EXPECT_EQ(std::stoi(text_of("leftpos")), scroll_bar("HScroll1"));
}

TEST_F(MenuEditorWindow, ActionIsPickedOrTyped) {
  open_three();
  choose(1);
  type_into("Combo1", "jump menu 7");
  choose(2);
  EXPECT_EQ(text_of("Combo1"), "exit");
  click_control("Combo1");
  press("ctrl+a");
  type_text("call me");
  click_at(on_picture(600, 20));
  choose(1);
  EXPECT_EQ(text_of("Combo1"), "jump menu 7");
  choose(2);
  EXPECT_EQ(text_of("Combo1"), "call me");
}

TEST_F(MenuEditorWindow, ActionThatWouldBreakTheRecordIsRefused) {
  open_three();
  choose(1);
  type_into("Combo1", "jump/title");
  ASSERT_TRUE(wait_until([] { return look_at_dialog().has_value(); }));
  EXPECT_EQ(top_dialog()->picture, "warning");
  press("Return");
  EXPECT_TRUE(no_dialog());
  EXPECT_EQ(text_of("Combo1"), "jump title 1 chapter  1");
}

TEST_F(MenuEditorWindow, ColoursArePickedFromTheLists) {
  open_three();
  choose(1);
  for (const char* list : {"Colorhighlight", "ColorSelect"}) {
    pick(list, 9);
    EXPECT_EQ(text_of(list), "cyan");
  }
  accept();
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("tsmenu") == nullptr; }));
  EXPECT_EQ(stored().substr(0, stored().find('|')),
            " 100/ 100/ 300/ 160/jump title 1 chapter  1/cyan/cyan");
}

TEST_F(MenuEditorWindow, OptionsOfTheMenuAreWrittenBack) {
  open_three();
  EXPECT_FALSE(is_shown("spubegin"));
  EXPECT_FALSE(is_shown("advanced"));
  click_control("Check2");
  EXPECT_TRUE(is_shown("spubegin"));
  EXPECT_TRUE(is_shown("advanced"));
  type_into("spubegin", "00:00:01.5");
  type_into("spuend", "00:00:09.0");
  click_control("Check1");
  choose(1);
  click_control("thickness");
  press("Home");
  press("Right");
  click_control("Check2");
  EXPECT_FALSE(is_shown("spubegin"));
  EXPECT_FALSE(is_shown("advanced"));
  accept();
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("tsmenu") == nullptr; }));
  EXPECT_EQ(p_.moremenuoptions[0], " 1\t00:00:01.5\t00:00:09.0\t 2");
}

TEST_F(MenuEditorWindow, DeletingRenumbersTheOthers) {
  open_three();
  choose(2);
  click_control("deletebutton");
  EXPECT_EQ(text_of("Combo2"), "button2");
  EXPECT_EQ(place(), "100 300 200 3");
  accept();
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("tsmenu") == nullptr; }));
  EXPECT_EQ(stored(), std::string(box1) + "|" + line3);
}

TEST_F(MenuEditorWindow, WithoutAChosenButtonItAsksForOne) {
  open_new();
  type_into("leftpos", "20");
  const seen_dialog seen = answer_message("Please add/select a button first", "OK");
  EXPECT_EQ(seen.picture, "info");
  EXPECT_EQ(seen.title, "Corvane");
  EXPECT_TRUE(no_dialog());
  EXPECT_EQ(place(), "0 0 100 3");
}

TEST_F(MenuEditorWindow, KeyboardAloneAddsAButtonAndAccepts) {
  open_new();
  press("alt+a");
  press("F4");
  press("alt+l");
  press("ctrl+a");
  type_text("40");
  press("alt+e");
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("tsmenu") == nullptr; }));
  EXPECT_EQ(stored(), " 40/ 0/ 140/ 3/exit/black/black");
}

TEST_F(MenuEditorWindow, ThirtySixButtonsStandInThePicture) {
  add_menu(real_video(), thirty_six_buttons("exit/white/yellow", "exit/white/yellow"));
  open();
  click_at(on_picture(20 + 5 * 115 + 50, 20 + 5 * 75 + 25));
  EXPECT_EQ(text_of("Combo2"), "button36");
  screenshot("menu-editor-36");
}

TEST_F(MenuEditorWindow, WheelOverControlsThatWereNotClickedChangesNoButton) {
  open_three();
  choose(1);
  on_ui([] { control("Command1")->SetFocus(); });
  const auto look = [] {
    std::string all = place() + text_of("Combo2") + text_of("Colorhighlight") +
                      text_of("ColorSelect") + text_of("Combo1");
    for (const char* name : {"Slider1", "Slider2", "thickness"})
      all += " " + std::to_string(slider(name));
    return all;
  };
  const std::string before = look();
  for (const char* name : {"Slider1", "Slider2", "thickness", "Colorhighlight", "ColorSelect",
                           "Combo1", "HScroll1", "VScroll1", "Combo2", "position"})
    for (const wheel way : {wheel::down, wheel::up, wheel::up}) {
      turn_wheel_over(name, way);
      EXPECT_EQ(look(), before) << name;
    }
  EXPECT_EQ(slider("position"), 0);
}

TEST_F(MenuEditorWindow, SliderThatWasClickedFollowsTheWheel) {
  open_three();
  choose(1);
  click_control("Slider1");
  const int clicked = slider("Slider1");
  turn_wheel_over("Slider1", wheel::down);
  EXPECT_NE(slider("Slider1"), clicked);
}

TEST_F(MenuEditorWindow, EscapeInAnOpenListChangesNothing) {
  open_three();
  choose(1);
  for (const char* name : {"Combo2", "Colorhighlight", "ColorSelect"}) {
    const std::string before = text_of(name);
    click_control(name);
    press("Down");
    press("Escape");
    EXPECT_TRUE(is_open());
    EXPECT_EQ(text_of(name), before) << name;
  }
}

}  // namespace
}  // namespace corvane::testing_support
