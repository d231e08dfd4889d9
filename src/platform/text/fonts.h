// The fonts that the system has, for text subtitles.
//
// Windows: what the registry lists. Elsewhere: what fontconfig lists, since the subtitle tool looks
// fonts up with it; it is asked by running its own program fc-list, so that nothing links it.
#pragma once

#include <string>
#include <vector>

namespace corvane {

struct installed_font {
  std::string name;  ///< as a person knows it: "DejaVu Sans Bold", "Arial (TrueType)"
  std::string
      file;  ///< what settings store of it: the file's name; on Windows as the registry has it
  std::string path;  ///< native path; on Windows the same as `file`, which programs look up there
};

/// All of them, of every kind and in no order; a file with several fonts once for each of them that
/// can be named by the file alone. Returns none if the system does not tell. Takes tens of
/// milliseconds.
std::vector<installed_font> installed_fonts();

/// Where the file of an installed font lies: its path, and on Windows, where that is a file name
/// alone, that file among the system's fonts. Native path.
std::string font_place(const std::string& path);

}  // namespace corvane
