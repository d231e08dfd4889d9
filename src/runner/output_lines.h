// What the lines of a run's output mean: which make it a failure, which ends it, which name a step.
// Any tool can print the first; the others are the script's own (runner/line_guard.h).
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// What our own programs begin an error line with.
inline constexpr std::string_view error_mark = "ERR:  ";

/// How a tool's error line with asterisks begins: "**ERROR: ...".
inline constexpr std::string_view starred_error = "**ERR";

/// The last line of every work script.
inline constexpr std::string_view end_marker = "*process complete";

/// Whether a line makes the run a failure: it begins with "ERR", as the authoring tools print their
/// errors, or "**ERR" stands at its beginning or after a blank. The first line of a run's output is
/// none of a tool's.
bool is_error_line(std::string_view line);

/// The same of normalized output (runner/output_text.h), so that nobody need wait for the line's
/// end: whether a line but the first begins with "ERR", or any blank is followed by "**ERR".
bool holds_error_line(std::string_view normalized);

/// Whether a line of normalized output begins with the end marker. One within a line may be the
/// name of a file that a tool speaks of.
bool holds_marker_line(std::string_view normalized);

/// Most characters of normalized output over which what the two look for can stretch.
inline constexpr std::size_t longest_mark = 32;

/// The step that a line names, without the asterisks before and the points after: "*multiplexing
/// title: 1....." gives "multiplexing title: 1". Empty when it names none, as an error line.
std::string step_in_line(std::string_view line);

/// The line that names a step: "*multiplexing title: 1.....".
std::string step_line(std::string_view name);

}  // namespace corvane
