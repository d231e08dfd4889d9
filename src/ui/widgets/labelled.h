// A control with its label, for screen readers and the label's key.
#pragma once

class wxStaticText;
class wxString;
class wxWindow;

namespace corvane {

/// A label in front of `control`: the key after "&" in `text` leads to it. Make it before the
/// control; the two go together by order on Windows, by reference with GTK.
wxStaticText* make_label(wxWindow* parent, const wxString& text);
void label_leads_to(wxStaticText* label, wxWindow* control);

}  // namespace corvane
