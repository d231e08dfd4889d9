// The project file's text taken apart: no files, no user, any bytes.
#pragma once

#include "platform/result.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct project;

/// What a project file holds, in the order of its sections.
struct loaded_project {
  std::vector<std::string> List11;
  std::vector<std::string> chapters;
  std::vector<std::string> delay;
  std::vector<std::string> languagetags;
  std::vector<std::string> menulist;
  std::vector<std::string> moremenuoptions;
  std::vector<std::string> menubuttons;  ///< an element for each menu at least, never none
  std::vector<std::string> postinfo;
  std::vector<std::string> subtitledata;
  std::vector<std::string> subtitleoptions;
  std::string firstplay;
  std::string globalregion;  ///< "NTSC" or "PAL"
  bool isocreate = false;
  bool jumptable = false;
  std::string customxml;  ///< each line followed by CR LF

  bool operator==(const loaded_project&) const = default;
};

/// Files with a lower version number are of a format that cannot be read.
inline constexpr double oldest_version = 0.996;

/// A project file's characters.
struct project_characters {
  std::string text;  ///< UTF-8, without a byte-order mark
  bool was_windows_1252 = false;
};

/// The bytes of a file as characters: those of UTF-8, or, where they are not, those of
/// Windows-1252, which older programs and editors write. Fails where they are neither.
result<project_characters> project_characters_of(std::string_view bytes);

/// The version number in a file's first line, as trimmed number text: what follows "Corvane " up
/// to a comma; "0" where the line does not begin so.
std::string version_number(std::string_view text);

/// Most fields (rows, and the parts of rows between "/" and "|") that a file may have. The largest
/// disc has 30000; a hostile file could have a row a byte and take all memory and a minute of
/// looking for files.
inline constexpr std::size_t most_fields = 200000;

/// Most parts of fields between "," and TAB: chapter times, settings of subtitles and menus. The
/// largest disc has 50000; each takes some memory whenever the rows are read.
inline constexpr std::size_t most_settings = 1000000;

/// Takes a whole file apart, whatever its version number. Fails on anything that a project file
/// of this program cannot be, with a reason that names the place ("line 14 names menu "xx"").
result<loaded_project> parse_project(std::string_view text);

/// How many menus the project's file would name: those of `menulist`, or more where buttons are
/// left of menus that are gone.
std::size_t menus_in_file(const project& p);

}  // namespace corvane
