#include "tools/chapters.h"

#include "formats/numbers.h"
#include "formats/text.h"
#include "formats/time_text.h"
#include "platform/files/paths.h"
#include "platform/text/utf8.h"
#include "project/chapter_rows.h"
#include "project/messages.h"
#include "project/title_rows.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace corvane {
namespace {

constexpr std::size_t most_characters = 12, fewest_characters = 9;

/// A row of this text alone would end its section in the project file.
constexpr std::string_view section_end = "***";

/// To nanoseconds first: a position is the nearest binary number to what was meant, and a hair
/// below a half must not be rounded down.
std::int64_t hundredths(double seconds) {
  constexpr std::int64_t nanoseconds_each = 10'000'000;
  const std::int64_t nanoseconds = std::llround(seconds * 1e9);
  return (nanoseconds + nanoseconds_each / 2) / nanoseconds_each;
}

/// The text with one byte for each character, so that places in it are those of characters.
std::string one_byte_each(std::string_view text) {
  std::string bytes;
  for (const char c : text)
    if (!continues_character(c))
      bytes += static_cast<unsigned char>(c) < 0x80 ? c : '?';
  return bytes;
}

bool has_separators(std::string_view time) {
  return time[2] == ':' && time[5] == ':' && time[8] == '.';
}

/// "HH:MM:SS" and nothing else but blanks.
bool lacks_hundredths(std::string_view line) {
  constexpr std::string_view form = "00:00:00";
  const std::string_view time = trim(line);
  return time.size() == form.size() &&
         std::equal(time.begin(), time.end(), form.begin(),
                    [](char c, char f) { return f == '0' ? is_digit(c) : c == f; });
}

chapter_line_fate fate_of(std::string_view line, std::string_view time) {
  const std::string characters = one_byte_each(time);
  if (trim(line).empty())
    return chapter_line_fate::blank;
  if (characters.size() < fewest_characters)
    return chapter_line_fate::left_out;
  if (!has_separators(characters) || !is_storable_chapter(time))
    return chapter_line_fate::typo;
  return trim(line) == time ? chapter_line_fate::stored : chapter_line_fate::cut;
}

std::string lines_that(std::size_t count, const char* one, const char* several) {
  return trimmed(static_cast<std::int64_t>(count)) + (count == 1 ? one : several);
}

}  // namespace

std::string chapter_time(double seconds) {
  if (!(seconds > 0))
    seconds = 0;
  seconds = std::min(seconds, latest_time);
  const auto h = static_cast<std::int64_t>(seconds / 3600);
  const auto m = static_cast<std::int64_t>(seconds / 60) - h * 60;
  const std::int64_t s =
      hundredths(seconds - static_cast<double>(h) * 3600 - static_cast<double>(m) * 60);
  return two_digits(h) + ":" + two_digits(m) + ":" + two_digits(s / 100) + "." +
         two_digits(s % 100);
}

std::optional<double> chapter_seconds(std::string_view time) {
  const std::vector<std::string> pieces = split(time, ':');
  if (pieces.size() != 3)
    return std::nullopt;
  for (const std::string& piece : pieces)
    if (!is_plain_number(trim(piece)))
      return std::nullopt;
  return seconds_of(pieces);
}

std::vector<std::string> chapter_lines(std::string_view text) {
  std::vector<std::string> lines = split(text, '\n');
  for (std::string& line : lines)
    if (line.ends_with('\r'))
      line.pop_back();
  return lines;
}

std::string chapter_text(std::string_view chapter_string) {
  std::string text;
  for (const std::string& time : chapter_times(chapter_string))
    if (!time.empty())
      text += time + std::string(crlf);
  return text;
}

chapter_line judged_chapter_line(std::string_view line) {
  const std::string_view time = trim(first_characters(line, most_characters));
  chapter_line judged{fate_of(line, time), {}, lacks_hundredths(line)};
  if (judged.fate == chapter_line_fate::stored || judged.fate == chapter_line_fate::cut)
    judged.time = time;
  return judged;
}

