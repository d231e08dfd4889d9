// The navigation commands dialog with a real pointer and real keys.
#include "ui/gtk_sight.h"
#include "ui/main_window.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>
#include <wx/combobox.h>
#include <wx/listbox.h>
#include <wx/textctrl.h>

namespace corvane::testing_support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* dialog = "navcommands";
constexpr const char* refusal =
    "The command \"jump?title 2\" cannot be used: it contains a line break, a tab or another "
    "control character.";

class Navigation : public window_test {
 protected:
  const project& shown() const { return window_->shown_project(); }

  /// A project of `titles` titles without menus.
  project titles_only(int titles) {
    project p = project_with_menus(titles);
    p.menulist.clear();
    p.moremenuoptions.clear();
    p.menubuttons.assign(1, "");
    return p;
  }

  static void open() {
    click_tool("nav cmds");
    ASSERT_TRUE(window_comes(dialog));
  }
  static void accept() {
    click_button("accept");
    EXPECT_TRUE(window_goes(dialog));
  }

  static wxComboBox& combo(const char* name) {
    return *dynamic_cast<wxComboBox*>(control(name, dialog));
  }
  static std::string value(const char* name) {
    return ask_ui([=] { return utf8_of(combo(name).GetValue()); });
  }
  static std::vector<std::string> items(const char* name) {
    return ask_ui([=] {
      std::vector<std::string> all;
      for (const wxString& item : combo(name).GetStrings())
        all.push_back(utf8_of(item));
      return all;
    });
  }
  /// As if pasted: a key cannot type every text.
  static void set_value(const char* name, const char* text) {
    on_ui([=] { combo(name).CallAfter([=] { combo(name).SetValue(wxString::FromUTF8(text)); }); });
  }
  static std::string title_name() {
    return ask_ui(
        [] { return utf8_of(dynamic_cast<wxTextCtrl*>(control("Text1", dialog))->GetValue()); });
  }

  /// A row of the list as it is shown: 20 characters, a gap, 25 characters.
  static std::string row(std::string title, std::string command) {
    title.resize(20, ' ');
    command.resize(25, ' ');
    return title + "   " + command;
  }
  static std::string stored(std::string command) {
    command.resize(25, ' ');
    return command;
  }
};

TEST_F(Navigation, DialogOffersTheDefaultsOfThreeTitles) {
  load(titles_only(3));
  open();
  screenshot("navcommands");
  EXPECT_EQ(ask_ui([] { return utf8_of(control(dialog)->GetLabel()); }),
            "navigation commands editor");
  EXPECT_THAT(list_rows(dialog), ElementsAre(row("title1:a.m2v/a.ac3", "jump title 2"),
                                             row("title2:b.m2v/b.ac3", "jump title 3"),
                                             row("title3:c.m2v/c.ac3", "exit")));
  EXPECT_EQ(title_name(), "");
  EXPECT_EQ(value("Combo1"), "exit");
  EXPECT_EQ(value("firstplay"), "<default>");
  EXPECT_THAT(items("Combo1"), ElementsAre("jump title 1", "jump title 2", "jump title 3", "exit"));
  EXPECT_THAT(items("firstplay"),
              ElementsAre("jump title 1", "jump title 2", "jump title 3", "<default>"));
  press("Escape");
  EXPECT_TRUE(window_goes(dialog));
}

TEST_F(Navigation, ControlsHaveTheirNamesTipsAndAFixedPitch) {
  load(titles_only(1));
  open();
  on_ui([] {
    for (const char* name : {"List1", "Text1", "Combo1", "firstplay", "Command1"})
      EXPECT_EQ(accessible_name(*control(name, dialog)), name);
    EXPECT_EQ(utf8_of(control("List1", dialog)->GetToolTipText()),
              "double click on the entry to modify the command after the title is finished (post "
              "command)");
    EXPECT_EQ(utf8_of(control("firstplay", dialog)->GetToolTipText()),
              "sets the first thing that is played when the dvd begins.");
    EXPECT_TRUE(control("List1", dialog)->GetFont().IsFixedWidth());
    EXPECT_TRUE(combo("Combo1").IsEditable());
    EXPECT_FALSE(dynamic_cast<wxTextCtrl*>(control("Text1", dialog))->IsEditable());
    for (const char* label : {"Title name", "Post command", "first play"})
      EXPECT_TRUE(find_label(label, label_place::anywhere)) << label;
  });
  close(dialog);
  EXPECT_TRUE(window_goes(dialog));
}

