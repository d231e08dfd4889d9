// What the log window shows of a run, worked out from its events.
#pragma once

#include "runner/run_listener.h"

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

struct log_change {
  std::string caption;              ///< "Corvane log - *multiplexing..."; empty: it stays
  std::optional<std::string> text;  ///< the last lines, CR LF between them; nullopt: it stays
};

class log_display {
 public:
  /// The text shows the last lines only, so the caption takes the steps from here.
  void step(const run_step& step);

  /// What changes with new output, whose last characters these are.
  log_change output(std::string_view tail);

 private:
  std::string caption_;  ///< of a step that has not been shown yet
};

}  // namespace corvane
