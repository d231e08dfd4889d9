// The commands of titles and buttons as people type them: what passes the check before a run is
// what the jump table rewrites, and menu 1 has room for what it becomes.
#include "authoring/navigation_xml.h"
#include "authoring/row_checks.h"
#include "authoring/sample_projects.h"
#include "authoring/texts_of_project.h"
#include "disc/disc_command.h"
#include "formats/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace corvane::testing_support {
namespace {

using ::testing::StartsWith;

constexpr const char* options = "0\t00:00:00.0\t00:00:00.0\t1";

/// Two titles, three menus, the jump table on.
project with_three_menus() {
  project p;
  add_title(p, posix, {"a.m2v", "a.ac3"});
  add_title(p, posix, {"b.m2v", "b.ac3"});
  for (int menu = 0; menu < 3; ++menu)
    add_menu(p, posix, "m.m2v", "", options, "");
  p.jumptable = true;
  return p;
}

/// What stands between these tags, where the text has them for the last time.
std::string last_between(const std::string& text, const std::string& open,
                         const std::string& close) {
  const auto at = text.rfind(open) + open.size();
  return text.substr(at, text.find(close, at) - at);
}

/// Without any blank.
std::string dense(const std::string& text) {
  return replace_all(text, " ", "");
}

/// Commands, some with a word changed, with one to three blanks between the words and up to two
/// around them.
class typed_texts {
 public:
  std::string next() {
    static const std::vector<std::string> commands = {"jump menu 1",
                                                      "jump title 2",
                                                      "jump title 1 chapter 1",
                                                      "jump titleset 1 menu",
                                                      "call menu 2",
                                                      "call last menu",
                                                      "exit",
                                                      "call menu",
                                                      "jump menu entry root",
                                                      "g3=1; jump menu 1",
                                                      "jump title 1;x",
                                                      "jump titles 1"};
    static const std::vector<std::string> others = {"jump", "call", "menu", "title", "last", "1",
                                                    "03",   "4",    "Menu", "menux", "JUMP", "1;"};
    std::string text(below(3), ' ');
    for (const std::string& word : split(commands[below(commands.size())], ' '))
      text +=
          (below(8) == 0 ? others[below(others.size())] : word) + std::string(1 + below(3), ' ');
    return below(2) == 0 ? text : std::string(trim_right(text));
  }

