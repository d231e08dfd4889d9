// What the programs of one line of a script print, as it is looked at.
#pragma once

#include "platform/processes/kept_output.h"
#include "runner/line_cutter.h"
#include "runner/tools/known_messages.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class tool_output {
 public:
  /// `tool`: file name of the program whose messages are looked for; `item`: what it works on.
  tool_output(std::string_view tool, finding_item item) : messages_(tool, item) {}

  /// The next piece, however it is cut.
  void feed(std::string_view piece);

  /// Nothing follows.
  void end();

  /// Whether a line was one that makes the run a failure (runner/output_lines.h).
  bool holds_error() const { return holds_error_; }

  /// The known messages among it.
  const std::vector<message_reader::told>& messages() const { return messages_.found(); }

  /// All of it; of more, its first MiB and its last lines, up to 64 KiB.
  std::string text() const { return kept_.text(); }

 private:
  void look_at(std::string_view line);

  kept_output kept_;
  line_cutter lines_;
  message_reader messages_;
  bool holds_error_ = false;
};

}  // namespace corvane
