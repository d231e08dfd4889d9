#include "walk.h"

#include "player.h"

#include <cstdlib>
#include <deque>
#include <set>
#include <vector>

namespace corvane::disc {

namespace {

/// The buttons to press one after the other, from the first menu on.
using way = std::vector<int>;

class walker {
 public:
  walker(const std::string& place, contents& on_disc) : place_(place), disc_(on_disc) {}

  void walk() {
    player first(place_);
    disc_.begins_with = first.start();
    add(first_menu_shown(), {});
    while (!to_visit_.empty()) {
      const auto [number, there] = to_visit_.front();
      to_visit_.pop_front();
      if (menu* const m = menu_of(number))
        press_all(*m, there);
    }
  }

 private:
  struct visit {
    int menu;
    way there;
  };

  static int number_of(const std::string& shown) {
    return shown.rfind("menu ", 0) == 0 ? std::atoi(shown.c_str() + 5) : 0;
  }

  std::string first_menu_shown() const {
    player p(place_);
    return to_first_menu(p);
  }

  /// A disc that begins with a title is left with a player's menu key.
  static std::string to_first_menu(player& p) {
    const std::string shown = p.start();
    return number_of(shown) > 0 ? shown : p.call_menu();
  }

  menu* menu_of(int number) {
    for (menu& m : disc_.menus)
      if (m.titleset == 1 && m.number == number)
        return &m;
    return nullptr;
  }

  void add(const std::string& shown, const way& there) {
    const int number = number_of(shown);
    if (number > 0 && seen_.insert(number).second)
      to_visit_.push_back({number, there});
  }

  void press_all(menu& m, const way& there) {
    for (std::size_t i = 0; i < m.buttons.size(); ++i) {
      player p(place_);
      to_first_menu(p);
      for (const int button : there)
        p.press(button);
      const int number = static_cast<int>(i) + 1;
      button& b = m.buttons[i];
      b.leads_to = p.press(number);
      if (b.leads_to.rfind("title ", 0) == 0)
        b.then = p.play_to_end();
      way longer = there;
      longer.push_back(number);
      add(b.leads_to, longer);
    }
  }

  const std::string& place_;
  contents& disc_;
  std::deque<visit> to_visit_;
  std::set<int> seen_;
};

}  // namespace

void press_all_buttons(const std::string& native_path, contents& on_disc) {
  walker(native_path, on_disc).walk();
}

}  // namespace corvane::disc
