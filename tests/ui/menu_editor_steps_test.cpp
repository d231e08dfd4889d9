// The menu editor's window: undo and redo, what closing asks, the new button that is not shown yet.
#include "ui/menu_editor_fixture.h"

#include <wx/frame.h>
#include <wx/menu.h>

namespace corvane::testing_support {
namespace {

const char* const box1 = " 100/ 100/ 300/ 160/jump title 1 chapter  1/yellow/white";
const char* const box2 = " 100/ 200/ 300/ 260/exit/cyan/white";

class MenuEditorSteps : public menu_editor_test {
 protected:
  void open_two() {
    add_menu(real_video(), {box1, box2});
    open();
  }
  /// The labels of the first menu's items that can be picked now.
  static std::vector<std::string> possible() {
    return ask_ui([] {
      std::vector<std::string> labels;
      const wxMenuBar* bar = dynamic_cast<wxFrame*>(control("tsmenu"))->GetMenuBar();
      for (const wxMenuItem* item : bar->GetMenu(0)->GetMenuItems())
        if (!item->IsSeparator() && item->IsEnabled())
          labels.emplace_back(item->GetItemLabelText().utf8_str());
      return labels;
    });
  }
  static bool offers(const std::string& label) {
    for (const std::string& item : possible())
      if (item == label)
        return true;
    return false;
  }
};

TEST_F(MenuEditorSteps, KeysUndoAndRedoWhatTheMenuNames) {
  open_two();
  EXPECT_FALSE(offers("undo"));
  choose(1);
  type_into("leftpos", "20");
  click_at(on_picture(600, 20));
  EXPECT_TRUE(offers("undo move button 1"));
  press("ctrl+z");
  EXPECT_EQ(place(), "100 100 200 60");
  EXPECT_TRUE(offers("redo move button 1"));
  press("ctrl+y");
  EXPECT_EQ(place(), "20 100 200 60");
  press("ctrl+z");
  press("ctrl+shift+z");
  EXPECT_EQ(place(), "20 100 200 60");
}

TEST_F(MenuEditorSteps, DragsAreOneStepEach) {
  open_two();
  choose(1);
  drag(on_picture(200, 130), on_picture(460, 130));
  drag(on_picture(460, 130), on_picture(460, 350));
  EXPECT_EQ(place(), "360 320 200 60");
  press("ctrl+z");
  EXPECT_EQ(place(), "360 100 200 60");
  press("ctrl+z");
  EXPECT_EQ(place(), "100 100 200 60");
  EXPECT_FALSE(offers("undo"));
}

TEST_F(MenuEditorSteps, WhatStandsTypedIsUndoneWithItsField) {
  open_two();
  choose(1);
  click_control("leftpos");
  press("ctrl+a");
  type_text("44");
  press("ctrl+z");
  EXPECT_EQ(place(), "100 100 200 60");
  press("ctrl+y");
  EXPECT_EQ(place(), "44 100 200 60");
}

TEST_F(MenuEditorSteps, DeleteInThePictureDeletesTheButtonAndInAFieldALetter) {
  open_two();
  choose(1);
  click_control("leftpos");
  press("Home");
  press("Delete");
  EXPECT_EQ(text_of("Combo2"), "button1");
  click_at(on_picture(200, 130));
  press("Delete");
  EXPECT_EQ(text_of("Combo2"), "button1");
  EXPECT_EQ(place(), "100 200 200 60");
  press("Delete");
  EXPECT_EQ(text_of("Combo2"), "");
  press("ctrl+z");
  press("ctrl+z");
  EXPECT_EQ(place(), "100 100 200 60");
}

TEST_F(MenuEditorSteps, ArrowKeysWithControlMoveAndSizeByTenPixels) {
  open_two();
  choose(1);
  click_at(on_picture(200, 130));
  press("ctrl+Right");
  press("ctrl+Up");
  EXPECT_EQ(place(), "110 90 200 60");
  press("ctrl+shift+Right");
  press("ctrl+shift+Down");
  EXPECT_EQ(place(), "110 90 210 70");
}

TEST_F(MenuEditorSteps, NewButtonIsNeitherShownNorChangedUntilItIsPicked) {
  open_two();
  choose(1);
  click_control("Command1");
  EXPECT_EQ(text_of("Combo2"), "button3");
  EXPECT_EQ(place(), "");
  EXPECT_EQ(text_of("Combo1"), "");
  EXPECT_EQ(text_of("Colorhighlight"), "");
  for (const char* name : {"leftpos", "ypos", "widthpos", "heightpos", "Slider1", "Slider2",
                           "Combo1", "Colorhighlight", "ColorSelect", "HScroll1", "VScroll1"})
    EXPECT_FALSE(is_enabled(name)) << name;
  screenshot("menu-editor-added");
  choose(3);
  EXPECT_EQ(place(), "100 200 200 60");
  EXPECT_EQ(text_of("Colorhighlight"), "cyan");
  for (const char* name : {"leftpos", "Slider1", "Combo1", "ColorSelect", "HScroll1", "VScroll1"})
    EXPECT_TRUE(is_enabled(name)) << name;
}

TEST_F(MenuEditorSteps, NewButtonIsPickedByItsKeyOrInThePicture) {
  open_two();
  click_control("Command1");
  press("F4");
  EXPECT_EQ(place(), "100 200 200 60");
  click_control("Command1");
  click_at(on_picture(200, 230));
  EXPECT_TRUE(is_enabled("leftpos"));
  EXPECT_EQ(text_of("button"), "4");
}

TEST_F(MenuEditorSteps, ClosingAsksWhatBecomesOfWhatWasChanged) {
  open_two();
  choose(1);
  type_into("leftpos", "20");
  close_and_answer("Cancel");
  ASSERT_TRUE(is_open());
  EXPECT_EQ(place(), "20 100 200 60");
  close_and_answer("Yes");
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("tsmenu") == nullptr; }));
  EXPECT_EQ(stored().substr(0, 5), " 20/ ");
  EXPECT_EQ(closed_, 1);
}

TEST_F(MenuEditorSteps, ClosingStaysWhenWhatIsToBeKeptIsRefused) {
  open_two();
  click_control("Command1");
  window_test::close("tsmenu");
  answer_message(
      "The menu has been changed.  Do you want to keep what was changed?\n\n"
      "Yes: it is kept, as with \"accept\".\nNo: it is discarded.\nCancel: back to the menu.",
      "Yes");
  answer_message("button2 intersects with button3", "OK");
  EXPECT_TRUE(no_dialog());
  EXPECT_TRUE(is_open());
}

TEST_F(MenuEditorSteps, EndOfTheSessionAsksNothing) {
  open_two();
  choose(1);
  type_into("leftpos", "20");
  on_ui([] { control("tsmenu")->Close(true); });
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("tsmenu") == nullptr; }));
  EXPECT_EQ(stored(), std::string(box1) + "|" + box2);
}

}  // namespace
}  // namespace corvane::testing_support
