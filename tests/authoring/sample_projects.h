// Projects for the tests of the builders, with paths in either style.
#pragma once

#include "authoring/run_paths.h"
#include "project/project.h"

#include <string>
#include <vector>

namespace corvane::testing_support {

inline constexpr path_style windows = path_style::windows;
inline constexpr path_style posix = path_style::posix;

/// One project and the folders it is authored with.
struct sample {
  std::string name;  ///< folder of its expected texts
  project p;
  run_paths where;
};

/// `C:\media\<name>` or `\media\<name>`: a path as rows hold it.
std::string stored_media(const std::string& name, path_style style);

/// Program folder and output folder "dvd" of the style.
run_paths sample_run_paths(path_style style);

/// Appends a title with the row's defaults; `streams` are names in the media folder.
void add_title(project& p, path_style style, const std::vector<std::string>& streams);

/// Appends a menu with the given options row and button records; an empty audio means none.
void add_menu(project& p, path_style style, const std::string& video, const std::string& audio,
              const std::string& options, const std::string& buttons);

/// Two elementary titles and a muxed one, chapters, a delay, the image asked for.
sample elementary_titles(path_style style);

/// Muxed titles only, no image.
sample muxed_titles(path_style style);

/// PAL, plain navigation, two menus, post commands, first play, language tags.
sample plain_menus(path_style style);

/// Jump-table navigation over three menus with every kind of button and post command; "&" in the
/// output folder.
sample jump_table(path_style style);

/// Jump-table navigation with one menu.
sample one_menu(path_style style);

/// A title with two text subtitles, "&" in a name, of whose fonts one is installed; a title
/// without.
sample subtitles(path_style style);

std::vector<sample> all_samples(path_style style);

}  // namespace corvane::testing_support
