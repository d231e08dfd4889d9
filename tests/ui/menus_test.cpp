// Menus from the main window: adding, the picker, the jump-table switch, and what rests meanwhile.
// (The editor itself: menu_editor_test.cpp.)
#include "project/menu_rows.h"
#include "ui/command_bars.h"
#include "ui/findings_fixture.h"
#include "ui/gtk_sight.h"
#include "ui/main_window.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>
#include <wx/ctrlsub.h>
#include <wx/listbox.h>
#include <wx/menu.h>

#include <filesystem>

namespace corvane::testing_support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* video_title = "select video stream";
constexpr const char* audio_title =
    "select audio stream (If no audio is needed for the menu, press cancel)";
constexpr const char* edit_caption = "Please select menu to edit";
constexpr const char* erase_caption = "Please select menu to erase";
constexpr const char* discard_question =
    "You have edited the XML manually, do you want to discard these changes?";

class Menus : public window_test {
 protected:
  const project& shown() const { return window_->shown_project(); }

  /// Answers the two dialogs; no audio cancels the second.
  static void choose_streams(const std::string& video, const std::string& audio = "") {
    answer_file(video_title, video);
    if (audio.empty())
      cancel_dialog(audio_title);
    else
      answer_file(audio_title, audio);
  }

  static bool picker_comes(const std::string& caption) {
    if (!window_comes("menuselect"))
      return false;
    const auto seen = top_dialog();
    return seen && seen->title == caption;
  }
  static bool picker_goes() { return window_goes("menuselect"); }
  static bool picker_is_shown() {
    return ask_ui([] { return wxWindow::FindWindowByName("menuselect") != nullptr; });
  }

  /// Waits for the editor, then closes it without accepting.
  void leave_editor() {
    ASSERT_TRUE(window_comes("tsmenu"));
    close("tsmenu");
    ASSERT_TRUE(window_goes("tsmenu"));
    EXPECT_TRUE(ask_ui([this] { return window_->IsEnabled(); }));
  }

  static unsigned editor_buttons() {
    return ask_ui(
        [] { return dynamic_cast<wxControlWithItems*>(control("Combo2", "tsmenu"))->GetCount(); });
  }

  static bool region_enabled() {
    return ask_ui([] { return control("Comboregion")->IsEnabled(); });
  }
  bool jumptable_checked() {
    return ask_ui([this] { return window_->bars().item("jumptable")->IsChecked(); });
  }
  std::string preferences() const { return folder_.read("config/corvane/preferences"); }
};

TEST_F(Menus, ToolbarButtonAddsTheFirstMenuAndEditsAfterwards) {
  click_tool("menus");
  choose_streams(real_video(), real_audio());
  leave_editor();
  EXPECT_THAT(shown().menulist, ElementsAre(stored_from_native(real_video()) + "/" +
                                            stored_from_native(real_audio())));
  EXPECT_EQ(label_of("dvdsizetext").substr(0, 16), "0 titles\n1 menus");
  click_tool("menus");
  ASSERT_TRUE(picker_comes(edit_caption));
  EXPECT_THAT(list_rows("menuselect"), ElementsAre("menu 1:film.m2v(with audio) (0 buttons)"));
  press("Escape");
  EXPECT_TRUE(picker_goes());
}

TEST_F(Menus, DropDownAddsEditsAndRemoves) {
  click_tool_arrow("menus");
  click_menu_item("add titleset menu");
  choose_streams(real_video());
  leave_editor();
  click_tool_arrow("menus");
  click_menu_item("add titleset menu");
  choose_streams(real_video(), real_audio());
  leave_editor();
  EXPECT_EQ(shown().menulist.size(), 2u);
  EXPECT_EQ(shown().indexer, 2);

  click_tool_arrow("menus");
  click_menu_item("edit titleset menu");
  ASSERT_TRUE(picker_comes(edit_caption));
  press("Return");
  leave_editor();
  EXPECT_EQ(shown().indexer, 1);

  click_tool_arrow("menus");
  click_menu_item("remove titleset menu");
  ASSERT_TRUE(picker_comes(erase_caption));
  press("Return");
  EXPECT_TRUE(picker_goes());
  EXPECT_THAT(shown().menulist, ElementsAre(stored_from_native(real_video()) + "/" +
                                            stored_from_native(real_audio())));
}

