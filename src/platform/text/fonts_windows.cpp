#include "platform/text/fonts_windows.h"

#include "platform/text/utf16_windows.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <utility>
#include <windows.h>

namespace corvane {
namespace {

/// A registry key opened for reading; none when it is not there.
class open_key {
 public:
  explicit open_key(std::string_view place) {
    constexpr std::string_view machine = "HKEY_LOCAL_MACHINE\\", user = "HKEY_CURRENT_USER\\";
    const HKEY root = place.starts_with(machine) ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
    const std::wstring path = utf16(place.substr(place.find('\\') + 1));
    const bool known = place.starts_with(machine) || place.starts_with(user);
    if (!known || ::RegOpenKeyExW(root, path.c_str(), 0, KEY_QUERY_VALUE, &key_) != ERROR_SUCCESS)
      key_ = nullptr;
  }
  ~open_key() {
    if (key_ != nullptr)
      ::RegCloseKey(key_);
  }
  open_key(const open_key&) = delete;
  open_key& operator=(const open_key&) = delete;

  /// Value number `index`; false when there are no more. One that is no text has empty data.
  bool value(DWORD index, std::string& name, std::string& data) const {
    // No name is longer; data that is, is no file name.
    std::array<wchar_t, 16384> name_text{};
    std::array<wchar_t, 4096> text{};
    DWORD name_length = name_text.size(), type = 0;
    DWORD bytes = text.size() * sizeof(wchar_t);
    if (key_ == nullptr)
      return false;
    const LSTATUS end = ::RegEnumValueW(key_, index, name_text.data(), &name_length, nullptr, &type,
                                        reinterpret_cast<BYTE*>(text.data()), &bytes);
    if (end != ERROR_SUCCESS && end != ERROR_MORE_DATA)
      return false;
    name = utf8_of_utf16({name_text.data(), name_length});
    const bool is_text = end == ERROR_SUCCESS && (type == REG_SZ || type == REG_EXPAND_SZ);
    std::wstring_view data_text(text.data(), is_text ? bytes / sizeof(wchar_t) : 0);
    data = utf8_of_utf16(data_text.substr(0, data_text.find(L'\0')));
    return true;
  }

 private:
  HKEY key_ = nullptr;
};

}  // namespace

std::vector<installed_font> fonts_at(const std::vector<std::string>& places) {
  for (const std::string& place : places) {
    std::vector<installed_font> fonts;
    const open_key key(place);
    std::string name, file;
    for (DWORD i = 0; key.value(i, name, file); ++i)
      if (!file.empty())
        fonts.push_back({name, file, file});
    if (!fonts.empty())
      return fonts;
  }
  return {};
}

std::vector<installed_font> installed_fonts() {
  return fonts_at({"HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Fonts",
                   "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Fonts"});
}

std::string font_place(const std::string& path) {
  std::array<wchar_t, MAX_PATH + 1> folder{};
  const UINT length = ::GetSystemWindowsDirectoryW(folder.data(), folder.size());
  if (path.find('\\') != std::string::npos || length == 0 || length >= folder.size())
    return path;
  return utf8_of_utf16({folder.data(), length}) + "\\Fonts\\" + path;
}

}  // namespace corvane
