// Titleset menus on the disc: buttons with their places and commands, in both navigation modes.
#include "examine/button_neighbours.h"
#include "large_sets.h"
#include "studio.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace corvane::disc {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* looping = " 1\t00:00:00.0\t00:00:00.0\t 2";

/// Two titles and two menus: three buttons on the first, two on the second.
project with_two_menus(const std::string& first_options = "0\t00:00:00.0\t00:00:00.0\t1") {
  project p = short_project();
  add_title(p, {stored_media("muxed-ntsc.vob")}, "00:00:00.00,00:00:02.00,00:00:04.00");
  add_menu(p, stored_media("menu-ntsc.m2v"), stored_media("menu.ac3"),
           {" 100/ 100/ 300/ 140/jump title 1/yellow/green",
            " 100/ 200/ 300/ 240/jump title 2 chapter 3/yellow/green",
            " 100/ 300/ 300/ 340/jump menu 2/yellow/green"},
           first_options);
  add_menu(p, stored_media("menu-ntsc.m2v"), "",
           {" 400/ 100/ 600/ 140/jump menu 1/blue/white", " 400/ 200/ 600/ 240/exit/blue/white"});
  return p;
}

/// The menus that show something. dvdauthor adds a chain without pictures that leads from a call
/// in a title to the first menu.
std::vector<menu> shown(const contents& disc) {
  std::vector<menu> all;
  for (const menu& m : disc.menus)
    if (m.chain.seconds > 0)
      all.push_back(m);
  return all;
}

std::vector<std::string> commands_of(const menu& m) {
  std::vector<std::string> all;
  all.reserve(m.buttons.size());
  for (const button& b : m.buttons)
    all.push_back(b.command.text());
  return all;
}

void expect_place(const button& b, int x0, int y0, int x1, int y1) {
  EXPECT_EQ(b.x0, x0);
  EXPECT_EQ(b.y0, y0);
  EXPECT_EQ(b.x1, x1);
  EXPECT_EQ(b.y1, y1);
}

TEST(MenusOnDisc, ButtonsStandWhereTheProjectHasThemAndAreWalkedInRows) {
  const studio s;
  const std::vector<menu> menus = shown(s.authored(with_two_menus()));
  ASSERT_EQ(menus.size(), 2u);
  ASSERT_EQ(menus[0].buttons.size(), 3u);
  expect_place(menus[0].buttons[0], 100, 100, 300, 140);
  expect_place(menus[0].buttons[1], 100, 200, 300, 240);
  expect_place(menus[0].buttons[2], 100, 300, 300, 340);
  ASSERT_EQ(menus[1].buttons.size(), 2u);
  expect_place(menus[1].buttons[0], 400, 100, 600, 140);
  expect_place(menus[1].buttons[1], 400, 200, 600, 240);
  EXPECT_EQ(menus[0].entry, "root");
  EXPECT_NEAR(menus[0].chain.seconds, 2, 0.1);
  EXPECT_EQ(menus[0].buttons[0].down, 2);
  EXPECT_EQ(menus[0].buttons[1].down, 3);
  EXPECT_EQ(menus[0].buttons[2].up, 2);
}

TEST(MenusOnDisc, PlainButtonsCarryTheirCommands) {
  const studio s;
  const contents disc = s.authored(with_two_menus());
  const std::vector<menu> menus = shown(disc);
  ASSERT_EQ(menus.size(), 2u);
  EXPECT_THAT(commands_of(menus[0]), ElementsAre("JumpVTS_TT 1", "JumpVTS_PTT 2:3", "LinkPGCN 2"));
  EXPECT_THAT(commands_of(menus[1]), ElementsAre("LinkPGCN 1", "Exit"));
  EXPECT_EQ(menus[0].chain.still_seconds, 255);
  EXPECT_EQ(menus[1].chain.still_seconds, 255);
  ASSERT_TRUE(disc.first_play);
  EXPECT_THAT(texts(disc.first_play->pre),
              ElementsAre("JumpSS VTSM titleset 1, title 1, root menu"));
}