TEST_F(Menus, MenuBarAddsEditsAndRemoves) {
  click_menu("menus", "add new titleset menu");
  choose_streams(real_video());
  leave_editor();
  click_menu("menus", "edit existing titleset menu");
  ASSERT_TRUE(picker_comes(edit_caption));
  click_button("edit");
  leave_editor();
  click_menu("menus", "remove titleset menu");
  ASSERT_TRUE(picker_comes(erase_caption));
  click_button("erase");
  EXPECT_TRUE(picker_goes());
  EXPECT_THAT(shown().menulist, IsEmpty());
  EXPECT_EQ(label_of("dvdsizetext").substr(0, 16), "0 titles\n0 menus");
}

TEST_F(Menus, CancelledVideoDialogAddsNothing) {
  press("ctrl+m");
  cancel_dialog(video_title);
  EXPECT_TRUE(no_dialog());
  EXPECT_THAT(shown().menulist, IsEmpty());
  EXPECT_TRUE(region_enabled());
  EXPECT_TRUE(ask_ui([this] { return window_->IsEnabled(); }));
}

TEST_F(Menus, WithoutMenusEditAndRemoveShowNothing) {
  click_menu("menus", "edit existing titleset menu");
  EXPECT_FALSE(picker_is_shown());
  click_menu("menus", "remove titleset menu");
  EXPECT_FALSE(picker_is_shown());
  EXPECT_FALSE(top_dialog().has_value());
}

TEST_F(Menus, PickerListsEveryMenuAndPreselectsTheFirst) {
  load(project_with_menus(1));
  press("ctrl+e");
  ASSERT_TRUE(picker_comes(edit_caption));
  EXPECT_THAT(list_rows("menuselect"), ElementsAre("menu 1:intro.m2v(with audio) (2 buttons)",
                                                   "menu 2:second.m2v(no audio) (0 buttons)"));
  EXPECT_EQ(ask_ui([] {
              return dynamic_cast<wxListBox*>(control("List1", "menuselect"))->GetSelection();
            }),
            0);
  screenshot("menuselect");
  press("Escape");
  EXPECT_TRUE(picker_goes());
}

TEST_F(Menus, DoubleClickOnAnEntryEditsThatMenuWithItsButtons) {
  load(project_with_menus(1));
  for (const int menu : {2, 1}) {
    press("ctrl+e");
    ASSERT_TRUE(picker_comes(edit_caption));
    double_click_row(menu - 1, "menuselect");
    EXPECT_TRUE(picker_goes());
    ASSERT_TRUE(window_comes("tsmenu"));
    EXPECT_EQ(shown().indexer, menu);
    EXPECT_EQ(ask_ui([] { return utf8_of(control("indexer", "tsmenu")->GetLabel()); }),
              std::to_string(menu));
    EXPECT_EQ(editor_buttons(), menu == 1 ? 2u : 0u);
    leave_editor();
  }
}

TEST_F(Menus, AcceptedButtonIsCountedInThePicker) {
  press("ctrl+m");
  choose_streams(real_video());
  ASSERT_TRUE(window_comes("tsmenu"));
  click_control("Command1", "tsmenu");
  EXPECT_EQ(editor_buttons(), 1u);
  EXPECT_THAT(shown().menubuttons[0], IsEmpty());
  click_control("Command2", "tsmenu");
  EXPECT_TRUE(window_goes("tsmenu"));
  EXPECT_EQ(shown().menubuttons[0], first_button);
  press("ctrl+e");
  ASSERT_TRUE(picker_comes(edit_caption));
  EXPECT_THAT(list_rows("menuselect"), ElementsAre("menu 1:film.m2v(no audio) (1 buttons)"));
  press("Escape");
  EXPECT_TRUE(picker_goes());
}

