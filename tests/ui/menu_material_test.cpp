// Menus moved, copied and given other streams in the main window.
#include "platform/files/paths.h"
#include "project/menu_rows.h"
#include "ui/main_window.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>
#include <wx/listbox.h>
#include <wx/statusbr.h>

#include <filesystem>

namespace corvane::testing_support {
namespace {

using testing::ElementsAre;

class MenuMaterialWindow : public window_test {
 protected:
  void SetUp() override {
    window_test::SetUp();
    project p = project_with_menus(1);
    p.menubuttons = {" 0/ 0/ 100/ 3/jump menu 2/black/black", " 0/ 0/ 100/ 3/jump menu 1/red/red"};
    load(p);
  }
  const project& shown() const { return window_->shown_project(); }
  std::vector<std::string> videos() const {
    std::vector<std::string> names;
    for (const std::string& row : shown().menulist)
      names.emplace_back(file_name_of(parse_menu_row(row).video));
    return names;
  }
  static int selected() {
    return ask_ui([] { return dynamic_cast<wxListBox*>(control("menuslist"))->GetSelection(); });
  }
  static void select(int row) {
    on_ui([row] {
      auto* list = dynamic_cast<wxListBox*>(control("menuslist"));
      list->SetFocus();
      list->SetSelection(row);
    });
  }
  bool is_told(const std::string& text) {
    return wait_until([&] { return utf8_of(window_->GetStatusBar()->GetStatusText()) == text; });
  }
  /// The bar's tip, of what it had to shorten.
  std::string tip() const {
    return ask_ui([this] { return utf8_of(window_->GetStatusBar()->GetToolTipText()); });
  }
  void click_menus(const char* item) { click_menu("menus", item); }
};

TEST_F(MenuMaterialWindow, AMenuMovesWithWhatNamesItAndItIsTold) {
  select(1);
  click_menus("move menu up");
  EXPECT_TRUE(is_told(
      "Menu 2 is menu 1 now; 2 buttons go along.  The first menu is \"second.m2v\" now: the "
      "menu key and the beginning of the disc lead to it."));
  EXPECT_THAT(videos(), ElementsAre("second.m2v", "intro.m2v"));
  EXPECT_EQ(selected(), 0) << "the moved menu stays selected";
  EXPECT_EQ(shown().menubuttons[0], " 0/ 0/ 100/ 3/jump menu 2/red/red");
  screenshot("menu-moved");
  click_menus("move menu down");
  EXPECT_TRUE(wait_until([this] { return videos().front() == "intro.m2v"; }));
  EXPECT_EQ(selected(), 1);
  press("ctrl+z");
  EXPECT_TRUE(wait_until([this] { return videos().front() == "second.m2v"; }));
}

TEST_F(MenuMaterialWindow, ASentenceThatTheStatusBarCutsIsReadWholeInItsTip) {
  select(1);
  click_menus("move menu up");
  const std::string told =
      "Menu 2 is menu 1 now; 2 buttons go along.  The first menu is \"second.m2v\" now: the menu "
      "key and the beginning of the disc lead to it.";
  EXPECT_TRUE(is_told(told));
  EXPECT_TRUE(tip().starts_with(told)) << tip();
  hover_at(ask_ui([this] { return window_->GetStatusBar()->GetScreenPosition() + wxPoint(9, 9); }));
  screenshot("menu-moved-tip");
  select(1);
  click_menus("change audio of menu...");
  answer_message_with("Menu 2 plays", "No");
  EXPECT_TRUE(is_told("Menu 2 plays without audio now."));
  EXPECT_FALSE(tip().starts_with("Menu 2")) << "what has room needs none";
}

TEST_F(MenuMaterialWindow, WithoutASelectedMenuOneIsPicked) {
  click_row(0, "main");
  click_menus("copy menu");
  ASSERT_TRUE(wait_for_dialog("Please select menu to copy"));
  click_row(1, "menuselect");
  press("alt+o");
  EXPECT_TRUE(wait_until([this] { return shown().menulist.size() == 3; }));
  EXPECT_THAT(videos(), ElementsAre("intro.m2v", "second.m2v", "second.m2v"));
  EXPECT_EQ(shown().menubuttons[2], shown().menubuttons[1]);
  EXPECT_TRUE(
      is_told("Menu 3 is a copy of menu 2, with the same video and audio and with buttons "
              "of its own.  Nothing leads to it yet."));
}

TEST_F(MenuMaterialWindow, AnotherVideoKeepsTheButtons) {
  std::filesystem::copy_file(real_video(), folder_.path("new.m2v"));
  select(0);
  click_menus("change video of menu...");
  answer_file("select video stream for menu 1", folder_.path("new.m2v"));
  EXPECT_TRUE(wait_until([this] { return videos().front() == "new.m2v"; }));
  EXPECT_EQ(shown().menubuttons[0], " 0/ 0/ 100/ 3/jump menu 2/black/black");
  EXPECT_EQ(selected(), 0);
  click_menus("change video of menu...");
  answer_file("select video stream for menu 1", real_pal_video());
  const seen_dialog refused = answer_message_with("cannot be the video of menu 1", "OK");
  EXPECT_EQ(refused.picture, "warning");
  EXPECT_EQ(videos().front(), "new.m2v");
}

TEST_F(MenuMaterialWindow, AudioIsTakenAwayAfterAQuestion) {
  select(0);
  click_menus("change audio of menu...");
  answer_message_with("Menu 1 plays \"intro.ac3\".", "No");
  EXPECT_TRUE(is_told("Menu 1 plays without audio now."));
  EXPECT_TRUE(parse_menu_row(shown().menulist[0]).audio.empty());
  click_menus("change audio of menu...");
  answer_file("select audio stream for menu 1", real_audio());
  EXPECT_TRUE(wait_until([this] { return !parse_menu_row(shown().menulist[0]).audio.empty(); }));
}

}  // namespace
}  // namespace corvane::testing_support
