// What spumux says when a text subtitle does not become what was asked for, in the user's words.
//
// Its exit status does not tell: it is 0 when nothing was added and when letters are missing.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// Why a text subtitle could not be drawn, from the lines that spumux and conspawn printed: the end
/// of a sentence about the file ("it is in none of the subtitle formats that spumux reads"). Empty
/// when no line says that something failed.
std::string why_not_subtitled(std::string_view printed);

/// What is wrong with a text subtitle whose spumux ended well, likewise: nothing was added, or
/// texts, lines or letters are missing. `printed` is what spumux printed, or as much of it as was
/// kept; `control` the text of its control file. Returns an empty text if all is well.
std::string what_is_missing(std::string_view printed, std::string_view control);

/// The native path of the subtitle file that a control file's text names, or an empty text.
std::string subtitle_file_in(std::string_view control);

/// The lines that a tool printed end with CR or LF, or both. Gives the first one of `text`, without
/// its end, and takes it away.
std::string_view take_printed_line(std::string_view& text);

}  // namespace corvane
