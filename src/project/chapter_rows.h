// The row format of a title's chapters (project::chapters): its chapter times, joined by ",".
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The pieces of a row as they stand, in their order, also those that are empty. An empty row has
/// none.
std::vector<std::string> chapter_times(std::string_view row);

std::string chapter_row(const std::vector<std::string>& times);

/// Whether a time can be a piece of a row: it holds neither "," nor a control character.
bool is_storable_chapter(std::string_view time);

}  // namespace corvane
