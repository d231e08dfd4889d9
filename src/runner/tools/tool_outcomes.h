// What is to be said of a tool's work besides its known messages (runner/tools/known_messages.h):
// by how it ended, by what it left, by what several of its lines say together; and of a run as a
// whole.
#pragma once

#include "disc/finding.h"

#include <span>
#include <string>
#include <string_view>

namespace corvane {

/// One kind of it. The texts are sentences without their full stop.
struct tool_outcome {
  std::string_view rule;  ///< identifier that stays
  finding_severity severity = finding_severity::error;
  std::string_view subject;  ///< what holds when all is well
  std::string_view wanted;   ///< what must be
  std::string_view consequence, remedy;
  std::string_view source;  ///< of which tool, and since when it is known
};

std::span<const tool_outcome> tool_outcomes();

/// A finding of that kind, which must be one of the list. `found`: a sentence without full stop.
finding outcome_finding(std::string_view rule, finding_item item, std::string found);

}  // namespace corvane
