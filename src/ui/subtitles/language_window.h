// The dialog `language`: the languages that the disc's audio and subtitle streams are labelled
// with. A view of the model `language`, which has the rules.
//
// Modeless; owns itself. While it is open the main window is disabled. Only "accept" writes to the
// project.
#pragma once

#include "tools/language_tags.h"
#include "ui/lent_project.h"
#include "ui/window_life.h"

#include <wx/dialog.h>

class wxBitmapButton;
class wxButton;
class wxKeyEvent;
class wxListBox;
class wxSizer;
class wxStaticText;

namespace corvane {

class main_window;
class search_list;

/// The toolbar's button: opens the dialog.
void edit_languages(main_window& main);

class language_window : public wxDialog {
 public:
  /// Disables `main` until the user leaves the dialog, which gives the project back then.
  language_window(wxWindow* main, lent_project lent, language model);

 private:
  wxSizer* make_tags();
  wxSizer* make_list(wxWindow* parent);
  wxSizer* make_language(wxWindow* parent);
  wxSizer* make_adders(wxWindow* parent);
  wxSizer* make_buttons();
  wxButton* make_button(wxWindow* parent, const char* name, const char* label,
                        void (language::*event)());
  void bind_controls();
  void on_list_key(wxKeyEvent& event);
  void tell(void (language::*event)());
  void show_tags();
  void accept();

  lent_project lent_;
  language model_;
  window_life life_;
  wxListBox* List1_ = nullptr;
  search_list* Combo1_ = nullptr;
  wxBitmapButton* Command3_ = nullptr;
  wxStaticText* stream_ = nullptr;
};

}  // namespace corvane
