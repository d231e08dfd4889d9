#include "authoring/asked_disc.h"

#include "disc/read_navigation.h"
#include "project/disc_of.h"
#include "runner/run_files.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace corvane {
namespace {

/// Whether the title's file is the one that the run makes of this row, or that the row names.
bool is_of_row(const disc_title& title, const disc_description& rows, int number,
               const run_paths& where) {
  const disc_title& made = rows.title(number);
  const std::string file =
      made.is_multiplexed_here
          ? stored_from_native(where.in_out(run_file::title_stream(number)), where.style)
          : made.video();
  return title.streams.size() == 1 && title.video() == file;
}

/// Rows may name the same file: the title's own number is looked at first.
void complete_title(disc_title& title, int own_number, const disc_description& rows,
                    const run_paths& where) {
  std::vector<int> numbers;
  if (own_number <= rows.title_count())
    numbers.push_back(own_number);
  for (int number = 1; number <= rows.title_count(); ++number)
    numbers.push_back(number);
  const auto found = std::find_if(numbers.begin(), numbers.end(), [&](int number) {
    return is_of_row(title, rows, number, where);
  });
  if (found == numbers.end())
    return;
  const disc_title& made = rows.title(*found);
  title.name = made.name;
  title.streams = made.streams;
  title.is_multiplexed_here = made.is_multiplexed_here;
  title.delay = made.delay;
  title.subtitles = made.subtitles;
}

void complete_menu(disc_menu& menu, const disc_description& rows, const run_paths& where) {
  for (int number = 1; number <= rows.menu_count(); ++number) {
    const std::string file =
        stored_from_native(where.in_out(run_file::menu_with_buttons(number)), where.style);
    if (menu.files.size() != 1 || menu.video() != file)
      continue;
    const disc_menu& made = rows.menu(number);
    menu.files = made.files;
    menu.spu_begin = made.spu_begin;
    menu.spu_end = made.spu_end;
    menu.thickness = made.thickness;
    for (std::size_t i = 0; i < std::min(menu.buttons.size(), made.buttons.size()); ++i) {
      disc_command action = menu.buttons[i].action;
      menu.buttons[i] = made.buttons[i];
      menu.buttons[i].action = std::move(action);
    }
    return;
  }
}

}  // namespace

result<disc_description> asked_disc(const project& p, const run_paths& where) {
  disc_description rows = disc_of(p);
  if (p.customxml.empty())
    return result<disc_description>::ok(std::move(rows));
  result<disc_description> asked = read_navigation(p.customxml, where.style);
  if (!asked)
    return asked;
  int number = 0;
  for (disc_title& title : asked->titles)
    complete_title(title, ++number, rows, where);
  for (disc_menu& menu : asked->menus)
    complete_menu(menu, rows, where);
  asked->image = rows.image;
  return asked;
}

}  // namespace corvane
