// What a run's output says: the steps that the work script announces and the tools' complaints.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Takes the output piece by piece, however it is cut.
class run_output {
 public:
  void feed(std::string_view piece);

  /// The steps announced since the last call ("multiplexing title: 1"): the lines that begin with
  /// "*", without the asterisks before and the points after.
  std::vector<std::string> take_steps();

  /// The first lines that make the run a failure: those that begin with "ERR" and those with
  /// "**ERR" at their beginning or after a blank.
  const std::vector<std::string>& errors() const { return errors_; }

  /// How many such lines there were; errors() keeps no more than the first `kept_errors`.
  std::size_t error_count() const { return error_count_; }
  static constexpr std::size_t kept_errors = 10;

 private:
  void end_of_line();

  std::string line_;
  std::vector<std::string> steps_;
  std::vector<std::string> errors_;
  std::size_t error_count_ = 0;
};

}  // namespace corvane
