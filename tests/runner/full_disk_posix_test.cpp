// A disk that is full while a run writes there, or when it has ended.
#include "support/full_disk_posix.h"

#include "project/project.h"
#include "runner/clean_up.h"
#include "runner/run_log.h"
#include "support/fake_run.h"

#include <string>
#include <vector>

namespace corvane {
namespace {

using testing_support::disk_of_its_own;

class FullDisk : public testing::Test {
 protected:
  void SetUp() override {
    if (!disk.is_there())
      GTEST_SKIP() << "no disk of its own can be made for the test";
  }
  testing_support::fake_run run;
  const testing_support::temporary_folder& folder = run.app;
  disk_of_its_own disk{folder, 256};
};

TEST_F(FullDisk, TheCleanUpRemovesAllAndComplainsOfNothing) {
  for (const unsigned left : {0u, 4u, 20u}) {
    for (const char* const name : {"config.xml", "menu1.png"})
      folder.add(name);
    folder.add("process.bat", std::string(20000, 'x'));
    disk.fill(left);
    for (const run_trouble& trouble : clean_up(folder.path()))
      ADD_FAILURE() << trouble.file << " " << trouble.text;
    EXPECT_EQ(files_in(folder.path()), std::vector<std::string>{"fills the disk"}) << left;
  }
}

TEST_F(FullDisk, AGoodRunEndsWellAlthoughItsCleanUpHasNoRoom) {
  for (const unsigned left : {0u, 4u, 20u}) {
    folder.add("process.bat", "echo *one.....\r\n" + std::string(20000, 'x'));
    run.clean = true;
    run.start();
    run.feed("*one.....\n");
    disk.fill(left);
    run.feed(std::string(40000, 'z') + "\n");
    run.ask.expect(
        {"The log could not be written whole: No space left on device.  It is kept as "
         "far as it was written.",
         icon::exclamation});
    run.expect_success(answer::ok);
    run.feed("*process complete\n");
    EXPECT_EQ(run.runner.outcome(), run_outcome::success) << left;
    EXPECT_FALSE(file_exists(folder.path("updatecodelog.txt"))) << left;
    EXPECT_FALSE(file_exists(folder.path("process.bat"))) << left;
    remove_all(folder.path("fills the disk"));
  }
}

TEST_F(FullDisk, WhatWasWrittenOfTheLogIsKeptAndShownAsThisRuns) {
  folder.add("CorvaneLOG.txt", "an earlier log");
  run.start();
  run.feed("*one.....\n" + std::string(10000, 'y') + "\n");
  disk.fill();
  for (int i = 0; i < 30; ++i)
    run.feed(std::string(10000, 'z') + "\n");
  run.ask.expect(
      {"The log could not be written whole: No space left on device.  It is kept as far "
       "as it was written.",
       icon::exclamation});
  run.expect_success(answer::ok);
  run.feed("*process complete\n");
  EXPECT_TRUE(run.log().starts_with(version_title + std::string("\r\n")));
  EXPECT_NE(run.log().find("*one....."), std::string::npos);
  EXPECT_EQ(run.ask.shown, std::vector<std::string>{folder.path("CorvaneLOG.txt")});
  EXPECT_EQ(run.screen.ends.at(0).troubles.at(0).text,
            "could not be written whole: No space left on device");
}

TEST_F(FullDisk, ALogOfWhichNothingCouldBeWrittenIsNotMistakenForAnEarlierOne) {
  folder.add("CorvaneLOG.txt", "an earlier log");
  disk.fill();
  run.start();
  run.feed("*one.....\n");
  run.ask.expect({"The log file could not be written: No space left on device.  \"" +
                      folder.path("CorvaneLOG.txt") + "\" is that of an earlier run.",
                  icon::critical});
  run.expect_success(answer::ok);
  run.feed("*process complete\n");
  EXPECT_EQ(run.log(), "an earlier log");
  EXPECT_TRUE(run.ask.shown.empty());
  EXPECT_EQ(files_in(folder.path()),
            (std::vector<std::string>{"CorvaneLOG.txt", "corvane.lock", "fills the disk"}));
}

}  // namespace
}  // namespace corvane
