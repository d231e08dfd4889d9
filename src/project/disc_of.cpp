#include "project/disc_of.h"

#include "formats/numbers.h"
#include "formats/text.h"
#include "project/chapter_rows.h"
#include "project/language_rows.h"
#include "project/menu_rows.h"
#include "project/post_rows.h"
#include "project/subtitle_rows.h"
#include "project/title_rows.h"

#include <algorithm>
#include <cstddef>
#include <memory>

namespace corvane {
namespace {

// The delay stands in the script outside of quotes: blanks around it, as files of others have them,
// would be arguments there.
text_number delay_of(const std::string& row) {
  const std::string number(trim(row));
  return {number, leading_number(number), leading_number_text(number) == number};
}

// One for each settings row, without a file. The settings reach the project only when the subtitle
// dialog is accepted, its files at once.
std::vector<disc_subtitle> settings_of(const std::string& options, const std::string& region) {
  std::vector<std::string> rows = subtitle_settings_rows(options);
  if (rows.empty())
    rows.push_back(subtitle_settings_text(default_subtitle_settings(region)));
  std::vector<disc_subtitle> settings;
  settings.reserve(rows.size());
  for (const std::string& row : rows)
    settings.push_back({{},
                        std::make_shared<subtitle_settings>(parse_subtitle_settings(row)),
                        subtitle_fields_in(row)});
  return settings;
}

std::vector<disc_subtitle> subtitles_of(const project& p, int title) {
  std::vector<disc_subtitle> subtitles;
  const std::vector<std::string> files =
      subtitle_paths(row_of(p.subtitledata, title, no_subtitles));
  if (files.empty())
    return subtitles;
  const std::vector<disc_subtitle> settings =
      settings_of(row_of(p.subtitleoptions, title, {}), p.globalregion);
  subtitles.reserve(files.size());
  for (std::size_t i = 0; i < files.size(); ++i) {
    subtitles.push_back(settings[std::min(i, settings.size() - 1)]);
    subtitles.back().file = files[i];
  }
  return subtitles;
}

// The list of post commands is emptied and filled as a whole, but can be shorter than the titles (a
// title was loaded without its row).
std::optional<disc_command> post_of(const project& p, int title) {
  const std::string command = post_command_of(row_of(p.postinfo, title, {}));
  return command.empty() ? std::nullopt : std::optional(command_of(command));
}

disc_title title_of(const project& p, int number) {
  const std::string row = row_of(p.List11, number, {});
  disc_title title;
  title.name = row_of(p.List1, number, {});
  title.streams = streams_of(row);
  title.is_multiplexed_here = !is_muxed(row);
  title.delay = delay_of(row_of(p.delay, number, "0"));
  title.chapters_text = row_of(p.chapters, number, {});
  for (const std::string& time : chapter_times(title.chapters_text))
    title.chapters.push_back(time_of(time));
  title.subtitles = subtitles_of(p, number);
  title.post = post_of(p, number);
  return title;
}

disc_look look_of(const std::string& field) {
  return {field, is_bitmap(field)};
}

disc_button button_of(const button_record& b) {
  return {number_of(b.x0),      number_of(b.y0),      number_of(b.x1),  number_of(b.y1),
          command_of(b.action), look_of(b.highlight), look_of(b.select)};
}

text_number thickness_of(const std::string& field) {
  return {field, static_cast<double>(leading_whole(field)), is_decimal(field)};
}

disc_menu menu_of(const project& p, int number) {
  const menu_options options =
      parse_menu_options(row_of(p.moremenuoptions, number, new_menu_options));
  disc_menu menu;
  menu.files = menu_files(row_of(p.menulist, number, {}));
  menu.loop = options.loop;
  menu.spu_begin = time_of(options.spu_begin);
  menu.spu_end = time_of(options.spu_end);
  menu.thickness = thickness_of(options.thickness_text);
  for (const std::string& record : button_records(p, number))
    menu.buttons.push_back(button_of(parse_button(record)));
  return menu;
}

std::vector<disc_language> languages_of(const project& p) {
  std::vector<disc_language> languages;
  for (const std::string& row : p.languagetags)
    if (const auto language = parse_language_row(row))
      languages.push_back(*language);
  return languages;
}

bool is_first_play(const std::string& text) {
  // A load that was taken back for missing files leaves the entry empty.
  return !text.empty() && text != no_first_play;
}

}  // namespace

disc_description disc_of(const project& p) {
  disc_description d;
  d.standard_text = p.globalregion;
  d.standard = standard_named(p.globalregion);
  for (int title = 1; title <= title_count(p); ++title)
    d.titles.push_back(title_of(p, title));
  for (int menu = 1; menu <= menu_count(p); ++menu)
    d.menus.push_back(menu_of(p, menu));
  d.languages = languages_of(p);
  d.first_play_text = p.firstplay;
  if (is_first_play(p.firstplay))
    d.first_play = command_of(p.firstplay);
  d.jump_table = p.jumptable;
  d.image = p.isocreate;
  return d;
}

}  // namespace corvane
