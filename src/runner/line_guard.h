// Keeps what tools print from being taken for what the script itself says.
//
// Steps and the end of a run are lines that begin with "*" (runner/output_lines.h). A tool may
// print such a line too: one that names a file does, when the name holds a line break. So a tool's
// line that begins with "*", with a blank before it or not, gets `tools_mark` before it. Error
// lines ("**ERROR: ...") stay as they are: they count whoever prints them.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// What stands before a tool's line that begins with "*".
inline constexpr std::string_view tools_mark = "tool: ";

class line_guard {
 public:
  /// The next piece of what tools print, as it is to be passed on; valid until the next call. Of a
  /// line's beginning, up to five bytes are held back until it is clear what they are.
  std::string_view operator()(std::string_view piece);

  /// What is held back, likewise. To be asked for when a tool has ended.
  std::string_view rest();

  /// Whether what comes next begins a line: a tool may leave its last one open.
  bool at_line_start() const { return at_line_start_; }

  /// Something else was printed, which ended the line.
  void end_line() { at_line_start_ = true; }

 private:
  bool at_line_start_ = true;
  std::string held_;    ///< how the line begins
  std::string passed_;  ///< what the last call gave, where that is no part of the piece
};

}  // namespace corvane
