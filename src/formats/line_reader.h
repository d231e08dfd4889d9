// A text line by line, for readers that name the line that is wrong.
#pragma once

#include <optional>
#include <string_view>

namespace corvane {

class line_reader {
 public:
  explicit line_reader(std::string_view text) : rest_(text) {}

  /// The next line without its line end (CR LF or LF; the last may have none), or nothing at the
  /// end of the text.
  std::optional<std::string_view> next() {
    if (rest_.empty())
      return std::nullopt;
    ++number_;
    const auto end = rest_.find('\n');
    std::string_view line = rest_.substr(0, end);
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
    if (line.ends_with('\r'))
      line.remove_suffix(1);
    return line;
  }

  /// 1-based number of the line that `next` gave last; 0 before the first.
  int number() const { return number_; }

 private:
  std::string_view rest_;
  int number_ = 0;
};

}  // namespace corvane
