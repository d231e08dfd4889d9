#include "formats/numbers.h"

#include "formats/text.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(Numbers, LeadingBlankStandsBeforeNonNegativeOnes) {
  EXPECT_EQ(leading_blank(1), " 1");
  EXPECT_EQ(leading_blank(0), " 0");
  EXPECT_EQ(leading_blank(-4), "-4");
  EXPECT_EQ(trimmed(12), "12");
}

TEST(Numbers, TwoDigitsAreAtLeastTwo) {
  EXPECT_EQ(two_digits(0), "00");
  EXPECT_EQ(two_digits(9), "09");
  EXPECT_EQ(two_digits(10), "10");
  EXPECT_EQ(two_digits(123), "123");
}

TEST(Numbers, LeadingNumberTextIsTheNumberATextBeginsWith) {
  const std::pair<const char*, const char*> table[] = {{"0 ms", "0"},
                                                       {"12 ms", "12"},
                                                       {"-250 ms", "-250"},
                                                       {"12.50 ms", "12.5"},
                                                       {" 1 000", "1000"},
                                                       {".5", "0.5"},
                                                       {"-.5x", "-0.5"},
                                                       {"abc", "0"},
                                                       {"", "0"},
                                                       {"-", "0"},
                                                       {"-0", "0"},
                                                       {"007", "7"},
                                                       {"1.2.3", "1.2"},
                                                       {"0 & calc", "0"},
                                                       {"+5", "5"},
                                                       {"1e3", "1"},
                                                       {"5-3", "5"},
                                                       {"12,5", "12"},
                                                       {"0.997 - 1/2/2005", "0.997"}};
  for (const auto& [text, number] : table)
    EXPECT_EQ(leading_number_text(text), number) << text;
}

TEST(Numbers, LeadingNumberTakesAnyLength) {
  EXPECT_EQ(leading_number_text(std::string(400, '9')), std::string(400, '9'));
  EXPECT_GT(leading_number(std::string(400, '9')), 1e300);
  EXPECT_EQ(leading_number("0." + std::string(400, '0') + "1"), 0);
  EXPECT_EQ(leading_whole(std::string(40, '9')), 2147483647);
  EXPECT_EQ(leading_whole("-" + std::string(40, '9')), -2147483647 - 1);
  EXPECT_EQ(leading_whole(" 110"), 110);
}

TEST(Text, SplitOfNothingHasNoPieces) {
  EXPECT_TRUE(split("", '/').empty());
  EXPECT_EQ(split("a/", '/'), (std::vector<std::string>{"a", ""}));
  EXPECT_EQ(split(" ", '|'), (std::vector<std::string>{" "}));
  EXPECT_EQ(split("a\r\nb", "\r\n"), (std::vector<std::string>{"a", "b"}));
}

TEST(Text, JoinUndoesSplit) {
  for (const auto* text : {"a", "a/b", "/", "//a"})
    EXPECT_EQ(join(split(text, '/'), "/"), text);
}

TEST(Text, TrimsBlanksOnly) {
  EXPECT_EQ(trim("  a b  "), "a b");
  EXPECT_EQ(trim_left("   "), "");
  EXPECT_EQ(trim_right("a\t "), "a\t");
}

TEST(Text, ReplaceAllDoesNotLookAtWhatItPutIn) {
  EXPECT_EQ(replace_all("a&b&&", "&", "&amp;"), "a&amp;b&amp;&amp;");
}

TEST(Numbers, PlainNumbersAreDigitsWithAtMostOnePoint) {
  for (const char* text : {"0", "007", "5.", ".5", "1.25"})
    EXPECT_TRUE(is_plain_number(text)) << text;
  for (const char* text : {"", ".", "1.2.3", "..5", "-1", "+1", " 1", "1e3", "1,5", "x"})
    EXPECT_FALSE(is_plain_number(text)) << text;
}

}  // namespace
}  // namespace corvane
