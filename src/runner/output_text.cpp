#include "runner/output_text.h"

#include "formats/numbers.h"
#include "formats/text.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <vector>

namespace corvane {
namespace {

constexpr std::string_view line_break = " \r\n ";
constexpr std::size_t lines_shown = 20;

std::string displayable(std::string_view text) {
  std::string shown = repaired_utf8(text);
  std::replace(shown.begin(), shown.end(), '\0', ' ');
  return shown;
}

/// The tail may begin in the middle of a character: its remaining bytes are left out.
std::string_view without_cut_character(std::string_view tail) {
  for (int i = 0; i < 3 && !tail.empty() && continues_character(tail[0]); ++i)
    tail.remove_prefix(1);
  return tail;
}

}  // namespace

std::string line_end_normalizer::operator()(std::string_view piece) {
  std::string text;
  text.reserve(piece.size() + piece.size() / 8 + 8);  // lines of 32 bytes and more
  if (held_ && !piece.empty()) {
    text += line_break;
    held_ = false;
    if (piece[0] == '\n')
      piece.remove_prefix(1);
  }
  std::size_t next_cr = piece.find('\r');
  std::size_t begin = 0;
  while (begin < piece.size()) {
    // Looked for one by one: twice as fast as a search for either.
    const std::size_t lf = piece.find('\n', begin);
    if (next_cr != std::string_view::npos && next_cr < begin)
      next_cr = piece.find('\r', begin);
    const std::size_t end = std::min(lf, next_cr);
    text += piece.substr(begin, end == std::string_view::npos ? end : end - begin);
    if (end == std::string_view::npos)
      break;
    if (piece[end] == '\r' && end + 1 == piece.size()) {
      held_ = true;
      break;
    }
    text += line_break;
    begin = piece.substr(end, 2) == "\r\n" ? end + 2 : end + 1;
  }
  return text;
}

std::string line_end_normalizer::rest() {
  const bool held = held_;
  held_ = false;
  return held ? std::string(line_break) : std::string();
}

std::optional<double> progress_of(std::string_view piece) {
  const std::size_t percent = piece.find('%');
  if (percent == std::string_view::npos)
    return std::nullopt;
  const std::string_view before = piece.substr(0, percent);
  const std::size_t blank = before.rfind(' ');
  if (blank == std::string_view::npos)
    return std::nullopt;
  return leading_number(before.substr(blank + 1));
}

std::optional<log_view> view_of(std::string_view tail) {
  if (tail.size() > view_length)
    tail.remove_prefix(tail.size() - view_length);
  if (tail.find(crlf) == std::string_view::npos)
    return std::nullopt;
  const std::vector<std::string> lines = split(displayable(without_cut_character(tail)), crlf);
  const std::size_t first = lines.size() > lines_shown ? lines.size() - lines_shown : 0;
  log_view view;
  for (std::size_t i = first; i < lines.size(); ++i) {
    const std::string& line = lines[i];
    if (std::string_view(line).substr(0, 3).find('*') != std::string_view::npos) {
      view.caption = "Corvane log - ";
      view.caption += trim_left(std::string_view(line).substr(1));
    }
    if (i > first)
      view.text += crlf;
    view.text += line;
  }
  return view;
}

}  // namespace corvane