TEST_F(Navigation, SelectedRowIsShownAndAPickedCommandRewritesIt) {
  load(titles_only(3));
  open();
  EXPECT_FALSE(ask_ui([] { return combo("Combo1").IsEnabled(); }));
  click_row(1, dialog);
  EXPECT_EQ(title_name(), "title2:b.m2v/b.ac3");
  EXPECT_EQ(value("Combo1"), "jump title 3");
  click_control("Combo1", dialog);
  press("alt+Down");  // opens the list
  press("Home");
  press("Return");
  EXPECT_TRUE(wait_until([] { return combo("Combo1").GetValue() == "jump title 1"; }));
  EXPECT_EQ(list_rows(dialog)[1], row("title2:b.m2v/b.ac3", "jump title 1"));
  EXPECT_THAT(shown().postinfo, IsEmpty());
  accept();
  EXPECT_THAT(shown().postinfo,
              ElementsAre(stored("jump title 2"), stored("jump title 1"), stored("exit")));
  EXPECT_EQ(shown().firstplay, "<default>");
}

TEST_F(Navigation, TypedCommandOf30CharactersIsKeptToItsFirst25) {
  load(titles_only(2));
  open();
  double_click_row(0, dialog);
  EXPECT_TRUE(wait_until([] { return combo("Combo1").HasFocus(); }));
  type_text("abcdefghijklmnopqrstuvwxyz1234");
  EXPECT_TRUE(wait_until([] { return combo("Combo1").GetValue().length() >= 25; }));
  EXPECT_EQ(list_rows(dialog)[0], row("title1:a.m2v/a.ac3", "abcdefghijklmnopqrstuvwxy"));
  accept();
  EXPECT_THAT(shown().postinfo, ElementsAre("abcdefghijklmnopqrstuvwxy", stored("exit")));
}

TEST_F(Navigation, AllOfItGoesWithTheKeysAlone) {
  load(titles_only(2));
  press("ctrl+j");
  ASSERT_TRUE(window_comes(dialog));
  press("Down");
  press("Return");
  type_text("exit");
  press("Return");
  press("Down");
  press("Return");
  type_text("jump title 1");
  press("Tab");
  press("Tab");  // GTK stops at the arrow, too
  type_text("jump title 2");
  press("alt+a");
  EXPECT_TRUE(window_goes(dialog));
  EXPECT_THAT(shown().postinfo, ElementsAre(stored("exit"), stored("jump title 1")));
  EXPECT_EQ(shown().firstplay, "jump title 2");
}

TEST_F(Navigation, FirstPlayIsKeptAndAnEmptiedOneIsTheDefault) {
  load(project_with_menus(1));
  open();
  EXPECT_THAT(items("firstplay"), ElementsAre("jump title 1", "jump titleset 1 menu", "<default>"));
  click_control("firstplay", dialog);
  press("ctrl+a");
  type_text("jump titleset 1 menu");
  accept();
  EXPECT_EQ(shown().firstplay, "jump titleset 1 menu");
  open();
  EXPECT_EQ(value("firstplay"), "jump titleset 1 menu");
  click_control("firstplay", dialog);
  press("ctrl+a");
  press("Delete");
  accept();
  EXPECT_EQ(shown().firstplay, "<default>");
}

TEST_F(Navigation, MenusAreOfferedAsTheJumpTableAllows) {
  project p = project_with_menus(1);
  load(p);
  open();
  EXPECT_THAT(items("Combo1"), ElementsAre("jump title 1", "exit", "call menu"));
  close(dialog);
  ASSERT_TRUE(window_goes(dialog));
  p.jumptable = true;
  load(p);
  open();
  EXPECT_THAT(items("Combo1"),
              ElementsAre("jump title 1", "exit", "call menu 1", "call menu 2", "call last menu"));
  EXPECT_EQ(value("Combo1"), "exit");
  close(dialog);
  ASSERT_TRUE(window_goes(dialog));
}

TEST_F(Navigation, ClosingWithoutAcceptChangesNothing) {
  load(titles_only(2));
  for (const char* way : {"Escape", "cancel", "close"}) {
    open();
    EXPECT_EQ(list_rows(dialog)[0], row("title1:a.m2v/a.ac3", "jump title 2")) << way;
    click_row(0, dialog);
    click_control("Combo1", dialog);
    press("ctrl+a");
    type_text("exit");
    EXPECT_EQ(list_rows(dialog)[0], row("title1:a.m2v/a.ac3", "exit")) << way;
    click_control("firstplay", dialog);
    press("ctrl+a");
    type_text("jump title 2");
    if (way == std::string("close"))
      close(dialog);
    else if (way == std::string("cancel"))
      click_button("cancel");
    else
      press("Escape");
    EXPECT_TRUE(window_goes(dialog)) << way;
    EXPECT_THAT(shown().postinfo, IsEmpty()) << way;
    EXPECT_EQ(shown().firstplay, "<default>") << way;
    EXPECT_EQ(shown().saved, 1) << way;
  }
}