TEST(MenusOnDisc, JumpTableRemembersTheMenuInG1) {
  project p = with_two_menus();
  p.jumptable = true;
  p.postinfo = {"call menu 2              ", "call last menu           "};
  const studio s;
  const contents disc = s.authored(p);
  const std::vector<menu> menus = shown(disc);
  ASSERT_EQ(menus.size(), 2u);
  // The first menu forwards to the one remembered, before it shows anything.
  ASSERT_FALSE(menus[0].chain.pre.empty());
  EXPECT_EQ(menus[0].chain.pre[0].text(), "if (g1 == 2) LinkPGCN 2");
  // A jump between menus sets g1 on the way; one command does both.
  ASSERT_EQ(menus[0].buttons.size(), 3u);
  EXPECT_EQ(menus[0].buttons[2].command.text(), "g1 = 2, LinkPGCN 2");
  ASSERT_EQ(menus[1].buttons.size(), 2u);
  EXPECT_EQ(menus[1].buttons[0].command.text(), "g1 = 1, LinkPGCN 1");
  EXPECT_EQ(menus[1].buttons[1].command.text(), "Exit");
  // Setting g1 and leaving for a title takes two, which the chain's end carries out.
  EXPECT_THAT(menus[0].buttons[0].command.text(), HasSubstr("LinkTailPGC"));
  const std::vector<std::string> tail = texts(menus[0].chain.post);
  EXPECT_THAT(tail, testing::IsSupersetOf({"g1 = 1", "JumpVTS_TT 1", "JumpVTS_PTT 2:3"}));

  ASSERT_EQ(disc.titles.size(), 2u);
  EXPECT_THAT(texts(disc.titles[0].chain.post), ElementsAre("g1 = 2", HasSubstr("CallSS VTSM")));
  EXPECT_THAT(texts(disc.titles[1].chain.post), ElementsAre(HasSubstr("CallSS VTSM")));
}

TEST(MenusOnDisc, TitleCallsTheMenuInPlainMode) {
  project p = with_two_menus();
  p.postinfo = {"call menu                ", "exit                     "};
  const studio s;
  const contents disc = s.authored(p);
  ASSERT_EQ(disc.titles.size(), 2u);
  EXPECT_THAT(texts(disc.titles[0].chain.post), ElementsAre(HasSubstr("CallSS VTSM")));
}

/// What dvdauthor has a menu do first that is asked to do nothing: highlight its first button.
const std::vector<std::string> first_button_lit{"button = 1"};

/// Three menus of one button each that leads to the title.
project with_three_menus(bool jumptable, const std::string& second_options) {
  project p = short_project();
  p.jumptable = jumptable;
  for (const std::string& options : {std::string("0\t00:00:00.0\t00:00:00.0\t1"), second_options,
                                     std::string("0\t00:00:00.0\t00:00:00.0\t1")})
    add_menu(p, stored_media("menu-ntsc.m2v"), "", {" 0/ 0/ 100/ 2/jump title 1/black/white"},
             options);
  return p;
}

TEST(MenusOnDisc, JumpTableForwardsFromTheFirstMenuToEachOtherOne) {
  const studio s;
  const std::vector<menu> menus = shown(s.authored(with_three_menus(true, looping)));
  ASSERT_EQ(menus.size(), 3u);
  EXPECT_THAT(texts(menus[0].chain.pre),
              ElementsAre("if (g1 == 2) LinkPGCN 2", "if (g1 == 3) LinkPGCN 3"));
  EXPECT_EQ(texts(menus[1].chain.pre), first_button_lit);
  EXPECT_EQ(texts(menus[2].chain.pre), first_button_lit);
  for (const menu& m : menus)
    EXPECT_EQ(m.chain.still_seconds, m.number == 2 ? 5 : 255) << m.number;
  // At its end the looping menu starts itself again, unless its button was pressed.
  EXPECT_THAT(
      texts(menus[1].chain.post),
      ElementsAre("g14 = g15", "g15 = 0", "if (g14 != 1) LinkPGCN 2", "g1 = 2", "JumpVTS_TT 1"));
}

