#include "largest_project.h"

#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/menu_rows.h"
#include "project/subtitle_rows.h"

#include <filesystem>
#include <fstream>

namespace corvane::bench {
namespace {

constexpr int audio_streams = 8;
constexpr int chapters = 99;
constexpr int menu_buttons = 36;

std::string stream_row(const std::string& folder, int title) {
  const std::string name = join_path(folder, "title " + std::to_string(title));
  std::string row = stored_from_native(name + ".m2v");
  for (int audio = 1; audio <= audio_streams; ++audio)
    row += "/" + stored_from_native(name + "." + std::to_string(audio) + ".ac3");
  return row;
}

std::string chapter_list() {
  std::string list = "00:00:00.0";
  for (int minute = 1; minute < chapters; ++minute)
    list += ",0" + std::to_string(minute / 60) + ":" + (minute % 60 < 10 ? "0" : "") +
            std::to_string(minute % 60) + ":00.0";
  return list;
}

/// Buttons of a menu, each with two bitmaps of its own.
std::string button_list(const std::string& menu, int titles) {
  std::string list;
  for (int button = 0; button < menu_buttons; ++button) {
    const int x = button % 6 * 100;
    const int y = button / 6 * 60;
    if (button != 0)
      list += "|";
    list += " " + std::to_string(x) + "/ " + std::to_string(y) + "/ " + std::to_string(x + 80) +
            "/ " + std::to_string(y + 40) + "/jump title " + std::to_string(button % titles + 1) +
            " chapter " + std::to_string(button + 1);
    for (const char* const state : {" on.bmp", " chosen.bmp"})
      list += "/" + stored_from_native(menu + "." + std::to_string(button + 1) + state);
  }
  return list;
}

void make_file(const std::filesystem::path& file) {
  std::filesystem::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary | std::ios::app).flush();
}

}  // namespace

project largest_project(const std::string& folder, int titles) {
  project p;
  p.menubuttons.clear();
  for (int title = 1; title <= titles; ++title) {
    p.List11.push_back(stream_row(folder, title));
    p.chapters.push_back(chapter_list());
    p.delay.push_back("0");
    p.subtitledata.push_back("<none>");
    p.subtitleoptions.push_back(default_subtitleoptions(p.globalregion));
    p.postinfo.push_back("jump title 1             ");
    const std::string menu = join_path(folder, "menu " + std::to_string(title));
    p.menulist.push_back(stored_from_native(menu + ".m2v") + "/" +
                         stored_from_native(menu + ".ac3"));
    p.moremenuoptions.push_back("1\t00:00:00.0\t00:00:00.0\t 2");
    p.menubuttons.push_back(button_list(menu, titles));
  }
  rebuild_List1(p);
  return p;
}

void make_files(const project& p) {
  for (const auto* rows : {&p.List11, &p.menulist, &p.menubuttons})
    for (const std::string& row : *rows)
      for (const std::string& record : split(row, '|'))
        for (const std::string& field : split(record, '/'))
          if (is_bitmap(field))  // has a folder in it
            make_file(path_of(native_from_stored(field)));
}

}  // namespace corvane::bench
