// The window with the log of the last imports, to be searched and copied. It stands beside the
// window of imports and goes with it.
#pragma once

#include <wx/dialog.h>

#include <string>

namespace corvane {

class log_page;

class import_log_window : public wxDialog {
 public:
  /// `file`: the log's native path. Owns itself; shown when it is made.
  import_log_window(wxWindow* owner, const std::string& file);

 private:
  void on_key(wxKeyEvent& event);

  log_page* page_;
};

}  // namespace corvane
