// When cues come up and go, as spumux was seen to take them.
#include "examine/cue_times.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace corvane {
namespace {

struct made_cue {
  double begin = 0;
  std::optional<double> end;
};

std::string times_of(const std::vector<made_cue>& cues,
                     subtitle_format format = subtitle_format::subrip) {
  subtitle_cues all;
  all.format = format;
  for (const made_cue& one : cues)
    all.cues.push_back({one.begin, one.end, 1, {"text"}, {}});
  return cue_times_text(cue_times_of(all, 25));
}

TEST(CueTimes, PlainOnesAreAsTheyStand) {
  EXPECT_EQ(times_of({{1, 2}, {3.25, 4.129}}), "1-2 3.25-4.12");
  EXPECT_EQ(times_of({}), "");
}

TEST(CueTimes, TheyAreSortedAndCutWhereTheNextBegins) {
  EXPECT_EQ(times_of({{10, 11}, {1, 5}, {3, 4}}), "1-2.99 3-4 10-11");
  EXPECT_EQ(times_of({{1, 2}, {2, 4}}), "1-1.99 2-4");
  EXPECT_EQ(times_of({{1, 20}, {12, 14}}), "1-7 12-14") << "six seconds of one that is cut";
}

TEST(CueTimes, OfTwoThatBeginTogetherTheLaterIsShown) {
  EXPECT_EQ(times_of({{5, 6}, {5, 7}, {5, 8}}), "5-8");
  EXPECT_EQ(times_of({{5, 6}, {5.01, 7}}), "5-5 5.01-7");
}

TEST(CueTimes, ThoseThatOverlapALittleShareTheTime) {
  EXPECT_EQ(times_of({{1, 2.15}, {2, 3.2}, {3, 5}}), "1-2.07 2.08-3.09 3.1-5");
}

TEST(CueTimes, OnesWithoutAnEndStayForSixSeconds) {
  EXPECT_EQ(times_of({{1, 1}, {3, 2}, {10, std::nullopt}}), "1-2.99 3-9 10-16");
}

TEST(CueTimes, PicturesAreCounted) {
  EXPECT_EQ(times_of({{1.2, 2.4}, {2, 3.6}}, subtitle_format::microdvd), "1.2-1.96 2-3.6");
}

TEST(CueTimes, WhatIsNotSureIsNotSaid) {
  EXPECT_EQ(times_of({{1, 5}, {3, 4}}, subtitle_format::ssa), "") << "laid above each other";
  EXPECT_EQ(times_of({{3, 4}, {1, 2}}, subtitle_format::ssa), "1-2 3-4");
  EXPECT_EQ(times_of({{1, 2}, {3, std::nullopt}}, subtitle_format::sami), "");
  EXPECT_EQ(times_of({{1, 2}, {3, 4}}, subtitle_format::sami), "1-2 3-4");
  EXPECT_EQ(times_of({{1, 2}, {1e9, 2e9}}), "") << "stamps begin again before";
  EXPECT_EQ(times_of({{1, 1200}}), "1-") << "its length does not fit";
  subtitle_cues pictures;
  pictures.format = subtitle_format::microdvd;
  pictures.cues = {{1e-40, 2e-40, 1, {"text"}, {}}, {1, std::nullopt, 2, {"text"}, {}}};
  for (const double rate : {1e40, 1e300, 0.0, -25.0})
    EXPECT_TRUE(cue_times_of(pictures, rate).empty()) << rate;
}

}  // namespace
}  // namespace corvane
