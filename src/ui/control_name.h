// Names of controls: by them tests find a control, and so do screen readers.
#pragma once

class wxWindow;

namespace corvane {

/// Gives the control its name, for wxWindow::FindWindowByName and, where the toolkit's own
/// accessibility has names (GTK), for that too.
void name_control(wxWindow& control, const char* name);

}  // namespace corvane
