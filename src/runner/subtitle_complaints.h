// What spumux says when a text subtitle does not become what was asked for, in the user's words.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// Why a text subtitle could not be drawn, from the lines that spumux and conspawn printed: the end
/// of a sentence about the file ("it is in none of the subtitle formats that spumux reads"). Empty
/// when the lines complain about nothing.
std::string why_not_subtitled(std::string_view printed);

}  // namespace corvane
