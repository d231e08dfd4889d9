#include "import/disc_budget.h"

#include "examine/space_rules.h"

#include <gtest/gtest.h>

#include <vector>

namespace corvane {
namespace {

constexpr double minutes = 60;

std::vector<budget_title> one_of(double seconds, std::int64_t sound_rate = 192'000) {
  return {{seconds, sound_rate, std::nullopt}};
}

double filled(std::uint64_t capacity, std::uint64_t used, const std::vector<budget_title>& titles) {
  const auto rate = video_rate_to_fill(capacity, used, titles);
  EXPECT_TRUE(rate);
  return static_cast<double>(bytes_on_disc(titles, rate.value_or(0)) + used) /
         static_cast<double>(capacity);
}

TEST(DiscBudget, FillsASingleLayerDisc) {
  for (const double length : {90 * minutes, 150 * minutes}) {
    const double part = filled(single_layer_bytes, 0, one_of(length));
    EXPECT_LE(part, 1 - budget_reserve + 1e-6);
    EXPECT_GE(part, 0.985);
  }
  // (4,653,369,262 bytes less 2,000,000, sound and navigation) * 8 * 2011/2048 / 5400
  EXPECT_NEAR(static_cast<double>(*video_rate_to_fill(single_layer_bytes, 0, one_of(90 * minutes))),
              6'533'000, 20'000);
  EXPECT_NEAR(
      static_cast<double>(*video_rate_to_fill(single_layer_bytes, 0, one_of(150 * minutes))),
      3'825'000, 20'000);
}

TEST(DiscBudget, SharesTheRoomByLength) {
  const std::vector<budget_title> two = {{30 * minutes, 192'000, std::nullopt},
                                         {60 * minutes, 192'000, std::nullopt}};
  EXPECT_EQ(video_rate_to_fill(single_layer_bytes, 0, two),
            video_rate_to_fill(single_layer_bytes, 0, one_of(90 * minutes)));
}

TEST(DiscBudget, WhatIsThereTakesItsPart) {
  const std::vector<budget_title> titles = {{60 * minutes, 448'000, std::nullopt},
                                            {60 * minutes, 192'000, 1'500'000'000}};
  const double part = filled(single_layer_bytes, 600'000'000, titles);
  EXPECT_LE(part, 1 - budget_reserve + 1e-6);
  EXPECT_GE(part, 0.985);
}

TEST(DiscBudget, AShortFilmHasNoMoreThanAPlayerReads) {
  EXPECT_EQ(video_rate_to_fill(double_layer_bytes, 0, one_of(10 * minutes)), most_mean_rate);
  // Eight sounds of 448 kb/s leave less.
  EXPECT_EQ(
      video_rate_to_fill(double_layer_bytes, 0, one_of(10 * minutes, std::int64_t{8} * 448'000)),
      peak_rate_beside(std::int64_t{8} * 448'000));
  EXPECT_EQ(peak_rate_beside(std::int64_t{8} * 448'000), 6'216'000);
  EXPECT_EQ(peak_rate_beside(192'000), 9'000'000);
}

TEST(DiscBudget, WhatDoesNotFitHasNoRate) {
  EXPECT_FALSE(video_rate_to_fill(single_layer_bytes, 0, one_of(20 * 60 * minutes)));
  EXPECT_FALSE(video_rate_to_fill(single_layer_bytes, single_layer_bytes, one_of(60)));
  const std::vector<budget_title> copied = {{60, 192'000, 5'000'000'000}};
  EXPECT_FALSE(video_rate_to_fill(single_layer_bytes, 0, copied));
  EXPECT_TRUE(video_rate_to_fill(double_layer_bytes, 0, copied));
}

}  // namespace
}  // namespace corvane
