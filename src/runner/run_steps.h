// The steps of a run: those that its script announces, and how far it has come among them.
#pragma once

#include "runner/run_listener.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class run_steps {
 public:
  /// Begins with the steps of this script: what its echo lines name.
  void begin(std::string_view script);

  int count() const { return static_cast<int>(announced_.size()); }

  /// The step that a printed line names; one without a name when it names none.
  run_step at(const std::string& line);

 private:
  std::vector<std::string> announced_;  ///< as they are printed
  std::size_t reached_ = 0;
};

}  // namespace corvane
