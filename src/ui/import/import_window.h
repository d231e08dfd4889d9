// The window "import": films of any kind become titles. A list of files with what becomes of each,
// a picture and the streams of the selected one, what is chosen for all of them, and the run that
// makes them. A view of the model `import_list`, which has the rules.
//
// Modeless; owns itself. While it is open the main window is disabled. A title is added to the
// project as soon as its files are whole; all that are added while the window is open are one step.
#pragma once

#include "import/import_list.h"
#include "ui/import/source_look.h"
#include "ui/lent_project.h"
#include "ui/window_life.h"

#include <wx/dialog.h>
#include <wx/timer.h>
#include <wx/weakref.h>

#include <memory>
#include <string>
#include <vector>

class wxButton;
class wxCheckBox;
class wxChoice;
class wxDataViewListCtrl;
class wxSizer;
class wxSpinCtrl;
class wxStaticText;
class wxTextCtrl;

namespace corvane {

class details_panel;
class import_log_window;
class main_window;
class run_line;
class said_line;

/// Whether a file (native path) is a photo or a drawing, of which a still is made and no title; a
/// picture that moves is a film. Reads it.
bool is_for_still(const std::string& file);

/// "import...": asks for files, and opens the window with them.
void import_chosen_files(main_window& main);

/// Opens the window with these files (native paths), unless something stands against importing at
/// all, which is told.
void open_import(main_window& main, const std::vector<std::string>& files);

class import_window : public wxDialog {
 public:
  import_window(main_window& main, lent_project lent, const std::vector<std::string>& files);
  ~import_window() override;

 private:
  wxSizer* make_files();
  wxSizer* make_choices();
  wxSizer* make_quality(wxWindow* parent);
  wxSizer* make_checks(wxWindow* parent);
  wxSizer* make_sounds(wxWindow* parent);
  wxSizer* make_place(wxWindow* parent);
  wxSizer* make_state();
  wxSizer* make_buttons();
  wxCheckBox* make_check(wxWindow* parent, const char* name, const char* label, const char* tip,
                         bool import_choices::*choice);
  void bind_controls();

  void ask_for_files();
  void add(const std::vector<std::string>& files);
  void remove_selected();
  void choose_streams();
  void choose_folder();
  void take_choices();
  void take_folder();
  void begin();
  void ask_to_stop();
  void show_log();

  void update_run();
  void take_end(const import_end& end);
  void run_has_ended(bool stopped);
  bool runs() const { return run_ != nullptr && run_->running(); }
  bool stop_if_wanted();

  void show_all();
  void show_rows();
  void show_details();
  void show_state();
  void show_choices();
  void let_choose(bool enabled);
  void say(const std::string& text, const char* picture);
  int selected() const;

  main_window& main_;
  lent_project lent_;
  import_list list_;
  window_life life_;
  std::unique_ptr<source_look> look_;
  std::unique_ptr<import_run> run_;
  bool stopping_ = false;
  std::string outcome_;  ///< of the imports that ended last; or empty
  bool all_well_ = true;
  wxTimer timer_;
  wxWeakRef<import_log_window> log_window_;
  std::vector<import_list::shown_row> shown_;

  wxDataViewListCtrl* files_ = nullptr;
  details_panel* details_ = nullptr;
  wxButton* add_ = nullptr;
  wxButton* remove_ = nullptr;
  wxButton* streams_ = nullptr;
  wxChoice* quality_ = nullptr;
  wxSpinCtrl* rate_ = nullptr;
  wxSpinCtrl* quantizer_ = nullptr;
  wxStaticText* unit_ = nullptr;
  wxChoice* fit_ = nullptr;
  wxChoice* sound_ = nullptr;
  wxTextCtrl* folder_ = nullptr;
  std::vector<wxWindow*> choosers_;  ///< all that rests while a run is on
  wxStaticText* estimate_ = nullptr;
  said_line* said_ = nullptr;
  run_line* progress_ = nullptr;
  wxButton* log_ = nullptr;
  wxButton* begin_ = nullptr;
};

}  // namespace corvane
