#include "authoring/subtitle_xml.h"

#include "authoring/disc_texts.h"
#include "formats/numbers.h"
#include "formats/text.h"
#include "project/subtitle_control.h"
#include "runner/run_files.h"

namespace corvane {

std::string subtitle_xml(const disc_subtitle& subtitle, const run_paths& where) {
  return subtitle_control_text(native_from_stored(subtitle.file, where.style), *subtitle.settings,
                               where.fonts, where.style);
}

std::string subtitle_commands(const run_paths& where, int title, int subtitle) {
  const std::string t = trimmed(title), s = trimmed(subtitle);
  const std::string muxed = in_double_quotes(where.in_out(run_file::title_stream(title)));
  const std::string before = in_double_quotes(where.in_out(run_file::before_subtitle));
  const std::string control =
      in_double_quotes(where.in_app(run_file::subtitle_control(title, subtitle)));

  std::string text;
  add_line(text, "echo *processing subtitles for title: " + t + " sub " + s + "...");
  add_line(text, "rename " + muxed + " " + std::string(run_file::before_subtitle));
  add_line(text, in_double_quotes(where.tool("spumux")) + " -s " + trimmed(subtitle - 1) + " " +
                     control + " <" + before + " > " + muxed);
  add_line(text, "erase " + before);
  return text;
}

}  // namespace corvane
