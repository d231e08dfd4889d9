// The dialog "chapters": the chapter times of one title, one a line. A view of the model `chapter`,
// which has the rules.
//
// Modeless; owns itself. While it is open the main window is disabled. Only "accept" writes to the
// project; closing discards what was typed. While its visual editor is open, the dialog is disabled
// and does not close.
#pragma once

#include "tools/chapters.h"

#include <wx/dialog.h>
#include <wx/weakref.h>

#include <functional>
#include <string>

class wxSizer;
class wxTextCtrl;

namespace corvane {

class main_window;

/// The toolbar's button: opens the dialog for the selected title.
void edit_chapters(main_window& main);

/// The same with a line (1-based) selected; one that is not there leaves it at that.
void edit_chapters_at(main_window& main, int line);

class chapter_window : public wxDialog {
 public:
  /// Disables `main`. When the user leaves the dialog, it enables `main` and calls `closed`; when
  /// it goes with `main`, it does neither.
  chapter_window(wxWindow* main, document& doc, chapter model, std::function<void()> closed);
  ~chapter_window() override;

  /// Selects a line (1-based) of the times, if there is such a one.
  void select_line(int line);

 private:
  wxSizer* make_title();
  wxSizer* make_times();
  wxSizer* make_buttons();
  void bind_controls();
  void on_text_key(wxKeyEvent& event);
  void take_typed();
  void edit_visually();
  void editor_closed();
  void accept();
  void leave();

  document* doc_;
  chapter model_;
  std::function<void()> closed_;
  bool telling_ = false;  ///< a message of the dialog stands
  wxWeakRef<wxTopLevelWindow> editor_;
  wxTextCtrl* RichTextBox1_ = nullptr;
};

}  // namespace corvane
