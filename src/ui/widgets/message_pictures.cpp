#include "ui/widgets/message_pictures.h"

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

namespace corvane {

#ifdef __WXGTK__
namespace {

const char* icon_name_of(GtkMessageType type) {
  switch (type) {
    case GTK_MESSAGE_INFO:
      return "dialog-information";
    case GTK_MESSAGE_WARNING:
      return "dialog-warning";
    case GTK_MESSAGE_ERROR:
      return "dialog-error";
    case GTK_MESSAGE_QUESTION:
      return "dialog-question";
    default:
      return nullptr;
  }
}

void add_picture(GtkMessageDialog* box) {
  GtkMessageType type = GTK_MESSAGE_OTHER;
  g_object_get(box, "message-type", &type, nullptr);
  const char* const name = icon_name_of(type);
  if (name == nullptr)
    return;
  GtkWidget* picture = gtk_image_new_from_icon_name(name, GTK_ICON_SIZE_DIALOG);
  gtk_widget_set_valign(picture, GTK_ALIGN_START);
  gtk_widget_show(picture);
  // Called outdated since GTK 3.12, without anything in its place.
  G_GNUC_BEGIN_IGNORE_DEPRECATIONS
  gtk_message_dialog_set_image(box, picture);
  G_GNUC_END_IGNORE_DEPRECATIONS
}

gboolean on_realize(GSignalInvocationHint* /*hint*/, guint /*count*/, const GValue* values,
                    gpointer /*data*/) {
  gpointer widget = g_value_get_object(values);
  if (GTK_IS_MESSAGE_DIALOG(widget))
    add_picture(GTK_MESSAGE_DIALOG(widget));
  return TRUE;
}

}  // namespace

// The toolkit makes the box within ShowModal, so it is met where GTK makes it real.
void show_message_pictures() {
  g_type_class_ref(GTK_TYPE_WIDGET);
  g_signal_add_emission_hook(g_signal_lookup("realize", GTK_TYPE_WIDGET), 0, on_realize, nullptr,
                             nullptr);
}
#else
void show_message_pictures() {}
#endif

}  // namespace corvane