TEST_F(Navigation, MainWindowRestsWhileTheDialogIsOpen) {
  load(titles_only(2));
  open();
  EXPECT_FALSE(ask_ui([this] { return window_->IsEnabled(); }));
  on_ui([this] {
    window_->author();
    window_->drop({folder_.path("x.m2v")});
  });
  click_at(ask_ui([this] { return window_->GetScreenPosition() + wxPoint(20, 60); }));
  press("F5");
  press("ctrl+j");
  const auto seen = top_dialog();
  EXPECT_TRUE(!seen || seen->title == "navigation commands editor") << seen->title;
  close("main");
  EXPECT_TRUE(window_comes("main"));
  EXPECT_TRUE(window_comes(dialog));
  close(dialog);
  EXPECT_TRUE(window_goes(dialog));
  EXPECT_TRUE(ask_ui([this] { return window_->IsEnabled(); }));
  EXPECT_EQ(selection(), -1);
}

TEST_F(Navigation, EndOfTheSessionClosesTheDialogToo) {
  load(titles_only(1));
  open();
  on_ui([this] { window_->CallAfter([this] { window_->Close(true); }); });
  EXPECT_TRUE(window_goes("main"));
  EXPECT_TRUE(window_goes(dialog));
}

TEST_F(Navigation, EndOfTheSessionWaitsForTheMessageOfTheDialog) {
  load(titles_only(2));
  open();
  click_row(0, dialog);
  set_value("Combo1", "jump\ttitle 2");
  ASSERT_TRUE(wait_until([] { return look_at_dialog() && look_at_dialog()->text == refusal; }));
  end_session();
  answer_message(refusal, "OK");
  EXPECT_TRUE(window_goes("main"));
  EXPECT_TRUE(window_goes(dialog));
}

TEST_F(Navigation, HandEditedXmlIsKeptWhenTheUserSaysSo) {
  project p = titles_only(1);
  p.customxml = "<dvdauthor>\r\n</dvdauthor>\r\n";
  load(p);
  click_tool("nav cmds");
  answer_message("You have edited the XML manually, do you want to discard these changes?",
                 "Cancel");
  EXPECT_FALSE(ask_ui([] { return wxWindow::FindWindowByName(dialog) != nullptr; }));
  EXPECT_FALSE(shown().customxml.empty());
}

TEST_F(Navigation, TextThatNoRowCanHoldIsRefused) {
  load(titles_only(2));
  open();
  click_row(0, dialog);
  set_value("Combo1", "jump\ttitle 2");
  EXPECT_EQ(answer_message(refusal, "OK").picture, "warning");
  EXPECT_TRUE(wait_until([] { return combo("Combo1").GetValue() == "jump title 2"; }));
  EXPECT_EQ(list_rows(dialog)[0], row("title1:a.m2v/a.ac3", "jump title 2"));

  set_value("firstplay", "jump\ttitle 2");
  click_button("accept");
  answer_message(refusal, "OK");
  EXPECT_TRUE(window_comes(dialog));
  EXPECT_EQ(value("firstplay"), "<default>");
  EXPECT_THAT(shown().postinfo, IsEmpty());
  accept();
  EXPECT_EQ(shown().firstplay, "<default>");
}

TEST_F(Navigation, ProjectWithoutTitlesStillHasAFirstPlay) {
  open();
  EXPECT_THAT(list_rows(dialog), IsEmpty());
  EXPECT_THAT(items("Combo1"), ElementsAre("exit"));
  EXPECT_THAT(items("firstplay"), ElementsAre("<default>"));
  press("Down");
  press("Return");
  accept();
  EXPECT_THAT(shown().postinfo, IsEmpty());
}

TEST_F(Navigation, LongNamesAreCutBetweenCharacters) {
  project p = titles_only(1);
  file("größere Prüfung.m2v");
  file("größere Prüfung.ac3");
  p.List11 = {folder_.stored("größere Prüfung.m2v") + "/" + folder_.stored("größere Prüfung.ac3")};
  load(p);
  ASSERT_THAT(rows(), ElementsAre("title1:größere Prüfung.m2v/größere Prüfung.ac3"));
  open();
  EXPECT_THAT(list_rows(dialog)[0], StartsWith("title1:größere Prüfu   exit"));
  click_row(0, dialog);
  EXPECT_EQ(title_name(), "title1:größere Prüfu");
  accept();
}

