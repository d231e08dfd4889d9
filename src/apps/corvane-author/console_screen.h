// The windows of a run on a console: a timer switch and a percentage.
#pragma once

#include "apps/corvane-author/report.h"
#include "apps/corvane-author/run_output.h"
#include "runner/run_screen.h"

#include <string>
#include <string_view>

namespace corvane {

class console_screen : public run_screen {
 public:
  console_screen(report& out, run_output& output, bool cleanup)
      : report_(out), output_(output), cleanup_(cleanup) {}

  bool timer_enabled() const { return timer_; }

  /// Takes a piece of the run's output and says the steps it announces.
  void new_output(std::string_view piece);

  std::string main_caption() const override;
  void enable_main(bool) override {}
  void enable_timer(bool enabled) override { timer_ = enabled; }
  bool cleanup() const override { return cleanup_; }

  void show_log() override {}
  void hide_log() override {}
  void refresh_log() override {}
  void set_log_text(const std::string&) override {}
  void set_log_caption(const std::string&) override {}
  void set_log_progress(double percent) override;
  /// Nobody is there to read it; the path is the program's last line.
  void open_log(const std::string&) override {}

 private:
  report& report_;
  run_output& output_;
  bool cleanup_;
  bool timer_ = false;
  bool step_in_piece_ = false;  ///< the last piece announced one
};

}  // namespace corvane
