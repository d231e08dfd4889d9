#include "import/unfinished_imports.h"

#include "platform/files/files.h"
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
