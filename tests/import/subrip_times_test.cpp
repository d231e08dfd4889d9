#include "import/subrip_times.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

constexpr source_ratio faster{25025, 24000};

TEST(SubripTimes, BeginAndEndComeSooner) {
  EXPECT_EQ(subrip_at_speed("1\n00:00:00,500 --> 00:00:02,000\nf\xC3\xBCr\n\n", faster),
            "1\n00:00:00,480 --> 00:00:01,918\nf\xC3\xBCr\n\n");
  EXPECT_EQ(subrip_at_speed("02:10:00,000 --> 99:59:59,999 X1:0\r\n", faster),
            "02:04:40,519 --> 95:54:14,744 X1:0\r\n");
}

TEST(SubripTimes, AsFastAsBeforeIsAsBefore) {
  const std::string text = "1\n00:00:00,001 --> 12:34:56,789\nx";
  EXPECT_EQ(subrip_at_speed(text, {1, 1}), text);
}

TEST(SubripTimes, WhatHasNoTimesStays) {
  for (const char* const line :
       {"", "\n", "00:00:00,500 -> 00:00:02,000\n", "00:00:00.500 --> 00:00:02.000\n",
        "0:00:00,500 --> 00:00:02,000\n", "00:00:00,500 --> 00:00:02,00", "00:00:00,500 --> "})
    EXPECT_EQ(subrip_at_speed(line, faster), line);
}

}  // namespace
}  // namespace corvane
