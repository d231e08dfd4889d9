#include "ui/widgets/wheel.h"

#include <wx/event.h>
#include <wx/window.h>

#include <memory>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

namespace corvane {
namespace {

#ifdef __WXGTK__
/// As GTK sees it: a part of the control may have it.
bool has_keyboard(const wxWindow& control) {
  GtkWidget* whole = control.GetHandle();
  GtkWidget* top = gtk_widget_get_toplevel(whole);
  GtkWidget* focus = GTK_IS_WINDOW(top) ? gtk_window_get_focus(GTK_WINDOW(top)) : nullptr;
  return focus != nullptr && (focus == whole || gtk_widget_is_ancestor(focus, whole) != FALSE);
}

gboolean clicked(GtkWidget* /*part*/, GdkEventButton* /*event*/, gpointer flag) {
  *static_cast<bool*>(flag) = true;
  return FALSE;
}

void opened(GObject* /*list*/, GParamSpec* /*property*/, gpointer flag) {
  *static_cast<bool*>(flag) = true;
}

/// Of the clicks that parts of a control take for themselves the toolkit does not hear; that on the
/// arrow of a list is known by what comes of it.
void note_clicks(GtkWidget* part, gpointer flag) {
  g_signal_connect(part, "button-press-event", G_CALLBACK(clicked), flag);
  if (GTK_IS_COMBO_BOX(part))
    g_signal_connect(part, "notify::popup-shown", G_CALLBACK(opened), flag);
  if (GTK_IS_CONTAINER(part))
    gtk_container_forall(GTK_CONTAINER(part), note_clicks, flag);
}
#else
bool has_keyboard(const wxWindow& control) {
  const wxWindow* focus = wxWindow::FindFocus();
  while (focus != nullptr && focus != &control && !focus->IsTopLevel())
    focus = focus->GetParent();
  return focus == &control;
}
#endif

}  // namespace

// GTK asks the toolkit first; what the toolkit has dealt with, the control does not get.
void let_wheel_pass(wxWindow& control) {
  const auto was_clicked = std::make_shared<bool>(false);
  for (const auto& type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_DCLICK})
    control.Bind(type, [was_clicked](wxMouseEvent& event) {
      *was_clicked = true;
      event.Skip();
    });
#ifdef __WXGTK__
  note_clicks(control.GetHandle(), was_clicked.get());
#endif
  control.Bind(wxEVT_MOUSEWHEEL, [was_clicked, &control](wxMouseEvent& event) {
    if (*was_clicked && has_keyboard(control)) {
      event.StopPropagation();  // or what is around would scroll, too
      event.Skip();
    } else if (wxWindow* around = control.GetParent()) {
      around->ProcessWindowEvent(event);
      event.Skip(false);
    }
  });
}

}  // namespace corvane
