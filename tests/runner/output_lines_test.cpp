#include "runner/output_lines.h"

#include "formats/text.h"
#include "runner/output_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace corvane {
namespace {

TEST(OutputLines, ErrorLineBeginsWithErrOrHasTwoAsterisksBeforeIt) {
  for (const char* line : {"ERR:  x", "ERROR", "**ERROR: [mplex] x", "mplex: **ERR", " **ERR"})
    EXPECT_TRUE(is_error_line(line)) << line;
  for (const char* line : {"", " ERR", "no ERR", "x**ERR", "*ERR", "**WARN", "err", "STAT: **ER"})
    EXPECT_FALSE(is_error_line(line)) << line;
}

TEST(OutputLines, StepIsNamedWithoutAsterisksAndPoints) {
  EXPECT_EQ(step_in_line("*multiplexing title: 1....."), "multiplexing title: 1");
  EXPECT_EQ(step_in_line("***please wait while..."), "please wait while");
  EXPECT_EQ(step_in_line("* a b. c . "), "a b. c");
  for (const char* line : {"", "*", "***", "* .. ", "x*", " *x", "**ERROR: x", "*x **ERR"})
    EXPECT_EQ(step_in_line(line), "") << line;
}

// The runner cannot wait for the end of a line, the list of errors holds whole ones.
TEST(OutputLines, NormalizedOutputHoldsAnErrorLineWhenOneOfItsLinesButTheFirstIsOne) {
  const std::vector<std::string> parts = {"ERR", "ERROR", "**ERR", "**", "*", " ", "\n", "\n", "x"};
  std::mt19937 random(20050102);
  int errors = 0;
  for (int round = 0; round < 20000; ++round) {
    std::string text = "first\n";
    for (unsigned i = random() % 8; i > 0; --i)
      text += parts[random() % parts.size()];
    const std::vector<std::string> lines = split(text, '\n');
    const bool expected = std::any_of(lines.begin() + 1, lines.end(), is_error_line);
    errors += expected ? 1 : 0;
    EXPECT_EQ(holds_error_line("title\r\n" + line_end_normalizer()(text)), expected) << text;
  }
  EXPECT_GT(errors, 5000);
  EXPECT_LT(errors, 15000);
}

TEST(OutputLines, FirstLineIsAnErrorOnlyWithABlankBeforeTheAsterisks) {
  EXPECT_FALSE(holds_error_line("title\r\nERR:  x \r\n "));
  EXPECT_FALSE(holds_error_line("title\r\n**ERROR: x \r\n "));
  EXPECT_TRUE(holds_error_line("title\r\nx **ERROR: x \r\n "));
}

TEST(OutputLines, MarkerCountsAtTheBeginningOfALine) {
  EXPECT_TRUE(holds_marker_line("x \r\n *process complete"));
  EXPECT_TRUE(holds_marker_line("title\r\n*process complete"));
  EXPECT_FALSE(holds_marker_line("x \r\n file *process complete"));
}

}  // namespace
}  // namespace corvane
