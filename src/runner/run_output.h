// The lines that a run's script prints: the steps among them and the tools' complaints.
#pragma once

#include "runner/line_cutter.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Takes the output piece by piece, however it is cut.
class run_output {
 public:
  void feed(std::string_view piece);

  /// Ends a last line that was left open.
  void end();

  /// The lines since the last call that name a step ("*multiplexing title: 1.....").
  std::vector<std::string> take_steps();

  /// The first lines that make the run a failure.
  const std::vector<std::string>& errors() const { return errors_; }

  /// How many such lines there were; errors() keeps no more than the first `kept_errors`.
  std::size_t error_count() const { return error_count_; }
  static constexpr std::size_t kept_errors = 10;

 private:
  void look_at(std::string_view line);

  line_cutter lines_;
  std::vector<std::string> steps_;
  std::vector<std::string> errors_;
  std::size_t error_count_ = 0;
};

}  // namespace corvane
