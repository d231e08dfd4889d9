// The map of a disc: its nodes, and an arrow for everything that leads somewhere.
#include "examine/disc_map.h"

#include "disc/disc_description.h"
#include "support/menu_of_actions.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvane {
namespace {

class DiscMap : public ::testing::Test {
 protected:
  void titles(int count) {
    for (int i = 0; i < count; ++i) {
      disc_title title;
      title.streams = {"\\v\\t.m2v"};
      title.is_multiplexed_here = true;
      title.chapters_text = "00:00:00.00,00:00:02.00";
      title.chapters = {time_of("00:00:00.00"), time_of("00:00:02.00")};
      d_.titles.push_back(title);
    }
  }
  void menu(const std::vector<std::string>& actions) {
    d_.menus.push_back(testing_support::menu_of_actions(actions));
  }
  void after(int title, const std::string& command) {
    d_.titles[static_cast<std::size_t>(title) - 1].post = command_of(command);
  }
  std::string text(bool hand_edited = false) const { return map_text(map_of(d_, hand_edited)); }

  disc_description d_;
};

TEST_F(DiscMap, TitlesWithoutMenusFollowEachOther) {
  titles(3);
  EXPECT_EQ(text(),
            "end of title 1 -> title 2 chapter 1\n"
            "end of title 2 -> title 3 chapter 1\n"
            "end of title 3 -> stop\n"
            "first play -> title 1 chapter 1\n");
}

TEST_F(DiscMap, EveryButtonHasItsArrow) {
  titles(2);
  menu({"jump title 1", "jump title 2 chapter 2", "jump menu 2", "exit"});
  menu({"jump menu 1"});
  after(1, "call menu");
  after(2, "jump title 1");
  EXPECT_EQ(text(),
            "button 1 of menu 1 -> title 1 chapter 1\n"
            "button 1 of menu 2 -> menu 1\n"
            "button 2 of menu 1 -> title 2 chapter 2\n"
            "button 3 of menu 1 -> menu 2\n"
            "button 4 of menu 1 -> stop\n"
            "end of title 1 -> menu 1\n"
            "end of title 2 -> title 1 chapter 1\n"
            "first play -> menu 1\n");
}

TEST_F(DiscMap, CommandsThatCannotBeDoneLeadNowhereAndSayWhy) {
  titles(1);
  menu({"jump title 9", "jump title 1 chapter 7", "call menu"});
  after(1, "jump menu 1");
  const disc_map map = map_of(d_, false);
  EXPECT_EQ(map_text(map),
            "button 1 of menu 1 -> nowhere\n"
            "button 2 of menu 1 -> nowhere\n"
            "button 3 of menu 1 -> nowhere\n"
            "end of title 1 -> nowhere\n"
            "first play -> menu 1\n"
            "nothing -> title 1\n");
  EXPECT_EQ(map.arrows[1].why, "leads to title 9, but there is only title 1");
  EXPECT_EQ(map.arrows[1].command, "jump title 9");
}

TEST_F(DiscMap, WhatNothingLeadsToAndWhatLeadsOnlyToMenusIsSaid) {
  titles(2);
  menu({"jump title 1"});
  menu({"jump menu 3"});
  menu({"jump menu 2"});
  menu({});
  after(1, "call menu");
  after(2, "call menu");
  const std::string all = text();
  EXPECT_NE(all.find("nothing -> title 2\n"), std::string::npos) << all;
  EXPECT_NE(all.find("nothing -> menu 2\n"), std::string::npos) << all;
  EXPECT_NE(all.find("menu 2 -> nothing\n"), std::string::npos) << all;
  EXPECT_NE(all.find("menu 3 -> nothing\n"), std::string::npos) << all;
  EXPECT_NE(all.find("menu 4 -> nothing\n"), std::string::npos) << all;
  EXPECT_EQ(all.find("menu 1 -> nothing\n"), std::string::npos) << all;
  EXPECT_EQ(all.find("nothing -> title 1\n"), std::string::npos) << all;
}

TEST_F(DiscMap, MenuKeyReachesTheFirstMenu) {
  titles(1);
  menu({"jump title 1"});
  d_.first_play = command_of("jump title 1");
  after(1, "exit");
  EXPECT_EQ(text().find("nothing -> "), std::string::npos) << text();
}

TEST_F(DiscMap, LastMenuIsEachThatTheTitleCanBeStartedFrom) {
  titles(3);
  menu({"jump title 1", "jump menu 2", "jump menu 3"});
  menu({"jump title 1", "jump title 2"});
  menu({"jump title 3"});
  d_.jump_table = true;
  after(1, "call last menu");
  after(2, "jump title 3");
  after(3, "call last menu");
  EXPECT_EQ(text(),
            "button 1 of menu 1 -> title 1 chapter 1\n"
            "button 1 of menu 2 -> title 1 chapter 1\n"
            "button 1 of menu 3 -> title 3 chapter 1\n"
            "button 2 of menu 1 -> menu 2\n"
            "button 2 of menu 2 -> title 2 chapter 1\n"
            "button 3 of menu 1 -> menu 3\n"
            "end of title 1 -> menu 1\n"
            "end of title 1 -> menu 2\n"
            "end of title 2 -> title 3 chapter 1\n"
            "end of title 3 -> menu 2\n"
            "end of title 3 -> menu 3\n"
            "first play -> menu 1\n");
}

TEST_F(DiscMap, WithTheJumpTableTitlesCallAnyMenuAndTitlesetMenuLeadsBack) {
  titles(1);
  menu({"jump menu 2"});
  menu({"jump titleset 1 menu", "jump title 1"});
  d_.jump_table = true;
  after(1, "call menu 2");
  EXPECT_EQ(text(),
            "button 1 of menu 1 -> menu 2\n"
            "button 1 of menu 2 -> menu 2\n"
            "button 2 of menu 2 -> title 1 chapter 1\n"
            "end of title 1 -> menu 2\n"
            "first play -> menu 1\n");
}

TEST_F(DiscMap, LastMenuOfATitleThatTheDiscBeginsWithIsTheFirst) {
  titles(1);
  menu({"exit"});
  menu({"exit"});
  d_.jump_table = true;
  d_.first_play = command_of("jump title 1");
  after(1, "call last menu");
  const disc_map map = map_of(d_, false);
  ASSERT_EQ(map.arrows.back().from.number, 1);
  EXPECT_EQ(target_text(map.arrows.back()), "menu 1");
  EXPECT_TRUE(map.arrows.back().is_last_menu);
}

TEST_F(DiscMap, TypedCommandHasAnArrowForEachOfItsWays) {
  titles(3);
  after(1, "if (g2 == 1) jump title 3; else jump title 2");
  const std::string all = text();
  EXPECT_NE(all.find("end of title 1 -> title 2 chapter 1\n"), std::string::npos) << all;
  EXPECT_NE(all.find("end of title 1 -> title 3 chapter 1\n"), std::string::npos) << all;
}

TEST_F(DiscMap, BehindACommandThatMayLeadAnywhereNothingIsCalledUnreached) {
  titles(2);
  menu({"resume"});
  const std::string all = text();
  EXPECT_NE(all.find("button 1 of menu 1 -> not told\n"), std::string::npos) << all;
  EXPECT_EQ(all.find("nothing -> "), std::string::npos) << all;
}

TEST_F(DiscMap, NothingAtAllIsAMapOfFirstPlayAlone) {
  const disc_map map = map_of(d_, false);
  ASSERT_EQ(map.nodes.size(), 1u);
  EXPECT_EQ(name_of(map.nodes[0].place), "first play");
}

}  // namespace
}  // namespace corvane
