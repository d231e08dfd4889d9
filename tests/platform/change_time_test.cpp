#include "platform/files/change_time.h"

#include "platform/files/files.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

namespace corvane {
namespace {

/// Until the clock of the disk has gone on.
void wait_a_little() {
  std::this_thread::sleep_for(std::chrono::milliseconds(30));
}

class ChangeTime : public ::testing::Test {
 protected:
  /// Whether `path` was changed after everything else by now.
  bool is_later_than_mark(const std::string& path) const {
    const auto then = changed_at(mark_), now = changed_at(path);
    return then && now && *then < *now;
  }
  void mark() {
    wait_a_little();
    EXPECT_FALSE(mark_changed(mark_));
    wait_a_little();
  }

  testing_support::temporary_folder folder_;
  std::string mark_ = folder_.add("mark");
};

TEST_F(ChangeTime, OfWhatIsNotThereIsNotKnown) {
  EXPECT_FALSE(changed_at(folder_.path("absent")));
  EXPECT_TRUE(mark_changed(folder_.path("absent")));
}

TEST_F(ChangeTime, GoesOnWithWritingAndMarking) {
  const std::string file = folder_.add("a", "bytes");
  mark();
  EXPECT_FALSE(is_later_than_mark(file));
  folder_.add("a", "other");
  EXPECT_TRUE(is_later_than_mark(file));
  mark();
  EXPECT_FALSE(is_later_than_mark(file));
}

// Its machine's clock may be finer than the disk's, or another one.
TEST_F(ChangeTime, OfWhatIsMarkedIsByTheClockByWhichOthersAre) {
  for (int i = 0; i < 30; ++i) {
    const std::string after = folder_.path("after" + std::to_string(i));
    std::ofstream file(path_of(after), std::ios::binary);
    wait_a_little();
    EXPECT_FALSE(mark_changed(mark_));
    file << "bytes" << std::flush;
    EXPECT_LE(changed_at(mark_), changed_at(after))
        << "what somebody wrote after the sign of life would be the run's";
  }
}

TEST_F(ChangeTime, OfAFolderGoesOnWithWhatIsPutThere) {
  folder_.add("sub/a");
  mark();
  EXPECT_FALSE(is_later_than_mark(folder_.path("sub")));
  folder_.add("sub/b");
  EXPECT_TRUE(is_later_than_mark(folder_.path("sub")));
}

TEST_F(ChangeTime, IsThatOfACopyWhateverTimesItWasGiven) {
  const std::string copied = folder_.path("copy");
  const std::string file = folder_.add("a");
  mark();
  ASSERT_FALSE(copy_file(file, copied));
  std::filesystem::last_write_time(path_of(copied),
                                   std::filesystem::last_write_time(path_of(file)));
  EXPECT_TRUE(is_later_than_mark(copied));
}

TEST_F(ChangeTime, OfAFolderGoesOnWhenItIsMoved) {
  folder_.add("sub/a");
  mark();
  ASSERT_FALSE(move_entry(folder_.path("sub"), folder_.path("moved")));
  EXPECT_TRUE(is_later_than_mark(folder_.path("moved")));
}

}  // namespace
}  // namespace corvane
