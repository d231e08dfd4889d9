// Findings as one program hands them to another: conspawn writes down what a run has found, and the
// program that began the run reads it.
#pragma once

#include "disc/finding.h"
#include "platform/result.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// As XML, in UTF-8.
std::string findings_text(const std::vector<finding>& findings);

/// Gives the same findings back; seconds are cut to thousandths, and of what is no UTF-8 each byte
/// is a "?". Fails, with a clause for a message, if the text is none of `findings_text`.
result<std::vector<finding>> parse_findings(std::string_view text);

}  // namespace corvane
