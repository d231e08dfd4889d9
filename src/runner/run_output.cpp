#include "runner/run_output.h"

#include "runner/output_lines.h"

#include <algorithm>
#include <utility>

namespace corvane {
namespace {

/// Of a line without end the beginning is enough.
constexpr std::size_t longest_line = 4096;

}  // namespace

void run_output::feed(std::string_view piece) {
  std::size_t next_cr = piece.find('\r');
  for (std::size_t begin = 0; begin < piece.size();) {
    // Looked for one by one: much faster than a search for either.
    if (next_cr < begin)
      next_cr = piece.find('\r', begin);
    const std::size_t line_end = std::min(piece.find('\n', begin), next_cr);
    const std::string_view part = piece.substr(begin, line_end - begin);
    if (line_end != std::string_view::npos && line_.empty()) {
      look_at(part.substr(0, longest_line));
    } else {
      line_ += part.substr(0, longest_line - line_.size());
      if (line_end == std::string_view::npos)
        return;
      end();
    }
    begin = line_end + 1;
  }
}

void run_output::end() {
  look_at(line_);
  line_.clear();
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
