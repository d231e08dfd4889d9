#include "runner/run_output.h"

#include "runner/output_lines.h"

#include <utility>

namespace corvane {

void run_output::feed(std::string_view piece) {
  lines_.feed(piece, [this](std::string_view line) { look_at(line); });
}

void run_output::end() {
  lines_.end([this](std::string_view line) { look_at(line); });
}

void run_output::look_at(std::string_view line) {
  if (is_error_line(line)) {
    if (errors_.size() < kept_errors)
      errors_.emplace_back(line);
    ++error_count_;
  } else if (!step_in_line(line).empty()) {
    steps_.emplace_back(line);
  }
}

std::vector<std::string> run_output::take_steps() {
  return std::exchange(steps_, {});
}

}  // namespace corvane
