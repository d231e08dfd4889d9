// Telling a user who works elsewhere that something has come to its end.
#pragma once

class wxTopLevelWindow;

namespace corvane {

/// Has the desktop mark the window (its entry in the task bar) until the user comes to it. Nothing
/// happens while one of the program's windows is in front.
void ask_for_attention(wxTopLevelWindow& window);

}  // namespace corvane
