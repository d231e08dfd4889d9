#include "project/imported_title.h"

#include "disc/subtitle_settings.h"
#include "formats/text.h"
#include "formats/time_text.h"
#include "project/chapter_rows.h"
#include "project/language_rows.h"
#include "project/subtitle_rows.h"
#include "project/title_rows.h"

#include <algorithm>

namespace corvane {
namespace {

/// Later ones that are rounded to the same hundredth are left out.
std::string row_of_chapters(const std::vector<double>& seconds) {
  std::vector<std::string> times{time_text(0)};
  for (const double second : seconds)
    if (std::string time = time_text(second); time != times.back())
      times.push_back(std::move(time));
  return chapter_row(times);
}

std::string options_of(std::size_t files, const std::string& region) {
  subtitle_settings settings = default_subtitle_settings(region);
  settings[subtitle_field::character_set] = "UTF-8";
  return subtitle_options_text(std::vector<std::string>(files, subtitle_settings_text(settings)));
}

void set_subtitles(project& p, const std::vector<std::string>& files) {
  if (files.empty())
    return;
  std::string row(no_subtitles);
  for (const std::string& file : files)
    row = with_subtitle(row, file);
  p.subtitledata.back() = row;
  p.subtitleoptions.back() = options_of(files.size(), p.globalregion);
}

}  // namespace

void add_imported_title(document& doc, const imported_title& title, video_standard standard) {
  project& p = doc.p;
  if (p.List11.empty() && p.menulist.empty())
    p.globalregion = standard == video_standard::pal ? "PAL" : "NTSC";
  p.Comboregion_enabled = false;
  add_title(p, join(title.streams, "/"));
  p.chapters.back() = row_of_chapters(title.chapters);
  p.delay.back() = std::to_string(title.delay);
  set_subtitles(p, title.subtitles);
  p.selected = static_cast<int>(p.List11.size()) - 1;
  p.saved = 0;
  dvdsize(doc);
}

void set_language_tags(document& doc, disc_language::stream_kind kind,
                       const std::vector<std::string>& languages) {
  const auto is_of_kind = [kind](const std::string& row) {
    const auto tag = parse_language_row(row);
    return tag && tag->kind == kind;
  };
  std::vector<std::string>& rows = doc.p.languagetags;
  std::vector<std::string> before = rows;
  rows.erase(std::remove_if(rows.begin(), rows.end(), is_of_kind), rows.end());
  for (const std::string& language : languages)
    rows.push_back(language_row(kind, language));
  if (rows != before)
    doc.p.saved = 0;
}

}  // namespace corvane