TEST(MenusOnDisc, PlainMenusForwardNowhereAndStay) {
  const studio s;
  const std::vector<menu> menus =
      shown(s.authored(with_three_menus(false, "0\t00:00:00.0\t00:00:00.0\t1")));
  ASSERT_EQ(menus.size(), 3u);
  for (const menu& m : menus) {
    EXPECT_EQ(texts(m.chain.pre), first_button_lit) << m.number;
    // Never come to: the pause is for ever.
    EXPECT_THAT(texts(m.chain.post), ElementsAre("Exit")) << m.number;
    EXPECT_EQ(m.chain.still_seconds, 255) << m.number;
  }
}

TEST(MenusOnDisc, SingleMenuOfAJumpTableForwardsNowhere) {
  project p = short_project();
  p.jumptable = true;
  p.postinfo = {"call menu 1              "};
  add_menu(p, stored_media("menu-ntsc.m2v"), "", {" 0/ 0/ 100/ 2/exit/black/white"});
  const studio s;
  const std::vector<menu> menus = shown(s.authored(p));
  ASSERT_EQ(menus.size(), 1u);
  EXPECT_EQ(texts(menus[0].chain.pre), first_button_lit);
}

TEST(MenusOnDisc, LoopingMenuPausesFiveSecondsAndStartsAgain) {
  const studio s;
  const std::vector<menu> menus = shown(s.authored(with_two_menus(looping)));
  ASSERT_EQ(menus.size(), 2u);
  EXPECT_EQ(menus[0].chain.still_seconds, 5);
  EXPECT_THAT(texts(menus[0].chain.post), ElementsAre("LinkPGCN 1"));
  EXPECT_EQ(menus[1].chain.still_seconds, 255);
}

TEST(MenusOnDisc, FirstPlayMayBeTheMenu) {
  project p = with_two_menus();
  p.firstplay = "jump titleset 1 menu";
  const studio s;
  const contents disc = s.authored(p);
  ASSERT_TRUE(disc.first_play);
  EXPECT_THAT(texts(disc.first_play->pre),
              ElementsAre("JumpSS VTSM titleset 1, title 1, root menu"));
}

TEST(MenusOnDisc, FirstPlayMayPassTheMenuBy) {
  project p = with_two_menus();
  p.firstplay = "jump title 2";
  const studio s;
  const contents disc = s.authored(p);
  ASSERT_TRUE(disc.first_play);
  EXPECT_THAT(texts(disc.first_play->pre), ElementsAre("JumpTT 2"));
}

TEST(MenusOnDisc, PalMenuReachesTheLowerEdge) {
  project p;
  p.globalregion = "PAL";
  add_title(p, {stored_media("clip-pal.m2v"), stored_media("clip.ac3")});
  add_menu(p, stored_media("menu-pal.m2v"), stored_media("menu.ac3"),
           {" 600/ 530/ 718/ 574/jump title 1/orange/cyan"});
  const studio s;
  const std::vector<menu> menus = shown(s.authored(p));
  ASSERT_EQ(menus.size(), 1u);
  ASSERT_EQ(menus[0].buttons.size(), 1u);
  expect_place(menus[0].buttons[0], 600, 530, 718, 574);
}

/// A frame whose thickness leaves no inside: gm refuses to clear it, and the button stays a bar.
TEST(MenusOnDisc, FrameWithoutAnInsideDoesNotFailTheRun) {
  project p = short_project();
  add_menu(p, stored_media("menu-ntsc.m2v"), "", {" 100/ 100/ 120/ 110/jump title 1/white/grey"},
           " 0\t00:00:00.0\t00:00:00.0\t 9");
  const studio s;
  const std::vector<menu> menus = shown(s.authored(p));
  ASSERT_EQ(menus.size(), 1u);
  ASSERT_EQ(menus[0].buttons.size(), 1u);
  EXPECT_EQ(menus[0].buttons[0].command.text(), "JumpVTS_TT 1");
}

