#include "runner/output_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvane {
namespace {

std::string normalized(const std::vector<std::string>& pieces) {
  line_end_normalizer normalize;
  std::string text;
  for (const std::string& piece : pieces)
    text += normalize(piece);
  return text + normalize.rest();
}

TEST(LineEnds, EachKindBecomesBlankCrLfBlank) {
  EXPECT_EQ(normalized({"a\r\nb"}), "a \r\n b");
  EXPECT_EQ(normalized({"a\nb"}), "a \r\n b");
  EXPECT_EQ(normalized({"a\rb"}), "a \r\n b");
  EXPECT_EQ(normalized({"a\n\rb"}), "a \r\n  \r\n b");
  EXPECT_EQ(normalized({""}), "");
}

TEST(LineEnds, CrBeforeCrLfIsALineBreakOfItsOwn) {
  EXPECT_EQ(normalized({"a\r\r\nb"}), "a \r\n  \r\n b");
}

TEST(LineEnds, PairSplitOverTwoPiecesIsOneLineBreak) {
  EXPECT_EQ(normalized({"a\r", "\nb"}), "a \r\n b");
  EXPECT_EQ(normalized({"a\r", "", "\nb"}), "a \r\n b");
  EXPECT_EQ(normalized({"a\r", "\n"}), "a \r\n ");
  EXPECT_EQ(normalized({"a\r", "\r\nb"}), "a \r\n  \r\n b");
}

TEST(LineEnds, CrAtThePiecesEndThatStandsAloneIsKept) {
  EXPECT_EQ(normalized({"a\r", "b"}), "a \r\n b");
  EXPECT_EQ(normalized({"a\r"}), "a \r\n ");
}

TEST(LineEnds, AnySplitOfATextGivesTheSame) {
  const std::string text = "a\r\n\r\r\n\n\rb\r\r\r\nc\n\n\r\n";
  const std::string whole = normalized({text});
  for (std::size_t i = 0; i <= text.size(); ++i)
    for (std::size_t j = i; j <= text.size(); ++j)
      EXPECT_EQ(normalized({text.substr(0, i), text.substr(i, j - i), text.substr(j)}), whole)
          << i << ' ' << j;
}

TEST(Progress, IsTheNumberBeforeThePercentSignAndAfterABlank) {
  EXPECT_EQ(progress_of("  45.3% done"), 45.3);
  EXPECT_EQ(progress_of("STAT: fixing VOBU at 2MB (33/192, 16%) \r\n "), 16);
  EXPECT_EQ(progress_of(" \r\n  67.91% done, estimate finish"), 67.91);
}

TEST(Progress, WithoutABlankBeforeTheNumberThereIsNone) {
  EXPECT_EQ(progress_of("45%"), std::nullopt);
  EXPECT_EQ(progress_of("(45%) at 7 %"), std::nullopt);
  EXPECT_EQ(progress_of("no percentage 45"), std::nullopt);
  EXPECT_EQ(progress_of(""), std::nullopt);
}

TEST(Progress, OfSeveralPercentSignsTheFirstCounts) {
  EXPECT_EQ(progress_of(" 10% 20% 30%"), 10);
}

TEST(Progress, WordBeforeThePercentSignIsZero) {
  EXPECT_EQ(progress_of(" abc%"), 0);
  EXPECT_EQ(progress_of("50 %"), 0);
}

TEST(View, WithoutALineBreakThereIsNone) {
  EXPECT_FALSE(view_of("abc"));
  EXPECT_FALSE(view_of(""));
  EXPECT_FALSE(view_of("first\r\n" + std::string(7000, 'x')));
}

TEST(View, ShowsTheLastTwentyLines) {
  std::string output;
  for (int i = 1; i <= 30; ++i)
    output += "line " + std::to_string(i) + "\r\n";
  const auto view = view_of(output);
  ASSERT_TRUE(view);
  // What follows the last line break is a line too, an empty one.
  EXPECT_EQ(view->text.substr(0, 9), "line 12\r\n");
  EXPECT_EQ(view->text.substr(view->text.size() - 9), "line 30\r\n");
}

TEST(View, OfTwentyOneLinesTheFirstIsNotShown) {
  std::string twenty = "2";
  for (int i = 3; i <= 21; ++i)
    twenty += "\r\n" + std::to_string(i);
  EXPECT_EQ(view_of(twenty)->text, twenty);
  EXPECT_EQ(view_of("1\r\n" + twenty)->text, twenty);
}

TEST(View, FewLinesAreAllShown) {
  EXPECT_EQ(view_of("a \r\n b")->text, "a \r\n b");
}

TEST(View, LooksAtTheLast7000CharactersOnly) {
  const std::string end = std::string(6990, 'x').append("\r\n12345678");
  const std::string output = "*gone\r\n" + end;
  const auto view = view_of(output);
  ASSERT_TRUE(view);
  EXPECT_EQ(view->text, end);
  EXPECT_EQ(view->caption, "");
}

TEST(View, LineWithAStarAmongItsFirstThreeCharactersGivesTheCaption) {
  EXPECT_EQ(view_of("title\r\n *multiplexing title: 1..... \r\n ")->caption,
            "Corvane log - *multiplexing title: 1..... ");
  EXPECT_EQ(view_of("title\r\n ***please wait \r\n ")->caption, "Corvane log - ***please wait ");
  EXPECT_EQ(view_of("title\r\n a *b\r\n")->caption, "");
  EXPECT_EQ(view_of("title\r\n  *b\r\n")->caption, "Corvane log - *b");
}

TEST(View, OfSeveralStepsTheLastGivesTheCaption) {
  EXPECT_EQ(view_of("title\r\n *one \r\n *two \r\n x")->caption, "Corvane log - *two ");
}

TEST(View, IsUtf8WhateverTheToolsPrint) {
  EXPECT_EQ(view_of("a\xFFz\r\n\xC3\xA4")->text, "a\xEF\xBF\xBDz\r\n\xC3\xA4");
  EXPECT_EQ(view_of(std::string("a\0b\r\n", 5))->text, "a b\r\n");
  // A character cut in two by the 7000 is left out.
  const std::string end = std::string(6997, 'x').append("\r\n");
  EXPECT_EQ(view_of("\xC3\xA4" + end)->text, end);
}

}  // namespace
}  // namespace corvane
