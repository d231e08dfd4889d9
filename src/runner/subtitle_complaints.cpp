#include "runner/subtitle_complaints.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace corvane {
namespace {

/// What a line holds, and what it means.
struct known_complaint {
  std::string_view line;
  std::string_view meaning;
};

constexpr std::array<known_complaint, 8> known = {{
    {"Could not determine format", "it is in none of the subtitle formats that spumux reads"},
    {"opening iconv descriptor", "spumux does not know the character set"},
    {"Invalid or incomplete multibyte", "it holds bytes that the character set does not have"},
    {"decoding subtitle file", "it holds bytes that the character set does not have"},
    {"New_Face failed", "spumux cannot read the font"},
    {"supply the text font file", "spumux cannot read the font"},
    {"was ended by", "spumux crashed on it; a font that is too large is a known cause"},
    {"could not be started", "spumux could not be started"},
}};

bool is_complaint(std::string_view line) {
  return line.starts_with("ERR:");
}

std::string_view without_prefix(std::string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of(' ', 4), line.size()));
  return line;
}

std::string meaning_of(std::string_view line) {
  const auto* const k =
      std::find_if(known.begin(), known.end(), [line](const known_complaint& complaint) {
        return line.find(complaint.line) != std::string_view::npos;
      });
  return k != known.end() ? std::string(k->meaning)
                          : "spumux says \"" + std::string(without_prefix(line)) + "\"";
}

}  // namespace

std::string why_not_subtitled(std::string_view printed) {
  while (!printed.empty()) {
    const std::size_t end = printed.find_first_of("\r\n");
    const std::string_view line = printed.substr(0, end);
    printed.remove_prefix(end == std::string_view::npos ? printed.size() : end + 1);
    if (is_complaint(line))
      return meaning_of(line);
  }
  return {};
}

}  // namespace corvane
