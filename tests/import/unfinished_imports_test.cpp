#include "import/unfinished_imports.h"

#include "platform/files/files.h"
#include "runner/run_files.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace corvane {
namespace {

class UnfinishedImports : public testing::Test {
 protected:
  std::string list() const { return folder.path(run_file::unfinished_import); }

  testing_support::temporary_folder folder;
};

TEST_F(UnfinishedImports, AreRemovedAndNothingElse) {
  import_job job;
  job.files = {
      folder.path("a.m2v"), {folder.path("a.ac3")}, {folder.path("a.srt")}, folder.path("a.pass")};
  ASSERT_EQ(note_unfinished(folder.path(), job), std::nullopt);
  for (const char* const name : {"a.m2v.part", "a.ac3.part", "a.pass-0.log", "a.m2v", "b.m2v.part"})
    folder.add(name, "x");
  remove_left_imports(folder.path());
  EXPECT_FALSE(entry_exists(list()));
  const std::vector<std::string> left = files_in(folder.path());
  EXPECT_EQ(std::set<std::string>(left.begin(), left.end()),
            (std::set<std::string>{"a.m2v", "b.m2v.part"}));
  remove_left_imports(folder.path());
}

// A disk that is not mounted now may come back.
TEST_F(UnfinishedImports, InAFolderThatIsNotThereAreNotForgotten) {
  import_job lost, next;
  lost.files = {folder.path("disk/lost.m2v"), {}, {}, folder.path("disk/lost.pass")};
  next.files = {folder.path("next.m2v"), {}, {}, folder.path("next.pass")};
  ASSERT_EQ(note_unfinished(folder.path(), lost), std::nullopt);
  remove_left_imports(folder.path());
  ASSERT_EQ(note_unfinished(folder.path(), next), std::nullopt);
  folder.add("next.m2v.part", "x");
  remove_left_imports(folder.path());
  EXPECT_FALSE(file_exists(folder.path("next.m2v.part")));
  EXPECT_EQ(folder.read(run_file::unfinished_import),
            folder.path("disk/lost.m2v.part") + "\n" + folder.path("disk/lost.pass-0.log") + "\n");
  folder.add("disk/lost.m2v.part", "x");
  remove_left_imports(folder.path());
  EXPECT_FALSE(file_exists(folder.path("disk/lost.m2v.part")));
  EXPECT_FALSE(entry_exists(list()));
}

TEST_F(UnfinishedImports, AListOfOtherFilesRemovesNone) {
  folder.add("mine.txt", "x");
  folder.add("film.m2v", "x");
  folder.add(run_file::unfinished_import, folder.path("mine.txt") + "\n" + folder.path("film.m2v") +
                                              "\n" + folder.path() + "\n\n/\n");
  remove_left_imports(folder.path());
  EXPECT_TRUE(file_exists(folder.path("mine.txt")));
  EXPECT_TRUE(file_exists(folder.path("film.m2v")));
  EXPECT_FALSE(entry_exists(list()));
}

}  // namespace
}  // namespace corvane
