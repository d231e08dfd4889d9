#include "examine/disc_map.h"

#include "disc/finding.h"
#include "examine/disc_traits.h"
#include "examine/foreseen_ways.h"
#include "examine/navigation_map.h"
#include "formats/numbers.h"
#include "formats/text.h"

#include <algorithm>
#include <compare>
#include <cstddef>
#include <iterator>
#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace corvane {
namespace {

using place_kind = map_place::kind;
using end_kind = map_arrow::end_kind;
using owner_kind = command_owner::kind;
using whole = finding_item::whole_kind;

/// Where an arrow ends, of places as examine/disc_walk.h says them.
struct map_end {
  end_kind end = end_kind::unknown;
  map_place to;
  int chapter = 0;
};

/// The arrows that a command, or the lack of one, has.
class map_maker {
 public:
  map_maker(const disc_description& d, bool hand_edited)
      : disc_(d), commands_(d, hand_edited), ways_(d, hand_edited) {
    int menus = 0, disc_menus = 0;
    for (const auto& [item, menu] : menus_shown(d)) {
      const bool of_disc = item.whole == whole::disc_menu;
      names_.emplace(
          std::string(of_disc ? "disc menu " : "menu ") + trimmed(of_disc ? ++disc_menus : ++menus),
          place_of_menu(*menu, of_disc));
    }
  }

  disc_map make() {
    add_first_play();
    add_menus(place_kind::menu, disc_.menus);
    add_menus(place_kind::disc_menu, disc_.disc_menus);
    add_titles();
    return std::move(map_);
  }

 private:
  map_place place_of_menu(const disc_menu& menu, bool of_disc) const {
    const std::vector<disc_menu>& all = of_disc ? disc_.disc_menus : disc_.menus;
    return {of_disc ? place_kind::disc_menu : place_kind::menu,
            static_cast<int>(&menu - all.data()) + 1};
  }

  void add_first_play() {
    map_.nodes.push_back({{place_kind::first_play, 0}, 1});
    map_arrow arrow;
    if (is_given(disc_.first_play))
      arrow.command = disc_.first_play->text;
    add_arrows(arrow, commands_.beginning(), ways_.after_start());
  }

  void add_menus(place_kind kind, const std::vector<disc_menu>& menus) {
    int number = 0;
    for (const disc_menu& menu : menus) {
      const map_place place{kind, ++number};
      map_.nodes.push_back({place, static_cast<int>(menu.buttons.size())});
      const command_owner owner{owner_kind::menu, number, menu.titleset};
      int button = 0;
      for (const disc_button& b : menu.buttons) {
        map_arrow arrow;
        arrow.from = place;
        arrow.button = ++button;
        arrow.command = b.action.text;
        command_outcome outcome;
        if (kind == place_kind::menu)
          outcome = commands_.outcome_of(owner, b.action);
        add_arrows(arrow, outcome, ways_.after_button(menu, b.action));
      }
    }
  }

  void add_titles() {
    for (int number = 1; number <= disc_.title_count(); ++number) {
      map_arrow arrow;
      arrow.from = {place_kind::title, number};
      map_.nodes.push_back({arrow.from, 1});
      if (const auto& post = disc_.title(number).post; is_given(post))
        arrow.command = post->text;
      add_arrows(arrow, commands_.after_title(number), ways_.after_title(number));
    }
  }

  /// What the command's text says, and what the disc will make of it where that is foreseen.
  void add_arrows(map_arrow arrow, const command_outcome& outcome,
                  const std::optional<std::string>& foreseen) {
    std::vector<map_end> ends;
    if (foreseen && outcome.problems.empty())
      for (const std::string& place : split(*foreseen, either_place))
        ends.push_back(end_named(place));
    else
      ends = ends_of(outcome);
    for (const map_end& end : ends) {
      arrow.end = end.end;
      arrow.to = end.to;
      arrow.chapter = end.chapter;
      map_.arrows.push_back(arrow);
    }
    for (const command_problem& problem : outcome.problems) {
      map_arrow broken = arrow;
      broken.end = end_kind::nowhere;
      broken.to = {};
      broken.chapter = 0;
      broken.why = problem.clause;
      map_.arrows.push_back(std::move(broken));
    }
  }

  map_end end_named(const std::string& place) const {
    constexpr std::string_view of_title = "title ", of_chapter = " chapter ";
    if (place == "stop")
      return {end_kind::stop, {}, 0};
    if (const auto menu = names_.find(place); menu != names_.end())
      return {end_kind::place, menu->second, 0};
    const std::size_t chapter = place.find(of_chapter);
    if (!place.starts_with(of_title) || chapter == std::string::npos)
      return {};
    const auto number = [&place](std::size_t begin, std::size_t size) {
      return static_cast<int>(leading_whole(place.substr(begin, size)));
    };
    return {end_kind::place,
            {place_kind::title, number(of_title.size(), chapter - of_title.size())},
            number(chapter + of_chapter.size(), std::string::npos)};
  }

