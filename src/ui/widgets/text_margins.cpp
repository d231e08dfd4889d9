#include "ui/widgets/text_margins.h"

#include <wx/textctrl.h>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

namespace corvane {

void set_text_margins(wxTextCtrl& text, wxSize margins) {
#ifdef __WXGTK__
  // The toolkit has them for texts of one line only.
  auto* view = GTK_TEXT_VIEW(gtk_bin_get_child(GTK_BIN(text.GetHandle())));
  gtk_text_view_set_left_margin(view, margins.x);
  gtk_text_view_set_right_margin(view, margins.x);
  gtk_text_view_set_top_margin(view, margins.y);
#else
  text.SetMargins(margins.x, margins.y);
#endif
}

}  // namespace corvane
