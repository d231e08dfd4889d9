// Names of controls: by them tests find a control, and so do screen readers.
#pragma once

class wxWindow;

namespace corvane {

/// Gives the control its name, for wxWindow::FindWindowByName and for screen readers. Windows reads
/// out labels and captions; there, only what has neither is given the name.
void name_control(wxWindow& control, const char* name);

}  // namespace corvane
