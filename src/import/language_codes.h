// Languages as files name them, and the two letters that a disc has for them.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// The two letters, lower case, of a language as a file or its name has it: "deu", "ger", "de",
/// "pt-BR", "GER". Empty when it is none that a disc has a code for ("und", "zxx", "").
///
/// Codes that have changed are given as they are today: "he" for "iw", "id" for "in", "yi" for
/// "ji", "ro" for "mo".
std::string language_code_of(std::string_view named);

/// Whether two such names mean one language. Names that mean none are alike to nothing.
bool same_language(std::string_view a, std::string_view b);

/// The entry of `language_entries` (tools/language_tags.h) for a language as a file has it; the
/// first of one that stands there under several names. Empty when there is none.
std::string_view language_entry(std::string_view named);

/// The name in an entry: "GERMAN" of "GERMAN DE ".
std::string_view name_in_entry(std::string_view entry);

}  // namespace corvane
