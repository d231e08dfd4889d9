// The program: its folder, its main window, the project named on the command line.
#pragma once

#include <wx/app.h>

#include <string>

namespace corvane {

class main_window;

class corvane_app : public wxApp {
 public:
  /// The program's arguments as one text (UTF-8), its name not among them.
  explicit corvane_app(std::string arguments);

  bool OnInit() override;

  /// The windows' texts are English in every locale. The toolkit would look the locale up in a
  /// table of all languages, which takes as long as making the menus and the toolbar.
  wxLayoutDirection GetLayoutDirection() const override { return wxLayout_LeftToRight; }

 private:
  /// The command line as one native path, absolute; empty when there is none.
  std::string project_argument() const;

  std::string arguments_;
};

/// Enters the program folder and makes the main window, not yet shown. When it is shown, it tells
/// that the folder cannot be used or which outside tools are missing, and then loads the project
/// (native, absolute; empty for none).
main_window* start_main_window(const std::string& project = {});

}  // namespace corvane
