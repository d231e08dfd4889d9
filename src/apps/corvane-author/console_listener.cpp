#include "apps/corvane-author/console_listener.h"

#include <string>

namespace corvane {

void console_listener::step(const run_step& step) {
  report_.step(step.name);
}

// A number that may be that of the step before is left out; the tools repeat theirs often.
void console_listener::progress(const run_progress& progress) {
  if (progress.of_last_step)
    report_.percent(progress.percent);
}

void console_listener::finished(const run_end& end) {
  end_ = end;
}

void console_listener::say_errors() {
  for (const std::string& line : end_.errors)
    report_.message(line);
  if (end_.error_count > end_.errors.size())
    report_.message("... and " + std::to_string(end_.error_count - end_.errors.size()) + " more");
}

}  // namespace corvane
