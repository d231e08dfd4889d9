// The dialog `Subtitles`: the text subtitle files of one title, and how each is drawn, with a
// preview. A view of the model `Subtitles`, which has the rules.
//
// Modeless; owns itself. While it is open the main window is disabled. Files that are added are the
// project's at once, how they are drawn with "accept" alone. It does not close while a message or
// file dialog of its own stands.
#pragma once

#include "tools/subtitles.h"
#include "ui/lent_project.h"
#include "ui/subtitles/subtitle_options_panel.h"
#include "ui/window_life.h"

#include <wx/dialog.h>

#include <optional>
#include <string>

class wxButton;
class wxListBox;
class wxSizer;

namespace corvane {

class cue_preview;
class main_window;

/// "add/edit subtitles" for the selected title.
void edit_subtitles(main_window& main);

/// The same on a subtitle (1-based; one that is not there is the first), with the cue at a time
/// (seconds) in the preview.
void edit_subtitles_at(main_window& main, int subtitle, std::optional<double> seconds);

class subtitles_window : public wxDialog {
 public:
  /// `app`: the program folder. Disables `main` until the user leaves the dialog, which gives the
  /// project back then.
  subtitles_window(wxWindow* main, const std::string& app, lent_project lent, Subtitles model);

  /// Shows the cue at a time (seconds) of the selected file.
  void show_cue_at(double seconds);

 private:
  void widen();
  wxSizer* make_left();
  wxSizer* make_heading();
  wxSizer* make_commands();
  wxButton* make_command(const char* name, const char* label, void (Subtitles::*command)());
  wxSizer* make_buttons();
  void bind_controls();
  void tell(const subtitle_event& event);
  void show_model();
  void show_files();
  void accept();

  lent_project lent_;
  Subtitles model_;
  window_life life_;
  wxListBox* list1_ = nullptr;
  subtitle_options_panel* options_ = nullptr;
  cue_preview* preview_ = nullptr;
};

}  // namespace corvane
