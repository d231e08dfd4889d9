// Texts of XML, well formed and not: hand-made seeds, and mutations of them that are the same each
// time.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace corvane::testing_support {

/// What the seeds of `navigation` (whole navigation XMLs) and hand-made ones are made into, the
/// seeds themselves first; `count` texts in all.
std::vector<std::string> mutated_xml(const std::vector<std::string>& navigation, std::size_t count);

}  // namespace corvane::testing_support
