#include "authoring/rows.h"

#include "formats/text.h"
#include "project/subtitle_rows.h"

namespace corvane {

int title_count(const project& p) {
  return static_cast<int>(p.List11.size());
}

int menu_count(const project& p) {
  return static_cast<int>(p.menulist.size());
}

std::string row_of(const std::vector<std::string>& list, int number, std::string_view missing) {
  const auto index = static_cast<std::size_t>(number) - 1;
  return number >= 1 && index < list.size() ? list[index] : std::string(missing);
}

std::vector<std::string> title_streams(const project& p, int title, path_style style) {
  std::vector<std::string> streams = split(row_of(p.List11, title, {}), '/');
  for (std::string& stream : streams)
    stream = native_from_stored(stream, style);
  return streams;
}

bool is_multiplexed_here(const project& p, int title) {
  return !is_muxed(row_of(p.List11, title, {}));
}

std::string chapters_of(const project& p, int title) {
  return row_of(p.chapters, title, {});
}

menu_streams native_menu_streams(const project& p, int menu, path_style style) {
  menu_streams streams = parse_menu_row(row_of(p.menulist, menu, {}));
  streams.video = native_from_stored(streams.video, style);
  streams.audio = native_from_stored(streams.audio, style);
  return streams;
}

menu_options options_of(const project& p, int menu) {
  return parse_menu_options(row_of(p.moremenuoptions, menu, new_menu_options));
}

std::vector<button_record> buttons_of(const project& p, int menu) {
  std::vector<button_record> buttons;
  for (const std::string& record : button_records(p, menu))
    buttons.push_back(parse_button(record));
  return buttons;
}

std::vector<std::string> subtitle_files(const project& p, int title, path_style style) {
  std::vector<std::string> files = subtitle_paths(row_of(p.subtitledata, title, no_subtitles));
  for (std::string& file : files)
    file = native_from_stored(file, style);
  return files;
}

std::string subtitle_settings_row(const project& p, int title, int subtitle) {
  const std::vector<std::string> rows =
      subtitle_settings_rows(row_of(p.subtitleoptions, title, {}));
  if (rows.empty())
    return subtitle_settings_text(default_subtitle_settings(p.globalregion));
  return row_of(rows, subtitle, rows.back());
}

language_tag parse_language_tag(std::string_view row) {
  language_tag tag;
  tag.audio = row.starts_with("Aud");
  tag.subpicture = row.starts_with("Sub");
  const std::vector<std::string> fields = split(row, '\t');
  const std::vector<std::string> words =
      fields.size() < 2 ? std::vector<std::string>() : split(fields[1], ' ');
  if (words.size() >= 2)
    tag.code = words[1];
  return tag;
}

std::string quoted(std::string_view text) {
  std::string q = "\"";
  q += text;
  q += '"';
  return q;
}

void add_line(std::string& text, std::string_view line) {
  text += line;
  text += crlf;
}

}  // namespace corvane
