// The menu editor's list of buttons, its menus for several of them, the line of problems.
#include "platform/files/paths.h"
#include "project/menu_rows.h"
#include "project/title_rows.h"
#include "ui/menu_editor_fixture.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/dataview.h>

#include <cstdlib>
#include <filesystem>

namespace corvane::testing_support {
namespace {

const char* const box1 = " 100/ 100/ 300/ 160/jump title 1 chapter  1/yellow/white";
const char* const box2 = " 110/ 200/ 250/ 260/exit/cyan/white";
const char* const box3 = " 400/ 320/ 500/ 350/jump menu 1/orange/orange";

class MenuButtonList : public menu_editor_test {
 protected:
  void open_three() {
    if (p_.List1.empty())
      have_title();
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
  /// The screen's place of a row: its upper part (0.2), its lower part (0.8).
  static wxPoint in_row(int row, double down = 0.5) {
    return ask_ui([row, down] {
      const wxRect r = list().GetItemRect(list().RowToItem(row), list().GetColumn(1));
      return list().ClientToScreen(wxPoint(r.x + 20, r.y + static_cast<int>(r.height * down)));
    });
  }
  /// The actions in the order of the rows.
  static std::string actions() {
    std::string all;
    for (const std::string& row : shown_rows()) {
      const auto begin = row.find('|') + 1;
      all += (all.empty() ? "" : ", ") + row.substr(begin, row.find('|', begin) - begin);
    }
    return all;
  }
  /// `count` buttons of so many looks in turn.
  void open_looks(int count, int looks) {
    std::vector<std::string> records;
    for (int i = 0; i < count; ++i) {
      const int x = 40 + i % 6 * 106, y = 30 + i / 6 * 60;
      records.push_back(" " + std::to_string(x) + "/ " + std::to_string(y) + "/ " +
                        std::to_string(x + 90) + "/ " + std::to_string(y + 20) + "/jump title 1/" +
                        button_colours[static_cast<std::size_t>(i % looks)] + "/white");
    }
    add_menu(real_video(), records);
    open();
  }
  static bool is_cure_shown(const std::string& name) {
    return ask_ui([&] { return control(name)->IsShownOnScreen(); });
  }
  static bool line_comes(const std::string& begin) {
    return wait_until(
        [&] { return utf8_of(control("problems")->GetLabel()).rfind(begin, 0) == 0; });
  }
};

TEST_F(MenuButtonList, RowsTellLookActionAndPlaceAndFollowEachChange) {
  open_three();
  EXPECT_EQ(shown_rows(),
            (std::vector<std::string>{"yellow, white|title 1, chapter 1|100, 100  200 x 60",
                                      "cyan, white|exit|110, 200  140 x 60",
                                      "orange|menu 1|400, 320  100 x 30"}));
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
  EXPECT_EQ(shown_rows()[0], "orange|menu 1|400, 320  100 x 30");
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
  EXPECT_EQ(shown_rows()[0], "yellow, white|title 1, chapter 1|100, 100  140 x 60");
}

TEST_F(MenuButtonList, DuplicateAndRepeatAddButtons) {
  have_title();
  open_three();
  choose(3);
  press("ctrl+d");
  EXPECT_EQ(shown_rows().size(), 4u);
  EXPECT_EQ(shown_rows()[3], "orange|menu 1|400, 360  100 x 30");
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
  EXPECT_EQ(shown_rows()[3], "yellow, white|title 1, chapter 2|100, 170  200 x 60");
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

TEST_F(MenuButtonList, ThirteenthButtonOfA16To9MenuIsToldWhenItIsAddedAndWhenTheVideoBecomes16To9) {
  have_title();
  const std::string video = folder_.path("menu.m2v");
  const auto become = [&](const std::string& other) {
    std::filesystem::copy_file(other, folder_.path("another.m2v"));
    std::filesystem::rename(folder_.path("another.m2v"), video);
  };
  const std::string told = "1 error: the menu has 13 buttons and is 16:9 on the disc";
  become(real_wide_video());
  std::vector<std::string> records;
  for (int i = 0; i < 12; ++i) {
    const int x = 40 + i % 6 * 106, y = 30 + i / 6 * 100;
    records.push_back(" " + std::to_string(x) + "/ " + std::to_string(y) + "/ " +
                      std::to_string(x + 90) + "/ " + std::to_string(y + 20) +
                      "/jump title 1/yellow/white");
  }
  add_menu(video, records);
  open();
  EXPECT_TRUE(line_comes("no problems"))
      << ask_ui([] { return utf8_of(control("problems")->GetLabel()); });
  choose(12);
  press("ctrl+d");
  EXPECT_TRUE(line_comes(told)) << ask_ui([] { return utf8_of(control("problems")->GetLabel()); });
  screenshot("menu-wide-buttons");
  become(real_video());
  type_into("ypos", "202");
  EXPECT_TRUE(line_comes("no problems"))
      << ask_ui([] { return utf8_of(control("problems")->GetLabel()); });
  become(real_wide_video());
  type_into("ypos", "204");
  EXPECT_TRUE(line_comes(told));
  press("ctrl+z");
  press("ctrl+z");
  press("ctrl+z");
  EXPECT_TRUE(line_comes("no problems"));
  EXPECT_EQ(shown_rows().size(), 12u);
}

TEST_F(MenuButtonList, DraggedRowComesWhereTheMarkIsAndTakesItsActionAlong) {
  open_three();
  drag(in_row(2), in_row(0, 0.2));
  EXPECT_EQ(actions(), "menu 1, title 1, chapter 1, exit");
  EXPECT_EQ(selected(), "1");
  EXPECT_EQ(text_of("Combo2"), "button1");
  EXPECT_EQ(text_of("Combo1"), "jump menu 1");
  drag(in_row(0), in_row(2, 0.8));
  EXPECT_EQ(actions(), "title 1, chapter 1, exit, menu 1");
  drag(in_row(0), in_row(1, 0.2));
  EXPECT_EQ(actions(), "title 1, chapter 1, exit, menu 1") << "where it is already";
  press("ctrl+z");
  EXPECT_EQ(actions(), "menu 1, title 1, chapter 1, exit") << "each drag is a step";
  press("ctrl+z");
  EXPECT_EQ(actions(), "title 1, chapter 1, exit, menu 1");
  EXPECT_EQ(stored(), std::string(box1) + "|" + box2 + "|" + box3);
}

TEST_F(MenuButtonList, SelectedRowsAreDraggedTogetherAndAClickOnOneSelectsItAlone) {
  open_three();
  click_button_row(0);
  click_button_row(1, "ctrl");
  EXPECT_EQ(selected(), "1 2");
  drag(in_row(0), in_row(2, 0.8));
  EXPECT_EQ(actions(), "menu 1, title 1, chapter 1, exit");
  EXPECT_EQ(selected(), "2 3");
  press("ctrl+z");
  EXPECT_EQ(actions(), "title 1, chapter 1, exit, menu 1");
  EXPECT_EQ(selected(), "1 2");
  click_button_row(1);
  EXPECT_EQ(selected(), "2");
  EXPECT_EQ(text_of("Combo2"), "button2");
}

TEST_F(MenuButtonList, MarkShowsWhereADragEndsAndEscGivesItUp) {
  open_three();
  const auto mark_at = [] {
    return ask_ui([] {
      const wxWindow* mark = wxWindow::FindWindowByName("dropmark");
      return mark != nullptr && mark->IsShown() ? mark->GetScreenRect().y + mark->GetSize().y / 2
                                                : -1;
    });
  };
  EXPECT_EQ(mark_at(), -1);
  const wxPoint from = in_row(0), to = in_row(2, 0.2), edge = in_row(2, 0);
  click_at(from);
  std::system(("xdotool mousedown 1 mousemove " + std::to_string(from.x) + " " +
               std::to_string(from.y + 8) + " mousemove " + std::to_string(to.x) + " " +
               std::to_string(to.y))
                  .c_str());
  ASSERT_TRUE(wait_until([] { return wxWindow::FindWindowByName("dropmark")->IsShown(); }, 5));
  EXPECT_NEAR(mark_at(), edge.y, 3);
  screenshot("menu-row-drag");
  std::system("xdotool key Escape");  // press() would let go of the button
  EXPECT_TRUE(wait_until([&] {
    const wxWindow* mark = wxWindow::FindWindowByName("dropmark");
    return mark == nullptr || !mark->IsShown();
  }));
  std::system("xdotool mouseup 1");
  EXPECT_EQ(actions(), "title 1, chapter 1, exit, menu 1");
  EXPECT_TRUE(is_open());
}

TEST_F(MenuButtonList, LooksThatSpumuxCannotSortOutAreOrderedByAClickBesideTheProblem) {
  have_title();
  open_looks(36, 6);
  EXPECT_TRUE(line_comes("1 error: the menu has 36 buttons in 6 looks"))
      << ask_ui([] { return utf8_of(control("problems")->GetLabel()); });
  EXPECT_TRUE(is_cure_shown("orderbylook"));
  EXPECT_TRUE(is_cure_shown("fewerlooks"));
  screenshot("menu-looks");
  click_control("orderbylook");
  EXPECT_TRUE(line_comes("no problems"));
  EXPECT_FALSE(is_cure_shown("orderbylook"));
  EXPECT_EQ(shown_rows()[1].substr(0, 12), "black, white");
  EXPECT_EQ(shown_rows()[35].substr(0, 11), "blue, white");
  press("ctrl+z");
  EXPECT_TRUE(line_comes("1 error: the menu has 36 buttons in 6 looks"));
  EXPECT_TRUE(is_cure_shown("orderbylook"));
}

TEST_F(MenuButtonList, ATenthLookIsGivenUpByAClickBesideTheProblem) {
  have_title();
  open_looks(10, 10);
  EXPECT_TRUE(line_comes("1 error: the buttons have 10 pairs"));
  EXPECT_FALSE(is_cure_shown("orderbylook")) << "no order helps";
  EXPECT_EQ(ask_ui([] { return utf8_of(control("fewerlooks")->GetToolTipText()); }),
            "gives button 10 the look of button 1");
  click_control("fewerlooks");
  EXPECT_TRUE(line_comes("no problems"));
  EXPECT_EQ(shown_rows()[9].substr(0, 12), "black, white");
  EXPECT_FALSE(is_cure_shown("fewerlooks"));
}

TEST_F(MenuButtonList, MenuGivesSelectedButtonsTheLookOfTheChosenOne) {
  open_three();
  click_button_row(0);
  click_button_row(2, "ctrl");
  click_menu("buttons", "same look");
  EXPECT_EQ(shown_rows()[0].substr(0, 7), "orange|");
  click_menu("buttons", "order by look");
  EXPECT_EQ(actions(), "title 1, chapter 1, menu 1, exit");
  press("ctrl+z");
  EXPECT_EQ(actions(), "title 1, chapter 1, exit, menu 1");
  press("ctrl+z");
  EXPECT_EQ(shown_rows()[0].substr(0, 13), "yellow, white");
}

// Maximized, the window is as high as the tests' screen, and its width limits the picture.
TEST_F(MenuButtonList, StandsBelowThePictureWhereTheWindowIsHigh) {
  open_three();
  const auto place = [](const char* name) { return control(name)->GetScreenRect(); };
  const auto maximize = [](bool all) {
    on_ui([all] {
      auto* window = dynamic_cast<wxTopLevelWindow*>(control("tsmenu"));
      window->Maximize(all);
    });
  };
  EXPECT_TRUE(ask_ui([&] { return place("buttonlist").x > place("VScroll1").GetRight(); }));
  maximize(true);
  EXPECT_TRUE(wait_until([&] { return place("buttonlist").y > place("zoom").GetBottom(); }));
  EXPECT_TRUE(wait_until([&] {
    const wxRect list = place("buttonlist"), right = place("Command1");
    return std::abs(list.x - place("MediaPlayer1").x) < 3 &&
           std::abs(list.GetRight() - place("VScroll1").GetRight()) < 3 &&
           list.GetRight() < right.x && list.GetBottom() < place("problems").y;
  })) << "as wide as the picture with its bar, which fills the width";
  screenshot("menu-list-below");
  click_button_row(1);
  EXPECT_TRUE(wait_until([] { return list().IsRowSelected(1); }));
  maximize(false);
  EXPECT_TRUE(wait_until([&] {
    return place("buttonlist").x > place("VScroll1").GetRight() &&
           place("buttonlist").GetBottom() < place("Combo2").y;
  }));
}

TEST_F(MenuButtonList, ShowsWordsWholeWhereItIsWide) {
  open_three();
  const auto width = [](unsigned column) { return list().GetColumn(column)->GetWidth(); };
  const int look = ask_ui([&] { return width(1); }), action = ask_ui([&] { return width(2); });
  on_ui([] { dynamic_cast<wxTopLevelWindow*>(control("tsmenu"))->Maximize(); });
  EXPECT_TRUE(wait_until([&] { return width(1) > look + 40 && width(2) > action + 100; }));
}

}  // namespace
}  // namespace corvane::testing_support