TEST_F(Navigation, StoredCommandsAreShownAgain) {
  project p = titles_only(2);
  p.postinfo = {stored("exit"), stored("call menu")};
  load(p);
  open();
  EXPECT_THAT(list_rows(dialog), ElementsAre(row("title1:a.m2v/a.ac3", "exit"),
                                             row("title2:b.m2v/b.ac3", "call menu")));
  click_row(1, dialog);
  EXPECT_EQ(value("Combo1"), "call menu");
  close(dialog);
  EXPECT_TRUE(window_goes(dialog));
}

TEST_F(Navigation, EscapeInAnOpenListClosesTheListAloneAndTheWheelChangesNothing) {
  load(titles_only(2));
  click_row(0);
  open();
  click_row(0, dialog);
  for (const char* name : {"Combo1", "firstplay"}) {
    const std::string before = value(name);
    turn_wheel_over(name, wheel::down, dialog);
    turn_wheel_over(name, wheel::up, dialog);
    EXPECT_EQ(value(name), before) << name;
    const wxRect place = ask_ui([=] { return combo(name).GetScreenRect(); });
    click_at({place.GetRight() - 8, place.y + place.height / 2});
    press("Down");
    press("Escape");
    ASSERT_TRUE(window_comes(dialog)) << name;
    EXPECT_EQ(value(name), before) << name;
  }
  press("Escape");
  EXPECT_TRUE(window_goes(dialog));
}

// Help with commands ------------------------------------------------------------------------------

bool says(const std::string& text) {
  return wait_until([&text] { return utf8_of(control("verdict", dialog)->GetLabel()) == text; });
}

TEST_F(Navigation, WhatACommandDoesIsSaidAsItIsTyped) {
  load(project_with_menus(2));
  open();
  EXPECT_TRUE(says("first play: shows menu 1: intro"));
  double_click_row(0, dialog);
  EXPECT_TRUE(says("after title 1: plays title 2: b"));
  type_text("jump title ");
  type_text("7");
  EXPECT_TRUE(says("after title 1: leads to title 7, but there are 2 titles"));
  screenshot("navcommands-verdict");
  click_row(1, dialog);
  EXPECT_TRUE(says("after title 2: stops the disc"));
  click_control("firstplay", dialog);
  EXPECT_TRUE(says("first play: shows menu 1: intro"));
  press("ctrl+a");
  type_text("jump title 2");
  EXPECT_TRUE(says("first play: plays title 2: b"));
  close(dialog);
  EXPECT_TRUE(window_goes(dialog));
}

TEST_F(Navigation, CommandOfATitleIsPickedByName) {
  load(project_with_menus(3));
  open();
  click_row(1, dialog);
  press("ctrl+p");
  ASSERT_TRUE(window_comes("actionpicker"));
  EXPECT_EQ(top_dialog()->title, "command after title 2");
  EXPECT_TRUE(wait_until([] {
    return utf8_of(dynamic_cast<wxListBox*>(control("actionlist"))->GetStringSelection())
        .starts_with("title 3: c");
  })) << "what it is now";
  screenshot("navcommands-pick");
  type_text("menu 1");
  press("Return");
  ASSERT_TRUE(window_goes("actionpicker"));
  EXPECT_TRUE(says("after title 2: shows menu 1: intro"));
  EXPECT_EQ(value("Combo1"), "call menu");
  EXPECT_EQ(list_rows(dialog)[1], row("title2:b.m2v/b.ac3", "call menu"));
  accept();
  EXPECT_EQ(shown().postinfo[1], stored("call menu"));
}

TEST_F(Navigation, FirstPlayIsPickedByNameAndEscapeKeepsIt) {
  load(project_with_menus(2));
  open();
  click_row(0, dialog);
  click_control("firstplay", dialog);
  click_control("pickcommand", dialog);
  ASSERT_TRUE(window_comes("actionpicker"));
  EXPECT_EQ(top_dialog()->title, "first play");
  press("Escape");
  ASSERT_TRUE(window_goes("actionpicker"));
  EXPECT_EQ(value("firstplay"), "<default>");
  press("ctrl+p");
  ASSERT_TRUE(window_comes("actionpicker"));
  type_text("title 1");
  press("Return");
  ASSERT_TRUE(window_goes("actionpicker"));
  EXPECT_TRUE(wait_until([] { return combo("firstplay").GetValue() == "jump title 1"; }));
  EXPECT_EQ(value("Combo1"), "jump title 2") << "the title's own";
  accept();
  EXPECT_EQ(shown().firstplay, "jump title 1");
  EXPECT_EQ(shown().postinfo[0], stored("jump title 2"));
}

}  // namespace
}  // namespace corvane::testing_support
