// Whether the picture of a menu's buttons got into the menu's stream.
//
// spumux ends with status 0 when it has put nothing in, and dvdauthor makes a disc of it whose
// menu answers no button. So the stream itself is looked at.
#pragma once

#include <string>

namespace corvane {

/// Why nobody would see the buttons of the menu in this file (native path), a program stream of
/// 2048-byte packs: it holds no subpicture, or only one that comes up after the last picture and
/// sound. Returns an empty text if they can be seen. A file that cannot be read is a reason too.
std::string why_no_buttons_seen(const std::string& menu_stream);

/// How many buttons the control file (native path) has spumux put on a menu. Returns 0 if it cannot
/// be read.
int buttons_asked_for(const std::string& control_file);

}  // namespace corvane
