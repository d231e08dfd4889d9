// An event of the menu editor, for its own files: what lies between its begin and its end is one
// step of the user's.
#pragma once

#include "menus/menu_editor.h"

#include <string>
#include <string_view>

namespace corvane {

/// Within another event it is part of that one.
class [[nodiscard]] menu_editor::event {
 public:
  /// `what`: the step's name, in which "#" stands for the buttons that it is about. `source`: the
  /// control of which a run of changes is one step; empty: each is a step.
  event(menu_editor& editor, std::string what, std::string_view source = {});
  event(const event&) = delete;
  event& operator=(const event&) = delete;
  ~event();

 private:
  menu_editor& editor_;
  std::string what_;
  std::string_view source_;
  menu_editor_state before_;
};

}  // namespace corvane
