// The window "findings": what was found in the project, worst first, and for the selected finding
// what follows from it and what to do.
//
// It stands beside the main window, which stays in use: somebody repairs one finding after another,
// and a dialog that closed for each, or kept the main window off, would be opened again for each.
// It is filled anew when the project has changed, so that what is repaired goes from the list and
// the next finding is the selected one. It does nothing to the project itself, and while an editor
// has that, the editor is raised instead. Owned by the main window; gone when it is closed.
#pragma once

#include "tools/finding_list.h"

#include <wx/dialog.h>

#include <functional>
#include <optional>
#include <string>

class wxButton;
class wxGauge;
class wxSizer;
class wxStaticBitmap;
class wxStaticText;

namespace corvane {

class findings_view;

struct check_progress {
  double part = 0;   ///< that is done, 0 to 1
  std::string file;  ///< that is being read, native path; may be empty
};

class findings_window : public wxDialog {
 public:
  /// What the user can do here.
  struct handlers {
    std::function<void(const finding&)> go_to;
    std::function<bool(const finding&)> leads_somewhere;  ///< whether `go_to` would
    std::function<void()> check, stop, save, closed;
    /// What a cleaned copy of a subtitle file would cure, and the window for one.
    std::function<bool(const finding&)> can_clean{};
    std::function<void(const finding&)> clean{};
  };

  /// Stands where there is the most room beside `main`.
  findings_window(wxWindow* main, handlers on);

  void show_findings(const finding_list& findings);

  /// How far the check that is on is; nothing: none is on.
  void show_progress(const std::optional<check_progress>& progress);

  /// Whether commands can be run: not while an editor or a run has the project.
  void let_commands(bool enabled);

  /// Selects this one, if it is among them.
  void select(const finding& f);

  /// Has the keyboard, on the list.
  void come_back();

 private:
  wxSizer* make_summary();
  wxSizer* make_progress();
  wxSizer* make_buttons();
  void bind_controls();
  void place_beside(const wxWindow& main);
  void fill(std::optional<std::size_t> selected);
  void on_key(wxKeyEvent& event);
  void on_close(wxCloseEvent& event);
  void enable_buttons();
  void go_to_selected();
  void clean_selected();
  void copy_all();
  void copy_selected();

  handlers on_;
  finding_list findings_;
  bool commands_enabled_ = true;
  wxStaticBitmap* picture_ = nullptr;
  wxStaticText* summary_ = nullptr;
  wxSizer* progress_ = nullptr;
  wxStaticText* file_ = nullptr;
  wxGauge* gauge_ = nullptr;
  findings_view* view_ = nullptr;
  wxButton* go_to_ = nullptr;
  wxButton* clean_ = nullptr;
  wxButton* copy_ = nullptr;
  wxButton* save_ = nullptr;
  wxButton* check_ = nullptr;
};

}  // namespace corvane
