// How long spumux looks for a way to show a menu's buttons, as it is worked out beforehand. That
// the real one takes so long is tried in tests/disc/spumux_looks_test.cpp.
#include "examine/colour_groups.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <random>

namespace corvane::testing_support {
namespace {

/// Of `count` buttons one after the other has each look.
std::vector<int> in_turns(int count, int looks) {
  std::vector<int> all;
  for (int i = 0; i < count; ++i)
    all.push_back(i % looks);
  return all;
}

/// The buttons of each look follow each other.
std::vector<int> sorted_looks(int count, int looks) {
  std::vector<int> all;
  for (int i = 0; i < count; ++i)
    all.push_back(i * looks / count);
  return all;
}

/// The search itself: ways gone through, and buttons looked at.
struct real_search {
  double ways = 0, steps = 0;
};

bool fits(const std::vector<int>& looks, const std::vector<int>& way, double& steps) {
  unsigned held[3] = {};
  for (std::size_t i = 0; i < looks.size(); ++i) {
    ++steps;
    unsigned& group = held[static_cast<std::size_t>(way[i])];
    group |= 1U << static_cast<unsigned>(looks[i]);
    if (std::popcount(group) > 3)
      return false;
  }
  return true;
}

real_search searched(const std::vector<int>& looks) {
  real_search s;
  for (int groups = 1; groups <= 3; ++groups) {
    std::vector<int> way(looks.size(), 0);
    for (bool more = true; more;) {
      const bool fit = fits(looks, way, s.steps);
      if (fit)
        return s.ways += 1, s;
      s.ways += 1;
      std::size_t i = 0;
      while (i < way.size() && ++way[i] == groups)
        way[i++] = 0;
      more = i < way.size();
    }
  }
  return s;
}

TEST(ColourGroups, LooksAreOfHighlightAndSelect) {
  std::vector<disc_button> buttons(5);
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    buttons[i].highlight.text = i == 1 || i == 2 ? "brown" : "black";
    buttons[i].select.text = "white";
  }
  EXPECT_THAT(looks_of(buttons), testing::ElementsAre(0, 1, 1, 0, 0));
  buttons[4].select.text = "black";
  EXPECT_THAT(looks_of(buttons), testing::ElementsAre(0, 1, 1, 0, 2));
  EXPECT_EQ(count_of_looks(looks_of(buttons)), 3);
  EXPECT_EQ(count_of_looks({}), 0);
}

TEST(ColourGroups, OneGroupIsTheFirstWayTried) {
  EXPECT_EQ(ways_to_colour(std::vector<int>(36, 3)), 1);
  EXPECT_EQ(ways_to_colour(in_turns(6, 3)), 1);
}

TEST(ColourGroups, MoreGroupsAreTriedAfterFewerAndTheFirstButtonChangesFastest) {
  // One way with one group. With two, the last three looks have group 0; the ways before the one
  // that fits are as many as the number with the groups as its digits.
  EXPECT_EQ(ways_to_colour({0, 1, 2, 3}), 1 + 1 + 1);
  EXPECT_EQ(ways_to_colour({3, 1, 2, 3, 0}), 1 + 2 + 1) << "the second has group 1";
  // 2 to the 7th with two groups, then with three.
  EXPECT_EQ(ways_to_colour(in_turns(7, 7)), 1 + 128 + (2 + 3 + 9 + 27) + 1);
}

TEST(ColourGroups, WaysAndStepsAreThoseOfTheSearch) {
  std::mt19937 numbers(16);
  for (int menu = 0; menu < 300; ++menu) {
    const int count = static_cast<int>(numbers() % 12) + 1, most = static_cast<int>(numbers() % 9);
    std::vector<int> looks;
    for (int i = 0; i < count; ++i)
      looks.push_back(static_cast<int>(numbers() % static_cast<unsigned>(most + 1)));
    if (menu % 3 == 0)
      std::sort(looks.begin(), looks.end());
    const real_search real = searched(looks);
    EXPECT_EQ(ways_to_colour(looks), real.ways) << testing::PrintToString(looks);
    EXPECT_GE(steps_to_colour(looks), real.steps) << testing::PrintToString(looks);
    EXPECT_LE(steps_to_colour(looks), 1.6 * real.steps + count) << testing::PrintToString(looks);
  }
}

/// Measured: 17 seconds, 2 and none to speak of.
TEST(ColourGroups, ButtonsOfOneLookBelongTogether) {
  std::vector<int> last_differ(27, 0);
  last_differ.insert(last_differ.end(), {1, 2, 3});
  EXPECT_TRUE(are_looks_too_slow(last_differ));
  last_differ.erase(last_differ.begin(), last_differ.begin() + 3);
  EXPECT_FALSE(are_looks_too_slow(last_differ));
  std::vector<int> first_differ{0, 1, 2};
  first_differ.insert(first_differ.end(), 27, 3);
  EXPECT_FALSE(are_looks_too_slow(first_differ));
}

/// Six looks of 36 buttons, one after the other, take minutes, and nothing to speak of when those
/// of one look follow each other; of nine looks no order helps.
TEST(ColourGroups, WhatIsTooSlowIsWhatDoesNotEndInTime) {
  EXPECT_TRUE(are_looks_too_slow(in_turns(36, 6)));
  EXPECT_FALSE(are_looks_too_slow(sorted_looks(36, 6)));
  EXPECT_TRUE(are_looks_too_slow(sorted_looks(36, 9)));
  EXPECT_FALSE(are_looks_too_slow(in_turns(30, 6)));  // 3.6 seconds
  EXPECT_TRUE(are_looks_too_slow(in_turns(32, 6)));
  EXPECT_FALSE(are_looks_too_slow(in_turns(20, 7)));  // 4 seconds
  EXPECT_TRUE(are_looks_too_slow(in_turns(21, 7)));
  EXPECT_FALSE(are_looks_too_slow(sorted_looks(25, 7)));  // 2.8 seconds
  EXPECT_FALSE(are_looks_too_slow(in_turns(36, 10))) << "of more than nine this is not asked";
  EXPECT_FALSE(are_looks_too_slow({}));
}

}  // namespace
}  // namespace corvane::testing_support
