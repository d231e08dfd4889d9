// The rows of titles: how `List11` and `List1` are split, and the six lists that hold a row for
// each title, changed together.
#pragma once

#include "project/project.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The files of a `List11` or `List1` row: the video, then its audio streams; of a muxed title one.
/// An empty row has none.
std::vector<std::string> streams_of(std::string_view row);

/// Whether the name of a file (stored form) is that of a program stream, which is a title alone.
bool is_program_stream(std::string_view stored);

/// The row with one more stream.
std::string with_stream(std::string_view row, std::string_view stream);

/// The lists that always have equal row counts. `postinfo` is not one of them.
std::array<std::vector<std::string>*, 6> title_lists(project& p);

/// Adds a title whose streams are `List11_row` with the defaults of a new one, and shows the count.
void add_title(project& p, const std::string& List11_row);

/// Removes title row `row` and renumbers; the region is free again when nothing is left. No title
/// is selected afterwards.
void remove_title(project& p, std::size_t row);

/// Swaps two title rows and renumbers.
void swap_titles(project& p, std::size_t a, std::size_t b);

/// The selected row; nullopt if none is selected.
std::optional<std::size_t> selected_title(const project& p);

}  // namespace corvane
