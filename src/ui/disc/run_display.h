// A run as the windows show it: the log window with its text, caption and progress, the commands of
// the main window that rest meanwhile.
#pragma once

#include "runner/log_display.h"
#include "runner/run_listener.h"

#include <functional>
#include <string>
#include <string_view>

namespace corvane {

class log_window;
class main_window;

class run_display : public run_listener {
 public:
  /// `stop` is what the log window's button asks for. The log window is made when it is first
  /// needed.
  run_display(main_window& main, std::function<void()> stop);
  ~run_display() override;
  run_display(const run_display&) = delete;
  run_display& operator=(const run_display&) = delete;

  /// Shows the log window with what is in it: where that is nothing, the last run's log.
  void show_log();

  /// Shows the last run's log.
  void show_last_log();

  /// Leaves the program's title in the log window. The log file stays.
  void clear_log();

  void started(const run_start& run) override;
  void step(const run_step& step) override;
  void progress(const run_progress& progress) override;
  void whole(const run_whole& whole) override;
  void output(std::string_view tail) override;
  void broken_off() override;
  void closed() override;
  void finished(const run_end& end) override;

 private:
  log_window& log();
  void bring_up_log();
  void let_main(bool enabled);

  main_window& main_;
  std::function<void()> stop_;
  log_window* log_ = nullptr;
  log_display shown_;
  bool main_enabled_ = true;
  bool has_text_ = false;  ///< of a run, in the log window
};

}  // namespace corvane
