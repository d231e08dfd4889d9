// What the runner does to the windows, done to the real ones.
#pragma once

#include "runner/run_screen.h"

#include <functional>
#include <string>

namespace corvane {

class log_window;
class main_window;

class window_screen : public run_screen {
 public:
  /// `stop` is what the log window's button asks for. The log window is made when it is first
  /// needed.
  window_screen(main_window& main, std::function<void()> stop);
  ~window_screen() override;
  window_screen(const window_screen&) = delete;
  window_screen& operator=(const window_screen&) = delete;

  std::string main_caption() const override;
  void enable_main(bool enabled) override;
  void enable_timer(bool enabled) override;
  bool cleanup() const override;
  void show_log() override;
  void hide_log() override;
  void refresh_log() override;
  void set_log_text(const std::string& text) override;
  void set_log_caption(const std::string& caption) override;
  void set_log_progress(double percent) override;
  void open_log(const std::string& path) override;

 private:
  log_window& log();

  main_window& main_;
  std::function<void()> stop_;
  log_window* log_ = nullptr;
  bool main_enabled_ = true;
};

}  // namespace corvane
