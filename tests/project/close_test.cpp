// Whether the program may end.
#include "project/project_file.h"
#include "project/title_commands.h"
#include "support/command_test.h"

namespace corvane {
namespace {

class Close : public testing_support::command_test {
 protected:
  void expect_question(answer reply) {
    ask.expect(box("Do you want to save project?", icon::exclamation, buttons::yes_no_cancel),
               reply);
  }
  void expect_save_dialog(const std::string& native) {
    ask.expect_save({"save corvane project", testing_support::cvp_filter, ""}, native);
  }
};

TEST_F(Close, ANeverChangedProjectIsNotAskedAbout) {
  EXPECT_TRUE(close_command(doc));
}

TEST_F(Close, ASavedProjectIsNotAskedAbout) {
  add_files_and_title({"a.m2v", "a.ac3"});
  p.saved = 1;
  EXPECT_TRUE(close_command(doc));
}

TEST_F(Close, AProjectWithoutTitlesAndMenusIsNotAskedAboutEvenWhenChanged) {
  p.languagetags = {"Audio tag:\tenglish en"};
  EXPECT_TRUE(close_command(doc));
}

TEST_F(Close, NoEndsTheProgram) {
  add_files_and_title({"a.m2v", "a.ac3"});
  expect_question(answer::no);
  EXPECT_TRUE(close_command(doc));
}

TEST_F(Close, CancelKeepsTheWindowOpen) {
  add_files_and_title({"a.m2v", "a.ac3"});
  expect_question(answer::cancel);
  EXPECT_FALSE(close_command(doc));
}

TEST_F(Close, MenusAloneAreAskedAboutToo) {
  p.menulist = {folder.stored("menu.m2v") + "/"};
  expect_question(answer::cancel);
  EXPECT_FALSE(close_command(doc));
}

TEST_F(Close, YesSavesAndEnds) {
  add_files_and_title({"a.m2v", "a.ac3"});
  expect_question(answer::yes);
  expect_save_dialog(folder.path("disc.cvp"));
  EXPECT_TRUE(close_command(doc));
  EXPECT_EQ(folder.read("disc.cvp"), project_text(p));
}

TEST_F(Close, YesEndsAlsoWhenTheSaveDialogIsCancelled) {
  add_files_and_title({"a.m2v", "a.ac3"});
  expect_question(answer::yes);
  expect_save_dialog("");
  EXPECT_TRUE(close_command(doc));
  EXPECT_EQ(p.saved, 0);
}

TEST_F(Close, YesEndsAlsoWhenTheUserKeepsTheFileThatIsThere) {
  add_files_and_title({"a.m2v", "a.ac3"});
  expect_question(answer::yes);
  expect_save_dialog(folder.add("disc.cvp", "old"));
  ask.expect(box("File exists.  Overwrite?", icon::exclamation, buttons::yes_no), answer::no);
  EXPECT_TRUE(close_command(doc));
  EXPECT_EQ(folder.read("disc.cvp"), "old");
}

TEST_F(Close, YesDoesNotEndWhenTheSaveFails) {
  add_files_and_title({"a.m2v", "a.ac3"});
  expect_question(answer::yes);
  const std::string target = join_path(folder.path("no such folder"), "disc.cvp");
  const failure why = write_file(target, "");
  ASSERT_TRUE(why);
  expect_save_dialog(target);
  expect_error("The project could not be saved to \"" + target + "\": " + *why +
               ".  The file is as it was.");
  EXPECT_FALSE(close_command(doc));
  EXPECT_EQ(p.saved, 0);
}

TEST_F(Close, YesDoesNotEndWhenTheProjectHasMoreMenusThanAFileHolds) {
  p.menulist.assign(100, "C:\\m.m2v/");
  expect_question(answer::yes);
  expect_error("A project file holds at most 99 menus; this project has 100.  Nothing was saved.");
  EXPECT_FALSE(close_command(doc));
}

}  // namespace
}  // namespace corvane
