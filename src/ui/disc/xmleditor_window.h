// The window `xmleditor`: the navigation XML between a prepared run and its start, in a text editor
// with line numbers, colours, undo and find. A view of the model xmleditor, which has the rules and
// asks the questions when it closes.
//
// Modeless; owns itself. While it is open the main window is disabled.
#pragma once

#include "tools/xml_editor.h"
#include "ui/lent_project.h"
#include "ui/window_life.h"

#include <wx/frame.h>
#include <wx/timer.h>

#include <functional>

class wxCloseEvent;
class wxStyledTextCtrl;

namespace corvane {

class find_bar;

class xmleditor_window : public wxFrame {
 public:
  /// Disables `main` until the user leaves the window. It gives the project back then, and calls
  /// `closed` with whether the prepared run is to start.
  xmleditor_window(wxWindow* main, lent_project lent, xmleditor model,
                   std::function<void(bool proceed)> closed);

 private:
  void make_menus();
  void bind_controls();
  void take_text();
  void show_status();
  void go_to_fault();
  bool may_close();

  lent_project lent_;
  xmleditor model_;
  bool proceed_ = false;
  window_life life_;
  wxStyledTextCtrl* Text1_ = nullptr;
  find_bar* find_ = nullptr;
  wxTimer rested_;  ///< runs out when nothing was typed for a moment
};

}  // namespace corvane
