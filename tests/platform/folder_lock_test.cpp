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

}  // namespace
}  // namespace corvane
