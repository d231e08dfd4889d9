#include "apps/corvane-author/run_output.h"

#include "formats/text.h"

#include <utility>

namespace corvane {
namespace {

/// Of a line without end the beginning is enough.
constexpr std::size_t longest_line = 4096;

bool is_error(std::string_view line) {
  return line.starts_with("ERR") || line.starts_with("**ERR") ||
         line.find(" **ERR") != std::string_view::npos;
}

/// "**please wait....." gives "please wait".
std::string step_text(std::string_view line) {
  line.remove_prefix(line.find_first_not_of('*'));
  const auto last = line.find_last_not_of(". ");
  return std::string(trim_left(line.substr(0, last + 1)));
}

}  // namespace

void run_output::feed(std::string_view piece) {
  while (!piece.empty()) {
    const auto end = piece.find_first_of("\r\n");
    const std::string_view part = piece.substr(0, end);
    line_ += part.substr(0, longest_line - line_.size());
    if (end == std::string_view::npos)
      return;
    end_of_line();
    piece.remove_prefix(end + 1);
  }
}

void run_output::end_of_line() {
  if (is_error(line_)) {
    if (errors_.size() < kept_errors)
      errors_.push_back(line_);
    ++error_count_;
  } else if (line_.starts_with('*') && line_.find_first_not_of('*') != std::string::npos) {
    if (std::string step = step_text(line_); !step.empty())
      steps_.push_back(std::move(step));
  }
  line_.clear();
}

std::vector<std::string> run_output::take_steps() {
  return std::exchange(steps_, {});
}

}  // namespace corvane