 private:
  std::size_t below(std::size_t end) { return engine_() % end; }
  std::mt19937 engine_{20};
};

/// What the jump table must make of a button's text in menu 2, without blanks.
std::string expected_button(const std::string& text) {
  const std::string d = dense(text);
  if (d.starts_with("jumpmenu") && trim(text).starts_with("jump "))
    return "g1=" + d.substr(8) + ";" + d;
  return d.starts_with("jumptitle") && trim(text).starts_with("jump ") ? "g1=2;" + d : d;
}

TEST(NavigationCommands, EveryButtonThatPassesTheCheckIsRewrittenByTheJumpTable) {
  typed_texts texts;
  int menus = 0, titles = 0;
  for (int i = 0; i < 6000; ++i) {
    const std::string text = texts.next();
    project p = with_three_menus();
    p.menubuttons[1] = " 0/0/100/3/" + text + "/black/black";
    if (why_not_navigation(p))
      continue;
    const std::string written =
        last_between(navigation_xml(p, sample_run_paths(posix)), "<button> ", "; </button>");
    ASSERT_EQ(dense(written), expected_button(text)) << '"' << text << '"';
    menus += written.find("; jump menu") != std::string::npos;
    titles += written.starts_with("g1=2; jump title");
  }
  EXPECT_GT(menus, 300);
  EXPECT_GT(titles, 300);
}

/// What the jump table must make of a title's text, without blanks.
std::string expected_post(const std::string& text) {
  const std::string d = dense(text);
  if (d.starts_with("callmenu") && trim(text).starts_with("call "))
    return "g1=" + d.substr(8) + ";callmenu";
  return d.starts_with("calllastmenu") && trim(text).starts_with("call ") ? "callmenu" : d;
}

TEST(NavigationCommands, EveryTitleCommandThatPassesTheCheckIsRewrittenByTheJumpTable) {
  typed_texts texts;
  int calls = 0, last = 0;
  for (int i = 0; i < 6000; ++i) {
    const std::string text = texts.next();
    project p = with_three_menus();
    p.postinfo = {"exit", text};
    if (why_not_navigation(p))
      continue;
    const std::string written =
        last_between(navigation_xml(p, sample_run_paths(posix)), "<post>", ";</post>");
    ASSERT_EQ(dense(written), expected_post(text)) << '"' << text << '"';
    calls += written.starts_with("g1=");
    last += written == "call menu";
  }
  EXPECT_GT(calls, 300);
  EXPECT_GT(last, 300);
}

TEST(NavigationCommands, TextsAreLeftAloneWhereTheyAreUnderstoodAsTheyStand) {
  for (const char* text : {"jump title 1 chapter  2", "jump menu  3", "exit", " exit ", "",
                           "g3=1;  jump  menu 1", "jumps  menu 1", "call last menu  "})
    EXPECT_EQ(interpreted(text), text);
  EXPECT_EQ(interpreted(" jump  menu  1 "), "jump menu 1");
  EXPECT_EQ(interpreted("call last  menu"), "call last menu");
}

// Room for commands -----------------------------------------------------------------------------

/// That many menus, with these actions on the first.
project with_actions(int menus, const std::vector<std::string>& actions) {
  project p;
  add_title(p, posix, {"a.m2v", "a.ac3"});
  std::string buttons;
  for (const std::string& action : actions)
    buttons += (buttons.empty() ? " 0/0/100/3/" : "| 0/0/100/3/") + action + "/black/black";
  for (int menu = 0; menu < menus; ++menu)
    add_menu(p, posix, "m.m2v", "", options, menu == 0 ? buttons : "");
  p.jumptable = true;
  return p;
}

std::string navigation_refusal_of(const project& p) {
  return why_not_navigation(p).value_or("(fine)");
}

std::vector<std::string> repeated(std::size_t count, const char* action) {
  return std::vector<std::string>(count, action);
}

TEST(NavigationCommands, FirstMenuHoldsOneHundredAndTwentyEight) {
  EXPECT_EQ(navigation_refusal_of(with_actions(30, repeated(32, "jump title 1"))), "(fine)");
  EXPECT_EQ(navigation_refusal_of(with_actions(31, repeated(32, "jump title 1"))),
            "Menu 1 needs 129 commands, but a DVD menu holds at most 128: with the jump table, 30 "
            "lead on to the other menus and 99 belong to its 32 buttons that jump to a title, the "
            "last of which is button 32.  Please edit menu 1 and delete 1 of these buttons, or "
            "remove 1 of the other menus.");
  std::vector<std::string> actions = repeated(36, "jump  title 1");
  actions.back() = "exit";
  EXPECT_EQ(navigation_refusal_of(with_actions(30, actions)),
            "Menu 1 needs 137 commands, but a DVD menu holds at most 128: with the jump table, 29 "
            "lead on to the other menus and 108 belong to its 35 buttons that jump to a title, the "
            "last of which is button 35.  Please edit menu 1 and delete 3 of these buttons, or "
            "remove 9 of the other menus.");
}

TEST(NavigationCommands, WhatTheMessageAdvisesIsEnough) {
  for (int menus = 18; menus <= 99; menus += 9)
    for (std::size_t buttons = 9; buttons <= 36; buttons += 3) {
      const std::string why =
          navigation_refusal_of(with_actions(menus, repeated(buttons, "jump title 1")));
      if (why == "(fine)")
        continue;
      const int fewer = std::stoi(last_between(why, "delete ", " of"));
      const int fewer_menus = std::stoi(last_between(why, "remove ", " of"));
      const auto less = [&](int b, int m) {
        const auto left = buttons - static_cast<std::size_t>(b);
        return navigation_refusal_of(with_actions(menus - m, repeated(left, "jump title 1")));
      };
      ASSERT_EQ(less(fewer, 0), "(fine)") << menus << " " << buttons;
      ASSERT_EQ(less(0, fewer_menus), "(fine)") << menus << " " << buttons;
      ASSERT_THAT(less(fewer - 1, 0), StartsWith("Menu 1 needs")) << menus << " " << buttons;
      ASSERT_THAT(less(0, fewer_menus - 1), StartsWith("Menu 1 needs")) << menus << " " << buttons;
    }
}

TEST(NavigationCommands, ButtonsOfOneCommandNeedNoRoom) {
  EXPECT_EQ(navigation_refusal_of(with_actions(99, repeated(36, "exit"))), "(fine)");
  EXPECT_EQ(navigation_refusal_of(with_actions(99, repeated(36, "jump menu 2"))), "(fine)");
  EXPECT_EQ(navigation_refusal_of(with_actions(18, repeated(36, "jump titleset 1 menu"))),
            "(fine)");
  EXPECT_THAT(navigation_refusal_of(with_actions(19, repeated(36, "jump titleset 1 menu"))),
              StartsWith("Menu 1 needs 129 commands"));
}

TEST(NavigationCommands, OnlyTheFirstMenuAndOnlyTheJumpTableNeedRoom) {
  project p = with_actions(99, repeated(36, "jump title 1"));
  std::swap(p.menubuttons[0], p.menubuttons[1]);
  EXPECT_EQ(navigation_refusal_of(p), "(fine)");
  std::swap(p.menubuttons[0], p.menubuttons[1]);
  p.jumptable = false;
  EXPECT_EQ(navigation_refusal_of(p), "(fine)");
  EXPECT_EQ(navigation_refusal_of(with_actions(1, repeated(36, "jump title 1"))), "(fine)");
}

}  // namespace
}  // namespace corvane::testing_support
