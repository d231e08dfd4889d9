// The map of projects made up at random against the discs that become of them: it holds exactly the
// arrows that the commands on the disc have, and those that a player sees who goes everywhere.
#include "examine/disc_map.h"

#include "examine/disc_walk.h"
#include "examine/read_disc.h"
#include "formats/disc_files.h"
#include "large_sets.h"
#include "player.h"
#include "project/disc_of.h"
#include "project/project_file.h"
#include "studio.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <deque>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace corvane::disc {
namespace {

using arrow_lines = std::set<std::string>;

/// Bars two pixels high: quickly drawn, and as good to press as any button.
std::string bar_button(int row, const std::string& action) {
  const int y = 60 + row * 50;
  return " 100/ " + std::to_string(y) + "/ 300/ " + std::to_string(y + 2) + "/" + action +
         "/yellow/green";
}

class mapped_project {
 public:
  explicit mapped_project(unsigned seed) : random_(seed) {
    titles_ = pick(1, 6);
    menus_ = pick(0, 4);
  }

  project make() {
    for (int t = 1; t <= titles_; ++t)
      if (pick(0, 1) == 0)
        add_title(p_, {stored_media("clip-ntsc.m2v"), stored_media("clip.ac3")}, "0,0:01");
      else
        add_title(p_, {stored_media("muxed-ntsc.vob")}, "00:00:00.00,00:00:03.00");
    p_.jumptable = menus_ > 0 && pick(0, 2) > 0;
    for (int m = 1; m <= menus_; ++m)
      make_menu();
    for (int t = 1; t <= titles_; ++t)
      add_post(t);
    if (pick(0, 3) == 0)
      p_.postinfo.clear();
    if (pick(0, 2) == 0)
      p_.firstplay = menus_ > 0 && pick(0, 1) == 0 ? "jump titleset 1 menu"
                                                   : "jump title " + std::to_string(title());
    return std::move(p_);
  }

 private:
  int pick(int least, int most) { return std::uniform_int_distribution<int>(least, most)(random_); }
  int title() { return pick(1, titles_); }

  void make_menu() {
    std::vector<std::string> buttons;
    for (int b = 0, count = pick(1, 6); b < count; ++b) {
      const std::string number = std::to_string(title());
      const std::string actions[] = {"jump title " + number,
                                     "jump title " + number + " chapter 2",
                                     "jump menu " + std::to_string(pick(1, menus_)),
                                     "jump titleset 1 menu",
                                     "jump title " + number + " chapter  1",
                                     "exit"};
      buttons.push_back(bar_button(b, actions[pick(0, 5)]));
    }
    add_menu(p_, stored_media("menu-ntsc.m2v"), "", buttons,
             pick(0, 3) == 0 ? "1\t00:00:00.0\t00:00:00.0\t1" : "0\t00:00:00.0\t00:00:00.0\t1");
  }

  /// Never to itself: a player that sees the same title again cannot tell that from its going on.
  void add_post(int t) {
    std::string command = "exit";
    const int other = title();
    if (menus_ > 0 && pick(0, 2) > 0)
      command = !p_.jumptable     ? "call menu"
                : pick(0, 2) == 0 ? "call menu " + std::to_string(pick(1, menus_))
                                  : "call last menu";
    else if (other != t)
      command = "jump title " + std::to_string(other) + (pick(0, 2) == 0 ? " chapter 2" : "");
    command.resize(25, ' ');
    p_.postinfo.push_back(command);
  }

  std::mt19937 random_;
  project p_;
  int titles_, menus_;
};

std::string arrow_line(const std::string& from, const std::string& to) {
  return from + " -> " + (to == "stopped" ? "stop" : to);
}

/// What the commands on the disc do.
arrow_lines arrows_of_commands(const std::string& folder) {
  const auto files = open_folder(folder);
  EXPECT_TRUE(files) << files.error;
  const auto read = ::corvane::read_disc(**files);
  EXPECT_TRUE(read) << read.error;
  disc_walks walks(*read);
  arrow_lines lines;
  const auto add = [&lines](const std::string& from, const std::optional<std::string>& to) {
    lines.insert(arrow_line(from, to.value_or("not told")));
  };
  add("first play", walks.after_start());
  for (const disc_title_contents& title : read->titles)
    add("end of title " + std::to_string(title.number), walks.after_title(title));
  for (const auto& [item, menu] : menus_with_pictures(*read))
    for (std::size_t b = 0; b < menu->chain.highlight->buttons.size(); ++b)
      add("button " + std::to_string(b + 1) + " of menu " + std::to_string(item.number),
          walks.after_button(*menu, b));
  return lines;
}

/// A player who begins the disc anew for each step: presses every button of every menu that he gets
/// to, and lets every title play to its end, once for each menu that he was in last.
class explorer {
 public:
  explicit explorer(std::string place) : place_(std::move(place)) {}

