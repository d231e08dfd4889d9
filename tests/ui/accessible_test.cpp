// The windows as a screen reader is told of them, over the accessibility bus: each control that a
// person uses has its role and a name. Runs on a bus of its own (tests/ui/CMakeLists.txt) and is
// skipped where there is none.
#include "platform/files/program_folder.h"
#include "ui/editor/menu_windows.h"
#include "ui/import/import_window.h"
#include "ui/main_window.h"
#include "ui/maker/maker_window.h"
#include "ui/still/still_window.h"
#include "ui/subtitles/clean_subtitles_window.h"
#include "ui/subtitles/language_window.h"
#include "ui/subtitles/subtitles_window.h"
#include "ui/video/chapter_window.h"
#include "ui/widgets/search_list.h"
#include "ui/window_fixture.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/combobox.h>
#include <wx/listbox.h>
#include <wx/slider.h>
#include <wx/spinctrl.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <unistd.h>
#include <vector>

namespace corvane::testing_support {
namespace {

/// "<role>\t<name>" of all that is told.
std::set<std::string> told() {
  const auto reader = std::filesystem::path(own_executable()).parent_path() / "read_accessible";
  const std::string command = "'" + reader.string() + "' " + std::to_string(getpid());
  std::set<std::string> lines;
  FILE* pipe = popen(command.c_str(), "r");
  char line[4096];
  while (std::fgets(line, sizeof line, pipe) != nullptr) {
    std::string text(line);
    if (!text.empty() && text.back() == '\n')
      text.pop_back();
    lines.insert(text);
  }
  EXPECT_EQ(pclose(pipe), 0) << command;
  return lines;
}

/// The role of a control, as the bus names it; empty: not one that a person uses.
std::string role_of(const wxWindow& control) {
  const auto is = [&control](auto* type) {
    return dynamic_cast<decltype(type)>(&control) != nullptr;
  };
  if (is(static_cast<const search_list*>(nullptr)) || is(static_cast<const wxChoice*>(nullptr)) ||
      is(static_cast<const wxComboBox*>(nullptr)))
    return "combo box";
  if (is(static_cast<const wxButton*>(nullptr)))
    return "push button";
  if (is(static_cast<const wxCheckBox*>(nullptr)))
    return "check box";
  if (is(static_cast<const wxSlider*>(nullptr)))
    return "slider";
  if (is(static_cast<const wxSpinCtrl*>(nullptr)))
    return "spin button";
  if (is(static_cast<const wxListBox*>(nullptr)))
    return "tree table|table|list";
  if (is(static_cast<const wxTextCtrl*>(nullptr)))
    return "text";
  const std::string name = control.GetName().ToStdString();
  if (name == "MediaPlayer1" || name == "preview" || name == "itempicture" || name == "page")
    return "drawing area";
  return {};
}

/// Roles (some, with "|" between) and name of each such control that is shown in a window.
void gather(const wxWindow& window, std::vector<std::pair<std::string, std::string>>& all) {
  for (const wxWindow* child : window.GetChildren()) {
    if (!child->IsShown() || child->IsTopLevel())
      continue;
    const std::string role = role_of(*child);
    if (role.empty())
      gather(*child, all);
    else if (child->GetId() == wxID_CANCEL || child->GetId() == wxID_CLOSE)
      all.emplace_back(role, wxControl::GetLabelText(child->GetLabel()).ToStdString());
    else
      all.emplace_back(role, child->GetName().ToStdString());
  }
}

bool is_told(const std::set<std::string>& lines, const std::string& roles,
             const std::string& name) {
  for (std::size_t begin = 0; begin <= roles.size();) {
    const std::size_t end = std::min(roles.find('|', begin), roles.size());
    if (lines.count(roles.substr(begin, end - begin) + "\t" + name) > 0)
      return true;
    begin = end + 1;
  }
  return false;
}

class ReadAloud : public window_test {
 protected:
  void SetUp() override {
    if (std::getenv("DBUS_SESSION_BUS_ADDRESS") == nullptr ||
        std::getenv("NO_AT_BRIDGE") != nullptr)
      GTEST_SKIP() << "no accessibility bus";
    window_test::SetUp();
    load(project_with_menus(2));
    on_ui([this] { window_->select_title(0); });
  }
  void TearDown() override {
    if (window_ != nullptr)
      window_test::TearDown();
  }
  void start(const std::function<void(main_window&)>& command) {
    on_ui([&] { window_->CallAfter([this, command] { command(*window_); }); });
  }
  static void expect_told(const char* window, std::size_t at_least) {
    ASSERT_TRUE(window_comes(window));
    std::vector<std::pair<std::string, std::string>> controls;
    on_ui([&] { gather(*control(window), controls); });
    EXPECT_GE(controls.size(), at_least) << window;
    const std::set<std::string> lines = told();
    for (const auto& [role, name] : controls)
      EXPECT_TRUE(is_told(lines, role, name)) << window << ": " << role << " " << name;
    if (testing::Test::HasFailure())
      for (const std::string& line : lines)
        std::printf("%s\n", line.c_str());
  }
  static void expect_told_and_close(const char* window, std::size_t at_least) {
    expect_told(window, at_least);
    close(window);
    EXPECT_TRUE(window_goes(window));
  }
};

TEST_F(ReadAloud, MainWindow) {
  expect_told("main", 4);
}

TEST_F(ReadAloud, WhatTheSelectedTitleHolds) {
  ASSERT_TRUE(wait_until([] { return wxWindow::FindWindowByName("itemdetails") != nullptr; }));
  const std::set<std::string> lines = told();
  EXPECT_TRUE(is_told(lines, "text", "itemdetails"));
  EXPECT_TRUE(is_told(lines, "tree table|table|list", "menuslist"));
  EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [](const std::string& line) {
    return line.starts_with("holds\ttitle 1|");
  })) << "its text is read aloud";
}

