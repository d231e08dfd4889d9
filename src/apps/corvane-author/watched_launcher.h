// A launcher that also hands the commands' output to somebody else.
//
// The runner shows no more than the last twenty lines of a pass, as a window needs it. On a console
// no step may be lost, so the steps are taken from the output itself.
#pragma once

#include "platform/processes/process.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {

class watched_launcher : public process_launcher {
 public:
  /// Called with each piece as it is read, before the reader has it.
  using listener = std::function<void(std::string_view piece)>;

  watched_launcher(process_launcher& launcher, listener on_output)
      : launcher_(launcher), on_output_(std::move(on_output)) {}

  start_result start(const std::string& command_line,
                     const std::vector<child_variable>& variables) override;

 private:
  process_launcher& launcher_;
  listener on_output_;
};

}  // namespace corvane
