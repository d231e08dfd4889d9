#include "runner/tools/spumux_subtitles.h"

#include "formats/numbers.h"
#include "formats/text.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace corvane {
namespace {

/// What a line holds, and what it means.
struct known_line {
  std::string_view holds;
  std::string_view meaning;
};

constexpr std::array<known_line, 11> failures = {{
    {"Could not determine format", "it is in none of the subtitle formats that spumux reads"},
    {"load file", "spumux found no text in it"},
    {"opening subtitle file", "it cannot be opened"},
    {"opening iconv descriptor", "spumux does not know the character set"},
    {"decoding subtitle file", "it holds bytes that the character set does not have"},
    {"New_Face failed", "spumux cannot read the font"},
    {"supply the text font file", "spumux cannot read the font"},
    {"was ended by",
     "spumux crashed on it, as it does on text larger than the screen and on some JACOsub files"},
    {"could not be started", "spumux could not be started"},
    {"no video format specified", "spumux was not told whether it is NTSC or PAL"},
    {"ended with status", "spumux failed and did not say why"},
}};

constexpr std::array<known_line, 4> losses = {{
    {"subtitle line too long",
     "text is missing, since a line of the file is longer than spumux reads"},
    {"Out of screen", "lines of its text are missing, since they do not fit on the screen"},
    {"too long!",
     "letters of its text are missing: a word is wider than the space between the "
     "margins"},
    {"Text out of range", "letters of its text are missing, since they stand beyond the margins"},
}};

// spumux places it by the left margin, whatever the right one is.
constexpr std::string_view about_right =
    ".  spumux does not place text at the right as it should; align it left with a larger left "
    "margin instead";

template <std::size_t Count>
std::string meaning_of(std::string_view line, const std::array<known_line, Count>& lines) {
  const auto found = std::find_if(lines.begin(), lines.end(), [line](const known_line& known) {
    return line.find(known.holds) != std::string_view::npos;
  });
  return found == lines.end() ? std::string() : std::string(found->meaning);
}

/// What the line "INFO: 5 subtitles added, 0 subtitles skipped, ..." tells is missing, after what
/// is left of the line of a progress report.
std::string loss_counted(std::string_view line) {
  constexpr std::string_view info = "INFO: ", added = " subtitles added, ";
  const std::size_t at = line.find(added);
  const std::size_t begin = line.find(info);
  if (at == std::string_view::npos || begin == std::string_view::npos || begin > at)
    return {};
  if (line.substr(begin + info.size(), at - begin - info.size()) == "0")
    return "spumux added nothing";
  const std::string skipped = leading_number_text(line.substr(at + added.size()));
  if (skipped == "0")
    return {};
  return skipped + (skipped == "1" ? " text of it that lasts no time is missing"
                                   : " texts of it that last no time are missing");
}

}  // namespace

std::string_view take_printed_line(std::string_view& text) {
  const std::size_t end = text.find_first_of("\r\n");
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return line;
}

std::string why_not_subtitled(std::string_view printed) {
  constexpr std::string_view mark = "ERR:";
  while (!printed.empty()) {
    const std::string_view line = take_printed_line(printed);
    if (!line.starts_with(mark))
      continue;
    const std::string meaning = meaning_of(line, failures);
    return meaning.empty() ? "spumux says \"" + std::string(trim(line.substr(mark.size()))) + "\""
                           : meaning;
  }
  return {};
}

std::string what_is_missing(std::string_view printed, std::string_view control) {
  std::string counted;
  while (!printed.empty()) {
    const std::string_view line = take_printed_line(printed);
    const std::string loss =
        line.find("WARN:") != std::string_view::npos ? meaning_of(line, losses) : std::string();
    if (!loss.empty())
      return loss + (control.find("horizontal-alignment=\"right\"") != std::string_view::npos
                         ? std::string(about_right)
                         : std::string());
    if (const std::string loss_of_line = loss_counted(line); !loss_of_line.empty())
      counted = loss_of_line;
  }
  return counted;
}

std::string subtitle_file_in(std::string_view control) {
  constexpr std::string_view before = "<textsub filename=\"";
  const std::size_t at = control.find(before);
  if (at == std::string_view::npos)
    return {};
  const std::string_view rest = control.substr(at + before.size());
  return replace_all(rest.substr(0, rest.find('"')), "&amp;", "&");
}

}  // namespace corvane
