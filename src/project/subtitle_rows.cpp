#include "project/subtitle_rows.h"

#include "formats/text.h"

#include <algorithm>

namespace corvane {

subtitle_settings parse_subtitle_settings(std::string_view row) {
  const std::vector<std::string> pieces = split(row, ',');
  subtitle_settings settings;
  std::copy_n(pieces.begin(), std::min(pieces.size(), subtitle_field_count),
              settings.fields.begin());
  return settings;
}

std::string subtitle_settings_text(const subtitle_settings& settings) {
  return join({settings.fields.begin(), settings.fields.end()}, ",");
}

std::size_t subtitle_fields_in(std::string_view row) {
  return split(row, ',').size();
}

std::optional<std::string> why_not_a_subtitle_field(std::string_view text) {
  if (holds_control_character(text))
    return "contains a line break, a tab or another control character";
  for (const char c : {',', '|'})
    if (text.find(c) != std::string_view::npos)
      return std::string("contains \"") + c + '"';
  return std::nullopt;
}

std::vector<std::string> subtitle_settings_rows(std::string_view options) {
  std::vector<std::string> rows = split(options, '|');
  std::erase(rows, std::string());
  return rows;
}

std::string subtitle_options_text(const std::vector<std::string>& settings_rows) {
  std::string text;
  for (const std::string& row : settings_rows)
    text += row + "|";
  return text;
}

std::vector<std::string> title_settings_rows(const project& p, int title, std::size_t files) {
  const std::string fresh = default_subtitleoptions(p.globalregion);
  std::vector<std::string> rows = subtitle_settings_rows(row_of(p.subtitleoptions, title, fresh));
  if (rows.empty())
    rows = subtitle_settings_rows(fresh);
  if (rows.size() < files)
    rows.resize(files, std::string(rows.back()));
  return rows;
}

std::string default_subtitleoptions(std::string_view region) {
  return subtitle_options_text({subtitle_settings_text(default_subtitle_settings(region))});
}

std::vector<std::string> subtitle_paths(std::string_view row) {
  return row == no_subtitles ? std::vector<std::string>() : split(row, '/');
}

std::string with_subtitle(std::string_view row, std::string_view path) {
  std::vector<std::string> paths = subtitle_paths(row);
  paths.emplace_back(path);
  return join(paths, "/");
}

}  // namespace corvane
