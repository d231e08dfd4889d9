#include "project/moved_commands.h"

#include "disc/disc_command.h"
#include "formats/numbers.h"
#include "formats/text.h"
#include "project/disc_of.h"
#include "project/edited_xml.h"
#include "project/menu_rows.h"
#include "project/post_rows.h"

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

/// The number of the one title (or menu) that plays this video.
std::optional<int> number_of_video(const disc_description& d, bool of_menus,
                                   const std::string& video) {
  std::optional<int> found;
  const int count = of_menus ? d.menu_count() : d.title_count();
  for (int number = 1; number <= count; ++number)
    if ((of_menus ? d.menu(number).video() : d.title(number).video()) == video) {
      if (found)
        return std::nullopt;
      found = number;
    }
  return found;
}

/// The command with another number of its title or menu.
std::string with_number(const std::string& command, int number) {
  constexpr std::string_view digits = "0123456789";
  const std::size_t begin = command.find_first_of(digits);
  const std::size_t end = std::min(command.find_first_not_of(digits, begin), command.size());
  return command.substr(0, begin) + trimmed(number) + command.substr(end);
}

/// "1, 2 and 3"
std::string listed(const std::vector<std::string>& names) {
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i)
    text += (i == 0 ? "" : i + 1 == names.size() ? " and " : ", ") + names[i];
  return text;
}

/// "first play", "the command after title 2", "buttons 1 and 3 of menu 2": the buttons of a menu
/// are one.
std::vector<std::string> names_of(const std::vector<moved_command>& moved) {
  std::vector<std::string> names, buttons;
  for (std::size_t i = 0; i < moved.size(); ++i) {
    const finding_item& item = moved[i].before.item;
    if (item.whole != whole::menu) {
      names.push_back(item.whole == whole::title ? "the command after title " + trimmed(item.number)
                                                 : "first play");
      continue;
    }
    buttons.push_back(trimmed(item.part_number));
    if (i + 1 < moved.size() && is_of_menu(moved[i + 1].before, item.number))
      continue;
    names.push_back((buttons.size() == 1 ? "button " : "buttons ") + listed(buttons) + " of menu " +
                    trimmed(item.number));
    buttons.clear();
  }
  return names;
}

/// Writes a command into the row that holds it.
void write_command(project& p, const finding_item& item, const std::string& command) {
  if (item.whole == whole::title) {
    row_to_write(p.postinfo, item.number, {}) = post_row(command);
    return;
  }
  if (item.whole != whole::menu) {
    p.firstplay = command;
    return;
  }
  std::string& element = row_to_write(p.menubuttons, item.number, {});
  std::vector<std::string> pieces = pieces_of(element);
  int button = 0;
  for (std::string& piece : pieces)
    if (!trim(piece).empty() && ++button == item.part_number) {
      button_record record = parse_button(piece);
      record.action = command;
      piece = button_text(record);
    }
  element = join(pieces, "|");
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
  return edited_xml(p).empty() ? p.led_to : std::vector<command_target>();
}

std::vector<moved_command> moved_commands(const project& p) {
  std::vector<moved_command> moved;
  if (!edited_xml(p).empty())
    return moved;
  const disc_description d = disc_of(p);
  const std::vector<command_target> now = command_targets(d);
  for (const command_target& before : p.led_to) {
    const command_target* const after = target_of_item(now, before.item);
    if (after == nullptr || after->text != before.text || after->video == before.video)
      continue;
    const bool of_menus = parse_command(before.text).what != verb::jump_title;
    const auto number = number_of_video(d, of_menus, before.video);
    moved.push_back(
        {before, number ? std::optional(with_number(before.text, *number)) : std::nullopt});
  }
  return moved;
}

std::string moved_commands_note(const std::vector<moved_command>& moved) {
  constexpr std::size_t most_named = 4;
  std::vector<std::string> names = names_of(moved);
  if (names.empty())
    return {};
  if (names.size() > most_named) {
    const std::size_t more = names.size() - (most_named - 1);
    names.resize(most_named - 1);
    names.push_back(trimmed(static_cast<std::int64_t>(more)) + " more");
  }
  std::string note =
      listed(names) + (moved.size() == 1 ? " leads" : " lead") + " elsewhere than before.";
  note[0] = static_cast<char>(note[0] - 'a' + 'A');
  return note;
}

void carry_commands_along(document& doc) {
  for (const moved_command& moved : moved_commands(doc.p))
    if (moved.now) {
      write_command(doc.p, moved.before.item, *moved.now);
      std::erase(doc.p.led_to, moved.before);
      doc.p.saved = 0;
    }
}

void forget_removed_menu(project& p, int menu) {
  forget_targets_of_menu(p, menu);
  for (command_target& target : p.led_to)
    if (target.item.whole == whole::menu && target.item.number > menu)
      --target.item.number;
}

void note_inserted_menus(project& p, int menu, int count) {
  for (command_target& target : p.led_to)
    if (target.item.whole == whole::menu && target.item.number >= menu)
      target.item.number += count;
}

void follow_video(project& p, const std::string& before, const std::string& now) {
  for (command_target& target : p.led_to)
    if (target.video == before)
      target.video = now;
}

// With copies of the menu, which have its video, too, only what names it by its number is known to
// have led to it.
void follow_menu(project& p, int menu, const std::string& now) {
  const disc_description d = disc_of(p);
  const std::string before = d.menu(menu).video();
  const bool is_only_one = number_of_video(d, true, before).has_value();
  for (command_target& target : p.led_to) {
    const command_form form = parse_command(target.text);
    if (target.video == before && form.what != verb::jump_title &&
        (is_only_one || form.number == menu))
      target.video = now;
  }
}

void renumber_noted_menus(project& p, const number_of_menu_now& now) {
  for (command_target& target : p.led_to) {
    target.text = with_menu_numbers(target.text, now);
    if (target.item.whole == whole::menu)
      target.item.number = now(target.item.number);
  }
  std::sort(p.led_to.begin(), p.led_to.end(), [](const command_target& a, const command_target& b) {
    return is_before(a.item, b.item);
  });
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
