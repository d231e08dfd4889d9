#include "platform/files/folder_lock.h"

#include "support/temporary_folder.h"

namespace corvane {
namespace {

TEST(FolderLock, MakesItsFileAndIsNotHeldAtFirst) {
  testing_support::temporary_folder folder;
  folder_lock lock(folder.path());
  EXPECT_TRUE(file_exists(folder.path("corvane.lock")));
  EXPECT_FALSE(lock.held());
}

TEST(FolderLock, TakenTwiceByTheSameObjectIsHeldOnce) {
  testing_support::temporary_folder folder;
  folder_lock lock(folder.path());
  EXPECT_TRUE(lock.take());
  EXPECT_TRUE(lock.take());
  EXPECT_TRUE(lock.held());
  lock.release();
  EXPECT_FALSE(lock.held());
}

TEST(FolderLock, AnotherObjectIsRefusedUntilItIsReleased) {
  testing_support::temporary_folder folder;
  folder_lock first(folder.path());
  folder_lock second(folder.path());
  ASSERT_TRUE(first.take());
  EXPECT_FALSE(second.take());
  EXPECT_FALSE(second.held());
  first.release();
  EXPECT_TRUE(second.take());
}

TEST(FolderLock, EndsWithTheObjectThatHeldIt) {
  testing_support::temporary_folder folder;
  folder_lock second(folder.path());
  {
    folder_lock first(folder.path());
    ASSERT_TRUE(first.take());
  }
  EXPECT_TRUE(second.take());
}

TEST(FolderLock, LocksOfTwoFoldersDoNotMeet) {
  testing_support::temporary_folder a;
  testing_support::temporary_folder b;
  folder_lock first(a.path());
  folder_lock second(b.path());
  EXPECT_TRUE(first.take());
  EXPECT_TRUE(second.take());
}

TEST(FolderLock, IsNotTakenWhereItsFileCannotBeMade) {
  testing_support::temporary_folder folder;
  folder_lock lock(folder.path("missing"));
  EXPECT_FALSE(lock.take());
  EXPECT_FALSE(lock.held());
}

TEST(FolderLock, IsTakenOnceTheFolderIsThere) {
  testing_support::temporary_folder folder;
  folder_lock lock(folder.path("later"));
  ASSERT_FALSE(lock.take());
  ASSERT_FALSE(make_folders(folder.path("later")));
  EXPECT_TRUE(lock.take());
}

TEST(FolderLock, TellsWhetherAnotherHoldsIt) {
  testing_support::temporary_folder folder;
  folder_lock first(folder.path());
  folder_lock second(folder.path());
  ASSERT_TRUE(first.take());
  EXPECT_FALSE(first.is_held_elsewhere());
  EXPECT_FALSE(second.take());
  EXPECT_TRUE(second.is_held_elsewhere());
  folder_lock none(folder.path("missing"));
  EXPECT_FALSE(none.take());
  EXPECT_FALSE(none.is_held_elsewhere());
}

TEST(FolderLock, ThatVanishesLeavesNoFileAndCanBeTakenAnew) {
  testing_support::temporary_folder folder;
  folder_lock first(folder.path());
  ASSERT_TRUE(first.take());
  first.vanish();
  EXPECT_FALSE(first.held());
  EXPECT_TRUE(files_in(folder.path()).empty());
  EXPECT_TRUE(first.take());
  EXPECT_TRUE(file_exists(folder.path("corvane.lock")));
}

// Who has opened the file before it vanished would lock a file that nobody else finds.
TEST(FolderLock, IsTakenOfTheFileThatHasTheNameNow) {
  testing_support::temporary_folder folder;
  folder_lock early(folder.path());
  {
    folder_lock first(folder.path());
    ASSERT_TRUE(first.take());
    first.vanish();
  }
#ifndef _WIN32
  folder_lock late(folder.path());
  ASSERT_TRUE(late.take());
  EXPECT_FALSE(early.take());
  EXPECT_TRUE(early.is_held_elsewhere());
#else
  // There the file that is still open keeps its name, or its place, until it is closed.
  EXPECT_TRUE(early.take());
#endif
}

}  // namespace
}  // namespace corvane
