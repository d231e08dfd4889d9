// The row format of post commands (project::postinfo): the command that a title ends with, padded
// with blanks to 25 characters, or cut to them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvane {

/// `firstplay` where a disc begins as players do by themselves.
inline constexpr const char* no_first_play = "<default>";

std::string post_row(std::string_view command);

/// The command of a row, without the blanks around it; empty: none.
std::string post_command_of(std::string_view row);

/// `text` as `width` characters: padded with blanks or cut. A character is one of UTF-8, so that
/// none is cut in two; a byte that belongs to none counts as one.
std::string padded(std::string_view text, std::size_t width);

/// How many characters of a command are kept.
inline constexpr std::size_t post_width = 25;

}  // namespace corvane
