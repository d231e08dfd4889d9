// What the program says: steps and paths on standard output, messages on standard error.
#pragma once

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The text with every control character but the line feed made a "?": names and tool output must
/// not steer a terminal.
std::string printable(std::string_view text);

/// The text's beginning, as much as fits in `columns`; wide characters count two.
std::string cut_to_width(std::string_view text, int columns);

/// Columns that the text takes.
int width_of(std::string_view text);

class report {
 public:
  /// `on_terminal`: steps go on one line that is drawn over and over, `columns()` wide; otherwise
  /// each step is a line and percentages are left out.
  report(std::FILE* out, std::FILE* err, bool on_terminal, int (*columns)());

  /// A new step of the run.
  void step(const std::string& text);
  /// How far the step is, 0 to 100.
  void percent(double done);
  /// Where the run is as a whole: percent, and words for step and time left, the longest first. As
  /// many of them stand behind the step as there is room for.
  void whole(double done, std::vector<std::string> words);
  /// The progress line stays as it is and the next text begins below it.
  void end_progress();

  /// A line on standard output, on standard error (there under the program's name).
  void line(const std::string& text);
  void message(const std::string& text);

 private:
  void draw();
  std::string numbers(int columns) const;

  std::FILE* out_;
  std::FILE* err_;
  bool on_terminal_;
  int (*columns_)();
  std::string step_;
  std::optional<int> percent_;
  std::optional<int> whole_;        ///< percent of the run
  std::vector<std::string> words_;  ///< of the run as a whole, the longest first
  int drawn_ = 0;                   ///< columns of the progress line on the screen
};

}  // namespace corvane
