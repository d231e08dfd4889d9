// The dialog "chapters": the chapter times of one title, one a line. A view of the model `chapter`,
// which has the rules.
//
// Modeless; owns itself. While it is open the main window is disabled. Only "accept" writes to the
// project; closing discards what was typed. What would become of each line then is shown while it
// is typed. While its visual editor is open, the dialog is disabled and does not close.
#pragma once

#include "tools/chapters.h"
#include "ui/lent_project.h"
#include "ui/window_life.h"

#include <wx/dialog.h>
#include <wx/weakref.h>

#include <string>

class wxButton;
class wxSizer;
class wxStaticText;
class wxTextCtrl;

namespace corvane {

class main_window;

/// The toolbar's button: opens the dialog for the selected title.
void edit_chapters(main_window& main);

/// The same with a line (1-based) selected; one that is not there leaves it at that.
void edit_chapters_at(main_window& main, int line);

class chapter_window : public wxDialog {
 public:
  /// Disables `main` until the user leaves the dialog, which gives the project back then.
  chapter_window(wxWindow* main, lent_project lent, chapter model);
  ~chapter_window() override;

  /// Selects a line (1-based) of the times, if there is such a one.
  void select_line(int line);

 private:
  wxSizer* make_title();
  wxSizer* make_times();
  wxSizer* make_below_times();
  wxSizer* make_buttons();
  void bind_controls();
  void on_text_key(wxKeyEvent& event);
  void take_typed();
  void show_fates();
  void show_notes();
  void complete_times();
  void edit_visually();
  void editor_closed();
  void accept();
  bool may_close();

  lent_project lent_;
  chapter model_;
  window_life life_;
  wxWeakRef<wxTopLevelWindow> editor_;
  bool marking_ = false;  ///< the marks are no change of the text
  wxTextCtrl* RichTextBox1_ = nullptr;
  wxStaticText* notes_ = nullptr;
  wxButton* complete_ = nullptr;
};

}  // namespace corvane
