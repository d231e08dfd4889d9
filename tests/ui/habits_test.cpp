// What people are used to: undo, save in place, a list that is worked with by mouse and keys, a
// program that tells where its work is and that brings back what was not saved.
#include "platform/files/files.h"
#include "project/project_file.h"
#include "project/recent_projects.h"
#include "project/recovery.h"
#include "project/title_rows.h"
#include "ui/command_bars.h"
#include "ui/main_window.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>
#include <wx/menu.h>
#include <wx/menuitem.h>
#include <wx/statusbr.h>
#include <wx/toplevel.h>

#include <filesystem>

namespace corvane::testing_support {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

class Habits : public window_test {
 protected:
  std::string path(const std::string& name) { return folder_.path(name); }
  const project& shown() const { return window_->shown_project(); }

  std::string status(int pane) const {
    return ask_ui([&] { return utf8_of(window_->GetStatusBar()->GetStatusText(pane)); });
  }
  std::string label_of_item(const char* name) const {
    return ask_ui([&] { return utf8_of(window_->bars().item(name)->GetItemLabelText()); });
  }
  bool is_enabled(const char* name) const {
    return ask_ui([&] { return window_->bars().item(name)->IsEnabled(); });
  }
  static bool rows_become(const std::vector<std::string>& wanted) {
    return eventually([&] { return rows() == wanted; });
  }
  static std::string focus() {
    return ask_ui([] {
      const wxWindow* const focus = wxWindow::FindFocus();
      return focus == nullptr ? std::string() : utf8_of(focus->GetName());
    });
  }
};

TEST_F(Habits, KeysUndoAndRedoWhatMenusName) {
  load(project_with_menus(2));
  EXPECT_EQ(label_of_item("undo"), "undo load project");
  click_row(0, "main");
  press("Delete");
  EXPECT_TRUE(rows_become({"title1:b.m2v/b.ac3"}));
  EXPECT_EQ(label_of_item("undo"), "undo remove title");
  press("ctrl+z");
  EXPECT_TRUE(rows_become({"title1:a.m2v/a.ac3", "title2:b.m2v/b.ac3"}));
  EXPECT_EQ(label_of_item("redo"), "redo remove title");
  press("ctrl+y");
  EXPECT_TRUE(rows_become({"title1:b.m2v/b.ac3"}));
  press("ctrl+z");
  EXPECT_TRUE(rows_become({"title1:a.m2v/a.ac3", "title2:b.m2v/b.ac3"}));
  press("ctrl+shift+z");
  EXPECT_TRUE(rows_become({"title1:b.m2v/b.ac3"}));
  EXPECT_FALSE(is_enabled("redo"));
}

TEST_F(Habits, WhatAWindowHasDoneIsOneStep) {
  load(project_with_menus(1));
  click_row(0, "main");
  press("ctrl+g");
  ASSERT_TRUE(window_comes("language"));
  EXPECT_FALSE(ask_ui([this] { return window_->may_command(); })) << "nothing is undone under it";
  click_button("add audio tag");
  click_button("add sub tag");
  click_button("accept");
  ASSERT_TRUE(window_goes("language"));
  EXPECT_THAT(shown().languagetags, SizeIs(2));
  EXPECT_EQ(label_of_item("undo"), "undo edit language tags");
  press("ctrl+z");
  EXPECT_TRUE(eventually([this] { return shown().languagetags.empty(); }));
}

TEST_F(Habits, TheStatusBarNamesTheFileAndWhetherItIsSaved) {
  EXPECT_EQ(status(1), "no project file");
  load(project_with_menus(1));
  EXPECT_EQ(status(1), "disc.cvp (" + path("") + ")");
  click_menu("file", "create iso after authoring");
  EXPECT_TRUE(eventually([&] { return status(1) == "disc.cvp, not saved (" + path("") + ")"; }))
      << status(1);
  press("ctrl+s");
  EXPECT_TRUE(eventually([&] { return status(1) == "disc.cvp (" + path("") + ")"; }));
  EXPECT_THAT(folder_.read("disc.cvp"), HasSubstr("\r\nTrue\r\nFalse\r\n"));
}

TEST_F(Habits, RecentProjectsAreOpenedFromTheMenu) {
  const project one = project_with_menus(1);
  load(one);
  click_menu("file", "new project");
  EXPECT_TRUE(rows_become({}));
  EXPECT_EQ(status(1), "no project file");
  ASSERT_TRUE(is_enabled("recent"));
  on_ui([this] {
    wxMenu* const recent = window_->bars().item("recent")->GetSubMenu();
    const wxMenuItem* const last = recent->FindItemByPosition(0);
    EXPECT_EQ(utf8_of(last->GetItemLabelText()), path("disc.cvp"));
    recent->CallAfter([recent, id = last->GetId()] { recent->SendEvent(id); });
  });
  EXPECT_TRUE(rows_become({"title1:a.m2v/a.ac3"}));
}

TEST_F(Habits, TheListHasTheKeysAtStartWithoutAProject) {
  EXPECT_TRUE(eventually([] { return focus() == "List1"; })) << focus();
}

TEST_F(Habits, DownGoesToTheFirstTitleWhenNoneIsSelected) {
  load(project_with_menus(2));
  ASSERT_TRUE(eventually([] { return focus() == "List1"; })) << focus();
  ASSERT_EQ(selection(), -1);
  press("Down");
  EXPECT_EQ(selection(), 0);
  EXPECT_EQ(shown().selected, 0);
  press("Down");
  EXPECT_EQ(selection(), 1);
}

TEST_F(Habits, TheNextTitleIsSelectedWhenOneIsRemoved) {
  load(project_with_menus(3));
  click_row(1, "main");
  press("Delete");
  EXPECT_TRUE(rows_become({"title1:a.m2v/a.ac3", "title2:c.m2v/c.ac3"}));
  EXPECT_EQ(selection(), 1);
  press("Delete");
  EXPECT_TRUE(rows_become({"title1:a.m2v/a.ac3"}));
  EXPECT_EQ(selection(), 0);
}

TEST_F(Habits, ATitleIsDraggedToAnotherRow) {
  load(project_with_menus(3));
  drag(middle_of_row(0, "main"), middle_of_row(2, "main"));
  EXPECT_TRUE(rows_become({"title1:b.m2v/b.ac3", "title2:c.m2v/c.ac3", "title3:a.m2v/a.ac3"}));
  EXPECT_EQ(selection(), 2);
  press("ctrl+z");
  EXPECT_TRUE(rows_become({"title1:a.m2v/a.ac3", "title2:b.m2v/b.ac3", "title3:c.m2v/c.ac3"}))
      << "one step";
}

TEST_F(Habits, ADoubleClickOpensTheChaptersOfATitle) {
  load(project_with_menus(1));
  double_click_row(0, "main");
  EXPECT_TRUE(window_comes("chapter"));
  close("chapter");
  EXPECT_TRUE(window_goes("chapter"));
}

TEST_F(Habits, ATitleHasAMenuOfItsOwn) {
  load(project_with_menus(2));
  right_click_at(middle_of_row(1, "main"));
  click_menu_item("move up");
  EXPECT_TRUE(rows_become({"title1:b.m2v/b.ac3", "title2:a.m2v/a.ac3"}));
}

TEST_F(Habits, CommandsThatAddingATitleRemovesAreToldAndComeBack) {
  project p = project_with_menus(1);
  p.postinfo = {"call menu                "};
  load(p);
  add_title(file("new.m2v"), file("new.ac3"));
  hover_at(middle_of_row(0, "main"));  // the tool that was clicked shows its own text
  EXPECT_TRUE(eventually([&] { return status(0).starts_with("The command after a title was "); }))
      << status(0);
  press("ctrl+z");
  EXPECT_TRUE(eventually([&] { return shown().postinfo == p.postinfo; }));
}

TEST_F(Habits, CommandsThatLeadElsewhereAreNamedAndCarriedAlongByOneClick) {
  project p = project_with_menus(2);
  load(p);
  click_row(0, "main");
  press("alt+Down");
  ASSERT_TRUE(wait_until([] { return is_seen("notice"); }));
  click_button("carry them along");
  EXPECT_TRUE(eventually([&] {
    return shown().menubuttons[0].find("jump title 2") != std::string::npos;
  })) << shown().menubuttons[0];
  EXPECT_TRUE(wait_until([] { return !is_seen("notice"); }));
  EXPECT_EQ(label_of_item("undo"), "undo carry commands along");
}

TEST_F(Habits, FilesThatHaveMovedAreFoundByOneQuestion) {
  const project p = project_with_menus(2);
  folder_.add("disc.cvp", project_text(p));
  std::filesystem::create_directories(path("new"));
  for (const char* const name : {"a.m2v", "a.ac3", "b.m2v", "b.ac3"})
    std::filesystem::rename(path(name), path(std::string("new/") + name));
  on_ui([this] { window_->CallAfter([this] { window_->load(path("disc.cvp")); }); });
  find_missing_files(path("new"));
  EXPECT_TRUE(rows_become({"title1:a.m2v/a.ac3", "title2:b.m2v/b.ac3"}));
  EXPECT_EQ(shown().List11[0], folder_.stored("new/a.m2v") + "/" + folder_.stored("new/a.ac3"));
  EXPECT_FALSE(top_dialog());
}

TEST_F(Habits, FileDialogsOpenWhereTheyWereLeftAndProjectsWhereTheirFileIs) {
  const std::string projects = path("projects"), films = path("films");
  for (const char* const name : {"films/a.m2v", "sounds/a.ac3"})
    folder_.add(name);
  std::filesystem::create_directories(projects);
  const auto opens_in = [](const std::string& folder) {
    EXPECT_TRUE(eventually([&] {
      const auto dialog = top_dialog();
      return dialog && dialog->folder == folder;
    })) << folder
        << ", not " << top_dialog().value_or(seen_dialog()).folder;
  };
  add_title(path("films/a.m2v"), path("sounds/a.ac3"));
  press("ctrl+shift+s");
  answer_file("save corvane project", projects + "/disc.cvp");
  EXPECT_TRUE(no_dialog());
  press("ctrl+t");
  ASSERT_TRUE(wait_for_dialog("select video stream"));
  opens_in(films);
  cancel_dialog("select video stream");
  press("ctrl+shift+s");
  ASSERT_TRUE(wait_for_dialog("save corvane project"));
  opens_in(projects);
  cancel_dialog("save corvane project");
}

TEST_F(Habits, TheListHasTheKeysAfterALoadAtTheStart) {
  folder_.add("disc.cvp", project_text(project_with_menus(1)));
  on_ui([this] { window_->CallAfter([this] { window_->begin({}, path("disc.cvp")); }); });
  EXPECT_TRUE(rows_become({"title1:a.m2v/a.ac3"}));
  EXPECT_TRUE(eventually([] { return focus() == "List1"; })) << focus();
}

// Kept for the case that the program dies ---------------------------------------------------------

TEST_F(Habits, WhatStandsInAnOpenWindowIsKept) {
  load(project_with_menus(1));
  click_row(0, "main");
  press("ctrl+h");
  ASSERT_TRUE(window_comes("chapter"));
  press("ctrl+End");
  type_text("00:05:00");
  const std::string kept = app_ + "/kept/1/project.kept";
  EXPECT_TRUE(eventually([&] {
    const auto text = read_file(kept, 1 << 20);
    return text && text->find("00:00:00.00,00:05:00\r\n") != std::string::npos;
  }));
  const auto text = read_file(kept, 1 << 20);
  ASSERT_TRUE(text) << text.error;
  EXPECT_THAT(*text, StartsWith("Corvane kept project 2\n" + path("disc.cvp") + "\nchapters\n"));
  close("chapter");
  EXPECT_TRUE(window_goes("chapter"));
  EXPECT_TRUE(eventually([&] { return !file_exists(kept); })) << "nothing is lost any more";
}

TEST_F(Habits, AProjectThatWasLeftIsBroughtBackAtTheStart) {
  project p = project_with_menus(1);
  { recovery(app_ + "/kept").keep({path("disc.cvp"), "", project_text(p)}); }
  on_ui([this] { window_->CallAfter([this] { window_->begin({}, {}); }); });
  answer_message(
      "The project \"" + path("disc.cvp") +
          "\" had changes that were not saved when Corvane ended.\n\nDo you want to bring "
          "them back?  With No they are gone for good.",
      "Yes");
  EXPECT_TRUE(rows_become({"title1:a.m2v/a.ac3"}));
  EXPECT_TRUE(eventually([&] { return status(1) == "disc.cvp, not saved (" + path("") + ")"; }));
}

// Boxes belong to the window that asks ------------------------------------------------------------

TEST_F(Habits, EachMessageOfAConversationBelongsToItsWindow) {
  load(project_with_menus(1));
  click_row(0, "main");
  press("ctrl+b");
  ASSERT_TRUE(window_comes("Subtitles"));
  click_button("add text subtitle");
  ASSERT_TRUE(wait_for_dialog("open compatible text subtitles"));
  EXPECT_EQ(top_dialog()->over, "Subtitles");
  folder_.add("umlaut.srt", "1\n00:00:00,100 --> 00:00:01,000\n\xC3\xBC\n\n");
  answer_file("open compatible text subtitles", path("umlaut.srt"));
  ASSERT_TRUE(eventually([] {
    const auto asked = top_dialog();
    return asked && !asked->chooses_file;
  }));
  EXPECT_EQ(top_dialog()->over, "Subtitles") << "the second one, too";
  press("Return");
  EXPECT_TRUE(no_dialog());
}

}  // namespace
}  // namespace corvane::testing_support
