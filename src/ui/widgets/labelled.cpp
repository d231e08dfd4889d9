#include "ui/widgets/labelled.h"

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

}  // namespace corvane
