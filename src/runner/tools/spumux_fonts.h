// Which font spumux drew a text subtitle with: for one that is not installed another one stands in.
#pragma once

#include "disc/finding.h"
#include "runner/tools/tool_ways.h"

#include <optional>
#include <string_view>

namespace corvane {

/// What there is to say of the font that spumux took, by what it printed. Nullopt when it is the
/// one that was asked for, or when nobody can say.
std::optional<finding> font_that_stands_in(std::string_view printed, finding_item item,
                                           tool_files& files);

}  // namespace corvane
