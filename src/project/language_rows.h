// The row format of language tags (project::languagetags): "Audio tag:" or "Subtitle tag:", TAB,
// language. A language is a name, a blank and a code of two letters.
#pragma once

#include "disc/disc_description.h"

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// Whether the row tags an audio stream. As authoring takes it: by its first three characters.
bool is_audio_tag(std::string_view row);

/// The row of a tag in a language: "ENGLISH EN".
std::string language_row(disc_language::stream_kind kind, std::string_view language);

/// The text of the language in a row; empty if the row has no TAB.
std::string language_in(std::string_view row);

/// The row with another language.
std::string with_language(std::string_view row, std::string_view language);

/// The tag. Its code is the second of the language's words, empty if there is none. Returns nullopt
/// if the row begins neither "Aud" nor "Sub".
std::optional<disc_language> parse_language_row(std::string_view row);

}  // namespace corvane
