// The log of a run whose program was gone before the run ended.
#include "runner/lost_log.h"

#include "platform/files/files.h"
#include "runner/run_log.h"
#include "support/temporary_folder.h"

namespace corvane {
namespace {

class LostLog : public testing::Test {
 protected:
  testing_support::temporary_folder folder;
  static constexpr const char* last = "*** the program was gone before this run had ended\r\n";
};

TEST_F(LostLog, BecomesTheLogAndSaysWhatBecameOfIt) {
  folder.add("CorvaneLOG.txt", "of the run before");
  folder.add("CorvaneLOG.txt.part", "*one.....\r\n*tw");
  EXPECT_TRUE(has_lost_log(folder.path()));
  EXPECT_TRUE(keep_lost_log(folder.path()));
  EXPECT_EQ(folder.read("CorvaneLOG.txt"), std::string("*one.....\r\n*tw\r\n") + last);
  EXPECT_FALSE(has_lost_log(folder.path()));
  EXPECT_FALSE(keep_lost_log(folder.path()));
}

TEST_F(LostLog, OneThatOnlyCouldNotTakeItsPlaceTakesItAndIsNotCalledLost) {
  const std::string log = folder.path("CorvaneLOG.txt");
  ASSERT_FALSE(make_folders(log));
  run_log of_a_run;
  of_a_run.begin(log);
  of_a_run.open();
  of_a_run.append("*one.....\r\n");
  ASSERT_TRUE(of_a_run.finish());
  const std::string text = folder.read("CorvaneLOG.txt.part");
  ASSERT_FALSE(remove_all(log));
  EXPECT_TRUE(has_lost_log(folder.path()));
  EXPECT_FALSE(keep_lost_log(folder.path()));
  EXPECT_EQ(folder.read("CorvaneLOG.txt"), text);
  EXPECT_FALSE(has_lost_log(folder.path()));
}

TEST_F(LostLog, WholeLinesStayAsTheyAre) {
  folder.add("CorvaneLOG.txt.part", "*one.....\r\n");
  EXPECT_TRUE(keep_lost_log(folder.path()));
  EXPECT_EQ(folder.read("CorvaneLOG.txt"), std::string("*one.....\r\n") + last);
}

TEST_F(LostLog, WhatHoldsNothingGoesAndTheLogBeforeStays) {
  folder.add("CorvaneLOG.txt", "of the run before");
  folder.add("CorvaneLOG.txt.part", "");
  EXPECT_TRUE(has_lost_log(folder.path()));
  EXPECT_FALSE(keep_lost_log(folder.path()));
  EXPECT_FALSE(has_lost_log(folder.path()));
  EXPECT_EQ(folder.read("CorvaneLOG.txt"), "of the run before");
}

}  // namespace
}  // namespace corvane
