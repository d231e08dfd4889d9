// The row of buttons at the foot of a dialog.
#pragma once

class wxButton;
class wxDialog;
class wxSizer;

namespace corvane {

/// Both in a row, in the order that the system's own dialogs have them.
wxSizer* dialog_buttons(wxButton* accept, wxButton* cancel);

/// The button "close" of a dialog that lives on its own: a click on it and Esc ask the dialog to
/// close.
wxButton* make_close_button(wxDialog& dialog);

}  // namespace corvane
