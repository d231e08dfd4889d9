#include "authoring/asked_disc.h"

#include "disc/read_navigation.h"
#include "project/disc_of.h"
#include "project/edited_xml.h"
#include "runner/run_files.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace corvane {
namespace {

/// Whether the file is the one that the run makes of this row, or that the row names.
bool is_of_row(const title_file& asked, const disc_description& rows, int number,
               const run_paths& where) {
  const disc_title& made = rows.title(number);
  const std::string file =
      made.is_multiplexed_here
          ? stored_from_native(where.in_out(run_file::title_stream(number)), where.style)
          : made.video();
  return asked.video() == file;
}

/// The row that the file is of; 0: there is none. Rows may name the same file: the title's own
/// number is looked at first.
int row_of_file(const title_file& file, int own_number, const disc_description& rows,
                const run_paths& where) {
  std::vector<int> numbers;
  if (own_number <= rows.title_count())
    numbers.push_back(own_number);
  for (int number = 1; number <= rows.title_count(); ++number)
    numbers.push_back(number);
  const auto found = std::find_if(numbers.begin(), numbers.end(),
                                  [&](int number) { return is_of_row(file, rows, number, where); });
  return found == numbers.end() ? 0 : *found;
}

void complete_file(title_file& file, const title_file& made) {
  file.streams = made.streams;
  file.is_multiplexed_here = made.is_multiplexed_here;
  file.delay = made.delay;
  file.subtitles = made.subtitles;
}

void complete_title(disc_title& title, int own_number, const disc_description& rows,
                    const run_paths& where) {
  if (const int row = row_of_file(title, own_number, rows, where); row != 0) {
    title.name = rows.title(row).name;
    complete_file(title, rows.title(row));
  }
  for (title_file& file : title.further)
    if (const int row = row_of_file(file, own_number, rows, where); row != 0)
      complete_file(file, rows.title(row));
}

void complete_menu(disc_menu& menu, const disc_description& rows, const run_paths& where) {
  for (int number = 1; number <= rows.menu_count(); ++number) {
    const std::string file =
        stored_from_native(where.in_out(run_file::menu_with_buttons(number)), where.style);
    if (menu.files.size() != 1 || menu.video() != file)
      continue;
    const disc_menu& made = rows.menu(number);
    menu.files = made.files;
    menu.is_ready = false;
    menu.spu_begin = made.spu_begin;
    menu.spu_end = made.spu_end;
    menu.thickness = made.thickness;
    menu.has_other_looks =
        menu.has_other_looks || menu.has_parts || menu.buttons.size() != made.buttons.size();
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
  if (edited_xml(p).empty())
    return result<disc_description>::ok(std::move(rows));
  result<disc_description> asked = read_navigation(edited_xml(p), where.style);
  if (!asked)
    return asked;
  int number = 0;
  for (disc_title& title : asked->titles)
    complete_title(title, ++number, rows, where);
  for (auto* const menus : {&asked->menus, &asked->disc_menus})
    for (disc_menu& menu : *menus)
      complete_menu(menu, rows, where);
  asked->image = rows.image;
  // Where it states none, dvdauthor takes the run's.
  if (asked->standard_text.empty()) {
    asked->standard_text = rows.standard_text;
    asked->standard = rows.standard;
  }
  return asked;
}

}  // namespace corvane
