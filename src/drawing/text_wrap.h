// Where a text is broken into lines, and how it is cut short. Whoever knows how wide letters are
// says what fits.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Whether a line is narrow enough. What begins a line that fits must fit too.
using line_fits = std::function<bool(const std::string& line)>;

/// The lines of a text (UTF-8; what is not well formed becomes U+FFFD): broken at each "\n", and
/// where one would not fit at blanks, which go, between letters of scripts that are written without
/// them, and within a word that does not fit alone; but never between a letter and its marks. A
/// line has one letter at least, whether it fits or not. In the order of the text; one line, an
/// empty one, for a text without letters.
std::vector<std::string> wrapped_lines(std::string_view text, const line_fits& fits);

/// The longest beginning of a line that fits with "…" behind it; "…" where none does. `must_end`:
/// something follows that is not told, so that "…" stands behind a line that fits, too.
std::string shortened_line(const std::string& line, bool must_end, const line_fits& fits);

}  // namespace corvane
