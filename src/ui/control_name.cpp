#include "ui/control_name.h"

#include <wx/window.h>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

namespace corvane {

void name_control(wxWindow& control, const char* name) {
  control.SetName(name);
#ifdef __WXGTK__
  if (GtkWidget* widget = control.GetHandle()) {
    if (AtkObject* accessible = gtk_widget_get_accessible(widget))
      atk_object_set_name(accessible, name);
  }
#endif
}

}  // namespace corvane