  arrow_lines explore(const disc_map& map) {
    player p(place_);
    const std::string begin = p.start();
    seen_arrows_.insert(arrow_line("first play", begin));
    arrive(begin, 0, {});
    while (!waiting_.empty()) {
      const state at = waiting_.front();
      waiting_.pop_front();
      if (number_of(at.shown, "menu ") > 0)
        press_all(map, at);
      else
        leave_title(at);
    }
    return seen_arrows_;
  }

 private:
  static constexpr int to_the_end = 0, menu_key = -1;
  struct state {
    std::string shown;  // "menu 2", "title 1 chapter 2"
    int last_menu = 0;
    std::vector<int> way;  // buttons, to_the_end, menu_key
  };

  static int number_of(const std::string& shown, const std::string& kind) {
    return shown.starts_with(kind) ? std::atoi(shown.c_str() + kind.size()) : 0;
  }

  void arrive(const std::string& shown, int last_menu, std::vector<int> way) {
    ASSERT_FALSE(shown.starts_with("failed")) << shown;
    const int menu = number_of(shown, "menu "), title = number_of(shown, "title ");
    if (menu == 0 && title == 0)
      return;
    const int last = menu > 0 ? menu : last_menu;
    if (seen_.insert({menu, title, last}).second)
      waiting_.push_back({shown, last, std::move(way)});
  }

  std::string go(const state& at, int step) {
    player p(place_);
    p.start();
    std::vector<int> way = at.way;
    way.push_back(step);
    std::string shown;
    for (const int one : way)
      shown = one == to_the_end ? p.play_to_end() : one == menu_key ? p.call_menu() : p.press(one);
    arrive(shown, at.last_menu, std::move(way));
    return shown;
  }

  void press_all(const disc_map& map, const state& at) {
    const int menu = number_of(at.shown, "menu ");
    for (const map_node& node : map.nodes)
      for (int b = 1; node.place == map_place{map_place::kind::menu, menu} && b <= node.exits; ++b)
        seen_arrows_.insert(arrow_line(
            "button " + std::to_string(b) + " of menu " + std::to_string(menu), go(at, b)));
  }

  void leave_title(const state& at) {
    const std::string title = std::to_string(number_of(at.shown, "title "));
    seen_arrows_.insert(arrow_line("end of title " + title, go(at, to_the_end)));
    if (has_menus_)
      has_menus_ = !go_by_menu_key(at).starts_with("failed");
  }

  std::string go_by_menu_key(const state& at) {
    player p(place_);
    p.start();
    for (const int one : at.way)
      one == to_the_end ? p.play_to_end() : one == menu_key ? p.call_menu() : p.press(one);
    const std::string shown = p.call_menu();
    if (!shown.starts_with("failed")) {
      std::vector<int> way = at.way;
      way.push_back(menu_key);
      arrive(shown, at.last_menu, std::move(way));
    }
    return shown;
  }

  std::string place_;
  arrow_lines seen_arrows_;
  std::deque<state> waiting_;
  std::set<std::tuple<int, int, int>> seen_;
  bool has_menus_ = true;
};

bool is_reached(const disc_map& map, const map_place& place) {
  for (const map_node& node : map.nodes)
    if (node.place == place)
      return node.is_reached;
  return false;
}

TEST(DiscMaps, HoldExactlyTheArrowsThatTheDiscHas) {
  for (int i = 0; i < part_of_set(50); ++i) {
    SCOPED_TRACE("project " + std::to_string(i));
    const studio s;
    const project p = mapped_project(7000u + static_cast<unsigned>(i)).make();
    const finished done = s.author(p);
    ASSERT_EQ(done.status, 0) << done.out << "\n" << project_text(p);
    const disc_map map = map_of(disc_of(p), false);
    arrow_lines of_commands, seen;
    for (const map_arrow& arrow : map.arrows) {
      const std::string line = arrow_line(source_text(arrow), target_text(arrow));
      // A walk begins where no menu was shown before.
      of_commands.insert(arrow.is_last_menu ? arrow_line(source_text(arrow), "menu 1") : line);
      if (is_reached(map, arrow.from))
        seen.insert(line);
    }
    EXPECT_EQ(arrows_of_commands(s.out()), of_commands) << project_text(p);
    EXPECT_EQ(explorer(s.out()).explore(map), seen) << project_text(p) << map_text(map);
  }
}

}  // namespace
}  // namespace corvane::disc
