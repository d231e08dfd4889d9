// The window "clean subtitles": the cues of a title's subtitle file that would be shown wrongly, as
// they stand in the file and as a cleaned copy would have them, and where that copy is to be
// written. A view of the model `subtitle_cleaning`, which has the rules.
//
// Modeless; owns itself. While it is open the main window is disabled. The project changes, in one
// step, only when the copy is written.
#pragma once

#include "tools/subtitle_cleaning.h"
#include "ui/lent_project.h"
#include "ui/window_life.h"

#include <wx/dialog.h>

class wxDataViewListCtrl;
class wxSizer;
class wxStaticText;
class wxTextCtrl;

namespace corvane {

class main_window;

/// For a title's subtitle (both 1-based). Where nothing is to be cleaned that is told, and no
/// window comes.
void clean_subtitles_of(main_window& main, int title, int subtitle);

class clean_subtitles_window : public wxDialog {
 public:
  clean_subtitles_window(wxWindow* main, lent_project lent, subtitle_cleaning model);

 private:
  wxSizer* make_heading();
  void make_list();
  wxSizer* make_texts();
  wxSizer* make_text(const char* label, const char* name, wxTextCtrl*& text);
  wxSizer* make_place();
  wxSizer* make_buttons();
  void bind_controls();
  void fill();
  void show_selected();
  void choose_place();
  void write();

  lent_project lent_;
  subtitle_cleaning model_;
  window_life life_;
  wxDataViewListCtrl* list_ = nullptr;
  wxTextCtrl* before_ = nullptr;
  wxTextCtrl* after_ = nullptr;
  wxTextCtrl* why_ = nullptr;
  wxTextCtrl* place_ = nullptr;
};

}  // namespace corvane
