#include "disc/command_target.h"

#include <algorithm>
#include <tuple>

namespace corvane {
namespace {

using part = finding_item::part_kind;
using whole = finding_item::whole_kind;

/// Null if the command names no title or menu by its number, or none that there is.
const std::string* video_led_to(const disc_description& d, const disc_command& command) {
  const int number = command.form.number.value_or(0);
  switch (command.form.what) {
    case verb::jump_title:
      return number >= 1 && number <= d.title_count() ? &d.title(number).video() : nullptr;
    case verb::jump_menu:
    case verb::call_menu:
      return number >= 1 && number <= d.menu_count() ? &d.menu(number).video() : nullptr;
    case verb::jump_titleset:
    case verb::call_last_menu:
    case verb::other:
      break;
  }
  return nullptr;
}

}  // namespace

std::vector<command_target> command_targets(const disc_description& d) {
  std::vector<command_target> targets;
  const auto add = [&](finding_item item, const disc_command& command) {
    if (const std::string* const video = video_led_to(d, command))
      targets.push_back({item, command.text, *video});
  };
  if (d.first_play)
    add({whole::disc, 0, part::command, 0}, *d.first_play);
  for (int title = 1; title <= d.title_count(); ++title)
    if (const auto& post = d.title(title).post)
      add({whole::title, title, part::command, 0}, *post);
  for (int menu = 1; menu <= d.menu_count(); ++menu) {
    int button = 0;
    for (const disc_button& b : d.menu(menu).buttons)
      add({whole::menu, menu, part::button, ++button}, b.action);
  }
  return targets;
}

bool is_before(const finding_item& a, const finding_item& b) {
  return std::tie(a.whole, a.number, a.part_number) < std::tie(b.whole, b.number, b.part_number);
}

const command_target* target_of_item(const std::vector<command_target>& targets,
                                     const finding_item& item) {
  const auto found = std::lower_bound(targets.begin(), targets.end(), item,
                                      [](const command_target& target, const finding_item& wanted) {
                                        return is_before(target.item, wanted);
                                      });
  return found != targets.end() && found->item == item ? &*found : nullptr;
}

}  // namespace corvane
