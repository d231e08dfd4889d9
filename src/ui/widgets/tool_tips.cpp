#include "ui/widgets/tool_tips.h"

#include <wx/toolbar.h>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

namespace corvane {

#ifdef __WXGTK__
namespace {

GdkRectangle place_on_screen(GtkWidget* widget) {
  GdkRectangle place{};
  gtk_widget_get_allocation(widget, &place);
  if (gtk_widget_get_has_window(widget) != FALSE)
    place.x = place.y = 0;
  int x = 0, y = 0;
  gdk_window_get_origin(gtk_widget_get_window(widget), &x, &y);
  place.x += x;
  place.y += y;
  return place;
}

bool pointer_is_in(const GdkRectangle& place, GdkDisplay* display) {
  int x = 0, y = 0;
  gdk_device_get_position(gdk_seat_get_pointer(gdk_display_get_default_seat(display)), nullptr, &x,
                          &y);
  return x >= place.x && x < place.x + place.width && y >= place.y && y < place.y + place.height;
}

/// The tip's window has got its place; it is shown after that. GTK has one for all tips.
void on_placed(GdkWindow* tip, gpointer /*flipped*/, gpointer /*final*/, gboolean /*flipped_x*/,
               gboolean /*flipped_y*/, GtkWidget* bar) {
  if (gtk_widget_get_realized(bar) == FALSE)
    return;
  const GdkRectangle place = place_on_screen(bar);
  int x = 0, y = 0;
  gdk_window_get_position(tip, &x, &y);
  const int below = place.y + place.height;
  if (y < below && y + gdk_window_get_height(tip) > place.y &&
      pointer_is_in(place, gdk_window_get_display(tip)))
    gdk_window_move(tip, x, below);
}

GdkWindow* window_of_tips() {
  GdkWindow* window = nullptr;
  GList* const windows = gtk_window_list_toplevels();
  for (GList* w = windows; w != nullptr; w = w->next)
    if (gtk_window_get_type_hint(GTK_WINDOW(w->data)) == GDK_WINDOW_TYPE_HINT_TOOLTIP) {
      gtk_widget_realize(GTK_WIDGET(w->data));
      window = gtk_widget_get_window(GTK_WIDGET(w->data));
    }
  g_list_free(windows);
  return window;
}

/// Comes before GTK sets the text of the tip. (GTK's area of a tip would not do: it must hold the
/// pointer, or the tip goes, and must not be as high as a tool, or it is not looked at.)
gboolean on_query(GtkWidget* /*tool*/, gint /*x*/, gint /*y*/, gboolean /*by_keys*/,
                  GtkTooltip* /*tip*/, gpointer bar) {
  GdkWindow* const tip = window_of_tips();
  if (tip != nullptr &&
      g_signal_handler_find(
          tip, static_cast<GSignalMatchType>(G_SIGNAL_MATCH_FUNC | G_SIGNAL_MATCH_DATA), 0, 0,
          nullptr, reinterpret_cast<gpointer>(on_placed), bar) == 0)
    g_signal_connect_object(tip, "moved-to-rect", G_CALLBACK(on_placed), bar,
                            static_cast<GConnectFlags>(0));
  return FALSE;
}

void watch_tips(GtkWidget* widget, gpointer bar) {
  if (gtk_widget_get_has_tooltip(widget) != FALSE)
    g_signal_connect(widget, "query-tooltip", G_CALLBACK(on_query), bar);
  if (GTK_IS_CONTAINER(widget))
    gtk_container_forall(GTK_CONTAINER(widget), watch_tips, bar);
}

}  // namespace

void let_tips_stand_below(wxToolBar& bar) {
  watch_tips(bar.GetHandle(), bar.GetHandle());
}
#else
void let_tips_stand_below(wxToolBar& /*bar*/) {}
#endif

}  // namespace corvane
