// Where texts are broken into lines, with letters that are all as wide.
#include "drawing/text_wrap.h"

#include "platform/text/utf8.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace corvane {
namespace {

using testing::ElementsAre;

/// Lines of at most so many letters.
line_fits letters(std::size_t most) {
  return [most](const std::string& line) {
    return static_cast<std::size_t>(std::ranges::count_if(
               line, [](char byte) { return !continues_character(byte); })) <= most;
  };
}

TEST(WrappedLines, BreakAtBlanksWhichGo) {
  EXPECT_THAT(wrapped_lines("one two  three ", letters(7)), ElementsAre("one two", "three"));
  EXPECT_THAT(wrapped_lines("  one two", letters(9)), ElementsAre("one two"));
}

TEST(WrappedLines, BreakAtEachLineEnd) {
  EXPECT_THAT(wrapped_lines("one\n\ntwo\n", letters(9)), ElementsAre("one", "", "two", ""));
  EXPECT_THAT(wrapped_lines("", letters(9)), ElementsAre(""));
}

TEST(WrappedLines, BreakBetweenLettersOfScriptsWithoutBlanks) {
  EXPECT_THAT(wrapped_lines("日本の夏休みの旅", letters(3)),
              ElementsAre("日本の", "夏休み", "の旅"));
  EXPECT_THAT(wrapped_lines("Film 日本", letters(6)), ElementsAre("Film 日", "本"))
      << "a blank counts, so that the sixth letter is the square one";
}

TEST(WrappedLines, BeginWithNoFullStopAndEndWithNoOpeningBracket) {
  EXPECT_THAT(wrapped_lines("日本夏。休", letters(3)), ElementsAre("日本", "夏。休"));
  EXPECT_THAT(wrapped_lines("日本「夏」", letters(3)), ElementsAre("日本", "「夏」"));
}

TEST(WrappedLines, BreakWithinAWordThatDoesNotFitAlone) {
  EXPECT_THAT(wrapped_lines("a Donaudampfschiff", letters(8)),
              ElementsAre("a", "Donaudam", "pfschiff"));
}

TEST(WrappedLines, KeepMarksWithTheirLetters) {
  const std::string marked = "e\u0301";
  EXPECT_THAT(wrapped_lines(marked + marked, letters(2)), ElementsAre(marked, marked));
  EXPECT_THAT(wrapped_lines(marked + marked, letters(1)), ElementsAre(marked, marked))
      << "one letter, whether it fits or not";
}

TEST(WrappedLines, HoldNothingThatIsNotText) {
  EXPECT_THAT(wrapped_lines("a\xFFz\tb", letters(9)), ElementsAre("a\uFFFDz b"));
}

TEST(WrappedLines, AreAsLongAsTheyCanBeInLongTexts) {
  std::string text;
  for (int i = 0; i < 100; ++i)
    text += "word ";
  EXPECT_EQ(wrapped_lines(text, letters(200)).front().size(), 199u);
  EXPECT_EQ(wrapped_lines(text, letters(499)).size(), 1u);
  EXPECT_EQ(wrapped_lines(std::string(1000, 'a'), letters(150)).front().size(), 150u);
}

TEST(WrappedLines, LoseNothingButBlanks) {
  const std::vector<std::string> pieces{"a", "Word", " ", "  ", "日", "本", "。",
                                        "(", ")",    "é", "א",  "ب",  "-",  "\u0301"};
  std::mt19937 random(7);  // NOLINT: the same each time
  for (int round = 0; round < 2000; ++round) {
    std::string text;
    for (auto left = random() % 12; left > 0; --left)
      text += pieces[random() % pieces.size()];
    const std::size_t most = 1 + random() % 8;
    std::string joined;
    for (const std::string& line : wrapped_lines(text, letters(most)))
      joined += line;
    std::erase(joined, ' ');
    std::erase(text, ' ');
    EXPECT_EQ(joined, text) << most;
  }
}

TEST(ShortenedLine, StaysWhenItFits) {
  EXPECT_EQ(shortened_line("one two", false, letters(7)), "one two");
}

TEST(ShortenedLine, EndsWithDotsWhereItsRestIsLeftOut) {
  EXPECT_EQ(shortened_line("one two", false, letters(6)), "one t…");
  EXPECT_EQ(shortened_line("one two", false, letters(5)), "one…") << "no blank before the dots";
  EXPECT_EQ(shortened_line("one", true, letters(9)), "one…");
  EXPECT_EQ(shortened_line("one", true, letters(0)), "…");
}

}  // namespace
}  // namespace corvane
