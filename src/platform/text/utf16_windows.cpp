#include "platform/text/utf16_windows.h"

#include <cstddef>
#include <windows.h>

namespace corvane {

std::wstring utf16(std::string_view text) {
  const int length = static_cast<int>(text.size());
  const int needed = ::MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
  std::wstring out(static_cast<std::size_t>(needed), L'\0');
  ::MultiByteToWideChar(CP_UTF8, 0, text.data(), length, out.data(), needed);
  return out;
}

std::string utf8_of_utf16(std::wstring_view text) {
  const int length = static_cast<int>(text.size());
  const int needed =
      ::WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string out(static_cast<std::size_t>(needed), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, text.data(), length, out.data(), needed, nullptr, nullptr);
  return out;
}

}  // namespace corvane