TEST(MenusOnDisc, BitmapHighlightsBecomeButtons) {
  const studio s;
  for (const char* name : {"work/a b.bmp", "work/c d.bmp"}) {
    const finished drawn = run(
        {{"gm", "convert", "-size", "120x40", "xc:white", "-colors", "4", s.folder().path(name)}});
    ASSERT_EQ(drawn.status, 0) << drawn.out;
  }
  project p = short_project();
  add_menu(p, stored_media("menu-ntsc.m2v"), "",
           {" 100/ 100/ 220/ 140/jump title 1/" + s.folder().stored("work/a b.bmp") + "/" +
                s.folder().stored("work/c d.bmp"),
            " 100/ 200/ 220/ 240/exit/yellow/" + s.folder().stored("work/c d.bmp")});
  const std::vector<menu> menus = shown(s.authored(p));
  ASSERT_EQ(menus.size(), 1u);
  EXPECT_THAT(commands_of(menus[0]), ElementsAre("JumpVTS_TT 1", "Exit"));
}

/// Bars two pixels high, which take one drawing command instead of two.
TEST(MenusOnDisc, ThirtySixButtonsFitOnAMenu) {
  project p = short_project();
  std::vector<std::string> buttons;
  for (int i = 0; i < 36; ++i) {
    const int x = 40 + i % 6 * 110, y = 40 + i / 6 * 70;
    buttons.push_back(" " + std::to_string(x) + "/ " + std::to_string(y) + "/ " +
                      std::to_string(x + 80) + "/ " + std::to_string(y + 2) +
                      "/jump title 1/yellow/yellow");
  }
  add_menu(p, stored_media("menu-ntsc.m2v"), "", buttons);
  const studio s;
  const std::vector<menu> menus = shown(s.authored(p));
  ASSERT_EQ(menus.size(), 1u);
  EXPECT_EQ(commands_of(menus[0]), std::vector<std::string>(36, "JumpVTS_TT 1"));
}

/// Up to twelve buttons of many sizes in places of a seed's own, none on another.
std::vector<button_edges> scattered_buttons(unsigned seed) {
  std::mt19937 random(seed);
  const auto up_to = [&random](int most) {
    return static_cast<int>(random() % static_cast<unsigned>(most));
  };
  const auto wanted = static_cast<std::size_t>(2 + up_to(11));
  std::vector<button_edges> buttons;
  for (int tries = 0; tries < 1000 && buttons.size() < wanted; ++tries) {
    const int x = up_to(600), y = 2 * up_to(220);
    const int height = up_to(2) == 0 ? 2 : 2 + 2 * up_to(18);
    const button_edges b{x, y, x + 20 + up_to(100), y + height};
    if (std::none_of(buttons.begin(), buttons.end(), [&b](const button_edges& other) {
          return other.x0 <= b.x1 && b.x0 <= other.x1 && other.y0 <= b.y1 && b.y0 <= other.y1;
        }))
      buttons.push_back(b);
  }
  return buttons;
}

std::string record_with(const button_edges& b) {
  std::string record;
  for (const int edge : {b.x0, b.y0, b.x1, b.y1})
    record += " " + std::to_string(edge) + "/";
  return record + "exit/white/white";
}

/// Menus of these seeds on one disc: what each button's keys are foreseen to lead to is what the
/// disc has.
void expect_foreseen_ways(unsigned first_seed, unsigned last_seed) {
  const studio s;
  project p = short_project();
  std::vector<std::vector<button_edges>> asked;
  for (unsigned seed = first_seed; seed <= last_seed; ++seed) {
    asked.push_back(scattered_buttons(seed));
    std::vector<std::string> records;
    for (const button_edges& b : asked.back())
      records.push_back(record_with(b));
    add_menu(p, stored_media("menu-ntsc.m2v"), "", records);
  }
  const std::vector<menu> menus = shown(s.authored(p));
  ASSERT_EQ(menus.size(), asked.size());
  for (std::size_t i = 0; i < menus.size(); ++i) {
    std::vector<button_neighbours> found;
    for (const button& b : menus[i].buttons)
      found.push_back({b.up, b.down, b.left, b.right});
    EXPECT_EQ(found, neighbours_of(asked[i])) << "seed " << first_seed + i;
  }
}

TEST(MenusOnDisc, ArrowKeysLeadWhereTheRulesForesee) {
  const auto all = static_cast<unsigned>(part_of_set(200));
  constexpr unsigned on_a_disc = 20;
  for (unsigned first = 1; first <= all; first += on_a_disc)
    expect_foreseen_ways(first, first + on_a_disc - 1);
}

}  // namespace
}  // namespace corvane::disc
