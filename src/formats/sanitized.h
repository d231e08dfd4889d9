// Any text as a message can show it: rows, names and tool output may hold bytes that no message box
// can.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvane {

/// The text with each control character, and where it is not UTF-8 each byte beyond ASCII, made a
/// "?".
std::string sanitized(std::string_view text);

/// The same, shortened with "..." when it is longer than `most` bytes.
std::string sanitized_short(std::string_view text, std::size_t most = 60);

/// The same in double quotes, shortened at 200 bytes.
std::string sanitized_quoted(std::string_view text);

}  // namespace corvane
