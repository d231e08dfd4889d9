#include "platform/files/paths.h"

#include "platform/text/utf8.h"

#include <algorithm>

namespace corvane {
namespace {

bool is_ascii_letter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Windows takes these names for devices, in every folder and with any extension.
bool names_device(std::string_view name) {
  std::string stem(name.substr(0, name.find('.')));
  while (stem.ends_with(' '))
    stem.pop_back();
  for (char& c : stem)
    if (is_ascii_letter(c))
      c = static_cast<char>(c & ~0x20);
  if (stem == "CON" || stem == "PRN" || stem == "AUX" || stem == "NUL")
    return true;
  return stem.size() == 4 && (stem.starts_with("COM") || stem.starts_with("LPT")) &&
         stem[3] >= '1' && stem[3] <= '9';
}

/// As a clause; nullopt if no folder and no file on the path has such a name.
std::optional<std::string> why_device(std::string_view path) {
  // "\\.\CON" is what the system makes of "C:\films\con" itself.
  if (path.starts_with("\\\\.\\"))
    return "is that of a device";
  while (!path.empty()) {
    const std::string_view name = path.substr(0, path.find('\\'));
    if (names_device(name))
      return "has \"" + std::string(name) + "\" in it, which Windows takes for a device";
    path.remove_prefix(std::min(path.size(), name.size() + 1));
  }
  return std::nullopt;
}

}  // namespace

char separator(path_style style) {
  return style == path_style::windows ? '\\' : '/';
}

std::string stored_from_native(std::string_view native, path_style style) {
  std::string stored(native);
  if (style == path_style::posix)
    std::replace(stored.begin(), stored.end(), '/', '\\');
  return stored;
}

std::string native_from_stored(std::string_view stored, path_style style) {
  std::string native(stored);
  if (style == path_style::posix)
    std::replace(native.begin(), native.end(), '\\', '/');
  return native;
}

std::string_view file_name_of(std::string_view stored) {
  const auto last = stored.rfind('\\');
  return last == std::string_view::npos ? stored : stored.substr(last + 1);
}

std::string native_file_name(std::string_view native, path_style style) {
  const auto last = native.find_last_of(style == path_style::windows ? "\\/" : "/");
  return std::string(last == std::string_view::npos ? native : native.substr(last + 1));
}

std::string lower_extension_of(std::string_view file_name) {
  const auto dot = file_name.rfind('.');
  if (dot == std::string_view::npos)
    return {};
  std::string extension(file_name.substr(dot + 1));
  for (char& c : extension)
    if (c >= 'A' && c <= 'Z')
      c = static_cast<char>(c - 'A' + 'a');
  return extension;
}

bool is_absolute(std::string_view native, path_style style) {
  if (style == path_style::posix)
    return !native.empty() && native[0] == '/';
  const bool drive =
      native.size() >= 3 && is_ascii_letter(native[0]) && native[1] == ':' && native[2] == '\\';
  const bool share = native.size() >= 3 && native[0] == '\\' && native[1] == '\\';
  return drive || share;
}

std::string join_path(std::string_view folder, std::string_view name, path_style style) {
  std::string path(folder);
  if (path.empty() || path.back() != separator(style))
    path += separator(style);
  path += name;
  return path;
}

std::optional<std::string> why_not_storable(std::string_view native, path_style style) {
  if (!is_utf8(native))
    return "contains bytes that are not UTF-8 text";
  for (const std::string_view none : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"})
    if (native.find(none) != std::string_view::npos)
      return "contains a character that no text may contain (U+FFFE or U+FFFF)";
  for (const char c : native) {
    if (is_control_character(c))
      return "contains a control character";
    if (c == '"')
      return "contains a double quote (\")";
    if (c == '|')
      return "contains a vertical bar (|)";
    if (c == '<')
      return "contains a less-than sign (<)";
    if (style == path_style::posix && c == '\\')
      return "contains a backslash (\\)";
    if (style == path_style::windows && c == '/')
      return "contains a slash (/)";
  }
  if (style == path_style::windows)
    return why_device(native);
  return std::nullopt;
}

}  // namespace corvane
