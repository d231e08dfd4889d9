#include "import/import_names.h"

#include <algorithm>
#include <map>

namespace corvane {
namespace {

std::string_view name_in(std::string_view path, path_style style) {
  const char* const separators = style == path_style::windows ? "\\/" : "/";
  return path.substr(path.find_last_of(separators) + 1);
}

/// Of the source's name, what a row of a project and a script can hold.
std::string storable_stem(std::string_view source, path_style style) {
  const std::string_view name = name_in(source, style);
  std::string stem(name.substr(0, name.rfind('.')));
  for (char& c : stem)
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F ||
        std::string_view("\"|<>\\/").find(c) != std::string_view::npos)
      c = '_';
  if (stem.empty() || why_not_storable(stem, style))
    stem = "import";
  return stem;
}

/// "" for the only one, ".de" for the only one of a language, else ".2": its number.
std::vector<std::string> marks_of(const std::vector<std::string>& languages) {
  std::map<std::string, int> times;
  for (const std::string& language : languages)
    ++times[language];
  std::vector<std::string> marks;
  for (std::size_t i = 0; i < languages.size(); ++i) {
    const bool alone = languages.size() == 1 && languages[i].empty();
    const bool is_unique = !languages[i].empty() && times[languages[i]] == 1;
    marks.push_back(alone ? "" : "." + (is_unique ? languages[i] : std::to_string(i + 1)));
  }
  return marks;
}

std::vector<std::string> sound_endings(const import_plan& plan) {
  std::vector<std::string> languages;
  for (const sound_work& work : plan.sound.streams)
    languages.push_back(plan.sound.streams.size() == 1 ? "" : work.language);
  std::vector<std::string> endings = marks_of(languages);
  for (std::size_t i = 0; i < endings.size(); ++i)
    endings[i] += plan.sound.streams[i].kind == disc_sound::mp2 ? ".mp2" : ".ac3";
  return endings;
}

std::vector<std::string> text_endings(const import_plan& plan) {
  std::vector<std::string> languages;
  for (const text_plan& text : plan.texts)
    languages.push_back(text.language);
  std::vector<std::string> endings = marks_of(languages);
  for (std::string& ending : endings)
    ending += ".srt";
  return endings;
}

}  // namespace

std::vector<std::string> import_files::all() const {
  std::vector<std::string> files{video};
  files.insert(files.end(), sounds.begin(), sounds.end());
  files.insert(files.end(), texts.begin(), texts.end());
  return files;
}

std::string temporary_name(const std::string& file) {
  return file + ".part";
}

std::string notes_file(const import_files& files) {
  return files.notes + "-0.log";
}

std::vector<std::string> temporary_files(const import_files& files) {
  std::vector<std::string> temporary{notes_file(files)};
  for (const std::string& file : files.all())
    temporary.push_back(temporary_name(file));
  return temporary;
}

import_files import_names(std::string_view folder, std::string_view source, const import_plan& plan,
                          const std::function<bool(const std::string&)>& is_taken,
                          path_style style) {
  const std::string stem = storable_stem(source, style);
  const auto begin_of = [&](int number) {
    return join_path(folder, number == 1 ? stem : stem + " (" + std::to_string(number) + ")",
                     style);
  };
  const auto is_free = [&](const std::string& file) {
    return !is_taken(file) && !is_taken(temporary_name(file));
  };
  import_files files;
  int number = 0;
  do {
    const std::string begin = begin_of(++number);
    files = {begin + ".m2v", {}, {}, begin + ".pass"};
    for (const std::string& ending : sound_endings(plan))
      files.sounds.push_back(begin + ending);
  } while (!std::ranges::all_of(files.all(), is_free) || is_taken(notes_file(files)));
  for (const std::string& ending : text_endings(plan)) {
    int own = number;
    while (!is_free(begin_of(own) + ending))
      ++own;
    files.texts.push_back(begin_of(own) + ending);
  }
  return files;
}

}  // namespace corvane
