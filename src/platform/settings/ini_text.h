// An INI file as text: reading one value, changing one value and nothing else.
//
// [section] lines, key = value lines, comments from "#" or ";" at a line's beginning. Sections and
// keys are compared without regard to ASCII case; the last of several equal keys counts. Blanks
// around a value do not count. In a value \n, \r, \t, \\ and \xHH stand for a line feed, a carriage
// return, a tab, a backslash and any byte; a backslash before anything else stands for itself.
// Lines that are none of these are passed over when reading and kept when writing.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// The value of a key; nullopt if the section has no such key.
std::optional<std::string> ini_value(std::string_view text, std::string_view section,
                                     std::string_view key);

/// The text with the key's value changed, or the key (and the section) added. Every other line
/// stays byte for byte. The key is a plain word (letters, digits, "-", "_", "."); the value is any
/// bytes.
std::string with_ini_value(std::string_view text, std::string_view section, std::string_view key,
                           std::string_view value);

/// A value as it stands in the file, and back.
std::string escape_ini(std::string_view value);
std::string unescape_ini(std::string_view written);

}  // namespace corvane
