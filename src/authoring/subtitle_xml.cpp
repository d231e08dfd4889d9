#include "authoring/subtitle_xml.h"

#include "authoring/navigation_xml.h"
#include "authoring/rows.h"
#include "project/numbers.h"
#include "project/subtitle_rows.h"

namespace corvane {
namespace {

std::string attribute(const char* name, const std::string& value) {
  return std::string(name) + "=" + quoted(escape_ampersands(value));
}

// On Windows spumux looks the file up among the system's fonts. Elsewhere it takes a name for that
// of a family, which "arial.ttf" is not, but a path as it stands.
std::string font_for_spumux(const std::string& file, const places& where) {
  if (where.style == path_style::windows)
    return file;
  return where.fonts.path_of_file(file).value_or(file);
}

}  // namespace

int subtitle_count(const project& p, int title) {
  return static_cast<int>(subtitle_files(p, title, path_style::windows).size());
}

std::string subtitle_xml(const project& p, const places& where, int title, int subtitle) {
  const std::vector<std::string> files = subtitle_files(p, title, where.style);
  const subtitle_settings s = parse_subtitle_settings(subtitle_settings_row(p, title, subtitle));
  using enum subtitle_field;
  const std::string indent = "         ";

  std::string text;
  add_line(text, R"(<?xml version="1.0" encoding="UTF-8"?>)");
  add_line(text, "<subpictures>");
  add_line(text, "  <stream>");
  add_line(text, "    <textsub " + attribute("filename", row_of(files, subtitle, {})));
  add_line(text, indent + attribute("fontsize", s[font_size]) + " " +
                     attribute("font", font_for_spumux(s[font_file], where)) + " " +
                     attribute("characterset", s[character_set]));
  add_line(text, indent + attribute("horizontal-alignment", s[horizontal_alignment]) + " " +
                     attribute("vertical-alignment", s[vertical_alignment]));
  add_line(text, indent + attribute("left-margin", s[left_margin]) + " " +
                     attribute("right-margin", s[right_margin]));
  add_line(text, indent + attribute("top-margin", s[top_margin]) + " " +
                     attribute("bottom-margin", s[bottom_margin]));
  add_line(text, indent + attribute("movie-fps", s[frame_rate]) + " " +
                     attribute("subtitle-fps", s[frame_rate]));
  add_line(text, indent + attribute("movie-width", s[movie_width]) + " " +
                     attribute("movie-height", s[movie_height]));
  add_line(text, "    />");
  add_line(text, "  </stream>");
  add_line(text, "</subpictures>");
  return text;
}

std::string subtitle_commands(const places& where, int title, int subtitle) {
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
