// The names that a font file goes by.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The family names and full names in a TrueType or OpenType file, or in a collection of such, in
/// all their languages (UTF-8; at most a few hundred). `file` is the whole file. Returns none if it
/// is no such font.
std::vector<std::string> font_names(std::string_view file);

/// The families of a font as settings name it, with a size after "-": several with "," between, all
/// in front of ":" and a style.
std::vector<std::string> families_asked_for(std::string_view name);

/// Whether one of the names is this one, whatever blanks and the case of the letters A to Z.
bool is_font_name(std::string_view name, const std::vector<std::string>& names);

}  // namespace corvane
