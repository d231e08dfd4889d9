#include "disc/subtitle_settings.h"

namespace corvane {

const char* name_of(subtitle_field field) {
  static constexpr std::array<const char*, subtitle_field_count> names = {
      "horizontal alignment", "vertical alignment", "left margin", "right margin",
      "top margin",           "bottom margin",      "font size",   "font",
      "movie width",          "movie height",       "frame rate",  "character set"};
  return names[static_cast<std::size_t>(field)];
}

subtitle_settings default_subtitle_settings(std::string_view region) {
  const bool ntsc = region == "NTSC";
  return {{"center", "bottom", "60", "60", "30", "30", "28.0", "arial.ttf", "720",
           ntsc ? "478" : "574", ntsc ? "29.97" : "25", "ISO-8859-1"}};
}

}  // namespace corvane
