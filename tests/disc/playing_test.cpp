// Discs played: where first play, buttons and the ends of titles really lead.
#include "player.h"
#include "studio.h"

#include <gtest/gtest.h>

namespace corvane::disc {
namespace {

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

TEST(played_disc, titles_follow_each_other_and_the_player_stops) {
  project p = short_project();
  add_title(p, {stored_media("muxed-ntsc.vob")}, "00:00:00.00,00:00:03.00");
  const studio s;
  s.authored(p);
  player plays(s.out());
  EXPECT_EQ(plays.start(), "title 1 chapter 1");
  EXPECT_EQ(plays.play_to_end(), "title 2 chapter 1");
  EXPECT_EQ(plays.play_to_end(), "stopped");
}

TEST(played_disc, post_command_leads_into_a_chapter) {
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

TEST(played_disc, plain_menus_lead_to_titles_and_titles_call_the_first_menu) {
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

TEST(played_disc, jump_table_brings_titles_back_to_the_menu_they_were_played_from) {
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

TEST(played_disc, jump_table_lets_a_title_call_any_menu) {
  const studio s;
  s.authored(with_menus(true, {"call menu 2              ", "call menu 1              "}));
  player plays(s.out());
  EXPECT_EQ(plays.start(), "menu 1");
  EXPECT_EQ(plays.press(1), "title 1 chapter 1");
  EXPECT_EQ(plays.play_to_end(), "menu 2");
  EXPECT_EQ(plays.press(1), "title 2 chapter 2");
  EXPECT_EQ(plays.play_to_end(), "menu 1");
}

TEST(played_disc, looping_menu_stays_shown_until_a_button_is_pressed) {
  project p = with_menus(false, {});
  p.moremenuoptions[0] = " 1\t00:00:00.0\t00:00:00.0\t 1";
  const studio s;
  s.authored(p);
  player plays(s.out());
  EXPECT_EQ(plays.start(), "menu 1");
  EXPECT_EQ(plays.play_to_end(), "failed: nothing else is shown");
  EXPECT_EQ(plays.press(1), "title 1 chapter 1");
}

TEST(played_disc, place_without_a_disc_is_told) {
  player plays("/nonexistent");
  EXPECT_EQ(plays.start().rfind("failed: ", 0), 0u);
}

}  // namespace
}  // namespace corvane::disc
