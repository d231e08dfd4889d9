// Opens a text file in the user's editor.
#pragma once

#include <functional>
#include <string>

namespace corvane {

/// Starts the editor on a file (native path): Notepad on Windows, elsewhere what the desktop opens
/// text with. False when nothing could be started. `none_came` is called, later, when what was
/// started soon gives up: then there is no editor.
bool open_text_file(const std::string& path, std::function<void()> none_came);

}  // namespace corvane
