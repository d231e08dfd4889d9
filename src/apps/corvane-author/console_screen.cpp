#include "apps/corvane-author/console_screen.h"

#include "project/project.h"

#include <vector>

namespace corvane {

void console_screen::new_output(std::string_view piece) {
  output_.feed(piece);
  const std::vector<std::string> steps = output_.take_steps();
  for (const std::string& step : steps)
    report_.step(step);
  step_in_piece_ = !steps.empty();
}

std::string console_screen::main_caption() const {
  return version_title;
}

void console_screen::set_log_progress(double percent) {
  // Whether a number in the same piece as a step came before or after it is not known here, so it
  // is left out; the tools repeat theirs often.
  if (!step_in_piece_)
    report_.percent(percent);
}

}  // namespace corvane
