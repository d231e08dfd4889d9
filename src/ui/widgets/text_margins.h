// Room between the edge of a text of several lines and its letters.
#pragma once

#include <wx/gdicmn.h>

class wxTextCtrl;

namespace corvane {

/// `margins`: of the sides, and above, in the screen's pixels.
void set_text_margins(wxTextCtrl& text, wxSize margins);

}  // namespace corvane
