#include "project/language_rows.h"

#include "formats/text.h"

namespace corvane {
namespace {

constexpr std::string_view audio_kind = "Audio tag:", subtitle_kind = "Subtitle tag:";
constexpr std::size_t letters_that_count = 3;

bool begins_as(std::string_view row, std::string_view kind) {
  return row.starts_with(kind.substr(0, letters_that_count));
}

}  // namespace

bool is_audio_tag(std::string_view row) {
  return begins_as(row, audio_kind);
}

std::string language_row(disc_language::stream_kind kind, std::string_view language) {
  const bool audio = kind == disc_language::stream_kind::audio;
  return std::string(audio ? audio_kind : subtitle_kind) + "\t" + std::string(language);
}

std::string language_in(std::string_view row) {
  const std::vector<std::string> pieces = split(row, '\t');
  return pieces.size() > 1 ? pieces[1] : std::string();
}

std::string with_language(std::string_view row, std::string_view language) {
  return std::string(row.substr(0, row.find('\t'))) + "\t" + std::string(language);
}

std::optional<disc_language> parse_language_row(std::string_view row) {
  if (!is_audio_tag(row) && !begins_as(row, subtitle_kind))
    return std::nullopt;
  disc_language language;
  language.kind = is_audio_tag(row) ? disc_language::stream_kind::audio
                                    : disc_language::stream_kind::subpicture;
  language.text = row;
  // Between the first blank and the next.
  const std::string name = language_in(row);
  if (const auto blank = name.find(' '); blank != std::string::npos)
    language.code = name.substr(blank + 1, name.find(' ', blank + 1) - blank - 1);
  return language;
}

}  // namespace corvane