  std::vector<map_end> ends_of(const command_outcome& outcome) const {
    std::vector<map_end> ends;
    for (const int place : outcome.places) {
      const int number = commands_.number_of(place);
      const bool is_menu = commands_.is_menu(place);
      map_end end{end_kind::place,
                  {is_menu ? place_kind::menu : place_kind::title, number},
                  is_menu ? 0 : 1};
      for (const named_chapter& chapter : outcome.chapters)
        if (!is_menu && chapter.title == number)
          end.chapter = chapter.chapter;
      // A chapter that is missing has its title among the places.
      if (outcome.problems.empty())
        ends.push_back(end);
    }
    if (outcome.stops)
      ends.push_back({end_kind::stop, {}, 0});
    if (outcome.leads_anywhere || (ends.empty() && outcome.problems.empty()))
      ends.push_back({});
    return ends;
  }

  const disc_description& disc_;
  navigation_map commands_;
  foreseen_ways ways_;
  std::map<std::string, map_place> names_;  // of menus, as they are numbered on the disc
  disc_map map_;
};

// What was shown last ----------------------------------------------------------------------------

/// Plays the disc by its arrows, with the menu that the jump table remembers (0: none yet).
class map_player {
 public:
  map_player(const disc_description& d, bool hand_edited, const disc_map& map)
      : disc_(d), remembers_(d.jump_table && !hand_edited) {
    for (const map_arrow& arrow : map.arrows)
      leading_from_[arrow.from].push_back(&arrow);
  }

  void play() {
    enter({place_kind::first_play, 0}, 0);
    while (!waiting_.empty() && seen_.size() < most_states) {
      const auto [place, last] = waiting_.back();
      waiting_.pop_back();
      for (const map_arrow* const arrow : leading_from_[place])
        follow(*arrow, last);
      if (place.what != place_kind::first_play)
        press_menu_key(place, last);
    }
  }

  bool is_known() const { return is_known_; }
  bool has_reached(const map_place& place) const { return reached_.contains(place); }
  /// The menus that are called as the last one at the end of this title.
  std::set<int> last_menus_at(int title) const {
    const auto found = last_menus_.find(title);
    return found == last_menus_.end() ? std::set<int>{} : found->second;
  }

 private:
  static constexpr std::size_t most_states = 200'000;

  void enter(const map_place& place, int last) {
    reached_.insert(place);
    // Of no disc: a damaged project may hold any number.
    is_known_ = is_known_ && seen_.size() < most_states;
    if (seen_.emplace(place, last).second)
      waiting_.emplace_back(place, last);
  }

  /// Menu 1 leads on to the one that is remembered.
  int remembered(int last) const { return last >= 2 && last <= disc_.menu_count() ? last : 1; }

  void follow(const map_arrow& arrow, int last) {
    is_known_ = is_known_ && arrow.end != end_kind::unknown;
    if (arrow.end != end_kind::place)
      return;
    if (!remembers_) {
      enter(arrow.to, 0);
    } else if (is_call_of_last_menu(arrow)) {
      last_menus_[arrow.from.number].insert(remembered(last));
      enter({place_kind::menu, remembered(last)}, last);
    } else if (arrow.to.what == place_kind::menu) {
      enter(arrow.to, arrow.to.number);
    } else {
      enter(arrow.to, arrow.from.what == place_kind::menu ? arrow.from.number : last);
    }
  }

  void press_menu_key(const map_place& place, int last) {
    if (disc_.menus.empty())
      return;
    int titleset = 1;
    if (place.what == place_kind::title)
      titleset = disc_.title(place.number).titleset;
    else if (place.what == place_kind::menu)
      titleset = disc_.menu(place.number).titleset;
    for (int menu = 1; menu <= disc_.menu_count(); ++menu)
      if (disc_.menu(menu).titleset == titleset)
        return enter({place_kind::menu, remembers_ ? remembered(last) : menu}, last);
  }

  static bool is_call_of_last_menu(const map_arrow& arrow) {
    return arrow.from.what == place_kind::title &&
           parse_command(arrow.command).what == verb::call_last_menu;
  }

