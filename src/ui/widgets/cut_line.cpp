#include "ui/widgets/cut_line.h"

#include "ui/widgets/control_name.h"
#include "ui/widgets/wx_text.h"

#include <wx/stattext.h>

namespace corvane {

wxStaticText* make_cut_line(wxWindow* parent, const char* name) {
  auto* const line = new wxStaticText(parent, wxID_ANY, wxString(), wxDefaultPosition,
                                      wxDefaultSize, wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
  line->SetMinSize(wxSize(1, -1));
  name_control(*line, name);
  return line;
}

void show_line(wxStaticText& line, const std::string& text) {
  const wxString shown = wx_text(text);
  if (line.GetLabelText() == shown)
    return;
  line.SetLabelText(shown);
  line.SetToolTip(shown);
}

}  // namespace corvane
