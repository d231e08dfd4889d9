// Paths: their stored form, their native form, and which names can be stored.
//
// Rows and project files hold paths with "\" between folders on every system ("stored form"); the
// file system, messages and every text that a tool reads use the system's own ("native form").
// All text is UTF-8.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// How native paths are written: "C:\dvd\a.m2v" or "/dvd/a.m2v".
enum class path_style { windows, posix };

/// The style of the system this program runs on.
constexpr path_style native_style() {
#ifdef _WIN32
  return path_style::windows;
#else
  return path_style::posix;
#endif
}

/// "\" or "/".
char separator(path_style style);

/// Native to stored form: on POSIX every "/" becomes "\".
std::string stored_from_native(std::string_view native, path_style style = native_style());

/// Stored to native form: on POSIX every "\" becomes "/".
std::string native_from_stored(std::string_view stored, path_style style = native_style());

/// The text after the last "\" of a stored path; the whole text when it has none.
std::string_view file_name_of(std::string_view stored);

/// The last component of a native path.
std::string native_file_name(std::string_view native, path_style style = native_style());

/// The text after the last "." of a file name, lower-case letters A to Z; empty without ".".
std::string lower_extension_of(std::string_view file_name);

/// Whether a native path names a place independent of the current folder.
bool is_absolute(std::string_view native, path_style style = native_style());

/// `folder` and `name` with one separator between them.
std::string join_path(std::string_view folder, std::string_view name,
                      path_style style = native_style());

/// Why a native path cannot be kept in a row or written into a script or XML, as a clause for a
/// message ("contains a double quote"); nullopt if it can. Refused are: text that is not UTF-8,
/// what XML allows nowhere (control characters, U+FFFE, U+FFFF), the double quote, "|" and "<"; on
/// POSIX "\" too, on Windows "/" and the names of devices, as CON and NUL.
std::optional<std::string> why_not_storable(std::string_view native,
                                            path_style style = native_style());

}  // namespace corvane
