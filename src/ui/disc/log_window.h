// The window "log": the last lines of a run's output, its progress and that of the whole run, and
// the button that stops it; the log of the last run on a second page.
#pragma once

#include "runner/run_listener.h"

#include <wx/frame.h>

#include <functional>
#include <string>

class wxButton;
class wxGauge;
class wxNotebook;
class wxStaticText;
class wxTextCtrl;

namespace corvane {

class log_page;

class log_window : public wxFrame {
 public:
  /// `stop` is called by the button "stop". `log_file` (native path) is what the second page shows.
  log_window(std::function<void()> stop, std::string log_file);

  /// Replaces the text (UTF-8, lines end in CR LF; the last ones of a run, not all of its log),
  /// with lines of errors in their colour, shows its end, and repaints at once.
  void show_text(const std::string& text);

  /// Percent; values outside 0 to 100 are taken as the nearer end.
  void show_progress(double percent);

  /// Where the run is as a whole.
  void show_whole(const run_whole& whole);

  /// Also ends what moves in it before it is hidden.
  bool Show(bool show = true) override;

  /// Whether a run is active: then there is something to stop, and the window stays.
  void run_is_active(bool active);

  /// Shows the page of the run that is on or was cleared; the page with the last run's log.
  void show_run();
  void show_last_log();
  bool has_last_log() const;

  /// The log file was written anew.
  void log_has_changed();

 private:
  wxWindow* make_run_page();
  wxGauge* make_bar(const char* name);
  wxSizer* make_bars();
  void bind_keys();
  void hide();
  bool on_last_log() const;
  void colour_lines();
  void repaint();

  wxNotebook* pages_;
  wxTextCtrl* Text1_ = nullptr;
  log_page* last_ = nullptr;
  wxStaticText* where_ = nullptr;
  wxGauge* whole_bar_ = nullptr;
  wxGauge* ProgressBar1_ = nullptr;
  wxButton* stop_ = nullptr;
  wxButton* hide_ = nullptr;
};

}  // namespace corvane
