// The windows as the runner sees them: the main window's switches and the log window.
#pragma once

#include <string>

namespace corvane {

class run_screen {
 public:
  virtual ~run_screen() = default;

  // The main window.
  virtual std::string main_caption() const = 0;
  virtual void enable_main(bool enabled) = 0;
  virtual void enable_timer(bool enabled) = 0;  ///< Timer1: calls shelled::update every 100 ms
  virtual bool cleanup() const = 0;             ///< check mark of "clean up files after authoring"

  // The log window.
  virtual void show_log() = 0;
  virtual void hide_log() = 0;
  virtual void refresh_log() = 0;
  virtual void set_log_text(const std::string& text) = 0;  ///< Text1, whole; lines end in CR LF
  virtual void set_log_caption(const std::string& caption) = 0;
  virtual void set_log_progress(double percent) = 0;  ///< ProgressBar1, 0 to 100

  /// Opens the log file (native path) in the user's text editor; Notepad on Windows.
  virtual void open_log(const std::string& path) = 0;
};

}  // namespace corvane
