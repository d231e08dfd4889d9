// A menu whose buttons do what is said, as a disc's description has it.
#pragma once

#include "disc/disc_description.h"

#include <string>
#include <vector>

namespace corvane::testing_support {

inline disc_menu menu_of_actions(const std::vector<std::string>& actions) {
  disc_menu menu;
  menu.files = {"\\v\\m.m2v"};
  for (const std::string& action : actions) {
    disc_button button;
    button.action = command_of(action);
    menu.buttons.push_back(button);
  }
  return menu;
}

}  // namespace corvane::testing_support
