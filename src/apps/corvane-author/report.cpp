#include "apps/corvane-author/report.h"

#include "formats/text.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace corvane {
namespace {

/// The character at the text's beginning; a byte that begins none is one by itself.
std::string_view first_of(std::string_view text) {
  return text.substr(0, std::max<std::size_t>(1, first_character(text).length));
}

/// Terminals give East Asian characters and pictures two columns. They begin at U+1100 (lead byte
/// E1); taking everything from there on as wide can only cut a line too early.
int columns_of(std::string_view sequence) {
  return static_cast<unsigned char>(sequence[0]) >= 0xE1 ? 2 : 1;
}

}  // namespace

std::string printable(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const std::string_view sequence = first_of(text);
    const auto first = static_cast<unsigned char>(sequence[0]);
    const bool c0 = is_control_character(text[0]) && first != '\n';
    const bool c1 =
        first == 0xC2 && sequence.size() == 2 && static_cast<unsigned char>(sequence[1]) < 0xA0;
    if (c0 || c1)
      out += '?';
    else
      out += sequence;
    text.remove_prefix(sequence.size());
  }
  return out;
}

std::string cut_to_width(std::string_view text, int columns) {
  std::size_t bytes = 0;
  while (bytes < text.size()) {
    const std::string_view sequence = first_of(text.substr(bytes));
    columns -= columns_of(sequence);
    if (columns < 0)
      break;
    bytes += sequence.size();
  }
  return std::string(text.substr(0, bytes));
}

int width_of(std::string_view text) {
  int columns = 0;
  while (!text.empty()) {
    const std::string_view sequence = first_of(text);
    columns += columns_of(sequence);
    text.remove_prefix(sequence.size());
  }
  return columns;
}

report::report(std::FILE* out, std::FILE* err, bool on_terminal, int (*columns)())
    : out_(out), err_(err), on_terminal_(on_terminal), columns_(columns) {}

void report::step(const std::string& text) {
  step_ = printable(text);
  percent_.reset();
  if (on_terminal_)
    draw();
  else
    line(step_);
}

void report::percent(double done) {
  const int whole = static_cast<int>(std::clamp(done, 0.0, 100.0));
  if (!on_terminal_ || step_.empty() || percent_ == whole)
    return;
  percent_ = whole;
  draw();
}

void report::whole(double done, std::vector<std::string> words) {
  const int percent = static_cast<int>(std::clamp(done, 0.0, 100.0));
  if (!on_terminal_ || step_.empty() || (whole_ == percent && words_ == words))
    return;
  whole_ = percent;
  words_ = std::move(words);
  draw();
}

/// What stands behind the step; of the run as a whole so much that the step has `columns` to
/// itself.
std::string report::numbers(int columns) const {
  const std::string own = percent_ ? "  " + std::to_string(*percent_) + " %" : std::string();
  if (!whole_)
    return own;
  const std::string all = own + "  |  " + std::to_string(*whole_) + " %";
  for (const std::string& words : words_)
    if (const std::string text = all + " of " + words; width_of(text) + columns < columns_())
      return text;
  return width_of(all) + columns < columns_() ? all : own;
}

void report::draw() {
  // The numbers keep their place at the end, whatever is cut.
  const std::string behind = numbers(width_of(step_));
  std::string text = cut_to_width(step_, columns_() - 1 - width_of(behind)) + behind;
  // The last column stays free: a terminal would go to the next line there.
  text = cut_to_width(text, columns_() - 1);
  const int width = width_of(text);
  const int old = std::min(drawn_, columns_() - 1);
  drawn_ = width;
  text.append(static_cast<std::size_t>(std::max(0, old - width)), ' ');
  std::fprintf(out_, "\r%s", text.c_str());
  std::fflush(out_);
}

void report::end_progress() {
  if (drawn_ > 0) {
    std::fputc('\n', out_);
    std::fflush(out_);
  }
  drawn_ = 0;
}

void report::line(const std::string& text) {
  end_progress();
  std::fprintf(out_, "%s\n", text.c_str());
  std::fflush(out_);
}

void report::message(const std::string& text) {
  end_progress();
  const std::string plain = printable(replace_all(text, "\r\n", "\n"));
  std::fprintf(err_, "corvane-author: %s\n", plain.c_str());
  std::fflush(err_);
}

}  // namespace corvane
