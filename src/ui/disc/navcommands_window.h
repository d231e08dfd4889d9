// The dialog "navigation commands editor": what follows each title, and what the disc plays first.
// A view of the model `navcommands`, which has the rules.
//
// Modeless; owns itself. While it is open the main window is disabled. Only "accept" writes to the
// project.
//
// Below the fields stands what the command of the one that was worked on last does, as it is typed,
// and a button with which one is picked by the name of a title or menu.
#pragma once

#include "disc/disc_description.h"
#include "examine/examination.h"
#include "menus/lead_commands.h"
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

class verdict_line;

/// What of the dialog has the focus when it opens.
enum class navcommands_focus { titles, selected_command, first_play };

class navcommands_window : public wxDialog {
 public:
  /// Disables `main` until the user leaves the dialog, which gives the project back then. `facts`:
  /// what is known of the project's files, which must outlive it; null: nothing is.
  navcommands_window(wxWindow* main, lent_project lent, navcommands model,
                     fact_store* facts = nullptr);

  /// The command of the title that is selected in the model, or the first play.
  void focus_on(navcommands_focus what);

 private:
  wxSizer* make_titles();
  wxSizer* make_command();
  wxSizer* make_first_play();
  wxSizer* make_help();
  wxSizer* make_buttons();
  void bind_controls();
  void on_list_key(wxKeyEvent& event);
  void select();
  void edit_command();
  void change_command();
  void work_on(bool first_play);
  bool is_of_first_play() const;
  lead_source source() const;
  void show_verdict();
  void pick_command();
  void on_key(wxKeyEvent& event);
  void accept();

  lent_project lent_;
  navcommands model_;
  disc_description disc_;  ///< as the dialog found it
  fact_store own_facts_;
  fact_store& facts_;
  window_life life_;
  wxListBox* List1_ = nullptr;
  wxTextCtrl* Text1_ = nullptr;
  wxComboBox* Combo1_ = nullptr;
  wxComboBox* firstplay_ = nullptr;
  bool at_first_play_ = false;  ///< its field was worked on last
  verdict_line* verdict_ = nullptr;
};

}  // namespace corvane
