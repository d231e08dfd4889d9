#include "disc/disc_description.h"

#include "formats/numbers.h"
#include "formats/text.h"
#include "formats/time_text.h"

#include <algorithm>
#include <cstddef>

namespace corvane {
namespace {

const std::string& piece(const std::vector<std::string>& pieces, std::size_t index) {
  static const std::string missing;
  return index < pieces.size() ? pieces[index] : missing;
}

}  // namespace

const std::string& title_file::video() const {
  return piece(streams, 0);
}

std::vector<const title_file*> disc_title::files() const {
  std::vector<const title_file*> all = {this};
  for (const title_file& file : further)
    all.push_back(&file);
  return all;
}

const std::string& disc_menu::video() const {
  return piece(files, 0);
}

const std::string& disc_menu::audio() const {
  return piece(files, 1);
}

const disc_title& disc_description::title(int number) const {
  return titles.at(static_cast<std::size_t>(number) - 1);
}

const disc_menu& disc_description::menu(int number) const {
  return menus.at(static_cast<std::size_t>(number) - 1);
}

video_standard standard_named(const std::string& name) {
  if (name == "NTSC")
    return video_standard::ntsc;
  return name == "PAL" ? video_standard::pal : video_standard::other;
}

text_number number_of(const std::string& text) {
  return {text, leading_number(text), is_decimal(text)};
}

text_time time_of(const std::string& text) {
  return {text, typed_time(text)};
}

bool is_given(const std::optional<disc_command>& command) {
  return command && !trim(command->text).empty();
}

bool is_cut(const disc_title& title) {
  return title.has_cells || std::any_of(title.further.begin(), title.further.end(),
                                        [](const title_file& file) { return file.has_cells; });
}

bool has_subtitles(const disc_description& d) {
  return std::any_of(d.titles.begin(), d.titles.end(), [](const disc_title& title) {
    const std::vector<const title_file*> files = title.files();
    return std::any_of(files.begin(), files.end(),
                       [](const title_file* file) { return !file->subtitles.empty(); });
  });
}

}  // namespace corvane
