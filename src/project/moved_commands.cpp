#include "project/moved_commands.h"

#include "disc/disc_command.h"
#include "project/disc_of.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace corvane {
namespace {

using whole = finding_item::whole_kind;

bool is_of_menu(const command_target& target, int menu) {
  return target.item.whole == whole::menu && target.item.number == menu;
}

// What plays next stays what plays next, whichever title that is: the editor of commands writes
// such a command for each title.
bool leads_to_next_title(const command_target& target) {
  const command_form form = parse_command(target.text);
  return target.item.whole == whole::title && form.what == verb::jump_title &&
         form.number == target.item.number + 1 && !form.chapter;
}

}  // namespace

void note_command_targets(project& p) {
  std::vector<command_target> targets = command_targets(disc_of(p));
  std::erase_if(targets, leads_to_next_title);
  for (command_target& target : targets)
    if (const command_target* const known = target_of_item(p.led_to, target.item);
        known != nullptr && known->text == target.text)
      target.video = known->video;
  // What leads nowhere just now may lead somewhere again.
  std::vector<command_target> all;
  std::set_union(
      targets.begin(), targets.end(), p.led_to.begin(), p.led_to.end(), std::back_inserter(all),
      [](const command_target& a, const command_target& b) { return is_before(a.item, b.item); });
  p.led_to = std::move(all);
}

std::vector<command_target> noted_command_targets(const project& p) {
  return p.customxml.empty() ? p.led_to : std::vector<command_target>();
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
