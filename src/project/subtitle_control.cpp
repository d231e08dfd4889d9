#include "project/subtitle_control.h"

#include "formats/text.h"

namespace corvane {
namespace {

std::string attribute(const char* name, const std::string& value) {
  return std::string(name) + "=\"" + replace_all(value, "&", "&amp;") + "\"";
}

// On Windows spumux looks the file up among the system's fonts. Elsewhere it takes a name for that
// of a family, which "arial.ttf" is not, but a path as it stands.
std::string font_for_spumux(const std::string& file, const font_list& fonts, path_style style) {
  if (style == path_style::windows)
    return file;
  return fonts.path_of_file(file).value_or(file);
}

}  // namespace

std::string subtitle_control_text(const std::string& file, const subtitle_settings& s,
                                  const font_list& fonts, path_style style) {
  using enum subtitle_field;
  const std::string indent = "         ";
  std::string text;
  const auto add_line = [&text](const std::string& line) { text.append(line).append(crlf); };
  add_line(R"(<?xml version="1.0" encoding="UTF-8"?>)");
  add_line("<subpictures>");
  add_line("  <stream>");
  add_line("    <textsub " + attribute("filename", file));
  add_line(indent + attribute("fontsize", s[font_size]) + " " +
           attribute("font", font_for_spumux(s[font_file], fonts, style)) + " " +
           attribute("characterset", s[character_set]));
  add_line(indent + attribute("horizontal-alignment", s[horizontal_alignment]) + " " +
           attribute("vertical-alignment", s[vertical_alignment]));
  add_line(indent + attribute("left-margin", s[left_margin]) + " " +
           attribute("right-margin", s[right_margin]));
  add_line(indent + attribute("top-margin", s[top_margin]) + " " +
           attribute("bottom-margin", s[bottom_margin]));
  add_line(indent + attribute("movie-fps", s[frame_rate]) + " " +
           attribute("subtitle-fps", s[frame_rate]));
  add_line(indent + attribute("movie-width", s[movie_width]) + " " +
           attribute("movie-height", s[movie_height]));
  add_line("    />");
  add_line("  </stream>");
  add_line("</subpictures>");
  return text;
}

}  // namespace corvane
