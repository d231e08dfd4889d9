#include "ui/widgets/attention.h"

#include <wx/toplevel.h>

#include <algorithm>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

namespace corvane {
namespace {

// The toolkit takes a window that would get the focus for one that has it, one that is iconized
// included.
bool is_in_front(const wxTopLevelWindow& window) {
#ifdef __WXGTK__
  return gtk_window_is_active(GTK_WINDOW(window.GetHandle())) != FALSE;
#else
  return const_cast<wxTopLevelWindow&>(window).IsActive();
#endif
}

#ifdef __WXGTK__
gboolean on_focus_in(GtkWidget* widget, GdkEvent* /*event*/, gpointer /*data*/) {
  gtk_window_set_urgency_hint(GTK_WINDOW(widget), FALSE);
  g_signal_handlers_disconnect_by_func(widget, reinterpret_cast<gpointer>(on_focus_in), nullptr);
  return FALSE;
}

void mark(wxTopLevelWindow& window) {
  auto* const widget = GTK_WINDOW(window.GetHandle());
  if (gtk_window_get_urgency_hint(widget) != FALSE)
    return;
  gtk_window_set_urgency_hint(widget, TRUE);
  g_signal_connect(widget, "focus-in-event", G_CALLBACK(on_focus_in), nullptr);
}
#else
void mark(wxTopLevelWindow& window) {
  window.RequestUserAttention(wxUSER_ATTENTION_ERROR);
}
#endif

}  // namespace

void ask_for_attention(wxTopLevelWindow& window) {
  const bool in_front =
      std::any_of(wxTopLevelWindows.begin(), wxTopLevelWindows.end(), [](const wxWindow* one) {
        const auto* top = dynamic_cast<const wxTopLevelWindow*>(one);
        return top != nullptr && top->IsShown() && is_in_front(*top);
      });
  if (!in_front)
    mark(window);
}

}  // namespace corvane
