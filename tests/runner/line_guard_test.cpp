#include "runner/line_guard.h"

#include "runner/output_lines.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

/// What is passed on of a tool's output that comes cut in two.
std::string passed(const std::string& printed, std::size_t cut = 0) {
  line_guard guard;
  std::string text(guard(printed.substr(0, cut)));
  text += guard(printed.substr(cut));
  return text += guard.rest();
}

TEST(LineGuard, PassesOnWhatToolsSayByteForByteHoweverItIsCut) {
  using std::string_literals::operator""s;
  for (const std::string& text :
       {"   INFO: [mplex] a\n++ WARN: [mplex] b\r\n**ERROR: [mplex] c\n"s, " **ERROR\r"s,
        "STAT: 1%\rSTAT: 2%"s, "\0x\n"s, "x * y *\n"s, " "s, "\n\n\r\r \n"s, "  *"s, ""s})
    for (std::size_t cut = 0; cut <= text.size(); ++cut)
      EXPECT_EQ(passed(text, cut), text) << cut;
}

TEST(LineGuard, MarksEachLineThatBeginsWithAStarAndIsNoError) {
  for (const std::string line : {"*process complete", " *process complete", "*", "**", "**E",
                                 "**ER", "***", "* **ERR", "*ERR", " *", " **", "**er"})
    for (const std::string before : {"", "\n", "\r", "x\r\n", "**ERROR\n"})
      for (const std::string after : {"", "\n", "\r", "\n\n", "\nx"})
        for (std::size_t cut = 0; cut <= before.size() + line.size(); ++cut) {
          const std::string text = passed(before + line + after, cut);
          EXPECT_EQ(text, before + "tool: " + line + after) << cut;
          EXPECT_EQ(step_in_line("tool: " + line), "");
        }
}

TEST(LineGuard, DoesNotHoldBackWhatIsNoStar) {
  line_guard guard;
  EXPECT_EQ(guard("S"), "S");
  EXPECT_EQ(guard("TAT: 1%"), "TAT: 1%");
  EXPECT_EQ(guard("\r"), "\r");
  EXPECT_EQ(guard("."), ".");
  EXPECT_EQ(guard("*"), "*");
}

TEST(LineGuard, KnowsWhetherALineBegins) {
  line_guard guard;
  EXPECT_TRUE(guard.at_line_start());
  guard("abc");
  EXPECT_FALSE(guard.at_line_start());
  guard("\r");
  EXPECT_TRUE(guard.at_line_start());
  guard("*");
  guard.rest();
  EXPECT_FALSE(guard.at_line_start());
  guard.end_line();
  EXPECT_EQ(guard("*x"), "tool: *x");
}

}  // namespace
}  // namespace corvane
