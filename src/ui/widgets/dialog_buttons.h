// The row of buttons at the foot of a dialog.
#pragma once

class wxButton;
class wxSizer;

namespace corvane {

/// Both in a row, in the order that the system's own dialogs have them.
wxSizer* dialog_buttons(wxButton* accept, wxButton* cancel);

}  // namespace corvane
