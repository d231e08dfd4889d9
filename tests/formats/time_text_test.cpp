// Positions as a person reads and types them.
#include "formats/time_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace corvane {
namespace {

TEST(TimeText, HasHoursMinutesSecondsAndHundredths) {
  EXPECT_EQ(time_text(0), "00:00:00.00");
  EXPECT_EQ(time_text(3725.5), "01:02:05.50");
  EXPECT_EQ(time_text(1001.0 / 30000), "00:00:00.03");
  EXPECT_EQ(time_text(100 * 3600.0), "100:00:00.00");
}

TEST(TimeText, CarriesWhatIsRounded) {
  EXPECT_EQ(time_text(59.999), "00:01:00.00");
  EXPECT_EQ(time_text(3599.996), "01:00:00.00");
  EXPECT_EQ(time_text(59.99), "00:00:59.99");
}

TEST(TimeText, OutsideOfAllVideosIsTheNearestTime) {
  EXPECT_EQ(time_text(-1), "00:00:00.00");
  EXPECT_EQ(time_text(std::numeric_limits<double>::infinity()), "32767:00:00.00");
}

TEST(ClockText, IsALengthInSecondsMinutesAndHours) {
  EXPECT_EQ(clock_text(0), "0:00");
  EXPECT_EQ(clock_text(19.5), "0:20");
  EXPECT_EQ(clock_text(754), "12:34");
  EXPECT_EQ(clock_text(3599.4), "59:59");
  EXPECT_EQ(clock_text(3599.5), "1:00:00");
  EXPECT_EQ(clock_text(3723), "1:02:03");
  EXPECT_EQ(clock_text(100 * 3600.0), "100:00:00");
}

TEST(TypedTime, IsHoursMinutesAndSecondsOrFewerOfThem) {
  EXPECT_EQ(typed_time("01:02:05.50"), 3725.5);
  EXPECT_EQ(typed_time("1:2:5.5"), 3725.5);
  EXPECT_EQ(typed_time("2:05.5"), 125.5);
  EXPECT_EQ(typed_time("5"), 5);
  EXPECT_EQ(typed_time(" 00:00:05. "), 5);
  EXPECT_EQ(typed_time("00:00:60.00"), 60);
}

TEST(TypedTime, IsNothingElse) {
  for (const char* const text :
       {"", " ", ":", "1:", ":1", "1:2:3:4", "abc", "1,5", "-1", "1.2.3", ".", "1e3", "0x10", "nan",
        "00:00:ab", "1 2", "1: 2", "0000000000000000000000000000000"})
    EXPECT_EQ(typed_time(text), std::nullopt) << text;
}

TEST(TypedTime, ReadsBackWhatIsShown) {
  for (const double seconds : {0.0, 0.03, 59.99, 3725.5})
    EXPECT_DOUBLE_EQ(typed_time(time_text(seconds)).value_or(-1), seconds);
}

}  // namespace
}  // namespace corvane
