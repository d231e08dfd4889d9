#include "ui/widgets/labelled.h"

#include "ui/widgets/controls.h"
#include "ui/widgets/layout.h"

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

namespace corvane {

wxStaticText* make_label(wxWindow* parent, const wxString& text) {
  return new wxStaticText(parent, wxID_ANY, text);
}

void label_leads_to(wxStaticText* label, wxWindow* control) {
#ifdef __WXGTK__
  if (GTK_IS_LABEL(label->GetHandle()))
    gtk_label_set_mnemonic_widget(GTK_LABEL(label->GetHandle()), control->GetHandle());
#else
  static_cast<void>(label);
  static_cast<void>(control);
#endif
}

wxChoice* make_labelled_choice(wxWindow* parent, const char* label, const char* name,
                               const char* tip, const std::vector<std::string>& entries,
                               wxSizer& grid) {
  wxStaticText* const words = make_label(parent, label);
  wxChoice* const choice = make_choice(parent, name, tip, entries);
  label_leads_to(words, choice);
  grid.Add(words, wxSizerFlags().CentreVertical());
  grid.Add(choice, wxSizerFlags().Expand());
  return choice;
}

wxSizer* labelled_row(wxStaticText* label, wxWindow* control, wxButton* button) {
  const wxSizerFlags gap =
      wxSizerFlags().CentreVertical().Border(wxLEFT, label->FromDIP(layout::control_gap));
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(label, wxSizerFlags().CentreVertical());
  row->Add(control, wxSizerFlags(gap).Proportion(1));
  row->Add(button, gap);
  return row;
}

}  // namespace corvane
