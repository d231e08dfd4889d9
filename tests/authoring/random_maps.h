// Discs made up at random, for the tests of their maps.
#pragma once

#include "disc/disc_description.h"

#include <random>
#include <string>

namespace corvane::testing_support {

/// `menus`, `titles`: how many; -1: any number.
inline disc_description random_disc(unsigned seed, int menus = -1, int titles = -1) {
  std::mt19937 random(seed);
  const auto pick = [&random](int least, int most) {
    return static_cast<int>(random() % static_cast<unsigned>(most - least + 1)) + least;
  };
  if (titles < 0)
    titles = pick(1, 20);
  if (menus < 0)
    menus = pick(0, 8);
  disc_description d;
  d.jump_table = menus > 0 && pick(0, 1) == 1;
  const auto title_command = [&] { return "jump title " + std::to_string(pick(1, titles)); };
  for (int t = 1; t <= titles; ++t) {
    disc_title title;
    title.streams = {"\\video\\title" + std::to_string(t) + ".m2v"};
    title.is_multiplexed_here = true;
    const int how = pick(0, 4);
    if (menus > 0 && how > 1)
      title.post = command_of(!d.jump_table ? "call menu"
                              : how == 2    ? "call last menu"
                                            : "call menu " + std::to_string(pick(1, menus)));
    else if (how == 1)
      title.post = command_of(pick(0, 3) == 0 ? "exit" : title_command());
    d.titles.push_back(title);
  }
  for (int m = 1; m <= menus; ++m) {
    disc_menu menu;
    menu.files = {"\\video\\menu" + std::to_string(m) + ".m2v"};
    for (int b = pick(0, 9); b > 0; --b) {
      disc_button button;
      const int how = pick(0, 9);
      button.action = command_of(how < 3    ? "jump menu " + std::to_string(pick(1, menus))
                                 : how == 3 ? "exit"
                                 : how == 4 ? "jump title 99"
                                            : title_command());
      menu.buttons.push_back(button);
    }
    d.menus.push_back(menu);
  }
  return d;
}

}  // namespace corvane::testing_support
