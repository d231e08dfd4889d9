#include "platform/files/files.h"
#include "platform/files/held_folder.h"
#include "support/full_disk_posix.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sys/mount.h>

namespace corvane {
namespace {

class HeldFolder : public testing::Test {
 protected:
  testing_support::temporary_folder around;
  std::string path = around.path("films");
};

TEST_F(HeldFolder, IsElsewhereWhenItsPathLeadsToAnother) {
  around.add("films/a.part");
  const held_folder held(path);
  EXPECT_FALSE(held.is_elsewhere());
  ASSERT_EQ(move_entry(path, around.path("renamed")), std::nullopt);
  EXPECT_TRUE(held.is_elsewhere());
  around.add("films/a.part");
  EXPECT_TRUE(held.is_elsewhere());
}

TEST_F(HeldFolder, FilesAreRemovedWhereverItIs) {
  around.add("films/a.part");
  around.add("films/b.part");
  const held_folder held(path);
  held.remove("a.part");
  EXPECT_EQ(files_in(path), std::vector<std::string>{"b.part"});
  ASSERT_EQ(move_entry(path, around.path("renamed")), std::nullopt);
  around.add("films/b.part");
  held.remove("b.part");
  held.remove("absent");
  EXPECT_TRUE(files_in(around.path("renamed")).empty());
  EXPECT_EQ(files_in(path), std::vector<std::string>{"b.part"});
}

TEST_F(HeldFolder, IsElsewhereWhenItsDiskIsTakenOut) {
  const testing_support::disk_of_its_own disk(around, 64);
  if (!disk.is_there())
    GTEST_SKIP() << "no disk of its own can be mounted for the test";
  const held_folder held(around.path());
  EXPECT_FALSE(held.is_elsewhere());
  ASSERT_EQ(::umount2(around.path().c_str(), MNT_DETACH), 0);
  EXPECT_TRUE(held.is_elsewhere());
}

TEST_F(HeldFolder, ThatIsNotThereIsElsewhere) {
  EXPECT_TRUE(held_folder(path).is_elsewhere());
}

}  // namespace
}  // namespace corvane
