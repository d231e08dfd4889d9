// Chapter times as dvdauthor 0.7.2 was measured to read them.
#include "formats/chapter_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ChapterEntries, StandBetweenCommasAndBlanks) {
  EXPECT_THAT(chapter_entries("00:00:00.00,00:05:00.00"),
              ElementsAre("00:00:00.00", "00:05:00.00"));
  EXPECT_THAT(chapter_entries("0, 5,,9 12 , "), ElementsAre("0", "5", "9", "12"));
  EXPECT_THAT(chapter_entries(",0"), ElementsAre("0"));
}

TEST(ChapterEntries, AnEmptyListHasNone) {
  for (const char* const list : {"", " ", ",", " ,, "})
    EXPECT_THAT(chapter_entries(list), IsEmpty()) << list;
}

TEST(ChapterEntrySeconds, AreFieldsOfSixtyOfWhichTheLastMayHaveAFraction) {
  struct row {
    const char* text;
    double seconds;
  };
  for (const row& r :
       {row{"00:00:05.50", 5.5}, row{"1:2:5.5", 3725.5}, row{"2:05", 125}, row{"5", 5},
        row{"00:00:60.00", 60}, row{"0:90:0", 5400}, row{".5", 0.5}, row{"5.", 5}, row{":1", 1},
        row{"0::1", 1}, row{"1:", 60}, row{":", 0}, row{"0:0:0:1.5", 1.5}, row{"1:0:0:0", 216000},
        row{"1e2", 100}, row{"+5", 5}, row{"1:-5", 55}, row{"1:+5", 65}})
    EXPECT_EQ(chapter_entry_seconds(r.text), r.seconds) << r.text;
}

TEST(ChapterEntrySeconds, AreNothingElse) {
  for (const char* const text :
       {"abc", "5 min", "1.2.3", "1.5:30", ".", "-", "+", "+-5", "--5", "1;2", "1e", "-1:5", "1:x",
        "00:00:ab", "inf", "nan", "1e400", "0x10"})
    EXPECT_EQ(chapter_entry_seconds(text), std::nullopt) << text;
}

TEST(ChapterEntrySeconds, OfAVeryLongTextAreNone) {
  EXPECT_EQ(chapter_entry_seconds(std::string(10'000, '9') + ":0"), std::nullopt);
  EXPECT_EQ(chapter_entry_seconds(std::string(10'000, ':')), 0);
}

}  // namespace
}  // namespace corvane
