#include "runner/log_display.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

run_step step_of(const std::string& line) {
  return {1, 1, "", line};
}

TEST(LogDisplay, TextIsTheLastLinesAndTheirStepTheCaption) {
  log_display display;
  const log_change change = display.output("title\r\n *one \r\n x");
  EXPECT_EQ(change.caption, "Corvane log - *one ");
  EXPECT_EQ(change.text, "title\r\n *one \r\n x");
}

TEST(LogDisplay, WithoutALineBreakTheTextStays) {
  log_display display;
  EXPECT_FALSE(display.output("abc").text);
}

TEST(LogDisplay, StepThatTheTextNoLongerShowsGivesTheCaptionOnce) {
  log_display display;
  display.step(step_of("*one....."));
  display.step(step_of("*two....."));
  EXPECT_EQ(display.output("a\r\n b").caption, "Corvane log - *two..... ");
  EXPECT_EQ(display.output("a\r\n b\r\n c").caption, "");
}

TEST(LogDisplay, StepInTheTextIsTheLaterOne) {
  log_display display;
  display.step(step_of("*one"));
  EXPECT_EQ(display.output("a\r\n *tw").caption, "Corvane log - *tw");
}

TEST(LogDisplay, CaptionIsUtf8WhateverTheStepHolds) {
  log_display display;
  display.step(step_of("*a\xFFz"));
  EXPECT_EQ(display.output("a\r\n b").caption, "Corvane log - *a\xEF\xBF\xBDz ");
}

}  // namespace
}  // namespace corvane
