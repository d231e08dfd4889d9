// Saving: the conversation, and a target that keeps its old bytes when it fails.
#include "project/project_file.h"
#include "sample_project.h"
#include "support/command_test.h"

#include <filesystem>

namespace corvane {
namespace {

using testing_support::sample_project;
using testing_support::sample_project_text;

class SaveProject : public testing_support::command_test {
 protected:
  void expect_save_dialog(const std::string& native) {
    ask.expect_save({"save corvane project", testing_support::cvp_filter, ""}, native);
  }
  void expect_overwrite_question(answer reply) {
    ask.expect(box("File exists.  Overwrite?", icon::exclamation, buttons::yes_no), reply);
  }
  void expect_failure(const std::string& target, const std::string& why) {
    expect_error("The project could not be saved to \"" + target + "\": " + why +
                 ".  The file is as it was.");
  }
};

TEST_F(SaveProject, WritesTheWholeTextAndSetsTheSavedFlag) {
  p = sample_project("C:\\dvd");
  expect_save_dialog(folder.path("disc.cvp"));
  saveproject_command(doc);
  EXPECT_EQ(folder.read("disc.cvp"), sample_project_text("C:\\dvd"));
  EXPECT_EQ(p.saved, 1);
  EXPECT_EQ(files_in(folder.path()), std::vector<std::string>{"disc.cvp"});
}

TEST_F(SaveProject, CancelledDialogDoesNothing) {
  expect_save_dialog("");
  saveproject_command(doc);
  EXPECT_EQ(p.saved, 0);
}

TEST_F(SaveProject, ExistingFileIsReplacedOnlyOnYes) {
  const std::string target = folder.add("disc.cvp", "old");
  expect_save_dialog(target);
  expect_overwrite_question(answer::no);
  saveproject_command(doc);
  EXPECT_EQ(folder.read("disc.cvp"), "old");
  EXPECT_EQ(p.saved, 0);

  expect_save_dialog(target);
  expect_overwrite_question(answer::yes);
  saveproject_command(doc);
  EXPECT_EQ(folder.read("disc.cvp"), project_text(p));
  EXPECT_EQ(p.saved, 1);
}

TEST_F(SaveProject, TheNameIsTakenAsItIs) {
  const std::string name = "M\xC3\xBCller & S\xC3\xB6hne, it's 100% (1)";
  expect_save_dialog(folder.path(name));
  saveproject_command(doc);
  EXPECT_EQ(folder.read(name), project_text(p));
}

TEST_F(SaveProject, AFolderThatIsNotThereIsToldAndTheProjectStaysUnsaved) {
  const std::string target = join_path(folder.path("gone"), "disc.cvp");
  const failure why = write_file(target, "");
  ASSERT_TRUE(why);
  expect_save_dialog(target);
  expect_failure(target, *why);
  saveproject_command(doc);
  EXPECT_EQ(p.saved, 0);
}

TEST_F(SaveProject, AFailedSaveLeavesTheSavedFlagOfAnEarlierOne) {
  p.saved = 1;
  const std::string target = join_path(folder.path("gone"), "disc.cvp");
  expect_save_dialog(target);
  expect_failure(target, *write_file(target, ""));
  saveproject_command(doc);
  EXPECT_EQ(p.saved, 1);
}

TEST_F(SaveProject, AFolderOfThatNameIsNoTarget) {
  const std::string target = folder.path("disc.cvp");
  std::filesystem::create_directories(path_of(target));
  expect_save_dialog(target);
  expect_failure(target, "it is a folder, not a file");
  saveproject_command(doc);
  EXPECT_TRUE(folder_exists(target));
  EXPECT_EQ(p.saved, 0);
}

TEST_F(SaveProject, AHundredMenusAreRefusedBeforeAnythingIsAsked) {
  p.menulist.assign(100, "C:\\m.m2v/");
  expect_error("A project file holds at most 99 menus; this project has 100.  Nothing was saved.");
  EXPECT_EQ(save_project(doc), save_outcome::failed);
  EXPECT_EQ(p.saved, 0);
}

TEST_F(SaveProject, ButtonsBeyondTheLastMenuNumberAreRefusedToo) {
  p.menubuttons.assign(120, "");
  p.menubuttons[104] = " 0/0/100/3/exit/black/black";
  expect_error("A project file holds at most 99 menus; this project has 105.  Nothing was saved.");
  EXPECT_EQ(save_project(doc), save_outcome::failed);
}

TEST_F(SaveProject, OutcomesAreToldApart) {
  expect_save_dialog("");
  EXPECT_EQ(save_project(doc), save_outcome::given_up);
  expect_save_dialog(folder.add("disc.cvp"));
  expect_overwrite_question(answer::no);
  EXPECT_EQ(save_project(doc), save_outcome::given_up);
  expect_save_dialog(folder.path("new.cvp"));
  EXPECT_EQ(save_project(doc), save_outcome::saved);
}

}  // namespace
}  // namespace corvane