std::vector<chapter_line> judged_chapter_lines(std::string_view text) {
  std::vector<chapter_line> judged;
  for (const std::string& line : chapter_lines(text))
    judged.push_back(judged_chapter_line(line));
  return judged;
}

std::vector<std::string> chapter_notes(const std::vector<chapter_line>& lines) {
  const auto with = [&lines](chapter_line_fate fate) {
    return static_cast<std::size_t>(std::count_if(
        lines.begin(), lines.end(), [fate](const chapter_line& l) { return l.fate == fate; }));
  };
  const std::size_t left_out = with(chapter_line_fate::left_out);
  const std::size_t typos = with(chapter_line_fate::typo);
  const std::size_t cut = with(chapter_line_fate::cut);
  const std::size_t times = with(chapter_line_fate::stored) + cut;
  std::vector<std::string> notes{lines_that(times, " chapter.", " chapters.")};
  if (typos > 0)
    notes.push_back(lines_that(typos, " line is", " lines are") +
                    " no time (00:12:30.50) and must be corrected first.");
  if (left_out > 0)
    notes.push_back(lines_that(left_out, " line is", " lines are") +
                    " too short for a time (00:12:30.50) and will be left out.");
  if (cut > 0)
    notes.push_back(lines_that(cut, " line is", " lines are") +
                    " longer than a time and will be cut after 12 characters.");
  return notes;
}

std::string completed_chapter_text(std::string_view text) {
  std::string completed;
  for (const std::string& line : split(text, '\n')) {
    const std::string_view end = line.ends_with('\r') ? "\r" : "";
    const std::string_view typed = std::string_view(line).substr(0, line.size() - end.size());
    completed += lacks_hundredths(typed) ? std::string(trim(typed)) + ".00" : std::string(typed);
    completed += end;
    completed += '\n';
  }
  if (!completed.empty())
    completed.pop_back();
  return completed;
}

std::optional<std::string> chapter_string(std::string_view text) {
  std::vector<std::string> times;
  for (const chapter_line& line : judged_chapter_lines(text)) {
    if (line.fate == chapter_line_fate::typo)
      return std::nullopt;
    if (!line.time.empty())
      times.push_back(line.time);
  }
  return chapter_row(times);
}

std::optional<chapter> chapter::open(document& doc) {
  if (custom(doc) != 1)
    return std::nullopt;
  if (const auto row = selected_title(doc.p))
    return chapter(doc, *row);
  say(doc, icon::exclamation, "Please select a title to add chapters to.");
  return std::nullopt;
}

chapter::chapter(document& doc, std::size_t row)
    : doc_(&doc),
      Label2_(trimmed(static_cast<std::int64_t>(row) + 1)),
      Label3_(doc.p.List1[row]),
      RichTextBox1_(row < doc.p.chapters.size() ? chapter_text(doc.p.chapters[row])
                                                : std::string()) {}

std::string chapter::video() const {
  const std::vector<std::string> streams =
      streams_of(row_of(doc_->p.List11, leading_whole(Label2_), {}));
  return streams.empty() ? std::string() : native_from_stored(streams[0]);
}

bool chapter::accept() {
  const auto times = chapter_string(RichTextBox1_);
  if (!times) {
    say(*doc_, icon::exclamation,
        "There appears to be a typo in the chapters list, please correct.");
    return false;
  }
  row_to_write(doc_->p.chapters, leading_whole(Label2_), {}) = *times;
  doc_->p.saved = 0;
  dvdsize(*doc_);
  return true;
}

void chapter::keep_in(project& copy) const {
  std::vector<std::string> lines;
  for (const std::string& line : chapter_lines(RichTextBox1_))
    if (const std::string_view time = trim(line);
        !time.empty() && time != section_end && is_storable_chapter(time))
      lines.emplace_back(time);
  row_to_write(copy.chapters, leading_whole(Label2_), {}) = chapter_row(lines);
}

}  // namespace corvane