TEST_F(ReadAloud, Subtitles) {
  start(edit_subtitles);
  expect_told_and_close("Subtitles", 18);
}

TEST_F(ReadAloud, CleanedSubtitles) {
  project p = project_with_menus(1);
  p.subtitledata[0] = folder_.stored("film.srt");
  folder_.add("film.srt", "1\n00:00:01,000 --> 00:00:02,000\n{\\an8}a\n\n");
  load(p);
  start([](main_window& main) { clean_subtitles_of(main, 1, 1); });
  expect_told_and_close("cleansubtitles", 7);
}

TEST_F(ReadAloud, LanguageTags) {
  start(edit_languages);
  expect_told_and_close("language", 7);
}

TEST_F(ReadAloud, Chapters) {
  start(edit_chapters);
  expect_told_and_close("chapter", 5);
}

TEST_F(ReadAloud, NavigationCommands) {
  start(edit_navcommands);
  expect_told_and_close("navcommands", 6);
}

TEST_F(ReadAloud, MenuEditor) {
  start([](main_window& main) { edit_menu_at(main, 1, 1); });
  expect_told_and_close("tsmenu", 18);
}

TEST_F(ReadAloud, Import) {
  start([](main_window& main) { open_import(main, {real_pal_video()}); });
  expect_told_and_close("import", 14);
}

TEST_F(ReadAloud, MenuMaker) {
  start(open_menu_maker);
  expect_told_and_close("menumaker", 14);
}

TEST_F(ReadAloud, StillOfAPicture) {
  const std::string picture = folder_.path("still.png");
  ASSERT_EQ(std::system(("convert -size 120x90 xc:red '" + picture + "'").c_str()), 0);
  start([&](main_window& main) { open_still_window(main, picture, false); });
  expect_told_and_close("still", 8);
}

TEST_F(ReadAloud, Findings) {
  start([](main_window& main) { main.check_project(); });
  expect_told_and_close("findings", 5);
}

TEST_F(ReadAloud, MapOfTheDisc) {
  start([](main_window& main) { main.show_disc_map(); });
  expect_told_and_close("discmap", 7);
}

}  // namespace
}  // namespace corvane::testing_support
