#include "runner/log_display.h"

#include "runner/output_text.h"

#include <utility>

namespace corvane {

void log_display::step(const run_step& step) {
  // As the normalized output has it.
  if (const auto view = view_of("\r\n " + step.line + " "))
    caption_ = view->caption;
}

log_change log_display::output(std::string_view tail) {
  log_change change{std::exchange(caption_, {}), std::nullopt};
  if (std::optional<log_view> view = view_of(tail)) {
    if (!view->caption.empty())
      change.caption = std::move(view->caption);
    change.text = std::move(view->text);
  }
  return change;
}

}  // namespace corvane