TEST_F(Menus, MenuMadeInTheWindowsIsOnTheDisc) {
  add_title(real_video(), real_audio());
  press("ctrl+m");
  choose_streams(real_video(), real_audio());
  ASSERT_TRUE(window_comes("tsmenu"));
  click_control("Command1", "tsmenu");
  click_control("Command2", "tsmenu");
  ASSERT_TRUE(window_goes("tsmenu"));
  press("ctrl+j");
  ASSERT_TRUE(window_comes("navcommands"));
  double_click_row(0, "navcommands");
  type_text("call menu");
  click_button("accept");
  ASSERT_TRUE(window_goes("navcommands"));

  press("F5");
  answer_file("enter a folder name to create the dvd", folder_.path("disc"));
  answer_findings({"warning|title 1|no button and no end of another title leads to title 1"},
                  "author anyway");
  EXPECT_TRUE(wait_until([] { return look_at_dialog().has_value(); }, 60));
  answer_message("Process complete.  Please review the log for more information (recommended).",
                 "Cancel");
  EXPECT_TRUE(file_exists(folder_.path("disc/VIDEO_TS/VTS_01_0.VOB")));  // the titleset's menus
  const std::string xml = folder_.read("program/config.xml");
  EXPECT_THAT(xml, testing::HasSubstr("<button> exit; </button>"));
  EXPECT_THAT(xml, testing::HasSubstr("<post>call menu"));
}

TEST_F(Menus, NewMenuStaysWithoutButtonsWhenTheEditorIsClosed) {
  press("ctrl+m");
  choose_streams(real_video());
  ASSERT_TRUE(window_comes("tsmenu"));
  click_control("Command1", "tsmenu");
  close("tsmenu");
  answer_message(
      "The menu has been changed.  Do you want to keep what was changed?\n\n"
      "Yes: it is kept, as with \"accept\".\nNo: it is discarded.\nCancel: back to the menu.",
      "No");
  ASSERT_TRUE(window_goes("tsmenu"));
  EXPECT_TRUE(ask_ui([this] { return window_->IsEnabled(); }));
  EXPECT_EQ(shown().menulist.size(), 1u);
  EXPECT_THAT(shown().menubuttons[0], IsEmpty());
  EXPECT_THAT(shown().moremenuoptions, ElementsAre(new_menu_options));
}

TEST_F(Menus, ClosingThePickerChangesNothing) {
  const project before = project_with_menus(1);
  load(before);
  for (const char* way : {"Escape", "cancel", "close"}) {
    click_menu("menus", "remove titleset menu");
    ASSERT_TRUE(picker_comes(erase_caption)) << way;
    click_row(1, "menuselect");
    if (way == std::string("close"))
      close("menuselect");
    else if (way == std::string("cancel"))
      click_button("cancel");
    else
      press("Escape");
    EXPECT_TRUE(picker_goes()) << way;
  }
  EXPECT_EQ(shown().menulist, before.menulist);
  EXPECT_EQ(shown().menubuttons, before.menubuttons);
  EXPECT_EQ(shown().saved, 1);
}

TEST_F(Menus, ErasedMenuIsGoneAtOnceAndTheOtherKeepsItsNumbers) {
  project p = project_with_menus(1);
  p.menubuttons[1] = " 0/ 0/ 100/ 3/jump menu 2/black/black";
  load(p);
  click_menu("menus", "remove titleset menu");
  ASSERT_TRUE(picker_comes(erase_caption));
  double_click_row(0, "menuselect");
  EXPECT_TRUE(picker_goes());
  EXPECT_TRUE(no_dialog());
  EXPECT_THAT(shown().menulist, ElementsAre(p.menulist[1]));
  EXPECT_THAT(shown().menubuttons, ElementsAre(p.menubuttons[1]));
  EXPECT_THAT(shown().moremenuoptions, ElementsAre(p.moremenuoptions[1]));
  EXPECT_EQ(label_of("dvdsizetext").substr(0, 16), "1 titles\n1 menus");
  press("alt+F4");
  EXPECT_EQ(answer_message("Do you want to save project?", "Cancel").picture, "warning");
}

TEST_F(Menus, WhatErasingHasToTellStandsOverTheMainWindow) {
  load(project_with_menus(0));
  std::filesystem::remove(folder_.path("second.m2v"));
  click_menu("menus", "remove titleset menu");
  ASSERT_TRUE(picker_comes(erase_caption));
  press("Return");
  leave_missing_files();
  answer_message(folder_.path("second.m2v") + " appears to be missing", "OK");
  EXPECT_FALSE(picker_is_shown());
  EXPECT_THAT(shown().menulist, ElementsAre(folder_.stored("second.m2v") + "/"));
}

