#include "ui/gtk_sight.h"

#include "ui/widgets/wx_text.h"

#include <wx/textdlg.h>
#include <wx/window.h>

#include <functional>
#include <gtk/gtk.h>

namespace corvane::testing_support {
namespace {

using visitor = std::function<void(GtkWidget*)>;

void walk(GtkWidget* widget, const visitor& visit) {
  if (gtk_widget_get_mapped(widget) == FALSE)
    return;
  visit(widget);
  if (!GTK_IS_CONTAINER(widget))
    return;
  gtk_container_forall(
      GTK_CONTAINER(widget),
      [](GtkWidget* child, gpointer data) { walk(child, *static_cast<const visitor*>(data)); },
      const_cast<visitor*>(&visit));
}

void walk_screen(const visitor& visit) {
  GList* windows = gtk_window_list_toplevels();
  for (GList* w = windows; w != nullptr; w = w->next)
    walk(GTK_WIDGET(w->data), visit);
  g_list_free(windows);
}

std::optional<wxPoint> middle_of(GtkWidget* widget) {
  GtkWidget* top = gtk_widget_get_toplevel(widget);
  GdkWindow* window = gtk_widget_get_window(top);
  int x = 0, y = 0, window_x = 0, window_y = 0;
  if (window == nullptr || gtk_widget_translate_coordinates(widget, top, 0, 0, &x, &y) == FALSE)
    return std::nullopt;
  gdk_window_get_origin(window, &window_x, &window_y);
  return wxPoint(window_x + x + gtk_widget_get_allocated_width(widget) / 2,
                 window_y + y + gtk_widget_get_allocated_height(widget) / 2);
}

bool stands_in(GtkWidget* widget, label_place place) {
  switch (place) {
    case label_place::menu:
      return gtk_widget_get_ancestor(widget, GTK_TYPE_MENU_SHELL) != nullptr;
    case label_place::toolbar:
      return gtk_widget_get_ancestor(widget, GTK_TYPE_TOOLBAR) != nullptr;
    case label_place::button:
      return gtk_widget_get_ancestor(widget, GTK_TYPE_BUTTON) != nullptr &&
             gtk_widget_get_ancestor(widget, GTK_TYPE_TOOLBAR) == nullptr;
    case label_place::anywhere:
      return true;
  }
  return false;
}

GtkWidget* find_label_widget(const std::string& text, label_place place) {
  GtkWidget* found = nullptr;
  walk_screen([&](GtkWidget* widget) {
    if (GTK_IS_LABEL(widget) && text == gtk_label_get_text(GTK_LABEL(widget)) &&
        stands_in(widget, place))
      found = widget;
  });
  return found;
}

/// Whether a window is a dialog that waits for an answer: the toolkit's own, or a modal one of wx.
bool is_dialog(GtkWindow* window) {
  if (gtk_widget_get_mapped(GTK_WIDGET(window)) == FALSE)
    return false;
  return GTK_IS_DIALOG(window) || (gtk_window_get_modal(window) != FALSE &&
                                   gtk_window_get_window_type(window) == GTK_WINDOW_TOPLEVEL);
}

/// The picture that a message box really shows: "info", "warning", "error", "question", or "none".
std::string picture_in(GtkWindow* box) {
  std::string picture = "none";
  walk(GTK_WIDGET(box), [&](GtkWidget* widget) {
    if (!GTK_IS_IMAGE(widget) || gtk_widget_get_mapped(widget) == FALSE)
      return;
    const gchar* name = nullptr;
    gtk_image_get_icon_name(GTK_IMAGE(widget), &name, nullptr);
    const std::string shown = name == nullptr ? "" : name;
    if (shown == "dialog-information")
      picture = "info";
    else if (shown.rfind("dialog-", 0) == 0)
      picture = shown.substr(7);
  });
  return picture;
}

GtkWindow* dialog_on_top() {
  GtkWindow* top = nullptr;
  GList* windows = gtk_window_list_toplevels();
  for (GList* w = windows; w != nullptr; w = w->next) {
    auto* window = GTK_WINDOW(w->data);
    if (is_dialog(window) && (top == nullptr || gtk_window_is_active(window) != FALSE))
      top = window;
  }
  g_list_free(windows);
  return top;
}

std::string text_of(const char* text) {
  return text == nullptr ? std::string() : text;
}

}  // namespace

std::optional<wxPoint> find_label(const std::string& text, label_place place) {
  GtkWidget* found = find_label_widget(text, place);
  return found == nullptr ? std::nullopt : middle_of(found);
}

std::optional<wxPoint> find_tool_arrow(const std::string& caption) {
  GtkWidget* label = find_label_widget(caption, label_place::toolbar);
  if (label == nullptr)
    return std::nullopt;
  GtkWidget* tool = gtk_widget_get_ancestor(label, GTK_TYPE_TOOL_BUTTON);
  GtkWidget* arrow = nullptr;
  if (tool != nullptr)
    walk(tool, [&](GtkWidget* widget) {
      if (GTK_IS_MENU_BUTTON(widget) || GTK_IS_TOGGLE_BUTTON(widget))
        arrow = widget;
    });
  return arrow == nullptr ? std::nullopt : middle_of(arrow);
}

std::optional<seen_dialog> look_at_dialog() {
  GtkWindow* window = dialog_on_top();
  if (window == nullptr)
    return std::nullopt;
  seen_dialog seen;
  seen.title = text_of(gtk_window_get_title(window));
  walk(GTK_WIDGET(window), [&](GtkWidget* widget) {
    if (GTK_IS_LABEL(widget) && stands_in(widget, label_place::button))
      seen.buttons.emplace_back(gtk_label_get_text(GTK_LABEL(widget)));
  });
  if (GTK_IS_MESSAGE_DIALOG(window)) {
    gchar* text = nullptr;
    g_object_get(window, "text", &text, nullptr);
    seen.text = text_of(text);
    seen.picture = picture_in(window);
    g_free(text);
  }
  GtkWindow* const owner = gtk_window_get_transient_for(window);
  for (const wxWindow* const each : wxTopLevelWindows)
    if (owner != nullptr && each->GetHandle() == GTK_WIDGET(owner))
      seen.over = utf8_of(each->GetName());
  seen.chooses_file = GTK_IS_FILE_CHOOSER(window);
  if (seen.chooses_file) {
    seen.saves =
        gtk_file_chooser_get_action(GTK_FILE_CHOOSER(window)) != GTK_FILE_CHOOSER_ACTION_OPEN;
    gchar* const folder = gtk_file_chooser_get_current_folder(GTK_FILE_CHOOSER(window));
    seen.folder = text_of(folder);
    g_free(folder);
  }
  return seen;
}

bool dialog_has_the_keys() {
  GtkWindow* window = dialog_on_top();
  return window != nullptr && gtk_window_has_toplevel_focus(window) != FALSE;
}

void take_from_display() {
  gdk_display_sync(gdk_display_get_default());
}

int list_row_height(const wxWindow& list) {
  int height = 24;
  walk(list.GetHandle(), [&](GtkWidget* widget) {
    if (!GTK_IS_TREE_VIEW(widget))
      return;
    GtkTreePath* first = gtk_tree_path_new_first();
    GdkRectangle area{};
    gtk_tree_view_get_background_area(GTK_TREE_VIEW(widget), first, nullptr, &area);
    gtk_tree_path_free(first);
    if (area.height > 0)
      height = area.height;
  });
  return height;
}

std::string chosen_path() {
  GtkWindow* window = dialog_on_top();
  if (window == nullptr || !GTK_IS_FILE_CHOOSER(window))
    return {};
  gchar* path = gtk_file_chooser_get_filename(GTK_FILE_CHOOSER(window));
  std::string chosen = text_of(path);
  g_free(path);
  return chosen;
}

bool filter_offers(const std::string& file_name) {
  GtkWindow* window = dialog_on_top();
  if (window == nullptr || !GTK_IS_FILE_CHOOSER(window))
    return false;
  GtkFileFilter* filter = gtk_file_chooser_get_filter(GTK_FILE_CHOOSER(window));
  if (filter == nullptr)
    return true;
  GtkFileFilterInfo info{};
  info.contains = GTK_FILE_FILTER_DISPLAY_NAME;
  info.display_name = file_name.c_str();
  return gtk_file_filter_filter(filter, &info) != FALSE;
}

std::optional<wxRect> tip_on_screen() {
  std::optional<wxRect> place;
  walk_screen([&](GtkWidget* widget) {
    if (!GTK_IS_WINDOW(widget) ||
        gtk_window_get_type_hint(GTK_WINDOW(widget)) != GDK_WINDOW_TYPE_HINT_TOOLTIP)
      return;
    GdkWindow* const window = gtk_widget_get_window(widget);
    int x = 0, y = 0;
    gdk_window_get_origin(window, &x, &y);
    place = wxRect(x, y, gdk_window_get_width(window), gdk_window_get_height(window));
  });
  return place;
}

int display_scale() {
  return gdk_window_get_scale_factor(gdk_get_default_root_window());
}

wxColour colour_at(wxPoint screen) {
  GdkPixbuf* pixel =
      gdk_pixbuf_get_from_window(gdk_get_default_root_window(), screen.x, screen.y, 1, 1);
  if (pixel == nullptr)
    return {};
  const guint8* channels = gdk_pixbuf_read_pixels(pixel);
  const wxColour colour(channels[0], channels[1], channels[2]);
  g_object_unref(pixel);
  return colour;
}

std::string accessible_name(const wxWindow& control) {
  AtkObject* accessible = gtk_widget_get_accessible(control.GetHandle());
  return accessible == nullptr ? std::string() : text_of(atk_object_get_name(accessible));
}

}  // namespace corvane::testing_support
