#include "platform/text/charset.h"
#include "platform/text/utf16_windows.h"

#include <algorithm>
#include <cwchar>
#include <windows.h>

namespace corvane {
namespace {

/// The system's ANSI code page; 0 when it cannot be told. Not GetACP: that is this program's own,
/// which its manifest makes UTF-8.
UINT system_code_page() {
  wchar_t number[16] = L"";
  DWORD bytes = sizeof number;
  if (::RegGetValueW(HKEY_LOCAL_MACHINE, L"SYSTEM\\CurrentControlSet\\Control\\Nls\\CodePage",
                     L"ACP", RRF_RT_REG_SZ, nullptr, number, &bytes) != ERROR_SUCCESS)
    return 0;
  return static_cast<UINT>(std::wcstoul(number, nullptr, 10));
}

bool is_ascii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace

std::optional<std::string> in_system_charset(std::string_view text) {
  const UINT page = system_code_page();
  if (is_ascii(text) || page == CP_UTF8)
    return std::string(text);
  if (page == 0)
    return std::nullopt;
  const std::wstring all = utf16(text);
  const int length = static_cast<int>(all.size());
  const auto convert = [&](char* to, int room, BOOL* lacks) {
    return ::WideCharToMultiByte(page, WC_NO_BEST_FIT_CHARS, all.data(), length, to, room, nullptr,
                                 lacks);
  };
  BOOL lacks = FALSE;
  std::string bytes(static_cast<std::size_t>(convert(nullptr, 0, nullptr)), '\0');
  const int written = convert(bytes.data(), static_cast<int>(bytes.size()), &lacks);
  if (written <= 0 || lacks != FALSE)
    return std::nullopt;
  return bytes;
}

}  // namespace corvane
