// A title's list of chapter times, as dvdauthor takes it apart and reads it. What a person types
// into our own fields is read by formats/time_text.h.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The times of a list as they stand, in their order: "," and blanks are between them, as many as
/// there are.
std::vector<std::string> chapter_entries(std::string_view list);

/// The seconds of one of them: any number of fields between ":", each worth sixty of the next,
/// which may be empty, and of which only the last may have a sign, a fraction or an exponent
/// ("1:02:05.5", ":5", "1:", ".5", "1:0:0:0", "1e2"). Returns nullopt for what dvdauthor refuses,
/// with which the run fails, and for numbers that are none ("inf").
std::optional<double> chapter_entry_seconds(std::string_view entry);

}  // namespace corvane
