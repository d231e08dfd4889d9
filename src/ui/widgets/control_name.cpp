#include "ui/widgets/control_name.h"

#include <wx/window.h>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#else
#include <wx/access.h>
#include <wx/stattext.h>

#include <optional>
#endif

namespace corvane {

#ifdef __WXGTK__
namespace {

AtkRole role_of(control_role role) {
  switch (role) {
    case control_role::list:
      return ATK_ROLE_COMBO_BOX;
    case control_role::slider:
      return ATK_ROLE_SLIDER;
    case control_role::picture:
      break;
  }
  return ATK_ROLE_DRAWING_AREA;
}

}  // namespace
#else
namespace {

/// Tells the system the name of a control, perhaps its role, and nothing else.
class named : public wxAccessible {
 public:
  named(wxWindow& control, const char* name, std::optional<wxAccRole> role = std::nullopt)
      : wxAccessible(&control), name_(name), role_(role) {}

  wxAccStatus GetName(int child, wxString* name) override {
    if (child != wxACC_SELF)
      return wxACC_NOT_IMPLEMENTED;
    *name = name_;
    return wxACC_OK;
  }

  wxAccStatus GetRole(int child, wxAccRole* role) override {
    if (child != wxACC_SELF || !role_)
      return wxACC_NOT_IMPLEMENTED;
    *role = *role_;
    return wxACC_OK;
  }

 private:
  wxString name_;
  std::optional<wxAccRole> role_;
};

wxAccRole role_of(control_role role) {
  switch (role) {
    case control_role::list:
      return wxROLE_SYSTEM_COMBOBOX;
    case control_role::slider:
      return wxROLE_SYSTEM_SLIDER;
    case control_role::picture:
      break;
  }
  return wxROLE_SYSTEM_GRAPHIC;
}

/// Whether Windows has a better one: a control's own text, or the label before it.
bool has_name(const wxWindow& control) {
  return !control.GetLabel().empty() ||
         dynamic_cast<const wxStaticText*>(control.GetPrevSibling()) != nullptr;
}

}  // namespace
#endif

#ifdef __WXGTK__
namespace {

void name_widget(GtkWidget* widget, const char* name) {
  if (AtkObject* accessible = gtk_widget_get_accessible(widget))
    atk_object_set_name(accessible, name);
}

/// The part of a control that gets the keyboard, of which a screen reader speaks: the list or text
/// within its scroll bars, the entry of a combo box.
GtkWidget* part_with_keyboard(GtkWidget* widget) {
  if (!GTK_IS_SCROLLED_WINDOW(widget) && !GTK_IS_COMBO_BOX(widget))
    return nullptr;
  GtkWidget* part = gtk_bin_get_child(GTK_BIN(widget));
  return GTK_IS_TREE_VIEW(part) || GTK_IS_TEXT_VIEW(part) || GTK_IS_ENTRY(part) ? part : nullptr;
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
    name_widget(widget, name);
    if (GtkWidget* part = part_with_keyboard(widget))
      name_widget(part, name);
  }
#endif
}

void name_drawn_control(wxWindow& control, const char* name, control_role role) {
#ifndef __WXGTK__
  control.SetName(name);
  control.SetAccessible(new named(control, name, role_of(role)));
#else
  name_control(control, name);
  if (GtkWidget* widget = control.GetHandle()) {
    if (AtkObject* accessible = gtk_widget_get_accessible(widget))
      atk_object_set_role(accessible, role_of(role));
  }
#endif
}

}  // namespace corvane
