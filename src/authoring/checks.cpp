#include "authoring/checks.h"

#include "authoring/row_checks.h"
#include "authoring/rows.h"
#include "authoring/subtitle_xml.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/video_standard.h"
#include "platform/files/files.h"

namespace corvane {
namespace {

// As the end of a message.
refusal why_not_bitmap(const std::string& stored, path_style style) {
  const std::string file = native_from_stored(stored, style);
  const std::string advice = ".  Please edit the menu.";
  if (!file_exists(file))
    return "the bitmap " + sanitized_quoted(file) +
           " is missing.  Please put it back, or edit the menu.";
  constexpr std::size_t bits_at = 28;  // of a pixel, in the file's second header
  const result<std::string> start = first_bytes(file, bits_at + 1);
  if (!start)
    return "the bitmap " + sanitized_quoted(file) + " cannot be used: " + start.error + advice;
  if (!start->starts_with("BM"))
    return "the file " + sanitized_quoted(file) + " is not a bitmap" + advice;
  if (start->size() > bits_at && (*start)[bits_at] == 2)
    return "the bitmap " + sanitized_quoted(file) +
           " has 2 bits a pixel, which the drawing tool does not read.  Please save it with 1 or 4 "
           "bits" +
           advice;
  return std::nullopt;
}

std::string first_of(const std::string& file) {
  const result<std::string> start = first_bytes(file, enough_for_a_header);
  return start ? *start : std::string();
}

refusal why_not_menu_streams_of(const project& p, int menu, path_style style) {
  const menu_streams streams = native_menu_streams(p, menu, style);
  const std::string name = "Menu " + trimmed(menu);
  for (const std::string& file : {streams.video, streams.audio})
    if (!file.empty() && !file_exists(file))
      return name + " cannot be authored: the file " + sanitized_quoted(file) +
             " is missing.  Please put it back, or remove the menu and add it again.";
  const std::string standard = video_standard_of(first_of(streams.video));
  if (!standard.empty() && standard != p.globalregion)
    return name + " cannot be authored: its video " + sanitized_quoted(streams.video) + " is " +
           standard + ", but the project is " + p.globalregion +
           ".  Please remove the menu and add it with a video of the project's standard.";
  return std::nullopt;
}

}  // namespace

std::optional<std::string> why_not_these_rows(const project& p, path_style style) {
  if (p.globalregion != "NTSC" && p.globalregion != "PAL")
    return "The project's video standard is " + sanitized_quoted(p.globalregion) +
           ", which is neither NTSC nor PAL.  Please choose one.";
  if (const refusal why = why_not_titles(p, style))
    return why;
  return why_not_menus(p, style);
}

std::optional<std::string> why_not_authorable(const project& p, path_style style) {
  if (const refusal why = why_not_these_rows(p, style))
    return why;
  // Hand-edited XML has commands, tags and chapters of its own.
  return p.customxml.empty() ? why_not_navigation(p) : why_not_safe_xml(p.customxml);
}

std::optional<std::string> why_not_these_bitmaps(const project& p, path_style style) {
  for (int menu = 1; menu <= menu_count(p); ++menu) {
    int number = 0;
    for (const button_record& b : buttons_of(p, menu)) {
      ++number;
      for (const std::string& look : {b.highlight, b.select}) {
        const refusal why = is_bitmap(look) ? why_not_bitmap(look, style) : std::nullopt;
        if (why)
          return "Button " + trimmed(number) + " of menu " + trimmed(menu) +
                 " cannot be authored: " + *why;
      }
    }
  }
  return std::nullopt;
}

std::optional<std::string> why_not_these_menu_streams(const project& p, path_style style) {
  for (int menu = 1; menu <= menu_count(p); ++menu)
    if (const refusal why = why_not_menu_streams_of(p, menu, style))
      return why;
  return std::nullopt;
}

std::vector<std::string> needed_tools(const project& p) {
  bool multiplexes = menu_count(p) > 0, subtitles = false;
  for (int title = 1; title <= title_count(p); ++title) {
    multiplexes = multiplexes || is_multiplexed_here(p, title);
    subtitles = subtitles || subtitle_count(p, title) > 0;
  }
  std::vector<std::string> tools;
  if (multiplexes)
    tools.emplace_back("mplex");
  if (menu_count(p) > 0)
    tools.emplace_back("gm");
  if (menu_count(p) > 0 || subtitles)
    tools.emplace_back("spumux");
  tools.emplace_back("dvdauthor");
  if (p.isocreate)
    tools.emplace_back("mkisofs");
  return tools;
}

}  // namespace corvane
