// Discs of projects whose menus were moved, copied and given another video: each button and each
// end of a title leads to the menu that it led to before, wherever that stands now.
#include "formats/text.h"
#include "menus/menu_material.h"
#include "studio.h"
#include "support/command_test.h"
#include "walk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <string>
#include <vector>

namespace corvane::disc {
namespace {

using testing::ElementsAre;

/// Bars two pixels high: quickly drawn, and as good to press as any button.
std::string bar_at(int x, int row, const std::string& action) {
  const int y = 100 + row * 100;
  return " " + std::to_string(x) + "/ " + std::to_string(y) + "/ " + std::to_string(x + 200) +
         "/ " + std::to_string(y + 2) + "/" + action + "/yellow/green";
}

/// Where each button leads, by the names of menus.
using ways = std::map<std::string, std::vector<std::string>>;

struct found_menus {
  std::vector<std::string> order;  ///< names of the menus as they stand on the disc
  std::string first;               ///< what the disc begins with
  ways all;
};

/// A menu is known by the left edge of its buttons: A, B, C; a star for one with the long video.
class MovedMenus : public testing_support::command_test {
 protected:
  void make(bool jumptable) {
    p = short_project();
    p.chapters = {"00:00:00.00,00:00:03.00"};
    disc::add_title(p, {stored_media("muxed-ntsc.vob")}, "00:00:00.00,00:00:03.00");
    const std::string video = stored_media("menu-ntsc.m2v");
    add_menu(p, video, "",
             {bar_at(100, 0, "jump title 1"), bar_at(100, 1, "jump menu 2"),
              bar_at(100, 2, "jump menu 3")});
    add_menu(p, video, stored_media("menu.ac3"),
             {bar_at(200, 0, "jump title 2 chapter 2"), bar_at(200, 1, "jump menu 3"),
              bar_at(200, 2, "jump menu 1")},
             " 1\t00:00:00.0\t00:00:00.0\t 1");
    add_menu(p, video, "",
             {bar_at(300, 0, "jump title 1 chapter 2"), bar_at(300, 1, "jump menu 1"),
              bar_at(300, 2, "exit")});
    p.jumptable = jumptable;
    p.postinfo =
        jumptable ? testing_support::rows{"call menu 3              ", "call last menu           "}
                  : testing_support::rows{"call menu                ", "jump title 1 chapter 2   "};
  }

  static std::string name_of(const menu& m) {
    if (m.buttons.empty())
      return "none";
    const std::string name(1, static_cast<char>('A' + m.buttons[0].x0 / 100 - 1));
    return m.chain.seconds > 4 ? name + "*" : name;
  }

  found_menus authored() const {
    const studio s;
    contents disc = s.authored(p);
    press_all_buttons(s.out(), disc);
    std::map<std::string, std::string> names;
    found_menus found;
    for (const menu& m : disc.menus)
      if (m.chain.seconds > 0) {
        found.order.push_back(name_of(m));
        names["menu " + std::to_string(m.number)] = name_of(m);
      }
    const auto named = [&names](const std::string& place) {
      const auto menu = names.find(place);
      return menu == names.end() ? place : menu->second;
    };
    found.first = named(disc.begins_with);
    for (const menu& m : disc.menus)
      if (m.chain.seconds > 0)
        for (const button& b : m.buttons)
          found.all[name_of(m)].push_back(
              b.then.empty() ? named(b.leads_to) : named(b.leads_to) + ", " + named(b.then));
    return found;
  }

  /// The number of the menu whose buttons begin there.
  int number_of(int x) const {
    for (std::size_t i = 0; i < p.menubuttons.size(); ++i)
      if (p.menubuttons[i].starts_with(" " + std::to_string(x) + "/"))
        return static_cast<int>(i) + 1;
    return 0;
  }
};

TEST_F(MovedMenus, LeadWhereTheyLedWithTheJumpTable) {
  make(true);
  const ways expected{{"A", {"title 1 chapter 1, C", "B", "C"}},
                      {"B", {"title 2 chapter 2, B", "C", "A"}},
                      {"C", {"title 1 chapter 2, C", "A", "stopped"}}};
  const found_menus before = authored();
  EXPECT_THAT(before.order, ElementsAre("A", "B", "C"));
  EXPECT_EQ(before.all, expected);
  EXPECT_NE(move_menu_command(doc, 3, 1), "");
  const found_menus up = authored();
  EXPECT_THAT(up.order, ElementsAre("C", "A", "B"));
  EXPECT_EQ(up.first, "C");
  EXPECT_EQ(up.all, expected);
  EXPECT_NE(move_menu_command(doc, 2, 3), "");
  const found_menus down = authored();
  EXPECT_THAT(down.order, ElementsAre("C", "B", "A"));
  EXPECT_EQ(down.all, expected);
}

/// Without it titles call the first menu, whichever that is.
TEST_F(MovedMenus, LeadWhereTheyLedWithoutTheJumpTable) {
  make(false);
  p.firstplay = "jump titleset 1 menu";
  EXPECT_NE(move_menu_command(doc, 1, 3), "");
  const found_menus moved = authored();
  EXPECT_THAT(moved.order, ElementsAre("B", "C", "A"));
  EXPECT_EQ(moved.first, "B");
  EXPECT_EQ(moved.all, (ways{{"A", {"title 1 chapter 1, B", "B", "C"}},
                             {"B", {"title 2 chapter 2, title 1 chapter 2", "C", "A"}},
                             {"C", {"title 1 chapter 2, B", "A", "stopped"}}}));
}

TEST_F(MovedMenus, CopyWithAnotherVideoLeadsWhereItsOriginalDoesAndMovesLikeAnyOther) {
  for (const bool jumptable : {true, false}) {
    make(jumptable);
    EXPECT_NE(copy_menu_command(doc, 2), "");
    ask.expect_open(
        {"select video stream for menu 4", "mpeg elementry stream(*.m2v, *.mpv)|*.m2v;*.mpv", ""},
        media("clip-ntsc.m2v"));
    EXPECT_NE(menu_video_command(doc, 4), "");
    // A way to the copy, as somebody makes it in the editor.
    p.menubuttons[0] = replace_all(p.menubuttons[0], "jump menu 3", "jump menu 4");
    EXPECT_NE(move_menu_command(doc, 4, 2), "");
    EXPECT_NE(move_menu_command(doc, number_of(100), 4), "");
    const found_menus found = authored();
    EXPECT_THAT(found.order, ElementsAre("B*", "B", "C", "A"));
    EXPECT_EQ(found.first, "B*");
    const std::string called = jumptable ? "C" : "B*";
    const std::string next = jumptable ? "" : "title 1 chapter 2";
    EXPECT_EQ(found.all,
              (ways{{"A", {"title 1 chapter 1, " + called, "B", "B*"}},
                    {"B", {"title 2 chapter 2, " + (jumptable ? "B" : next), "C", "A"}},
                    {"B*", {"title 2 chapter 2, " + (jumptable ? "B*" : next), "C", "A"}},
                    {"C", {"title 1 chapter 2, " + called, "A", "stopped"}}}));
  }
}

}  // namespace
}  // namespace corvane::disc
