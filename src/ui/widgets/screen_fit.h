// Windows that are no larger than the screen they stand on.
#pragma once

#include <wx/gdicmn.h>

class wxTopLevelWindow;
class wxWindow;

namespace corvane {

/// The most that a window's client area may measure on the screen on which `window` stands: what
/// window managers put around it is left free.
wxSize most_client_size(const wxWindow& window);

/// Gives the window that client size, or as much of it as the screen has room for; and no more than
/// that as its least one.
void set_size_on_screen(wxTopLevelWindow& window, wxSize client);

}  // namespace corvane
