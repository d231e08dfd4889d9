#include "authoring/subtitle_xml.h"

#include "authoring/rows.h"
#include "formats/numbers.h"
#include "project/subtitle_control.h"
#include "project/subtitle_rows.h"

namespace corvane {

int subtitle_count(const project& p, int title) {
  return static_cast<int>(subtitle_files(p, title, path_style::windows).size());
}

std::string subtitle_xml(const project& p, const run_paths& where, int title, int subtitle) {
  const std::vector<std::string> files = subtitle_files(p, title, where.style);
  return subtitle_control_text(row_of(files, subtitle, {}),
                               parse_subtitle_settings(subtitle_settings_row(p, title, subtitle)),
                               where.fonts, where.style);
}

std::string subtitle_commands(const run_paths& where, int title, int subtitle) {
  const std::string t = trimmed(title), s = trimmed(subtitle);
  const std::string muxed = quoted(where.in_out("title" + t + ".mpg"));
  const std::string before = quoted(where.in_out("presub.mpg"));
  const std::string control = quoted(where.in_app("sub" + t + "-" + s + ".xml"));

  std::string text;
  add_line(text, "echo *processing subtitles for title: " + t + " sub " + s + "...");
  add_line(text, "rename " + muxed + " presub.mpg");
  add_line(text, quoted(where.tool("spumux")) + " -s " + trimmed(subtitle - 1) + " " + control +
                     " <" + before + " > " + muxed);
  add_line(text, "erase " + before);
  return text;
}

}  // namespace corvane
