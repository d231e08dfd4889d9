#include "project/subtitle_file.h"

#include "formats/numbers.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/text/charset.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace corvane {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view utf8_mark = "\xEF\xBB\xBF"sv;
constexpr std::string_view utf16_little = "\xFF\xFE"sv, utf16_big = "\xFE\xFF"sv;

/// spumux looks for a format in this many lines.
constexpr int lines_with_a_format = 100;

bool is_beyond_ascii(char c) {
  return static_cast<unsigned char>(c) >= 0x80;
}

/// spumux reads files of these names as UTF-8, whatever set it is given.
bool is_named_utf8(std::string_view name) {
  const std::string extension = lower_extension_of(name);
  return extension == "utf" || extension == "utf8" || extension == "utf-8";
}

/// Sets of one byte a letter, in which no text happens to be well-formed UTF-8: a letter beyond
/// ASCII would have to be followed by signs.
bool is_single_byte(const std::string& charset) {
  return charset.starts_with("ISO-8859-") || charset.starts_with("CP") || charset == "MACINTOSH" ||
         charset == "KOI8-R";
}

/// Whether a digit stands right before or after one of the signs that the formats put there:
/// "00:01", "{25}", "25,50", "[25]", "@25".
bool holds_a_time(std::string_view line) {
  constexpr std::string_view signs = ":{[,@";
  for (std::size_t i = 1; i < line.size(); ++i)
    if ((is_digit(line[i]) && signs.find(line[i - 1]) != std::string_view::npos) ||
        (is_digit(line[i - 1]) && signs.find(line[i]) != std::string_view::npos))
      return true;
  return false;
}

/// Whether a line may be one that tells a format.
bool may_tell_a_format(const std::string& line) {
  constexpr std::array marks = {"<sami"sv, "<sync"sv, "dialogue:"sv, "format="sv, "-->"sv};
  return holds_a_time(line) || std::any_of(marks.begin(), marks.end(), [&](std::string_view mark) {
           return line.find(mark) != std::string::npos;
         });
}

}  // namespace

result<subtitle_file> subtitle_file::read(const std::string& native) {
  using read_result = result<subtitle_file>;
  if (!file_exists(native))
    return read_result::fail("it is missing");
  const auto size = file_size(native);
  if (size && *size == 0)
    return read_result::fail("it is empty");
  if (size && *size > largest_subtitle_file)
    return read_result::fail("it is too large for a text subtitle file");
  auto bytes = read_file(native, largest_subtitle_file);
  if (!bytes)
    return read_result::fail("it cannot be read: " + bytes.error);
  return read_result::ok(subtitle_file(native, std::move(*bytes)));
}

subtitle_file::subtitle_file(std::string name, std::string bytes)
    : name_(std::move(name)), bytes_(std::move(bytes)), unicode_(found_unicode()) {}

std::string subtitle_file::found_unicode() const {
  if (bytes_.starts_with(utf16_little) || bytes_.starts_with(utf16_big))
    return "UTF-16";
  const auto text =
      std::string_view(bytes_).substr(bytes_.starts_with(utf8_mark) ? utf8_mark.size() : 0);
  const bool beyond = std::any_of(text.begin(), text.end(), is_beyond_ascii);
  return beyond && is_utf8(bytes_) ? "UTF-8" : "";
}

std::string subtitle_file::set_read(const std::string& charset) const {
  const std::string set = lower(charset);
  return is_named_utf8(name_) || set == "utf-8" || set == "utf8" ? "UTF-8" : charset;
}

refusal subtitle_file::why_not(const std::string& charset) const {
  const std::string set = set_read(charset);
  if (unicode_ == "UTF-16")
    return set == "UTF-16" ? std::nullopt
                           : refusal("it is UTF-16 text, but its character set is " + set);
  if (const refusal why = why_not_text())
    return why;
  if (const refusal why = why_not_a_format())
    return why;
  return why_not_charset(set);
}

refusal subtitle_file::why_not_text() const {
  if (bytes_.find('\0') != std::string::npos)
    return "it is not a text file";
  // A line ends with LF, or CR and LF; all in one line it has no format.
  if (bytes_.find('\n') == std::string::npos && bytes_.find('\r') != std::string::npos)
    return "its lines end with CR alone, which spumux does not read";
  return std::nullopt;
}

refusal subtitle_file::why_not_a_format() const {
  std::string_view rest = bytes_;
  for (int i = 0; i < lines_with_a_format && !rest.empty(); ++i) {
    const std::string line = lower(rest.substr(0, rest.find('\n')));
    if (may_tell_a_format(line))
      return std::nullopt;
    rest.remove_prefix(std::min(rest.size(), line.size() + 1));
  }
  return "it is in none of the subtitle formats that spumux reads";
}

refusal subtitle_file::why_not_charset(const std::string& charset) const {
  const bool is_surely_utf8 = bytes_.starts_with(utf8_mark) || is_single_byte(charset);
  if (unicode_ == "UTF-8" && charset != "UTF-8" && is_surely_utf8)
    return "it is UTF-8 text, but its character set is " + charset +
           ", so its letters would come out wrong";
  const decoded_bytes d = charset.empty() ? decoded_bytes() : decode(bytes_, charset);
  if (!d.bad)
    return std::nullopt;
  const auto line =
      1 + std::count(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(*d.bad), '\n');
  return "its line " + std::to_string(line) + " holds bytes that its character set, " + charset +
         ", does not have";
}

}  // namespace corvane
