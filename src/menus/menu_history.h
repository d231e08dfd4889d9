// The steps that a user has done in the menu editor, to be undone and redone.
#pragma once

#include "menus/menu_editor_controls.h"

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

namespace corvane {

/// The editor between two events. The lists that it offers (`Combo1_items`, `Combo2`) are left
/// empty: the one never changes, the other follows from the records.
struct menu_editor_state {
  menu_editor_controls controls;
  int shown = -1;             ///< the button whose values the controls show, 0-based
  std::vector<int> selected;  ///< 0-based, in order
};

/// Whether both hold the same menu: the same records and options, whatever is chosen. Records that
/// differ in the form of their numbers alone are the same.
bool is_same_menu(const menu_editor_controls& a, const menu_editor_controls& b);

/// What a user did, as "undo" names it ("move button 3"), and how the editor was on the other side
/// of it.
struct menu_step {
  std::string name;
  menu_editor_state state;
};

class menu_history {
 public:
  /// A step was done; `step.state` was before it. Those that were undone can no longer be redone.
  void add(menu_step step);

  /// The step done last was gone on with: it has this name now, or is none any more.
  void rename_last(std::string name);
  void drop_last();

  /// The step that is next; null if there is none.
  const menu_step* undone_next() const { return done_.empty() ? nullptr : &done_.back(); }
  const menu_step* redone_next() const { return undone_.empty() ? nullptr : &undone_.back(); }

  /// The state to go back or forward to; `now` is kept for the way back. There must be a step.
  menu_editor_state undo(menu_editor_state now);
  menu_editor_state redo(menu_editor_state now);

 private:
  static menu_editor_state step_over(std::deque<menu_step>& from, std::deque<menu_step>& to,
                                     menu_editor_state now);

  std::deque<menu_step> done_, undone_;
  std::size_t records_ = 0;  ///< of all steps done: the oldest are forgotten beyond a bound
};

}  // namespace corvane
