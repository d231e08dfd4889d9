// Discs played: where first play, buttons and the ends of titles really lead.
#include "player.h"
#include "studio.h"
#include "walk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane::disc {
namespace {

using testing::ElementsAre;

/// Bars two pixels high: quickly drawn, and as good to press as any button.
std::string bar(int row, const std::string& action) {
  const int y = 100 + row * 100;
  return " 100/ " + std::to_string(y) + "/ 300/ " + std::to_string(y + 2) + "/" + action +
         "/yellow/green";
}

/// Two titles and two menus; from each menu a title can be played and the other menu reached.
project with_menus(bool jumptable, const std::vector<std::string>& posts) {
  project p = short_project();
  add_title(p, {stored_media("muxed-ntsc.vob")}, "00:00:00.00,00:00:03.00");
  add_menu(p, stored_media("menu-ntsc.m2v"), "", {bar(0, "jump title 1"), bar(1, "jump menu 2")});
  add_menu(p, stored_media("menu-ntsc.m2v"), "",
           {bar(0, "jump title 2 chapter 2"), bar(1, "jump menu 1"), bar(2, "exit")});
  p.jumptable = jumptable;
  p.postinfo = posts;
  return p;
}

TEST(PlayedDisc, TitlesFollowEachOtherAndThePlayerStops) {
  project p = short_project();
  add_title(p, {stored_media("muxed-ntsc.vob")}, "00:00:00.00,00:00:03.00");
  const studio s;
  s.authored(p);
  player plays(s.out());
  EXPECT_EQ(plays.start(), "title 1 chapter 1");
  EXPECT_EQ(plays.play_to_end(), "title 2 chapter 1");
  EXPECT_EQ(plays.play_to_end(), "stopped");
}

TEST(PlayedDisc, PostCommandLeadsIntoAChapter) {
  project p = short_project();
  add_title(p, {stored_media("muxed-ntsc.vob")}, "00:00:00.00,00:00:03.00");
  p.postinfo = {"jump title 2 chapter 2   ", "exit                     "};
  p.isocreate = true;
  const studio s;
  s.authored(p);
  for (const std::string& place : {s.out(), s.image()}) {
    player plays(place);
    EXPECT_EQ(plays.start(), "title 1 chapter 1") << place;
    EXPECT_EQ(plays.play_to_end(), "title 2 chapter 2") << place;
    EXPECT_EQ(plays.play_to_end(), "stopped") << place;
  }
}

TEST(PlayedDisc, PlainMenusLeadToTitlesAndTitlesCallTheFirstMenu) {
  const studio s;
  s.authored(with_menus(false, {"call menu                ", "call menu                "}));
  player plays(s.out());
  EXPECT_EQ(plays.start(), "menu 1");
  EXPECT_EQ(plays.press(1), "title 1 chapter 1");
  EXPECT_EQ(plays.play_to_end(), "menu 1");
  EXPECT_EQ(plays.press(2), "menu 2");
  EXPECT_EQ(plays.press(1), "title 2 chapter 2");
  EXPECT_EQ(plays.play_to_end(), "menu 1");
  EXPECT_EQ(plays.press(2), "menu 2");
  EXPECT_EQ(plays.press(3), "stopped");
}

TEST(PlayedDisc, JumpTableBringsTitlesBackToTheMenuTheyWerePlayedFrom) {
  const studio s;
  s.authored(with_menus(true, {"call last menu           ", "call last menu           "}));
  player plays(s.out());
  EXPECT_EQ(plays.start(), "menu 1");
  EXPECT_EQ(plays.press(2), "menu 2");
  EXPECT_EQ(plays.press(1), "title 2 chapter 2");
  EXPECT_EQ(plays.play_to_end(), "menu 2");
  EXPECT_EQ(plays.press(2), "menu 1");
  EXPECT_EQ(plays.press(1), "title 1 chapter 1");
  EXPECT_EQ(plays.play_to_end(), "menu 1");
}

TEST(PlayedDisc, JumpTableLetsATitleCallAnyMenu) {
  const studio s;
  s.authored(with_menus(true, {"call menu 2              ", "call menu 1              "}));
  player plays(s.out());
  EXPECT_EQ(plays.start(), "menu 1");
  EXPECT_EQ(plays.press(1), "title 1 chapter 1");
  EXPECT_EQ(plays.play_to_end(), "menu 2");
  EXPECT_EQ(plays.press(1), "title 2 chapter 2");
  EXPECT_EQ(plays.play_to_end(), "menu 1");
}

TEST(PlayedDisc, JumpTableUnderstandsCommandsWithAnyBlanks) {
  project p = with_menus(true, {"call  menu   2           ", "  call  last  menu       "});
  p.menubuttons[0] = bar(0, " jump  title 1 ") + "|" + bar(1, "jump  menu  2");
  p.menubuttons[1] = bar(0, "jump   title 2  chapter 2") + "|" + bar(1, " jump menu 1");
  const studio s;
  s.authored(p);
  player plays(s.out());
  EXPECT_EQ(plays.start(), "menu 1");
  EXPECT_EQ(plays.press(2), "menu 2");
  EXPECT_EQ(plays.press(1), "title 2 chapter 2");
  EXPECT_EQ(plays.play_to_end(), "menu 2");
  EXPECT_EQ(plays.press(2), "menu 1");
  EXPECT_EQ(plays.press(1), "title 1 chapter 1");
  EXPECT_EQ(plays.play_to_end(), "menu 2");
}

/// Each button of the disc, pressed: where it leads, and what follows a title.
using ways = std::vector<std::vector<std::string>>;
ways all_ways(const studio& s, const project& p) {
  contents disc = s.authored(p);
  press_all_buttons(s.out(), disc);
  ways found;
  for (const menu& m : disc.menus) {
    if (m.chain.seconds == 0)
      continue;
    found.emplace_back();
    for (const button& b : m.buttons)
      found.back().push_back(b.then.empty() ? b.leads_to : b.leads_to + ", " + b.then);
  }
  return found;
}

/// Three menus, the second one looping, with every kind of command that a button can have.
project with_all_commands(bool jumptable, const std::vector<std::string>& posts) {
  project p = with_menus(jumptable, posts);
  p.moremenuoptions[1] = " 1\t00:00:00.0\t00:00:00.0\t 1";
  add_menu(
      p, stored_media("menu-ntsc.m2v"), "",
      {bar(0, "jump title 1"), bar(1, "jump title 2 chapter  2"), bar(2, "jump titleset 1 menu")});
  p.menubuttons[0] += "|" + bar(2, "jump menu 3");
  return p;
}

TEST(PlayedDisc, EveryButtonLeadsToItsTargetInPlainMode) {
  const studio s;
  EXPECT_THAT(all_ways(s, with_all_commands(false, {"call menu", "jump title 1 chapter 1"})),
              ElementsAre(ElementsAre("title 1 chapter 1, menu 1", "menu 2", "menu 3"),
                          ElementsAre("title 2 chapter 2, title 1 chapter 1", "menu 1", "stopped"),
                          ElementsAre("title 1 chapter 1, menu 1",
                                      "title 2 chapter 2, title 1 chapter 1", "menu 1")));
}

TEST(PlayedDisc, EveryButtonLeadsToItsTargetWithTheJumpTable) {
  const studio s;
  // "jump titleset 1 menu" of a button remembers its menu too, to which the first one forwards.
  EXPECT_THAT(
      all_ways(s, with_all_commands(true, {"call last menu", "call menu 3"})),
      ElementsAre(ElementsAre("title 1 chapter 1, menu 1", "menu 2", "menu 3"),
                  ElementsAre("title 2 chapter 2, menu 3", "menu 1", "stopped"),
                  ElementsAre("title 1 chapter 1, menu 3", "title 2 chapter 2, menu 3", "menu 3")));
}

TEST(PlayedDisc, LastMenuIsRememberedOverSeveralTitles) {
  project p = with_menus(true, {"jump title 2             ", "call last menu           "});
  p.menubuttons[1] = bar(0, "jump title 1");
  const studio s;
  s.authored(p);
  player plays(s.out());
  EXPECT_EQ(plays.start(), "menu 1");
  EXPECT_EQ(plays.press(2), "menu 2");
  EXPECT_EQ(plays.press(1), "title 1 chapter 1");
  EXPECT_EQ(plays.play_to_end(), "title 2 chapter 1");
  EXPECT_EQ(plays.play_to_end(), "menu 2");
}

TEST(PlayedDisc, FirstPlayThatPassesTheMenuByLeavesItToTheMenuKey) {
  project p = with_menus(false, {"exit                     ", "exit                     "});
  p.firstplay = "jump title 2";
  const studio s;
  contents disc = s.authored(p);
  press_all_buttons(s.out(), disc);
  EXPECT_EQ(disc.begins_with, "title 2 chapter 1");
  ASSERT_FALSE(disc.menus.empty());
  EXPECT_EQ(disc.menus[0].buttons.at(0).leads_to, "title 1 chapter 1");
}

TEST(PlayedDisc, LoopingMenuStaysShownUntilAButtonIsPressed) {
  project p = with_menus(false, {});
  p.moremenuoptions[0] = " 1\t00:00:00.0\t00:00:00.0\t 1";
  const studio s;
  s.authored(p);
  player plays(s.out());
  EXPECT_EQ(plays.start(), "menu 1");
  EXPECT_EQ(plays.play_to_end(), "failed: nothing else is shown");
  EXPECT_EQ(plays.press(1), "title 1 chapter 1");
}

TEST(PlayedDisc, PlaceWithoutADiscIsTold) {
  player plays("/nonexistent");
  EXPECT_EQ(plays.start().rfind("failed: ", 0), 0u);
}

}  // namespace
}  // namespace corvane::disc
