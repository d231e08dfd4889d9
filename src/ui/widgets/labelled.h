// A control with its label, for screen readers and the label's key.
#pragma once

#include <string>
#include <vector>

class wxButton;
class wxChoice;
class wxSizer;
class wxStaticText;
class wxString;
class wxWindow;

namespace corvane {

/// A label in front of `control`: the key after "&" in `text` leads to it. Make it before the
/// control; the two go together by order on Windows, by reference with GTK.
wxStaticText* make_label(wxWindow* parent, const wxString& text);
void label_leads_to(wxStaticText* label, wxWindow* control);

/// make_choice (ui/widgets/controls.h) with its label in front; both go into the next two places of
/// `grid`.
wxChoice* make_labelled_choice(wxWindow* parent, const char* label, const char* name,
                               const char* tip, const std::vector<std::string>& entries,
                               wxSizer& grid);

/// A row of a label, its control, which takes what room there is, and a button.
wxSizer* labelled_row(wxStaticText* label, wxWindow* control, wxButton* button);

}  // namespace corvane
