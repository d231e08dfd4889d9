// Picking what buttons do by name, and what is said of a typed action, in the menu editor's window.
#include "platform/files/paths.h"
#include "project/menu_rows.h"
#include "project/title_rows.h"
#include "ui/gtk_sight.h"
#include "ui/menu_editor_fixture.h"
#include "ui/widgets/wx_text.h"

#include <gmock/gmock.h>
#include <wx/choice.h>
#include <wx/listbox.h>
#include <wx/slider.h>
#include <wx/statbmp.h>
#include <wx/textctrl.h>

namespace corvane::testing_support {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

const char* const box1 = " 100/ 100/ 300/ 160/exit/yellow/white";
const char* const box2 = " 100/ 200/ 300/ 260/exit/cyan/white";
const char* const box3 = " 100/ 300/ 300/ 360/exit/orange/white";

class MenuActionPicker : public menu_editor_test {
 protected:
  void SetUp() override {
    menu_editor_test::SetUp();
    corvane::add_title(p_, stored_from_native(real_video()));
    corvane::add_title(p_,
                       stored_from_native(real_video()) + "/" + stored_from_native(real_audio()));
    p_.chapters = {chapters(45), "00:00:00.00,00:00:01.50"};
    add_menu(real_video(), {box1, box2, box3});
    open();
  }
  static std::string chapters(int count) {
    std::string row = "00:00:00.00";
    for (int chapter = 2; chapter <= count; ++chapter)
      row += ",00:" + std::string(chapter < 10 ? "0" : "") + std::to_string(chapter) + ":00.00";
    return row;
  }
  static bool picker_comes() { return window_comes("actionpicker"); }
  static bool picker_goes() { return window_goes("actionpicker"); }
  static std::vector<std::string> lines() {
    return ask_ui([] {
      std::vector<std::string> rows;
      for (const wxString& row : dynamic_cast<wxListBox*>(control("actionlist"))->GetStrings())
        rows.push_back(utf8_of(row));
      return rows;
    });
  }
  static bool chosen_line_is(const std::string& begin) {
    return wait_until([&begin] {
      return utf8_of(dynamic_cast<wxListBox*>(control("actionlist"))->GetStringSelection())
                 .rfind(begin, 0) == 0;
    });
  }
  static bool shows(const char* name, const std::string& text) {
    return wait_until([&] { return utf8_of(control(name)->GetLabel()) == text; });
  }
  static bool action_is(const std::string& text) {
    return wait_until([&text] {
      return utf8_of(dynamic_cast<wxTextEntry*>(control("Combo1"))->GetValue()) == text;
    });
  }
  std::vector<std::string> stored_actions() const {
    std::vector<std::string> actions;
    for (const std::string& record : pieces_of(stored()))
      actions.push_back(parse_button(record).action);
    return actions;
  }
};

TEST_F(MenuActionPicker, SearchArrowKeysAndEnterTakeAnAction) {
  choose(1);
  press("ctrl+p");
  ASSERT_TRUE(picker_comes());
  EXPECT_TRUE(chosen_line_is("exit: the disc stops")) << "what the button does now";
  type_text("chapter 12,");
  EXPECT_TRUE(chosen_line_is("title 1: film, chapter 12, 00:12:00"));
  screenshot("action-picker-found");
  press("Return");
  ASSERT_TRUE(picker_goes());
  EXPECT_TRUE(action_is("jump title 1 chapter  12"));
  press("ctrl+p");
  ASSERT_TRUE(picker_comes());
  EXPECT_TRUE(chosen_line_is("      chapter 12, 00:12:00"));
  press("Down");
  EXPECT_TRUE(chosen_line_is("      chapter 13, 00:13:00"));
  press("Page_Up");
  EXPECT_TRUE(chosen_line_is("      chapter 3, 00:03:00"));
  press("Return");
  ASSERT_TRUE(picker_goes());
  EXPECT_TRUE(action_is("jump title 1 chapter  3"));
  press("ctrl+z");
  EXPECT_TRUE(action_is("jump title 1 chapter  12"));
  accept();
  EXPECT_TRUE(window_goes("tsmenu"));
  EXPECT_THAT(stored_actions(), ElementsAre("jump title 1 chapter  12", "exit", "exit"));
}

TEST_F(MenuActionPicker, FortyFiveChaptersWaitUntilTheyAreAskedFor) {
  choose(1);
  click_control("pickaction");
  ASSERT_TRUE(picker_comes());
  EXPECT_THAT(lines(), SizeIs(4));
  EXPECT_TRUE(wait_until([] {
    return utf8_of(dynamic_cast<wxListBox*>(control("actionlist"))->GetString(1)).find("(about ") !=
           std::string::npos;
  })) << "the length comes while one looks";
  EXPECT_THAT(lines()[0], HasSubstr("45 chapters)"));
  screenshot("action-picker");
  press("alt+h");
  EXPECT_TRUE(
      wait_until([] { return dynamic_cast<wxListBox*>(control("actionlist"))->GetCount() == 51; }));
  press("Escape");
  ASSERT_TRUE(picker_goes());
  EXPECT_TRUE(action_is("exit"));
}

TEST_F(MenuActionPicker, ADoubleClickTakesAndNothingFoundTakesNothing) {
  choose(2);
  press("ctrl+p");
  ASSERT_TRUE(picker_comes());
  type_text("no such thing");
  EXPECT_TRUE(shows("actioncount", "nothing is found"));
  press("Return");
  EXPECT_TRUE(ask_ui([] { return wxWindow::FindWindowByName("actionpicker") != nullptr; }));
  press("ctrl+a");
  type_text("menu 1");
  EXPECT_TRUE(chosen_line_is("menu 1: film"));
  const wxPoint row = ask_ui([] {
    return control("actionlist")->GetScreenPosition() +
           wxPoint(30, list_row_height(*control("actionlist")) / 2);
  });
  double_click_at(row);
  ASSERT_TRUE(picker_goes());
  EXPECT_TRUE(action_is("jump menu 1"));
}

TEST_F(MenuActionPicker, SeveralButtonsCountOn) {
  click_menu("buttons", "select all");
  press("ctrl+p");
  ASSERT_TRUE(picker_comes());
  EXPECT_EQ(top_dialog()->title, "action of 3 buttons");
  type_text("title 2");
  EXPECT_TRUE(chosen_line_is("title 2: film"));
  press("alt+s");
  press("Down");
  press("Down");
  ASSERT_TRUE(
      wait_until([] { return dynamic_cast<wxChoice*>(control("several"))->GetSelection() == 2; }));
  EXPECT_TRUE(shows("actionoutlook", "2 of 3: no more chapters"));
  screenshot("action-picker-several");
  press("alt+t");
  ASSERT_TRUE(picker_goes());
  accept();
  EXPECT_TRUE(window_goes("tsmenu"));
  EXPECT_THAT(stored_actions(),
              ElementsAre("jump title 2 chapter  1", "jump title 2 chapter  2", "exit"));
}

TEST_F(MenuActionPicker, NothingIsPickedForAButtonThatWasJustAdded) {
  click_control("Command1");
  press("ctrl+p");
  EXPECT_FALSE(is_enabled("pickaction"));
  EXPECT_FALSE(top_dialog().has_value());
  press("F4");
  press("ctrl+p");
  ASSERT_TRUE(picker_comes());
  press("Escape");
  EXPECT_TRUE(picker_goes());
}

TEST_F(MenuActionPicker, ATypedActionIsCheckedAsItIsTyped) {
  choose(1);
  EXPECT_TRUE(shows("verdict", "stops the disc"));
  click_control("Combo1");
  press("ctrl+a");
  type_text("jump title 2");
  EXPECT_TRUE(shows("verdict", "plays title 2: film"));
  type_text("9");
  EXPECT_TRUE(shows("verdict", "leads to title 29, but there are 2 titles"));
  screenshot("action-verdict");
  press("BackSpace");
  EXPECT_TRUE(shows("verdict", "plays title 2: film"));
  press("Return");
  EXPECT_TRUE(action_is("jump title 2"));
}

TEST_F(MenuActionPicker, TheBoxThicknessStandsWithTheMenuAndFollowsTheButton) {
  EXPECT_TRUE(is_shown("thickness"));
  choose(1);
  EXPECT_TRUE(is_enabled("thickness"));
  EXPECT_TRUE(ask_ui([] {
    return control("thickness")->GetParent() == control("Check1")->GetParent();
  })) << "in the box of the menu, not of the button";
  type_into("heightpos", "3");
  EXPECT_TRUE(wait_until([] { return !control("thickness")->IsEnabled(); }));
}

}  // namespace
}  // namespace corvane::testing_support
