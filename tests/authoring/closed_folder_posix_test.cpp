// Output folders that cannot be written, or whose disk is full before the run begins.
#include "authoring/checks.h"
#include "support/full_disk_posix.h"
#include "support/ordinary_user_posix.h"

namespace corvane {
namespace {

class ClosedFolder : public ::testing::Test {
 protected:
  std::string refusal_of(const std::string& out) const {
    run_paths where;
    where.out = out;
    return why_nothing_is_written_there(where).value_or("(fine)");
  }
  testing_support::temporary_folder folder;
};

TEST_F(ClosedFolder, IsRefusedWithTheReasonAndNothingIsLeftInOneThatIsOpen) {
  folder.add("open/film.txt");
  folder.add("closed/film.txt");
  const testing_support::ordinary_user user(folder);
  EXPECT_EQ(refusal_of(folder.path("open")), "(fine)");
  EXPECT_EQ(refusal_of(folder.path("open/new/dvd")), "(fine)");
  EXPECT_EQ(files_in(folder.path("open")), std::vector<std::string>{"film.txt"});
  std::filesystem::permissions(folder.path("closed"), std::filesystem::perms::owner_read |
                                                          std::filesystem::perms::owner_exec);
  EXPECT_EQ(refusal_of(folder.path("closed")),
            "Nothing can be written into the output folder \"" + folder.path("closed") +
                "\": Permission denied.  Please choose another folder.");
  EXPECT_EQ(refusal_of(folder.path("closed/new/dvd")),
            "The output folder \"" + folder.path("closed/new/dvd") +
                "\" cannot be made, for nothing can be written into \"" + folder.path("closed") +
                "\": Permission denied.  Please choose another folder.");
  std::filesystem::permissions(folder.path("closed"), std::filesystem::perms::owner_all);
}

TEST_F(ClosedFolder, OnADiskThatIsFullIsRefused) {
  const testing_support::disk_of_its_own disk(folder, 256);
  if (!disk.is_there())
    GTEST_SKIP() << "no disk of its own can be made for the test";
  EXPECT_EQ(refusal_of(folder.path()), "(fine)");
  disk.fill(8);
  EXPECT_EQ(refusal_of(folder.path()), "Nothing can be written into the output folder \"" +
                                           folder.path() +
                                           "\": No space left on device.  Please choose another "
                                           "folder.");
  EXPECT_EQ(files_in(folder.path()), std::vector<std::string>{"fills the disk"});
}

}  // namespace
}  // namespace corvane
