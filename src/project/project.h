// The project: everything the user has put together for one disc, as lists of row texts.
//
// The row texts stand in the project file and are read by authoring exactly as they are here.
// Row i of each per-title list belongs to title i+1; row j of each per-menu list to menu j+1.
// Paths in rows are in stored form (platform/files/paths.h). There is one project a process; the
// window shows it, commands change it.
#pragma once

#include "disc/command_target.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The program's version line: caption of the window, first line of project and log files.
inline constexpr const char* version_title = "Corvane 0.997 - 1/2/2005";

struct project {
  // Titles. The first six always have equal row counts; postinfo is emptied when a title is added
  // and otherwise left alone.
  std::vector<std::string> List1;   ///< shown: "title" N ":" file names joined by "/"
  std::vector<std::string> List11;  ///< stream paths joined by "/", video first; without "/": muxed
  std::vector<std::string> chapters;         ///< chapter times joined by ","
  std::vector<std::string> delay;            ///< A/V delay in milliseconds, decimal text
  std::vector<std::string> subtitledata;     ///< "<none>" or subtitle paths joined by "/"
  std::vector<std::string> subtitleoptions;  ///< settings rows of 12 fields, each followed by "|"
  std::vector<std::string> postinfo;         ///< post command, padded to 25 characters

  // Titleset menus.
  std::vector<std::string> menulist;         ///< video path "/" audio path (may be empty)
  std::vector<std::string> moremenuoptions;  ///< loop, spu begin, spu end, thickness; TAB between
  std::vector<std::string> menubuttons{std::string()};  ///< button records joined by "|"
  std::vector<std::string> buttondata;  ///< transfer list of the menu editor, else empty
  int indexer = 0;                      ///< number of the menu being edited

  std::vector<command_target> led_to;  ///< commands before numbers moved (project/moved_commands.h)

  // The disc.
  std::vector<std::string> languagetags;  ///< "Audio tag:" or "Subtitle tag:", TAB, name and code
  std::string firstplay = "<default>";
  std::string customxml;              ///< hand-edited navigation XML; empty: none
  std::string globalregion = "NTSC";  ///< "NTSC" or "PAL"
  bool isocreate = false;             ///< "create iso after authoring"
  bool jumptable = false;             ///< "use JumpTable"
  bool cleanup = false;               ///< "clean up files after authoring" (a preference)
  bool editxml = false;               ///< "edit xml before authoring" (kept nowhere)
  int saved = 0;                      ///< 1: saved or loaded and not changed since

  // What the main window shows of it.
  std::string Frame1 = "0 titles loaded";
  std::string dvdsizetext;          ///< three lines: titles, menus, size
  bool dvdsizetext_red = false;     ///< more than 4.7e9 bytes
  std::uint64_t dvdsize_bytes = 0;  ///< of which its size is the figure
  bool Comboregion_enabled = true;  ///< whether the region may be changed
  int selected = -1;                ///< selected row of List1, 0-based; -1: none
};

/// Upper bound of a list: row count - 1, so -1 for one that has no element.
int UUBound(const std::vector<std::string>& array);

/// Row `number` (1-based) of a list; `missing` if the list is shorter.
std::string row_of(const std::vector<std::string>& list, int number, std::string_view missing);

/// The same row to be written: a list that is shorter is filled up with `missing`. 1-based.
std::string& row_to_write(std::vector<std::string>& list, int number, const std::string& missing);

/// How many titles and menus there are: the rows of `List11` and `menulist`.
int title_count(const project& p);
int menu_count(const project& p);

/// Removes element `index` (0-based) of `menubuttons`. An index outside wipes the array to one
/// empty element, and so does removing the only one.
void ArrayRemoveItem(project& p, int index);

/// Rebuilds every row of `List1` from `List11`.
void rebuild_List1(project& p);

/// The `List1` row of title `number` (1-based) for a `List11` row.
std::string List1_row(int number, const std::string& List11_row);

/// Whether a `List11` or `List1` row is a muxed title: it has no "/".
bool is_muxed(const std::string& row);

/// "<n> titles loaded" into `Frame1`, from `List1`.
void show_title_count(project& p);

}  // namespace corvane
