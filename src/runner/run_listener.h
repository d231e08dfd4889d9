// What happens in a run, told as it happens: a window shows it, a console prints it.
#pragma once

#include "disc/finding.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

enum class run_outcome { none, running, success, failed, stopped };

struct run_start {
  int steps = 0;            ///< how many the script announces
  std::string first_lines;  ///< what stands in the log before the first output; lines end in CR LF
};

/// A step that the script has come to.
struct run_step {
  int number = 0;    ///< from 1, among those announced; a line that was not announced has the last
                     ///< one's, or 0
  int count = 0;     ///< how many were announced
  std::string name;  ///< "multiplexing title: 1"
  std::string line;  ///< as it was printed: "*multiplexing title: 1....."
};

struct run_progress {
  double percent = 0;         ///< 0 to 100
  bool of_last_step = false;  ///< not, perhaps, of the one before: no step came in the same piece
};

/// Where the run is as a whole.
struct run_whole {
  double percent = 0;  ///< of its time; never goes back, below 100
  int step = 0;        ///< from 1, among those that have something to do; 0: there are none
  int count = 0;
  std::string name{};                    ///< of the step that was printed last
  std::optional<double> seconds_left{};  ///< not set as long as nothing can be said
};

/// A file that could not be written or removed.
struct run_trouble {
  std::string file;  ///< native path
  std::string text;  ///< "could not be removed by the clean-up: Permission denied"
};

/// What is found of the disc that a run was to make, by what its tools said and by the look at it;
/// not set for a run that makes none.
using found_in_run = std::optional<std::vector<finding>>;

/// What came of setting in order what a run has left.
struct run_settled {
  std::vector<std::string> notes{};     ///< lines for the log
  std::vector<std::string> warnings{};  ///< what the user has to know, sentences
  found_in_run findings{};
  std::string restored{};  ///< that what was to be replaced is there again, a sentence; or empty
};

struct run_end {
  run_outcome outcome = run_outcome::none;  ///< none: the script could not be started
  std::vector<std::string> errors;          ///< the first lines that made it a failure
  std::size_t error_count = 0;              ///< how many such lines there were
  std::vector<run_trouble> troubles;        ///< none of them makes it a failure
  std::vector<std::string> notes{};         ///< what was done to set things in order
  found_in_run findings{};
  std::string restored{};  ///< as in run_settled
};

class run_listener {
 public:
  virtual ~run_listener() = default;

  /// A run is begun: no other one, and nothing that it works on may be changed, until `closed`.
  virtual void started(const run_start& run) = 0;

  virtual void step(const run_step& step) = 0;
  virtual void progress(const run_progress& progress) = 0;

  /// Some times a second, whether anything was printed or not, and after each step. Not every
  /// listener has a place for it.
  virtual void whole(const run_whole& /*whole*/) {}

  /// Something was printed. `tail`: the last of the output, normalized, at least as much as
  /// `view_length` (runner/output_text.h). After the steps that were in it, and not for what came
  /// with the end of the run.
  virtual void output(std::string_view tail) = 0;

  /// After an unexpected error the runner polls no more, and whether the script goes on is not
  /// known. A message follows; the run can be stopped.
  virtual void broken_off() = 0;

  /// The script has ended, or is left to itself, and the log file is in its place. Not told of one
  /// that could not be started.
  virtual void closed() = 0;

  /// The last of a run. Where the user is told the outcome, that follows.
  virtual void finished(const run_end& end) = 0;
};

}  // namespace corvane
