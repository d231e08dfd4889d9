// Windows only: UTF-8 text to and from the UTF-16 that the system's wide calls take.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// Bytes that are not UTF-8 become U+FFFD; nothing fails.
std::wstring utf16(std::string_view text);

/// Lone surrogates become U+FFFD; nothing fails.
std::string utf8_of_utf16(std::wstring_view text);

}  // namespace corvane
