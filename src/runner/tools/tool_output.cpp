#include "runner/tools/tool_output.h"

#include "runner/output_lines.h"

namespace corvane {

void tool_output::feed(std::string_view piece) {
  kept_.add(piece);
  lines_.feed(piece, [this](std::string_view line) { look_at(line); });
}

void tool_output::end() {
  lines_.end([this](std::string_view line) { look_at(line); });
}

void tool_output::look_at(std::string_view line) {
  holds_error_ = holds_error_ || is_error_line(line);
  messages_.look_at(line);
}

}  // namespace corvane
