// Opens a text file in the user's editor.
#pragma once

#include <string>

namespace corvane {

/// Starts the editor on a file (native path): Notepad on Windows, elsewhere what the desktop opens
/// text with. False when nothing could be started.
bool open_text_file(const std::string& path);

}  // namespace corvane
