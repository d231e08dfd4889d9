// A line of a subtitle without what spumux would draw as letters or leave out.
//
// Only what the examination names is touched (examine/subtitle_text_rules.h), and what spumux
// understands stays: the usual tags in SubRip and SAMI, "{\...}" in SSA. Text is kept: where a
// sign cannot stand, one like it takes its place.
#pragma once

#include "formats/subtitle_cues.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct cleaned_line {
  std::vector<std::string> lines;  ///< what it becomes: one line, more where it holds "\N"
  std::vector<std::string> drawn;  ///< markup that would be shown as letters, each once, in quotes
  std::vector<std::string> reasons;  ///< why else, as clauses, each once

  /// Whether it is another one now.
  bool is_changed() const { return !drawn.empty() || !reasons.empty(); }
};

/// `line`: UTF-8, without the signs with which the format parts lines. To clean the outcome again
/// changes nothing.
cleaned_line clean_line(std::string_view line, subtitle_format format);

/// The line as spumux draws it: without the tags or blocks that it understands.
std::string shown_line(std::string_view line, subtitle_format format);

}  // namespace corvane
