#include "ui/widgets/folder_dialog.h"

#include <wx/filedlg.h>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

namespace corvane {

#ifdef __WXGTK__
void let_name_folder(wxFileDialog& dialog, const std::string& name) {
  auto* chooser = GTK_FILE_CHOOSER(dialog.GetHandle());
  gchar* folder = gtk_file_chooser_get_current_folder(chooser);
  gtk_file_chooser_set_action(chooser, GTK_FILE_CHOOSER_ACTION_CREATE_FOLDER);
  // A new action makes the dialog forget both.
  if (folder != nullptr)
    gtk_file_chooser_set_current_folder(chooser, folder);
  gtk_file_chooser_set_current_name(chooser, name.c_str());
  g_free(folder);
}
#else
void let_name_folder(wxFileDialog& /*dialog*/, const std::string& /*name*/) {}
#endif

}  // namespace corvane
