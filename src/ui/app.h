// The program: its folder, its main window, the project named on the command line.
#pragma once

#include <wx/app.h>

#include <string>

namespace corvane {

class main_window;

class corvane_app : public wxApp {
 public:
  bool OnInit() override;

 protected:
  /// The command line as one native path, absolute; empty when there is none.
  std::string project_argument() const;
};

/// Enters the program folder and makes the main window, not yet shown. A folder that cannot be used
/// is told when the window is shown.
main_window* start_main_window();

}  // namespace corvane
