#include "runner/run_steps.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(RunSteps, AreTheEchoLinesThatNameOne) {
  run_steps steps;
  steps.begin(
      "@echo off\r\necho Send\r\necho *one.....\r\n\"a.exe\" \"echo *no\"\r\necho *two\r\n"
      "echo **ERR\r\necho *process complete");
  EXPECT_EQ(steps.count(), 3);
  steps.begin("");
  EXPECT_EQ(steps.count(), 0);
}

TEST(RunSteps, EachIsCountedFromOneInTheirOrder) {
  run_steps steps;
  steps.begin("echo *one.....\necho *two\n");
  const run_step one = steps.at("*one.....");
  EXPECT_EQ(one.number, 1);
  EXPECT_EQ(one.count, 2);
  EXPECT_EQ(one.name, "one");
  EXPECT_EQ(one.line, "*one.....");
  EXPECT_EQ(steps.at("*two").number, 2);
}

TEST(RunSteps, LineThatWasNotAnnouncedKeepsTheNumber) {
  run_steps steps;
  steps.begin("echo *one\necho *two\n");
  EXPECT_EQ(steps.at("*a tool's").number, 0);
  EXPECT_EQ(steps.at("*one").number, 1);
  EXPECT_EQ(steps.at("*a tool's").number, 1);
  EXPECT_EQ(steps.at("*one").number, 1);
}

TEST(RunSteps, StepThatWasLeftOutIsPassedOver) {
  run_steps steps;
  steps.begin("echo *same\necho *left out\necho *same\n");
  EXPECT_EQ(steps.at("*same").number, 1);
  EXPECT_EQ(steps.at("*same").number, 3);
}

TEST(RunSteps, ScriptAnewBeginsAtTheFirst) {
  run_steps steps;
  const char* const script = "echo *one\necho *two\n";
  steps.begin(script);
  EXPECT_EQ(steps.at("*two").number, 2);
  steps.begin(script);
  EXPECT_EQ(steps.at("*one").number, 1);
}

}  // namespace
}  // namespace corvane