TEST_F(Menus, RegionIsFrozenByTheFirstMenuAndFreedWithTheLast) {
  EXPECT_TRUE(region_enabled());
  press("ctrl+m");
  choose_streams(real_video());
  leave_editor();
  EXPECT_FALSE(region_enabled());
  click_menu("menus", "remove titleset menu");
  ASSERT_TRUE(picker_comes(erase_caption));
  press("Return");
  EXPECT_TRUE(picker_goes());
  EXPECT_TRUE(region_enabled());
}

TEST_F(Menus, RegionStaysFrozenWhileTitlesRemain) {
  load(project_with_menus(1));
  ASSERT_FALSE(region_enabled());
  for (int left = 2; left > 0; --left) {
    click_menu("menus", "remove titleset menu");
    ASSERT_TRUE(picker_comes(erase_caption));
    press("Return");
    EXPECT_TRUE(picker_goes());
  }
  EXPECT_THAT(shown().menulist, IsEmpty());
  EXPECT_FALSE(region_enabled());
}

TEST_F(Menus, NothingElseRunsWhileTheEditorIsOpen) {
  press("ctrl+m");
  choose_streams(real_video());
  ASSERT_TRUE(window_comes("tsmenu"));
  EXPECT_FALSE(ask_ui([this] { return window_->IsEnabled(); }));
  EXPECT_TRUE(ask_ui([] { return control("tsmenu")->IsEnabled(); }));
  on_ui([this] {
    window_->drop({folder_.path("x.m2v")});
    window_->author();
    window_->load(folder_.path("none.cvp"));
  });
  EXPECT_FALSE(top_dialog().has_value());
  leave_editor();
  EXPECT_EQ(shown().menulist.size(), 1u);
  press("F5");
  answer_message("please add more titles", "OK");
}

TEST_F(Menus, NothingElseRunsWhileThePickerIsOpen) {
  const project before = project_with_menus(1);
  load(before);
  click_tool("menus");
  ASSERT_TRUE(picker_comes(edit_caption));
  on_ui([this] {
    window_->drop({folder_.path("a.m2v"), folder_.path("a.ac3")});
    window_->author();
  });
  close("main");
  EXPECT_TRUE(picker_comes(edit_caption));
  press("Escape");
  EXPECT_TRUE(picker_goes());
  EXPECT_TRUE(window_comes("main"));
  EXPECT_EQ(shown().List11, before.List11);
}

TEST_F(Menus, MainWindowDoesNotCloseUnderTheEditor) {
  press("ctrl+m");
  choose_streams(real_video());
  ASSERT_TRUE(window_comes("tsmenu"));
  close("main");
  EXPECT_TRUE(window_comes("tsmenu"));
  EXPECT_TRUE(window_comes("main"));
  EXPECT_FALSE(top_dialog().has_value());
  leave_editor();
}

TEST_F(Menus, EndOfTheSessionClosesTheEditorToo) {
  press("ctrl+m");
  choose_streams(real_video());
  ASSERT_TRUE(window_comes("tsmenu"));
  on_ui([this] { window_->CallAfter([this] { window_->Close(true); }); });
  EXPECT_TRUE(window_goes("main"));
  EXPECT_TRUE(window_goes("tsmenu"));
}

TEST_F(Menus, EndOfTheSessionWaitsForTheMessageOfTheEditor) {
  press("ctrl+m");
  choose_streams(real_video());
  ASSERT_TRUE(window_comes("tsmenu"));
  press("alt+l");  // its left position
  press("ctrl+a");
  type_text("44");
  press("Return");
  ASSERT_TRUE(wait_until([] { return look_at_dialog().has_value(); }));
  end_session();
  answer_message("Please add/select a button first", "OK");
  EXPECT_TRUE(window_goes("main"));
  EXPECT_TRUE(window_goes("tsmenu"));
}

TEST_F(Menus, EndOfTheSessionWaitsForTheFileDialogOfTheEditor) {
  press("ctrl+m");
  choose_streams(real_video());
  ASSERT_TRUE(window_comes("tsmenu"));
  press("alt+a");
  press("F4");     // the new one
  press("alt+v");  // the advanced controls
  press("alt+u");
  const std::string title = "select a 4 bit bitmap image";
  ASSERT_TRUE(wait_until([&] { return look_at_dialog() && look_at_dialog()->title == title; }));
  end_session();
  cancel_dialog(title);
  EXPECT_TRUE(window_goes("main"));
  EXPECT_TRUE(window_goes("tsmenu"));
}

