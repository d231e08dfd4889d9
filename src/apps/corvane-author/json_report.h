// What --check and --verify say with --json.
#pragma once

#include "examine/disc_traits.h"
#include "tools/finding_list.h"

#include <string>

namespace corvane {

/// A JSON object: how many findings there are of each severity, the findings, and what was found on
/// the disc, beside what was asked for (either may hold nothing). As the manual page describes it.
std::string json_report(const finding_list& findings, const disc_traits& found,
                        const disc_traits& asked);

}  // namespace corvane
