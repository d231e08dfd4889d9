// The builders and checks on the disc that a project asks for, as the driver calls them: tests give
// the project's rows.
#pragma once

#include "authoring/avisynth_script.h"
#include "authoring/checks.h"
#include "authoring/layout_report.h"
#include "authoring/menu_overlays.h"
#include "authoring/navigation_xml.h"
#include "authoring/row_checks.h"
#include "authoring/subtitle_xml.h"
#include "authoring/work_script.h"
#include "project/disc_of.h"

#include <optional>
#include <string>
#include <vector>

namespace corvane::testing_support {

inline std::string work_script(const project& p, const run_paths& where) {
  return corvane::work_script(disc_of(p), where);
}
inline std::string navigation_xml(const project& p, const run_paths& where) {
  return corvane::navigation_xml(disc_of(p), where);
}
inline std::string config_xml(const project& p, const run_paths& where) {
  return corvane::config_xml(disc_of(p), p.customxml, where);
}
inline std::string menu_subpicture_xml(const project& p, const run_paths& where, int menu) {
  return corvane::menu_subpicture_xml(disc_of(p), where, menu);
}
inline std::string button_image_commands(const project& p, const run_paths& where, int menu) {
  return corvane::button_image_commands(disc_of(p), where, menu);
}
inline std::string video_size(const project& p) {
  return corvane::video_size(disc_of(p));
}
inline std::string layout_html(const project& p) {
  return corvane::layout_html(disc_of(p), p.dvdsizetext, !p.customxml.empty());
}
inline std::string avisynth_script(const project& p, path_style style = native_style()) {
  return corvane::avisynth_script(disc_of(p), style);
}

/// How many text subtitles a title has, and the control file of one (both 1-based).
inline int subtitle_count(const project& p, int title) {
  return title > title_count(p) ? 0 : static_cast<int>(disc_of(p).title(title).subtitles.size());
}
inline std::string subtitle_xml(const project& p, const run_paths& where, int title, int subtitle) {
  const auto index = static_cast<std::size_t>(subtitle) - 1;
  return corvane::subtitle_xml(disc_of(p).title(title).subtitles.at(index), where);
}

inline std::optional<std::string> why_not_authorable(const project& p, path_style style) {
  return corvane::why_not_authorable(disc_of(p), p.customxml, style);
}
inline std::optional<std::string> why_not_menus(const project& p, path_style style) {
  return corvane::why_not_menus(disc_of(p), style);
}
inline std::optional<std::string> why_not_navigation(const project& p) {
  return corvane::why_not_navigation(disc_of(p));
}
inline std::optional<std::string> why_not_these_bitmaps(const project& p, path_style style) {
  return corvane::why_not_these_bitmaps(disc_of(p), style);
}
inline std::optional<std::string> why_not_these_menu_streams(const project& p, path_style style) {
  return corvane::why_not_these_menu_streams(disc_of(p), style);
}
inline std::optional<std::string> why_not_this_folder(const project& p, const run_paths& where) {
  const auto why = corvane::why_not_this_folder(disc_of(p), where);
  return why ? why : why_not_what_lies_there(where);
}
inline std::vector<std::string> earlier_disc(const project& p, const run_paths& where) {
  return corvane::earlier_disc(where, disc_of(p).image);
}
inline std::vector<std::string> needed_tools(const project& p) {
  return corvane::needed_tools(disc_of(p));
}

}  // namespace corvane::testing_support
