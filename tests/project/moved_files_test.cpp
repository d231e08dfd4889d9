// Files of a project that are somewhere else now.
#include "project/moved_files.h"

#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/dropped_files.h"
#include "project/file_lookup.h"
#include "project/project_file.h"
#include "project/title_commands.h"
#include "support/command_test.h"

#include <gmock/gmock.h>

namespace corvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// Answers the questions about missing files with these folders, one after the other.
class knows_folders : public testing_support::scripted_prompts {
 public:
  std::string folder_of_missing(const missing_question& question) override {
    asked.push_back(question.files);
    found.push_back(question.found);
    if (folders.empty())
      return {};
    std::string folder = folders.front();
    folders.erase(folders.begin());
    return folder;
  }
  std::vector<std::string> folders;
  std::vector<std::vector<std::string>> asked;
  std::vector<std::size_t> found;
};

class MovedFiles : public testing_support::command_test {
 protected:
  /// A project file that names files of the folder "old", none of which is there.
  std::string project_of_old() {
    project old;
    add_title(old, stored("old/a.m2v") + "/" + stored("old/a.ac3"));
    add_title(old, stored("old/b.vob"));
    old.menulist = {stored("old/menu.m2v") + "/"};
    old.moremenuoptions = {"0\t00:00:00.0\t00:00:00.0\t1"};
    old.menubuttons = {" 0/ 0/ 99/ 9/exit/" + stored("old/look.bmp") + "/black"};
    old.subtitledata[0] = stored("old/a.srt");
    return folder.add("disc.cvp", project_text(old));
  }
  /// Of a name with "/" between its folders.
  static std::string native(const std::string& name) {
    return native_style() == path_style::windows ? replace_all(name, "/", "\\") : name;
  }
  std::string path(const std::string& name) const { return folder.path(native(name)); }
  std::string stored(const std::string& name) const { return folder.stored(native(name)); }
  void add_all(const std::string& where) {
    for (const char* const name : {"a.m2v", "a.ac3", "b.vob", "menu.m2v", "look.bmp", "a.srt"})
      folder.add(where + "/" + name);
  }

  knows_folders user;
  prompts_relay::answered_by answers{doc.ask, user};
};

TEST_F(MovedFiles, OneQuestionForTheFolderTakesAllThatAreFoundThere) {
  const std::string file = project_of_old();
  add_all("elsewhere/films");
  user.folders = {path("elsewhere")};
  EXPECT_TRUE(loadprojectf(doc, file));
  ASSERT_THAT(user.asked, SizeIs(1));
  EXPECT_THAT(user.asked[0], SizeIs(6));
  EXPECT_THAT(p.List11,
              ElementsAre(stored("elsewhere/films/a.m2v") + "/" + stored("elsewhere/films/a.ac3"),
                          stored("elsewhere/films/b.vob")));
  EXPECT_EQ(p.List1[1], "title2:b.vob");
  EXPECT_THAT(p.menulist, ElementsAre(stored("elsewhere/films/menu.m2v") + "/"));
  EXPECT_THAT(p.menubuttons,
              ElementsAre(" 0/ 0/ 99/ 9/exit/" + stored("elsewhere/films/look.bmp") + "/black"));
  EXPECT_EQ(p.subtitledata[0], stored("elsewhere/films/a.srt"));
  EXPECT_TRUE(doc.is_unsaved()) << "the file names other places";
}

TEST_F(MovedFiles, WhatIsNotFoundIsAskedAboutAgainAndThenTold) {
  const std::string file = project_of_old();
  add_all("elsewhere");
  remove_all(path("elsewhere/b.vob"));
  user.folders = {path("elsewhere")};
  user.expect(box(path("old/b.vob") + " appears to be missing", icon::critical));
  EXPECT_FALSE(loadprojectf(doc, file));
  ASSERT_THAT(user.asked, SizeIs(2));
  EXPECT_THAT(user.asked[1], ElementsAre(path("old/b.vob")));
  EXPECT_THAT(user.found, ElementsAre(0u, 5u));
  EXPECT_THAT(p.List11, IsEmpty());
}

TEST_F(MovedFiles, OfSeveralTheOneWithTheSameFoldersIsTaken) {
  folder.add("new/1/old/a.m2v");
  folder.add("new/2/other/a.m2v");
  folder.add("new/1/b.vob");
  folder.add("new/2/b.vob");
  const std::vector<std::string> missing = {stored("old/a.m2v"), stored("old/b.vob")};
  EXPECT_THAT(look_for(missing, path("new")),
              ElementsAre(found_file{stored("old/a.m2v"), stored("new/1/old/a.m2v")}))
      << "two places for the other are alike";
}

TEST_F(MovedFiles, AreOfferedBeforeTheMessagesOfACommandAndOnceOnly) {
  add_files_and_title({"a.m2v", "a.ac3"});
  add_files_and_title({"b.m2v", "b.ac3"});
  remove_all(path("a.m2v"));
  p.selected = 1;
  for (int move = 0; move < 2; ++move) {
    user.expect(box(path("a.m2v") + " appears to be missing", icon::critical));
    (move == 0 ? titleup_command : titledown_command)(doc);
    EXPECT_THAT(user.asked, SizeIs(1)) << "he does not know where it is";
  }
  folder.add("new/a.m2v");
  remove_all(path("b.ac3"));
  user.folders = {path("new")};
  user.expect(box(path("b.ac3") + " appears to be missing", icon::critical));
  titleup_command(doc);
  EXPECT_EQ(p.List11[1], stored("new/a.m2v") + "/" + stored("a.ac3"));
  EXPECT_EQ(p.saved, 0);
}

TEST_F(MovedFiles, ThatWereGivenUpAreNotAskedAboutInAnotherOrder) {
  add_files_and_title({"a.m2v", "a.ac3"});
  add_files_and_title({"b.m2v", "b.ac3"});
  remove_all(path("a.m2v"));
  remove_all(path("b.m2v"));
  p.selected = 1;
  for (int command = 0; command < 3; ++command) {
    const bool swapped = command == 0;
    if (command < 2) {
      user.expect(
          box(folder.path(swapped ? "b.m2v" : "a.m2v") + " appears to be missing", icon::critical));
      user.expect(
          box(folder.path(swapped ? "a.m2v" : "b.m2v") + " appears to be missing", icon::critical));
      (swapped ? titleup_command : titledown_command)(doc);
    } else {
      user.expect(box(path("a.m2v") + " appears to be missing", icon::critical));
      remove_title_command(doc);
    }
    EXPECT_THAT(user.asked, SizeIs(1));
  }
}

TEST_F(MovedFiles, OfADroppedProjectAreAskedAboutToo) {
  const std::string file = project_of_old();
  add_all("elsewhere");
  user.folders = {path("elsewhere")};
  drop_files(doc, {file});
  EXPECT_THAT(user.asked, SizeIs(1));
  EXPECT_THAT(p.List11, SizeIs(2));
}

TEST_F(MovedFiles, AMenuWithoutAudioMissesNothing) {
  p.menulist = {stored("menu.m2v") + "/"};
  folder.add("menu.m2v");
  file_lookup files;
  EXPECT_THAT(missing_files(p, files), IsEmpty());
}

}  // namespace
}  // namespace corvane