TEST_F(Menus, EndOfTheSessionSaysNothingOfWhatStandsTyped) {
  press("ctrl+m");
  choose_streams(real_video());
  ASSERT_TRUE(window_comes("tsmenu"));
  press("alt+l");
  press("ctrl+a");
  type_text("44");
  on_ui([this] { window_->CallAfter([this] { window_->Close(true); }); });
  EXPECT_TRUE(window_goes("main"));
  EXPECT_TRUE(window_goes("tsmenu"));
  EXPECT_FALSE(top_dialog().has_value());
}

TEST_F(Menus, EndOfTheSessionWaitsForThePickerAndOpensNoEditor) {
  load(project_with_menus(1));
  click_tool("menus");
  ASSERT_TRUE(picker_comes(edit_caption));
  end_session();
  press("Return");
  EXPECT_TRUE(window_goes("main"));
  EXPECT_FALSE(ask_ui([] { return wxWindow::FindWindowByName("tsmenu") != nullptr; }));
}

TEST_F(Menus, EndOfTheSessionAsksForNoFurtherFile) {
  press("ctrl+m");
  ASSERT_TRUE(
      wait_until([&] { return look_at_dialog() && look_at_dialog()->title == video_title; }));
  end_session();
  answer_file(video_title, real_video());
  EXPECT_TRUE(window_goes("main"));
  EXPECT_FALSE(top_dialog().has_value());
}

TEST_F(Menus, HandEditedXmlIsKeptWhenTheUserSaysSo) {
  project p = project_with_menus(1);
  p.customxml = "<dvdauthor>\r\n</dvdauthor>\r\n";
  load(p);
  for (const char* item :
       {"add new titleset menu", "edit existing titleset menu", "remove titleset menu"}) {
    click_menu("menus", item);
    EXPECT_EQ(answer_message(discard_question, "Cancel").picture, "warning") << item;
    EXPECT_TRUE(no_dialog()) << item;
  }
  EXPECT_FALSE(shown().customxml.empty());
  EXPECT_EQ(shown().menulist, p.menulist);
  click_menu("menus", "edit existing titleset menu");
  answer_message(discard_question, "OK");
  ASSERT_TRUE(picker_comes(edit_caption));
  EXPECT_TRUE(shown().customxml.empty());
  press("Escape");
  EXPECT_TRUE(picker_goes());
}

TEST_F(Menus, JumpTableIsExplainedCheckedAndRemembered) {
  EXPECT_FALSE(jumptable_checked());
  click_menu("tools", "use JumpTable");
  const seen_dialog told = answer_message(
      "This will allow titles to jump to any menu, instead of just the first menu.  It uses "
      "virtual machine scripting in the XML(instead of using jumppad)",
      "OK");
  EXPECT_EQ(told.picture, "info");
  EXPECT_EQ(told.title, "Corvane");
  EXPECT_THAT(told.buttons, ElementsAre("OK"));
  EXPECT_TRUE(wait_until([this] { return shown().jumptable; }));
  EXPECT_TRUE(jumptable_checked());
  EXPECT_THAT(preferences(), testing::HasSubstr("jumptable = True"));

  click_menu("tools", "use JumpTable");
  EXPECT_TRUE(wait_until([this] { return !shown().jumptable; }));
  EXPECT_FALSE(jumptable_checked());
  EXPECT_FALSE(top_dialog().has_value());
  EXPECT_THAT(preferences(), testing::HasSubstr("jumptable = False"));
}

TEST_F(Menus, JumpTableStaysAsItIsOnceThereAreMenus) {
  project p = project_with_menus(1);
  for (const bool on : {true, false}) {
    p.jumptable = on;
    load(p);
    const std::string before = preferences();
    EXPECT_TRUE(wait_until([&] { return shown().jumptable == on; }));
    click_menu("tools", "use JumpTable");
    const seen_dialog told = answer_message(
        "Jumptable cannot be enabled/disabled, since menus have already been created", "OK");
    EXPECT_EQ(told.picture, "warning");
    EXPECT_THAT(told.buttons, ElementsAre("OK"));
    EXPECT_EQ(shown().jumptable, on);
    EXPECT_EQ(jumptable_checked(), on);
    EXPECT_EQ(preferences(), before);
  }
}

}  // namespace
}  // namespace corvane::testing_support
