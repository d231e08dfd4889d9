#include "project/menu_order.h"

#include "disc/menu_numbers.h"
#include "formats/text.h"
#include "project/menu_rows.h"
#include "project/moved_commands.h"
#include "project/post_rows.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace corvane {
namespace {

/// Every list has a row for every menu.
void fill_menu_lists(project& p) {
  const std::size_t menus = p.menulist.size();
  p.moremenuoptions.resize(std::max(p.moremenuoptions.size(), menus), new_menu_options);
  p.menubuttons.resize(std::max(p.menubuttons.size(), menus));
}

/// The row at one place (0-based) goes to another.
void move_row(std::vector<std::string>& list, std::ptrdiff_t from, std::ptrdiff_t to) {
  const auto begin = list.begin();
  if (from < to)
    std::rotate(begin + from, begin + from + 1, begin + to + 1);
  else
    std::rotate(begin + to, begin + from, begin + from + 1);
}

int number_after_move(int number, int menu, int to) {
  if (number == menu)
    return to;
  if (menu < number && number <= to)
    return number - 1;
  return to <= number && number < menu ? number + 1 : number;
}

/// Gives all commands of the project the menus' new numbers.
class renumberer {
 public:
  renumberer(project& p, number_of_menu_now now) : p_(p), now_(std::move(now)) {}

  menu_renumbering renumber() {
    for (std::string& element : p_.menubuttons)
      renumber_buttons(element);
    for (std::size_t i = 0; i < p_.postinfo.size(); ++i)
      renumber_end(p_.postinfo[i], static_cast<int>(i) + 1);
    const std::string first = renumbered(p_.firstplay);
    made_.first_play = first != p_.firstplay;
    p_.firstplay = first;
    renumber_noted_menus(p_, now_);
    return std::move(made_);
  }

 private:
  std::string renumbered(const std::string& command) {
    made_.uses_register = made_.uses_register || uses_menu_register(command);
    return with_menu_numbers(command, now_);
  }

  void renumber_buttons(std::string& element) {
    std::vector<std::string> pieces = pieces_of(element);
    const int before = made_.buttons;
    for (std::string& piece : pieces) {
      button_record record = parse_button(piece);
      const std::string action = renumbered(record.action);
      if (action == record.action)
        continue;
      record.action = action;
      piece = button_text(record);
      ++made_.buttons;
    }
    if (made_.buttons != before)
      element = join(pieces, "|");
  }

  void renumber_end(std::string& row, int title) {
    const std::string before = post_command_of(row);
    const std::string command = renumbered(before);
    if (command == before)
      return;
    if (command.size() > post_width) {
      made_.too_long.push_back(title);
      return;
    }
    row = post_row(command);
    made_.titles.push_back(title);
  }

  project& p_;
  number_of_menu_now now_;
  menu_renumbering made_;
};

void write_stream(project& p, int menu, std::size_t which, const std::string& stored) {
  std::string& row = row_to_write(p.menulist, menu, {});
  std::vector<std::string> files = menu_files(row);
  files.resize(std::max<std::size_t>(files.size(), 2));
  files[which] = stored;
  row = join(files, "/");
}

}  // namespace

menu_renumbering move_menu(project& p, int menu, int to) {
  fill_menu_lists(p);
  for (auto* const list : {&p.menulist, &p.moremenuoptions, &p.menubuttons})
    move_row(*list, menu - 1, to - 1);
  return renumberer(p, [menu, to](int number) { return number_after_move(number, menu, to); })
      .renumber();
}

int copy_menu(project& p, int menu) {
  fill_menu_lists(p);
  const auto from = static_cast<std::size_t>(menu) - 1;
  const std::size_t at = p.menulist.size();
  p.menulist.push_back(std::string(p.menulist[from]));
  p.moremenuoptions.resize(at);
  p.moremenuoptions.push_back(std::string(p.moremenuoptions[from]));
  // Elements beyond the menus may be left of a load that was rolled back.
  p.menubuttons.resize(at);
  p.menubuttons.push_back(std::string(p.menubuttons[from]));
  p.Comboregion_enabled = false;
  return static_cast<int>(at) + 1;
}

void set_menu_video(project& p, int menu, const std::string& video) {
  follow_menu(p, menu, video);
  write_stream(p, menu, 0, video);
}

void set_menu_audio(project& p, int menu, const std::string& audio) {
  write_stream(p, menu, 1, audio);
}

}  // namespace corvane
