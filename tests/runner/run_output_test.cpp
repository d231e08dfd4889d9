#include "runner/run_output.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string sample =
    "Send problems\r\n***please wait while the titles are multiplexed.\r\n"
    "*multiplexing title: 1.....\r\n   INFO: [mplex] x\r**ERROR: [mplex] bad\n"
    "STAT: 1\rERR:  no file\n*\n*****\n* .. \n*process complete\r\n";

TEST(RunOutput, StepsAreTheLinesThatBeginWithAnAsterisk) {
  run_output output;
  output.feed(sample);
  EXPECT_THAT(output.take_steps(), ElementsAre("***please wait while the titles are multiplexed.",
                                               "*multiplexing title: 1.....", "*process complete"));
  EXPECT_THAT(output.take_steps(), IsEmpty());
}

TEST(RunOutput, ErrorsAreTheLinesThatFailARun) {
  run_output output;
  output.feed(sample);
  EXPECT_THAT(output.errors(), ElementsAre("**ERROR: [mplex] bad", "ERR:  no file"));
  EXPECT_EQ(output.error_count(), 2u);
  output.feed("no ERR: here\nand **ERR there\nx**ERR not\n");
  EXPECT_THAT(output.errors(),
              ElementsAre("**ERROR: [mplex] bad", "ERR:  no file", "and **ERR there"));
}

TEST(RunOutput, HoweverTheOutputIsCut) {
  run_output whole;
  whole.feed(sample);
  const std::vector<std::string> steps = whole.take_steps();
  for (std::size_t cut = 0; cut <= sample.size(); ++cut) {
    run_output output;
    output.feed(sample.substr(0, cut));
    output.feed(sample.substr(cut));
    EXPECT_EQ(output.take_steps(), steps) << cut;
    EXPECT_EQ(output.errors(), whole.errors()) << cut;
  }
}

TEST(RunOutput, LastLineThatWasLeftOpenCountsOnceItEnds) {
  run_output output;
  output.feed("*one.....\n*two");
  EXPECT_THAT(output.take_steps(), ElementsAre("*one....."));
  output.end();
  EXPECT_THAT(output.take_steps(), ElementsAre("*two"));
}

TEST(RunOutput, KeepsTheFirstErrorsAndCountsAll) {
  run_output output;
  for (int i = 0; i < 1000; ++i)
    output.feed("ERR:  " + std::to_string(i) + "\n");
  EXPECT_EQ(output.errors().size(), run_output::kept_errors);
  EXPECT_EQ(output.errors().front(), "ERR:  0");
  EXPECT_EQ(output.error_count(), 1000u);
}

TEST(RunOutput, ALineWithoutEndDoesNotGrow) {
  run_output output;
  for (int i = 0; i < 50; ++i)
    output.feed("*" + std::string(100'000, 'x'));
  output.feed("\n");
  const auto steps = output.take_steps();
  ASSERT_EQ(steps.size(), 1u);
  EXPECT_LE(steps[0].size(), 4096u);
}

}  // namespace
}  // namespace corvane
