#include "ui/widgets/control_name.h"

#include <wx/window.h>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#else
#include <wx/access.h>
#include <wx/stattext.h>
#endif

namespace corvane {

#ifndef __WXGTK__
namespace {

/// Tells the system the name of a control, and nothing else.
class named : public wxAccessible {
 public:
  named(wxWindow& control, const char* name) : wxAccessible(&control), name_(name) {}

  wxAccStatus GetName(int child, wxString* name) override {
    if (child != wxACC_SELF)
      return wxACC_NOT_IMPLEMENTED;
    *name = name_;
    return wxACC_OK;
  }

 private:
  wxString name_;
};

/// Whether Windows has a better one: a control's own text, or the label before it.
bool has_name(const wxWindow& control) {
  return !control.GetLabel().empty() ||
         dynamic_cast<const wxStaticText*>(control.GetPrevSibling()) != nullptr;
}

}  // namespace
#endif

void name_control(wxWindow& control, const char* name) {
  control.SetName(name);
#ifndef __WXGTK__
  if (!has_name(control))
    control.SetAccessible(new named(control, name));
#else
  if (GtkWidget* widget = control.GetHandle()) {
    if (AtkObject* accessible = gtk_widget_get_accessible(widget))
      atk_object_set_name(accessible, name);
  }
#endif
}

}  // namespace corvane
