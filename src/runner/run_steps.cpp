#include "runner/run_steps.h"

#include "runner/output_lines.h"
#include "runner/script_line.h"

#include <algorithm>

namespace corvane {

void run_steps::begin(std::string_view script) {
  announced_.clear();
  reached_ = 0;
  while (!script.empty()) {
    const std::string_view line = script.substr(0, script.find('\n'));
    const result<script_command> command = parse_script_line(line);
    if (command && command->verb == script_verb::echo && !step_in_line(command->text).empty())
      announced_.push_back(command->text);
    script.remove_prefix(std::min(script.size(), line.size() + 1));
  }
}

run_step run_steps::at(const std::string& line) {
  const auto next = announced_.begin() + static_cast<std::ptrdiff_t>(reached_);
  const auto found = std::find(next, announced_.end(), line);
  // One that was not announced leaves the number as it is.
  if (found != announced_.end())
    reached_ = static_cast<std::size_t>(found - announced_.begin()) + 1;
  return {static_cast<int>(reached_), count(), step_in_line(line), line};
}

}  // namespace corvane
