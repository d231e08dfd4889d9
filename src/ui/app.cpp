#include "ui/app.h"

#include "platform/files/files.h"
#include "platform/files/program_folder.h"
#include "platform/system_version.h"
#include "project/project_file.h"
#include "ui/main_window.h"
#include "ui/widgets/message_pictures.h"
#include "ui/widgets/wx_text.h"

#include <wx/msgdlg.h>

#include <utility>

namespace corvane {

main_window* start_main_window(const std::string& project) {
  show_message_pictures();
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
