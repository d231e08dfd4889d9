// Menus from the main window: the picker and the jump-table switch.
#include "ui/command_bars.h"
#include "ui/main_window.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>
#include <wx/menu.h>

#include <filesystem>

namespace corvane::testing_support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* erase_caption = "Please select menu to erase";
class menus : public window_test {
 protected:
  const project& shown() const { return window_->shown_project(); }

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

  static bool region_enabled() {
    return ask_ui([] { return control("Comboregion")->IsEnabled(); });
  }
  bool jumptable_checked() {
    return ask_ui([this] { return window_->bars().item("jumptable")->IsChecked(); });
  }
  std::string preferences() const { return folder_.read("config/corvane/preferences"); }
};

TEST_F(menus, without_menus_remove_shows_nothing) {
  click_menu("menus", "remove titleset menu");
  EXPECT_FALSE(picker_is_shown());
  EXPECT_FALSE(top_dialog().has_value());
}

TEST_F(menus, closing_the_picker_changes_nothing) {
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

TEST_F(menus, erased_menu_is_gone_at_once_and_the_other_keeps_its_numbers) {
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

TEST_F(menus, what_erasing_has_to_tell_stands_over_the_main_window) {
  load(project_with_menus(0));
  std::filesystem::remove(folder_.path("second.m2v"));
  click_menu("menus", "remove titleset menu");
  ASSERT_TRUE(picker_comes(erase_caption));
  press("Return");
  answer_message(folder_.path("second.m2v") + " appears to be missing", "OK");
  EXPECT_FALSE(picker_is_shown());
  EXPECT_THAT(shown().menulist, ElementsAre(folder_.stored("second.m2v") + "/"));
}

TEST_F(menus, region_stays_frozen_while_titles_remain) {
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

TEST_F(menus, jump_table_is_explained_checked_and_remembered) {
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

TEST_F(menus, jump_table_stays_as_it_is_once_there_are_menus) {
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
