// Cuts what is printed into lines, however the pieces come.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace corvane {

class line_cutter {
 public:
  /// Of a longer line the beginning is enough.
  static constexpr std::size_t longest_line = 4096;

  /// Calls `take` with each line that the piece ends, without its end: CR or LF. So there is an
  /// empty line between CR and LF.
  template <class Take>
  void feed(std::string_view piece, const Take& take) {
    std::size_t next_cr = piece.find('\r');
    for (std::size_t begin = 0; begin < piece.size();) {
      // Looked for one by one: much faster than a search for either.
      if (next_cr < begin)
        next_cr = piece.find('\r', begin);
      const std::size_t line_end = std::min(piece.find('\n', begin), next_cr);
      const std::string_view part = piece.substr(begin, line_end - begin);
      if (line_end != std::string_view::npos && line_.empty()) {
        take(part.substr(0, longest_line));
      } else {
        line_ += part.substr(0, longest_line - line_.size());
        if (line_end == std::string_view::npos)
          return;
        end(take);
      }
      begin = line_end + 1;
    }
  }

  /// Ends a last line that was left open; calls `take` in any case.
  template <class Take>
  void end(const Take& take) {
    take(std::string_view(line_));
    line_.clear();
  }

 private:
  std::string line_;
};

}  // namespace corvane
