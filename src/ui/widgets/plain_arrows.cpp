#include "ui/widgets/plain_arrows.h"

#include <wx/toolbar.h>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#include <string_view>
#endif

namespace corvane {

#ifdef __WXGTK__
namespace {

bool is_arrow(GtkWidget* child) {
  const gchar* name = nullptr;
  if (child != nullptr && GTK_IS_IMAGE(child))
    gtk_image_get_icon_name(GTK_IMAGE(child), &name, nullptr);
  return name != nullptr && std::string_view(name) == "pan-down-symbolic";
}

/// Of buttons within, also of the one that shows what a bar has no room for.
void replace_arrows(GtkWidget* widget, gpointer data) {
  if (!GTK_IS_CONTAINER(widget))
    return;
  GtkWidget* const icon =
      GTK_IS_TOGGLE_BUTTON(widget) ? gtk_bin_get_child(GTK_BIN(widget)) : nullptr;
  if (!is_arrow(icon)) {
    gtk_container_forall(GTK_CONTAINER(widget), replace_arrows, data);
    return;
  }
  gtk_container_remove(GTK_CONTAINER(widget), icon);
  // Called outdated since GTK 3.14; what is to be taken instead is the icon.
  G_GNUC_BEGIN_IGNORE_DEPRECATIONS
  GtkWidget* const arrow = gtk_arrow_new(GTK_ARROW_DOWN, GTK_SHADOW_NONE);
  G_GNUC_END_IGNORE_DEPRECATIONS
  gtk_container_add(GTK_CONTAINER(widget), arrow);
  gtk_widget_show(arrow);
}

}  // namespace

void draw_choices_with_plain_arrows() {
  GtkCssProvider* const style = gtk_css_provider_new();
  // The picture that comes with GTK; without a source of their own choices have no arrow at all.
  gtk_css_provider_load_from_data(style,
                                  "combobox arrow { -gtk-icon-source: "
                                  "-gtk-recolor(url(\"resource:///org/gtk/libgtk/icons/16x16/"
                                  "status/pan-down-symbolic.symbolic.png\")); }",
                                  -1, nullptr);
  gtk_style_context_add_provider_for_screen(gdk_screen_get_default(), GTK_STYLE_PROVIDER(style),
                                            GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
  g_object_unref(style);
}

void draw_with_plain_arrows(wxToolBar& bar) {
  replace_arrows(bar.GetHandle(), nullptr);
}
#else
void draw_choices_with_plain_arrows() {}

void draw_with_plain_arrows(wxToolBar& /*bar*/) {}
#endif

}  // namespace corvane
