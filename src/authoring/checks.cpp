#include "authoring/checks.h"

#include "authoring/row_checks.h"
#include "examine/project_rules.h"
#include "formats/bmp_header.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/video_standard.h"
#include "platform/files/files.h"

#include <algorithm>
#include <utility>

namespace corvane {
namespace {

// As the end of a message.
refusal why_not_bitmap(const std::string& stored, path_style style) {
  const std::string file = native_from_stored(stored, style);
  const std::string advice = ".  Please edit the menu.";
  if (!file_exists(file))
    return "the bitmap " + sanitized_quoted(file) +
           " is missing.  Please put it back, or edit the menu.";
  const result<std::string> start = first_bytes(file, enough_for_bmp_bits);
  if (!start)
    return "the bitmap " + sanitized_quoted(file) + " cannot be used: " + start.error + advice;
  if (!begins_bitmap(*start))
    return "the file " + sanitized_quoted(file) + " is not a bitmap" + advice;
  if (windows_bmp_bits(*start) == 2)
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

refusal why_not_menu_streams_of(const disc_description& d, int menu, path_style style) {
  const std::string video = native_from_stored(d.menu(menu).video(), style);
  const std::string audio = native_from_stored(d.menu(menu).audio(), style);
  const std::string name = "Menu " + trimmed(menu);
  for (const std::string& file : {video, audio})
    if (!file.empty() && !file_exists(file))
      return name + " cannot be authored: the file " + sanitized_quoted(file) +
             " is missing.  Please put it back, or remove the menu and add it again.";
  const std::string standard = video_standard_of(first_of(video));
  if (!standard.empty() && standard != d.standard_text)
    return name + " cannot be authored: its video " + sanitized_quoted(video) + " is " + standard +
           ", but the project is " + d.standard_text +
           ".  Please remove the menu and add it with a video of the project's standard.";
  return std::nullopt;
}

}  // namespace

std::optional<std::string> why_not_these_rows(const disc_description& d, path_style style) {
  if (d.standard_text != "NTSC" && d.standard_text != "PAL")
    return "The project's video standard is " + sanitized_quoted(d.standard_text) +
           ", which is neither NTSC nor PAL.  Please choose one.";
  if (const refusal why = why_not_titles(d, style))
    return why;
  return why_not_menus(d, style);
}

std::optional<std::string> why_not_authorable(const disc_description& d, std::string_view customxml,
                                              path_style style) {
  if (const refusal why = why_not_these_rows(d, style))
    return why;
  // Hand-edited XML has commands, tags and chapters of its own.
  return customxml.empty() ? why_not_navigation(d) : why_not_safe_xml(customxml);
}

std::optional<finding> finding_of_refusal(const disc_description& d, std::string_view customxml,
                                          path_style style) {
  refusal why = why_not_authorable(d, customxml, style);
  return why ? std::optional(refused_project(std::move(*why))) : std::nullopt;
}

std::optional<std::string> why_not_these_bitmaps(const disc_description& d, path_style style) {
  for (int menu = 1; menu <= d.menu_count(); ++menu) {
    int number = 0;
    for (const disc_button& b : d.menu(menu).buttons) {
      ++number;
      for (const disc_look& look : {b.highlight, b.select}) {
        const refusal why = look.is_bitmap ? why_not_bitmap(look.text, style) : std::nullopt;
        if (why)
          return "Button " + trimmed(number) + " of menu " + trimmed(menu) +
                 " cannot be authored: " + *why;
      }
    }
  }
  return std::nullopt;
}

std::optional<std::string> why_not_these_menu_streams(const disc_description& d, path_style style) {
  for (int menu = 1; menu <= d.menu_count(); ++menu)
    if (const refusal why = why_not_menu_streams_of(d, menu, style))
      return why;
  return std::nullopt;
}

std::vector<std::string> needed_tools(const disc_description& d) {
  const bool multiplexes = d.menu_count() > 0 || std::any_of(d.titles.begin(), d.titles.end(),
                                                             [](const disc_title& title) {
                                                               return title.is_multiplexed_here;
                                                             });
  std::vector<std::string> tools;
  if (multiplexes)
    tools.emplace_back("mplex");
  if (d.menu_count() > 0)
    tools.emplace_back("gm");
  if (d.menu_count() > 0 || has_subtitles(d))
    tools.emplace_back("spumux");
  tools.emplace_back("dvdauthor");
  if (d.image)
    tools.emplace_back("mkisofs");
  return tools;
}

}  // namespace corvane
