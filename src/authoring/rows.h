// How the builders read the stores: by title or menu number, with native paths. A store that is
// shorter than the title or menu list (a project file cut off, or written by hand) reads as what a
// new title or menu starts with, so that every builder has a text for every project.
#pragma once

#include "platform/files/paths.h"
#include "project/menu_rows.h"
#include "project/project.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

int title_count(const project& p);
int menu_count(const project& p);

/// Row `number` (1-based) of a list; `missing` when the list is shorter.
std::string row_of(const std::vector<std::string>& list, int number, std::string_view missing);

/// Native paths of a title's streams, video first; one path for a muxed title.
std::vector<std::string> title_streams(const project& p, int title, path_style style);

/// Whether the script multiplexes the title (its row has "/"), so that the run's title file is
/// title<t>.mpg in the output folder; otherwise its one file is used where it is.
bool is_multiplexed_here(const project& p, int title);

/// The chapter times of a title; empty when it has none.
std::string chapters_of(const project& p, int title);

/// A menu's streams as native paths; the audio is empty when the menu has none.
menu_streams native_menu_streams(const project& p, int menu, path_style style);

menu_options options_of(const project& p, int menu);

/// The buttons of a menu, in stored order.
std::vector<button_record> buttons_of(const project& p, int menu);

/// Native paths of a title's subtitle files; none for "<none>".
std::vector<std::string> subtitle_files(const project& p, int title, path_style style);

/// The settings row (project/subtitle_rows.h) of a title's subtitle (both 1-based). The settings
/// reach the project only when the subtitle dialog is accepted, its files at once: with fewer rows
/// than files the last row serves, with none the defaults of the region.
std::string subtitle_settings_row(const project& p, int title, int subtitle);

/// Kind and code of a language tag row.
struct language_tag {
  bool audio = false;
  bool subpicture = false;
  std::string code;  ///< second blank-separated word after the TAB; empty: there is none
};
language_tag parse_language_tag(std::string_view row);

/// `text` in double quotes.
std::string quoted(std::string_view text);

/// The text with CR LF after it.
void add_line(std::string& text, std::string_view line);

}  // namespace corvane
