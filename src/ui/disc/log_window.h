// The window "log": the last lines of a run's output, its progress, and the button that stops it.
#pragma once

#include <wx/frame.h>

#include <functional>
#include <string>

class wxButton;
class wxGauge;
class wxTextCtrl;

namespace corvane {

class log_window : public wxFrame {
 public:
  /// `stop` is called by the button "stop".
  explicit log_window(std::function<void()> stop);

  /// Replaces the text (UTF-8, lines end in CR LF), shows its end, and repaints at once.
  void show_text(const std::string& text);

  /// Percent; values outside 0 to 100 are taken as the nearer end.
  void show_progress(double percent);

  /// Whether a run is active: then there is something to stop.
  void run_is_active(bool active);

 private:
  void arrange();
  void repaint();

  wxTextCtrl* Text1_;
  wxGauge* ProgressBar1_;
  wxButton* stop_;
};

}  // namespace corvane
