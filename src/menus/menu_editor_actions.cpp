// What the editor does with the actions of several buttons.
#include "menus/menu_editor_event.h"
#include "project/menu_rows.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace corvane {

void menu_editor::set_actions(const std::string& first, action_count how) {
  const event step(*this, "action of #");
  if (selected_.size() < 2) {
    set_action(first);
    return;
  }
  if (!button_chosen() || refuse_field("action", first))
    return;
  const std::vector<std::string> actions =
      repeated_actions(first, how, chapter_counts(), selected_.size());
  for (std::size_t i = 0; i < std::min(actions.size(), selected_.size()); ++i) {
    std::string& record = c_.List1[static_cast<std::size_t>(selected_[i])];
    button_record button = parse_button(record);
    button.action = actions[i];
    record = button_text(button);
  }
  show_record(c_.Combo2_index);
  updatebutton();
}

int menu_editor::outlook_of_actions(const std::string& first, action_count how) const {
  return static_cast<int>(repeated_actions(first, how, chapter_counts(), selected_.size()).size());
}

}  // namespace corvane
