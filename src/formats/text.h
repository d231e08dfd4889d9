// Splitting and joining row texts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The pieces between separators; an empty text has no pieces, "a/" has "a" and "".
std::vector<std::string> split(std::string_view text, char separator);
std::vector<std::string> split(std::string_view text, std::string_view separator);

std::string join(const std::vector<std::string>& pieces, std::string_view separator);

/// Without the blanks (only " ") at its beginning, its end, both.
std::string_view trim_left(std::string_view text);
std::string_view trim_right(std::string_view text);
std::string_view trim(std::string_view text);

std::string replace_all(std::string_view text, std::string_view what, std::string_view with);

/// Whether a character below the blank, or DEL, stands in the text: a line break, a TAB, ...
bool holds_control_character(std::string_view text);

/// ASCII lower case.
std::string lower(std::string_view text);

/// ASCII upper case.
std::string upper(std::string_view text);

/// `text` in double quotes.
std::string in_double_quotes(std::string_view text);

/// "\r\n", the line end of every file the program writes.
inline constexpr std::string_view crlf = "\r\n";

}  // namespace corvane
