#include "runner/last_log.h"

#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(LastLog, LinesLoseTheBlanksAroundThemAndKnowTheirKind) {
  EXPECT_EQ(
      log_lines("Corvane 0.997 - 1/2/2005\r\n*one..... \r\n INFO: a \r\n   b \r\n ERR:  no \r\n "
                "++ WARN: [mplex] x \r\n WARN: y \r\n **ERROR: [mplex] z \r\n \r\n"),
      (std::vector<line_of_log>{{"Corvane 0.997 - 1/2/2005", log_line_kind::plain},
                                {"*one.....", log_line_kind::step},
                                {"INFO: a", log_line_kind::plain},
                                {"  b", log_line_kind::plain},
                                {"ERR:  no", log_line_kind::error},
                                {"++ WARN: [mplex] x", log_line_kind::warning},
                                {"WARN: y", log_line_kind::warning},
                                {"**ERROR: [mplex] z", log_line_kind::error}}));
}

TEST(LastLog, WhatIsNoTextIsShownAsSuch) {
  EXPECT_EQ(log_lines(std::string_view("a\xFFz\0b\r\n", 7))[0].text, "a\xEF\xBF\xBDz b");
}

TEST(LastLog, FileThatIsNotThereHasNoLines) {
  const testing_support::temporary_folder folder;
  EXPECT_TRUE(last_log(folder.path("none.txt")).empty());
}

TEST(LastLog, OfAVeryLargeFileTheEndIsShownAndThatIsSaid) {
  testing_support::temporary_folder folder;
  std::string text;
  for (int i = 0; i < 300000; ++i)
    text += "STAT: line " + std::to_string(i) + " \r\n ";
  const std::string path = folder.add("log.txt", text);
  const std::vector<line_of_log> lines = last_log(path);
  EXPECT_EQ(lines[0].text, "(the beginning is left out here; the whole log is \"" + path + "\")");
  EXPECT_TRUE(lines[1].text.starts_with("STAT: line ")) << lines[1].text;
  EXPECT_EQ(lines.back().text, "STAT: line 299999");
}

}  // namespace
}  // namespace corvane
