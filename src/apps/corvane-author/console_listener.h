// A run on a console: its steps and how far they are.
#pragma once

#include "apps/corvane-author/report.h"
#include "runner/run_listener.h"

#include <string_view>

namespace corvane {

class console_listener : public run_listener {
 public:
  explicit console_listener(report& out) : report_(out) {}

  /// Says which lines made the run a failure, but for those that `say_findings` tells more fully.
  /// To be called once it has finished.
  void say_errors();

  /// Says what was found that is an error or a warning, worst first, with what to do; the log has
  /// the notes. Likewise.
  void say_findings();

  void started(const run_start&) override {}
  void step(const run_step& step) override;
  void progress(const run_progress& progress) override;
  void whole(const run_whole& whole) override;
  void output(std::string_view) override {}
  void broken_off() override {}
  void closed() override {}
  void finished(const run_end& end) override;

 private:
  report& report_;
  run_end end_;
};

}  // namespace corvane