  const disc_description& disc_;
  bool remembers_;
  std::map<map_place, std::vector<const map_arrow*>> leading_from_;
  std::set<std::pair<map_place, int>> seen_;
  std::vector<std::pair<map_place, int>> waiting_;
  std::set<map_place> reached_;
  std::map<int, std::set<int>> last_menus_;  // by title
  bool is_known_ = true;
};

/// A title that calls the last menu leads to as many as that can be.
void add_last_menus(disc_map& map, const map_player& played) {
  std::vector<map_arrow> arrows;
  for (const map_arrow& arrow : map.arrows) {
    const bool calls_last = arrow.from.what == place_kind::title && arrow.end == end_kind::place &&
                            parse_command(arrow.command).what == verb::call_last_menu;
    if (!calls_last) {
      arrows.push_back(arrow);
      continue;
    }
    std::set<int> menus = played.last_menus_at(arrow.from.number);
    if (menus.empty())
      menus.insert(arrow.to.number);
    for (const int menu : menus) {
      arrows.push_back(arrow);
      arrows.back().to = {place_kind::menu, menu};
      arrows.back().is_last_menu = true;
    }
  }
  map.arrows = std::move(arrows);
}

// What is reached and left -----------------------------------------------------------------------

bool leads_out(const map_arrow& arrow) {
  return arrow.end != end_kind::place || arrow.to.what == place_kind::title;
}

/// A menu holds its viewer when its buttons lead only to menus that do.
void mark_menus_that_hold(disc_map& map) {
  std::set<map_place> left;
  for (bool again = true; again;) {
    again = false;
    for (const map_arrow& arrow : map.arrows)
      if (arrow.button > 0 && (leads_out(arrow) || left.contains(arrow.to)))
        again = left.insert(arrow.from).second || again;
  }
  for (map_node& node : map.nodes)
    if (node.place.what == place_kind::menu)
      node.is_left = left.contains(node.place);
}

using arrow_key = std::tuple<map_place, int, end_kind, map_place, int, const std::string&>;

arrow_key key_of(const map_arrow& arrow) {
  return {arrow.from, arrow.button, arrow.end, arrow.to, arrow.chapter, arrow.why};
}

void sort_arrows(disc_map& map) {
  std::stable_sort(map.arrows.begin(), map.arrows.end(),
                   [](const map_arrow& a, const map_arrow& b) { return key_of(a) < key_of(b); });
  const auto same = [](const map_arrow& a, const map_arrow& b) { return key_of(a) == key_of(b); };
  map.arrows.erase(std::unique(map.arrows.begin(), map.arrows.end(), same), map.arrows.end());
}

}  // namespace

disc_map map_of(const disc_description& d, bool hand_edited) {
  disc_map map = map_maker(d, hand_edited).make();
  map_player played(d, hand_edited, map);
  played.play();
  for (map_node& node : map.nodes)
    node.is_reached = !played.is_known() || d.has_other_paths || played.has_reached(node.place);
  add_last_menus(map, played);
  sort_arrows(map);
  if (!d.has_other_paths)
    mark_menus_that_hold(map);
  return map;
}

std::string name_of(const map_place& place) {
  switch (place.what) {
    case place_kind::first_play:
      return "first play";
    case place_kind::menu:
      return "menu " + trimmed(place.number);
    case place_kind::disc_menu:
      return "disc menu " + trimmed(place.number);
    case place_kind::title:
      break;
  }
  return "title " + trimmed(place.number);
}

std::string source_text(const map_arrow& arrow) {
  if (arrow.button > 0)
    return "button " + trimmed(arrow.button) + " of " + name_of(arrow.from);
  return arrow.from.what == place_kind::title ? "end of " + name_of(arrow.from)
                                              : name_of(arrow.from);
}

std::string target_text(const map_arrow& arrow) {
  switch (arrow.end) {
    case end_kind::place:
      return name_of(arrow.to) + (arrow.chapter > 0 ? " chapter " + trimmed(arrow.chapter) : "");
    case end_kind::stop:
      return "stop";
    case end_kind::nowhere:
      return "nowhere";
    case end_kind::unknown:
      break;
  }
  return "not told";
}

std::string map_text(const disc_map& map) {
  std::vector<std::string> lines;
  for (const map_arrow& arrow : map.arrows)
    lines.push_back(source_text(arrow) + " -> " + target_text(arrow) + "\n");
  std::sort(lines.begin(), lines.end());
  lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
  for (const map_node& node : map.nodes) {
    if (!node.is_reached)
      lines.push_back("nothing -> " + name_of(node.place) + "\n");
    if (!node.is_left)
      lines.push_back(name_of(node.place) + " -> nothing\n");
  }
  return join(lines, "");
}

}  // namespace corvane
