#include "tools/visual_chapters.h"

#include "formats/text.h"
#include "platform/text/utf8.h"
#include "project/messages.h"

#include <cstddef>

namespace corvane {

vchapters::vchapters(document& doc, chapter& dialog) : dialog_(&dialog) {
  say(doc, icon::information,
      "This visual editor uses the same method that Windows Media Player uses to determine time.  "
      "If WMP reports time incorrectly, then this visual editor will not be accurate.");
  constexpr std::size_t too_short = 3;  // in characters, of one or more bytes each
  for (std::string& line : chapter_lines(dialog.RichTextBox1()))
    if (first_characters(line, too_short).size() < line.size())
      List1_.push_back(std::move(line));
}

void vchapters::select(int row) {
  if (row >= 0 && row < static_cast<int>(List1_.size()))
    selected_ = row;
}

void vchapters::add(double seconds) {
  List1_.push_back(chapter_time(seconds));
}

std::optional<double> vchapters::position_of(int row) const {
  if (row < 0 || row >= static_cast<int>(List1_.size()))
    return std::nullopt;
  return chapter_seconds(List1_[static_cast<std::size_t>(row)]);
}

bool vchapters::left_out(int row) const {
  const std::optional<double> seconds = position_of(row);
  if (!seconds)
    return false;
  for (int before = 0; before < row; ++before)
    if (const auto earlier_row = position_of(before); earlier_row && *earlier_row > *seconds)
      return true;
  return false;
}

void vchapters::remove() {
  if (selected_ <= 0)
    return;
  List1_.erase(List1_.begin() + selected_);
  selected_ = -1;
}

std::string vchapters::text() const {
  std::string text;
  for (const std::string& row : List1_)
    text += row + std::string(crlf);
  return text;
}

void vchapters::accept() {
  dialog_->set_text(text());
}

}  // namespace corvane
