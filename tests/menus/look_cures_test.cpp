// What helps against looks that spumux does not find a way for.
#include "menus/look_cures.h"

#include "examine/colour_groups.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>

namespace corvane {
namespace {

using testing::ElementsAre;
using indices = std::vector<int>;

indices looks_in_turns(int count, int looks) {
  indices all;
  for (int i = 0; i < count; ++i)
    all.push_back(i % looks);
  return all;
}

indices reordered(const indices& looks, const indices& order) {
  indices now;
  for (const int i : order)
    now.push_back(looks[static_cast<std::size_t>(i)]);
  return now;
}

const std::vector<bool> all_may(36, true);

/// The looks after the plan; what does not follow from it stays.
indices after(const indices& looks, const fewer_looks& plan) {
  indices now = looks;
  for (const int i : plan.buttons)
    now[static_cast<std::size_t>(i)] = looks[static_cast<std::size_t>(plan.as)];
  return plan.order ? reordered(now, order_by_look(now)) : now;
}

TEST(LookCures, NothingIsToBeDoneAboutLooksThatAreSortedOut) {
  for (const indices& looks : {indices{}, indices{0, 1, 0, 1}, looks_in_turns(36, 3)}) {
    EXPECT_TRUE(are_looks_sorted_out(looks));
    EXPECT_FALSE(cures_of(looks, all_may).order);
    EXPECT_FALSE(cures_of(looks, all_may).fewer);
  }
  EXPECT_FALSE(are_looks_sorted_out(looks_in_turns(10, 10)));
}

TEST(LookCures, OrderKeepsTheLooksAsTheyComeWhereThatIsGoodEnough) {
  EXPECT_THAT(order_by_look({1, 0, 2, 1, 0, 1}), ElementsAre(0, 3, 5, 1, 4, 2));
  // Thirty of the first and six others: the first come last.
  indices looks(30, 0);
  looks.insert(looks.end(), {1, 2, 3, 4, 5, 0});
  EXPECT_FALSE(are_looks_sorted_out(looks));
  const indices order = order_by_look(looks);
  EXPECT_EQ(order.front(), 30);
  EXPECT_EQ(order.back(), 35);
  EXPECT_TRUE(are_looks_sorted_out(reordered(looks, order)));
}

TEST(LookCures, SixLooksOfThirtySixButtonsAreOrdered) {
  const indices looks = looks_in_turns(36, 6);
  const look_cures cures = cures_of(looks, all_may);
  EXPECT_TRUE(cures.order);
  ASSERT_TRUE(cures.fewer);
  EXPECT_FALSE(cures.fewer->order) << "the order stays where it is not the cure";
  EXPECT_TRUE(are_looks_sorted_out(after(looks, *cures.fewer)));
}

TEST(LookCures, OfNineLooksThreeAreGivenUpAndTheRestIsOrdered) {
  indices looks = looks_in_turns(36, 9);
  looks[8] = 0;  // the rarest three are 8, with three buttons, and two of four
  const look_cures cures = cures_of(looks, all_may);
  EXPECT_FALSE(cures.order);
  ASSERT_TRUE(cures.fewer);
  EXPECT_EQ(cures.fewer->as, 0);
  EXPECT_TRUE(cures.fewer->order);
  EXPECT_EQ(cures.fewer->buttons.size(), 11u);
  EXPECT_TRUE(are_looks_sorted_out(after(looks, *cures.fewer)));
}

TEST(LookCures, TheTenthLookIsGivenUp) {
  indices looks = looks_in_turns(10, 10);
  looks.push_back(4);
  const look_cures cures = cures_of(looks, all_may);
  EXPECT_FALSE(cures.order);
  ASSERT_TRUE(cures.fewer);
  EXPECT_THAT(cures.fewer->buttons, ElementsAre(9));
  EXPECT_EQ(cures.fewer->as, 4);
  EXPECT_EQ(text_of(*cures.fewer), "gives button 10 the look of button 5");
}

TEST(LookCures, WhatMayNotChangeStaysAndGivesNoLook) {
  const indices looks = looks_in_turns(10, 10);
  std::vector<bool> may(10, false);
  EXPECT_FALSE(fewer_looks_of(looks, may));
  may[2] = true;
  EXPECT_FALSE(fewer_looks_of(looks, may));
  may[7] = true;
  const auto plan = fewer_looks_of(looks, may);
  ASSERT_TRUE(plan);
  EXPECT_THAT(plan->buttons, ElementsAre(7));
  EXPECT_EQ(plan->as, 2);
}

TEST(LookCures, TextNamesTheButtons) {
  EXPECT_EQ(text_of({{2, 6, 11}, 0, false}), "gives buttons 3, 7 and 12 the look of button 1");
  EXPECT_EQ(text_of({{2, 6}, 0, true}),
            "gives buttons 3 and 7 the look of button 1, and orders all by look");
}

TEST(LookCures, CureOfAnyMenuHelps) {
  std::mt19937 numbers(16);
  for (int menu = 0; menu < 200; ++menu) {
    const auto most = numbers() % 14 + 1;
    indices looks(numbers() % 36 + 1);
    for (int& look : looks)
      look = static_cast<int>(numbers() % most);
    const look_cures cures = cures_of(looks, all_may);
    EXPECT_EQ(cures.fewer.has_value(), !are_looks_sorted_out(looks));
    EXPECT_TRUE(!cures.order || are_looks_sorted_out(reordered(looks, order_by_look(looks))));
    EXPECT_TRUE(!cures.fewer || are_looks_sorted_out(after(looks, *cures.fewer)));
    indices order = order_by_look(looks);
    std::sort(order.begin(), order.end());
    for (std::size_t i = 0; i < order.size(); ++i)
      ASSERT_EQ(order[i], static_cast<int>(i)) << "each button once";
  }
}

}  // namespace
}  // namespace corvane
