#include "project/moved_commands.h"

#include "project/disc_of.h"

#include <algorithm>
#include <utility>

namespace corvane {
namespace {

using whole = finding_item::whole_kind;

bool is_of_menu(const command_target& target, int menu) {
  return target.item.whole == whole::menu && target.item.number == menu;
}

}  // namespace

void note_command_targets(project& p) {
  std::vector<command_target> targets = command_targets(disc_of(p));
  for (command_target& target : targets) {
    const auto known = std::lower_bound(
        p.led_to.begin(), p.led_to.end(), target,
        [](const command_target& a, const command_target& b) { return is_before(a.item, b.item); });
    if (known != p.led_to.end() && known->item == target.item && known->text == target.text)
      target.video = known->video;
  }
  p.led_to = std::move(targets);
}

void forget_removed_menu(project& p, int menu) {
  forget_targets_of_menu(p, menu);
  for (command_target& target : p.led_to)
    if (target.item.whole == whole::menu && target.item.number > menu)
      --target.item.number;
}

void forget_targets_of_menu(project& p, int menu) {
  std::erase_if(p.led_to,
                [menu](const command_target& target) { return is_of_menu(target, menu); });
}

void forget_targets_of_titles(project& p) {
  std::erase_if(p.led_to,
                [](const command_target& target) { return target.item.whole != whole::menu; });
}

}  // namespace corvane
