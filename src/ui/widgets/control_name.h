// Names of controls: by them tests find a control, and so do screen readers.
#pragma once

class wxWindow;

namespace corvane {

/// Gives the control its name, for wxWindow::FindWindowByName and for screen readers. Windows reads
/// out labels and captions; there, only what has neither is given the name.
void name_control(wxWindow& control, const char* name);

/// What a control is that the toolkit does not know, since we draw it ourselves.
enum class control_role { list, picture, slider };

/// The same for a control of ours; after name_control.
void name_drawn_control(wxWindow& control, const char* name, control_role role);

}  // namespace corvane
