#include "ui/app.h"

#include "platform/files/files.h"
#include "platform/files/program_folder.h"
#include "platform/system_version.h"
#include "project/project_file.h"
#include "ui/main_window.h"
#include "ui/widgets/plain_arrows.h"
#include "ui/widgets/wx_text.h"

#include <wx/msgdlg.h>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

#include <utility>

namespace corvane {
namespace {

#ifdef __WXGTK__

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

/// From now on every message box shows the picture of its kind. GTK 3 leaves it out by itself; on
/// Windows the system draws it. The toolkit makes the box within ShowModal, so it is met where GTK
/// makes it real.
void show_message_pictures() {
  g_type_class_ref(GTK_TYPE_WIDGET);
  g_signal_add_emission_hook(g_signal_lookup("realize", GTK_TYPE_WIDGET), 0, on_realize, nullptr,
                             nullptr);
}
#else
void show_message_pictures() {}
#endif

}  // namespace

main_window* start_main_window(const std::string& project) {
  show_message_pictures();
  draw_choices_with_plain_arrows();
  const std::string started_in = absolute_path(".");
  const std::string app = program_folder();
  const failure unusable = enter_program_folder(app);
  auto* window = new main_window(app, started_in);
  window->CallAfter([window, project, unusable] { window->begin(unusable, project); });
  return window;
}

corvane_app::corvane_app(std::string arguments) : arguments_(std::move(arguments)) {}

std::string corvane_app::project_argument() const {
  const std::string path = path_from_command_line(arguments_);
  return path.empty() ? path : absolute_path(path);
}

bool corvane_app::OnInit() {
#ifdef NDEBUG
  wxDisableAsserts();
#endif
  SetAppName("corvane");
  SetAppDisplayName("Corvane");
  if (const failure why = why_system_is_too_old()) {
    wxMessageBox(wx_text(*why), "Corvane", wxOK | wxICON_ERROR);
    return false;
  }
  const std::string path = project_argument();  // relative to where the user stands, so first
  main_window* window = start_main_window(path);
  SetTopWindow(window);
  window->Show();
  return true;
}

}  // namespace corvane
