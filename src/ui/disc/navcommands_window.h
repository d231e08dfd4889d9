// The dialog "navigation commands editor": what follows each title, and what the disc plays first.
// A view of the model `navcommands`, which has the rules.
//
// Modeless; owns itself. While it is open the main window is disabled. Only "accept" writes to the
// project.
#pragma once

#include "menus/navcommands.h"
#include "ui/lent_project.h"
#include "ui/window_life.h"

#include <wx/dialog.h>

class wxComboBox;
class wxKeyEvent;
class wxListBox;
class wxSizer;
class wxTextCtrl;

namespace corvane {

/// What of the dialog has the focus when it opens.
enum class navcommands_focus { titles, selected_command, first_play };

class navcommands_window : public wxDialog {
 public:
  /// Disables `main` until the user leaves the dialog, which gives the project back then.
  navcommands_window(wxWindow* main, lent_project lent, navcommands model);

  /// The command of the title that is selected in the model, or the first play.
  void focus_on(navcommands_focus what);

 private:
  wxSizer* make_titles();
  wxSizer* make_command();
  wxSizer* make_first_play();
  wxSizer* make_buttons();
  void bind_controls();
  void on_list_key(wxKeyEvent& event);
  void select();
  void edit_command();
  void change_command();
  void accept();

  lent_project lent_;
  navcommands model_;
  window_life life_;
  wxListBox* List1_ = nullptr;
  wxTextCtrl* Text1_ = nullptr;
  wxComboBox* Combo1_ = nullptr;
  wxComboBox* firstplay_ = nullptr;
};

}  // namespace corvane
