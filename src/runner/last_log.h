// The log of the last run as lines for a person to read.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

enum class log_line_kind { plain, step, warning, error };

struct line_of_log {
  std::string text;  ///< without the blanks that the runner puts around lines
  log_line_kind kind = log_line_kind::plain;
  bool operator==(const line_of_log&) const = default;
};

/// Of a line but the first, with or without the blanks around it.
log_line_kind kind_of_log_line(std::string_view line);

/// The lines of a log's text. UTF-8; what of it is none is shown as U+FFFD, a NUL as a blank.
std::vector<line_of_log> log_lines(std::string_view log);

/// Of the log file (native path). Of a very large one the end: its first line then says so. None
/// when there is no such file or it cannot be read.
std::vector<line_of_log> last_log(const std::string& path);

}  // namespace corvane
