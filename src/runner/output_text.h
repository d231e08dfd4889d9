// The tools' output as text: line ends made uniform, progress found, the last lines chosen for the
// log window. Pure functions and a small piece of state between the pieces.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// Makes line ends uniform, a piece at a time: CR LF, a lone CR and a lone LF each become a blank,
/// CR LF and a blank. So every line ends in a blank and every line after the first begins with one.
///
/// A CR that ends a piece is held back, since the LF that belongs to it may open the next one.
class line_end_normalizer {
 public:
  std::string operator()(std::string_view piece);

  /// The line break that is still held back, or nothing. To be asked for when all has been read.
  std::string rest();

 private:
  bool held_ = false;
};

/// The percentage a piece of normalized output tells: the number before its first "%" and after
/// the last blank before that. Returns nullopt if the text before the "%" has no blank.
std::optional<double> progress_of(std::string_view piece);

/// What the log window shows of the output's end.
struct log_view {
  std::string text;     ///< at most 20 lines, with CR LF between them
  std::string caption;  ///< "Corvane log - *multiplexing..."; empty when no line shown names a step
};

/// Most characters of the output that the log window looks at.
inline constexpr std::size_t view_length = 7000;

/// The view of the output's last `view_length` characters; nothing when they hold no line break.
/// What is not UTF-8 (a character cut in two at the beginning, a tool's bytes) is shown as U+FFFD,
/// a NUL as a blank.
std::optional<log_view> view_of(std::string_view tail);

}  // namespace corvane
