#include "ui/widgets/choice_again.h"

#include <wx/choice.h>

#ifdef __WXGTK__
#include <gtk/gtk-a11y.h>
#include <gtk/gtk.h>
#endif

#include <memory>
#include <utility>

namespace corvane {

#ifdef __WXGTK__
namespace {

struct watched_choice {
  wxChoice& choice;
  std::function<void()> again;
  int selected = wxNOT_FOUND;  ///< when the list was opened
};

void on_activate(GtkMenuItem* /*item*/, gpointer data) {
  auto& watched = *static_cast<watched_choice*>(data);
  // Once the list has closed; then the selection is that of the entry.
  watched.choice.CallAfter([&watched] {
    if (watched.choice.GetSelection() == watched.selected)
      watched.again();
  });
}

void watch_item(GtkWidget* item, gpointer data) {
  g_signal_handlers_disconnect_by_func(item, reinterpret_cast<gpointer>(on_activate), data);
  if (GTK_IS_MENU_ITEM(item))
    g_signal_connect(item, "activate", G_CALLBACK(on_activate), data);
}

/// Its entries are made anew when it is opened.
void on_popup(GtkComboBox* combo, GParamSpec* /*property*/, gpointer data) {
  gboolean is_shown = FALSE;
  g_object_get(combo, "popup-shown", &is_shown, nullptr);
  if (is_shown == FALSE)
    return;
  auto& watched = *static_cast<watched_choice*>(data);
  watched.selected = watched.choice.GetSelection();
  AtkObject* const popup = gtk_combo_box_get_popup_accessible(combo);
  GtkWidget* const list =
      GTK_IS_ACCESSIBLE(popup) ? gtk_accessible_get_widget(GTK_ACCESSIBLE(popup)) : nullptr;
  if (list != nullptr && GTK_IS_MENU(list))
    gtk_container_foreach(GTK_CONTAINER(list), watch_item, data);
}

void forget(gpointer data, GClosure* /*closure*/) {
  delete static_cast<watched_choice*>(data);
}

}  // namespace

void tell_choice_again(wxChoice& choice, std::function<void()> again) {
  auto watched = std::make_unique<watched_choice>(watched_choice{choice, std::move(again)});
  g_signal_connect_data(choice.GetHandle(), "notify::popup-shown", G_CALLBACK(on_popup),
                        watched.release(), forget, GConnectFlags{});
}
#else
void tell_choice_again(wxChoice& /*choice*/, std::function<void()> /*again*/) {}
#endif

}  // namespace corvane
