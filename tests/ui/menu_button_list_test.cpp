// The menu editor's list of buttons, its menus for several of them, the line of problems.
#include "platform/files/paths.h"
#include "project/title_rows.h"
#include "ui/menu_editor_fixture.h"
#include "ui/widgets/wx_text.h"

#include <wx/dataview.h>

namespace corvane::testing_support {
namespace {

const char* const box1 = " 100/ 100/ 300/ 160/jump title 1 chapter  1/yellow/white";
const char* const box2 = " 110/ 200/ 250/ 260/exit/cyan/white";
const char* const box3 = " 400/ 320/ 500/ 350/jump menu 1/orange/orange";

class MenuButtonList : public menu_editor_test {
 protected:
  void open_three() {
    add_menu(real_video(), {box1, box2, box3});
    open();
  }
  /// A title of two chapters, for actions that lead somewhere.
  void have_title() {
    corvane::add_title(p_, stored_from_native(real_video()));
    p_.chapters = {"00:00:00.00,00:00:01.50"};
  }
  static wxDataViewListCtrl& list() {
    return *dynamic_cast<wxDataViewListCtrl*>(control("buttonlist"));
  }
  /// "look|action|place" of each row.
  static std::vector<std::string> shown_rows() {
    return ask_ui([] {
      std::vector<std::string> rows;
      for (int row = 0; row < list().GetItemCount(); ++row) {
        const auto cell = [row](unsigned column) {
          return utf8_of(list().GetTextValue(static_cast<unsigned>(row), column));
        };
        rows.push_back(cell(1) + "|" + cell(2) + "|" + cell(3));
      }
      return rows;
    });
  }
  /// The numbers of the selected rows, 1-based: "1 3".
  static std::string selected() {
    return ask_ui([] {
      std::string numbers;
      for (int row = 0; row < list().GetItemCount(); ++row)
        if (list().IsRowSelected(static_cast<unsigned>(row)))
          numbers += (numbers.empty() ? "" : " ") + std::to_string(row + 1);
      return numbers;
    });
  }
  static void click_button_row(int row, const std::string& held = "") {
    const wxPoint at = ask_ui([row] {
      const wxRect r = list().GetItemRect(list().RowToItem(row), list().GetColumn(1));
      return list().ClientToScreen(wxPoint(r.x + 20, r.y + r.height / 2));
    });
    if (!held.empty())
      std::system(("xdotool keydown " + held).c_str());
    click_at(at);
    if (!held.empty())
      std::system(("xdotool keyup " + held).c_str());
  }
  static bool line_comes(const std::string& begin) {
    return wait_until(
        [&] { return utf8_of(control("problems")->GetLabel()).rfind(begin, 0) == 0; });
  }
};

TEST_F(MenuButtonList, RowsTellLookActionAndPlaceAndFollowEachChange) {
  open_three();
  EXPECT_EQ(shown_rows(),
            (std::vector<std::string>{"yellow, white|jump title 1 chapter  1|100, 100  200 x 60",
                                      "cyan, white|exit|110, 200  140 x 60",
                                      "orange|jump menu 1|400, 320  100 x 30"}));
  choose(2);
  EXPECT_EQ(selected(), "2");
  type_into("leftpos", "20");
  EXPECT_EQ(shown_rows()[1], "cyan, white|exit|20, 200  140 x 60");
  click_control("deletebutton");
  EXPECT_EQ(shown_rows().size(), 2u);
  EXPECT_EQ(selected(), "2");
  press("ctrl+z");
  EXPECT_EQ(shown_rows().size(), 3u);
  screenshot("menu-button-list");
}

TEST_F(MenuButtonList, ClickChoosesAndKeysSelectSeveralMoveAndDeleteThem) {
  open_three();
  click_button_row(0);
  EXPECT_EQ(text_of("Combo2"), "button1");
  press("shift+Down");
  EXPECT_EQ(selected(), "1 2");
  press("ctrl+Down");
  EXPECT_EQ(shown_rows()[0], "orange|jump menu 1|400, 320  100 x 30");
  EXPECT_EQ(selected(), "2 3");
  press("ctrl+Up");
  EXPECT_EQ(selected(), "1 2");
  press("Delete");
  EXPECT_EQ(shown_rows().size(), 1u);
  EXPECT_EQ(text_of("Combo1"), "jump menu 1");
  press("ctrl+z");
  EXPECT_EQ(shown_rows().size(), 3u);
}

TEST_F(MenuButtonList, ClickWithControlAddsToTheSelectionAndTheyMoveTogether) {
  open_three();
  click_button_row(0);
  click_button_row(2, "ctrl");
  EXPECT_EQ(selected(), "1 3");
  EXPECT_EQ(text_of("Combo2"), "button3");
  on_ui([] { control("MediaPlayer1")->SetFocus(); });
  press("ctrl+Right");
  EXPECT_EQ(shown_rows()[0].substr(shown_rows()[0].rfind('|') + 1), "110, 100  200 x 60");
  EXPECT_EQ(shown_rows()[2].substr(shown_rows()[2].rfind('|') + 1), "410, 320  100 x 30");
}

TEST_F(MenuButtonList, ClickOnTheNewButtonPicksIt) {
  open_three();
  choose(1);
  click_control("Command1");
  EXPECT_EQ(selected(), "");
  click_button_row(3);
  EXPECT_EQ(place(), "400 320 100 30");
  EXPECT_EQ(selected(), "4");
}

TEST_F(MenuButtonList, MenuAlignsWhatIsSelected) {
  open_three();
  click_button_row(0);
  press("shift+Down");
  click_menu("adjust", "align left");
  EXPECT_EQ(shown_rows()[1], "cyan, white|exit|100, 200  140 x 60");
  click_menu("adjust", "same width");
  EXPECT_EQ(shown_rows()[0], "yellow, white|jump title 1 chapter  1|100, 100  140 x 60");
}

TEST_F(MenuButtonList, DuplicateAndRepeatAddButtons) {
  have_title();
  open_three();
  choose(3);
  press("ctrl+d");
  EXPECT_EQ(shown_rows().size(), 4u);
  EXPECT_EQ(shown_rows()[3], "orange|jump menu 1|400, 360  100 x 30");
  press("ctrl+z");
  choose(1);
  click_menu("buttons", "repeat...");
  ASSERT_TRUE(wait_for_dialog("repeat button 1"));
  EXPECT_TRUE(wait_until([] {
    return control("outlook", "repeat")->GetLabel() == "2 of 4 buttons: there are no more chapters";
  })) << ask_ui([] { return control("outlook", "repeat")->GetLabel().ToStdString(); });
  screenshot("menu-repeat");
  press("Return");
  EXPECT_TRUE(no_dialog());
  EXPECT_EQ(shown_rows().size(), 4u);
  EXPECT_EQ(shown_rows()[3], "yellow, white|jump title 1 chapter  2|100, 170  200 x 60");
  EXPECT_EQ(selected(), "1 4");
}

TEST_F(MenuButtonList, ProblemsAreToldWhileTheMenuIsEdited) {
  have_title();
  add_menu(real_video(), {" 100/ 100/ 300/ 160/jump title 1/yellow/white"});
  open();
  EXPECT_TRUE(line_comes("no problems"))
      << ask_ui([] { return utf8_of(control("problems")->GetLabel()); });
  choose(1);
  type_into("Combo1", "jump title 9");
  EXPECT_TRUE(line_comes("1 error: button 1: "));
  type_into("Combo1", "jump title 1");
  EXPECT_TRUE(line_comes("no problems"));
  press("ctrl+d");
  type_into("ypos", "130");
  EXPECT_TRUE(line_comes("1 error, 1 warning: button 1: it overlaps or touches button 2"));
  screenshot("menu-problems");
}

}  // namespace
}  // namespace corvane::testing_support
