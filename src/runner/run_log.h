// The whole output of a run, on its way to the log file.
//
// It is streamed to a file beside the log ("CorvaneLOG.txt.part") that takes the log's place at the
// end, so that a log of any length costs no memory and the log of the run before stays whole until
// then. What the runner asks about the output is kept at hand: its last characters, whether it
// holds an error line, whether the end marker has come.
//
// A disk that is full ends the writing, not the run; what was written until then is the run's log,
// and `finish` tells it.
#pragma once

#include "platform/result.h"

#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>

namespace corvane {

/// With which the last line of a log begins that could not be put in its place.
inline constexpr const char* not_placed_mark = "*** this log could not be put in its place: ";

class run_log {
 public:
  /// Where the log with this path is written until it is complete.
  static std::string part_of(const std::string& path);

  /// Begins an empty log. `path` (native) is the log file's; nothing is written to the disk yet.
  void begin(std::string path);

  /// Opens the file beside the log and writes what has been appended so far.
  void open();

  /// Adds normalized output.
  void append(std::string_view text);

  /// Ends the last line and puts the log in its place, or as much of it as could be written. Gives
  /// the reason when that is not all; where nothing was, the log of the run before stays. What
  /// cannot be put there stays beside it, with a last line that says so.
  failure finish();

  /// The path of what `finish` had to leave beside the log's place; empty: nothing.
  const std::string& left_beside() const { return left_beside_; }

  /// Whether what has the log's name is of this run, whole or not. Known when it has finished.
  bool is_in_place() const { return in_place_; }

  /// Adds a line to the log that `finish` has put in its place, if it can still be written.
  void add_line(std::string_view line);

  /// Everything so far, followed by `last` as a line of its own, as the file `path`. For the report
  /// of an unexpected error.
  failure copy_to(const std::string& path, std::string_view last);

  /// At least the last 7000 characters of the output.
  std::string_view tail() const { return tail_; }

  /// Whether a line but the first began with "ERR", or any blank was followed by "**ERR".
  bool holds_error() const { return error_; }

  /// Whether a line has begun with the end marker, in one piece or split over two.
  bool holds_marker() const { return marker_; }

  /// Whether what comes next begins a line.
  bool at_line_start() const;

 private:
  void write(std::string_view text);
  void look_at(std::string_view text);
  void leave_beside();

  std::string path_;
  std::string tail_;
  std::ofstream file_;
  bool opened_ = false;
  bool error_ = false;
  bool marker_ = false;
  bool in_place_ = false;
  std::string left_beside_;
  failure trouble_;
};

}  // namespace corvane
