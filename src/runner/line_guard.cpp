#include "runner/line_guard.h"

#include "runner/output_lines.h"

#include <algorithm>
#include <cstddef>

namespace corvane {
namespace {

enum class line_kind { undecided, plain, starred };

/// Of a line's beginning, as far as it is known.
line_kind kind_of(std::string_view beginning) {
  if (beginning.starts_with(' '))
    beginning.remove_prefix(1);
  if (beginning.starts_with(starred_error))
    return line_kind::plain;
  if (starred_error.starts_with(beginning))
    return line_kind::undecided;
  return beginning[0] == '*' ? line_kind::starred : line_kind::plain;
}

/// So much of a line is always enough to decide.
constexpr std::size_t deciding_length = starred_error.size() + 1;

}  // namespace

std::string_view line_guard::operator()(std::string_view piece) {
  passed_.clear();
  std::size_t copied = 0;  // of the piece, what passed_ holds already
  std::size_t next_cr = piece.find('\r');
  for (std::size_t at = 0; at < piece.size();) {
    if (at_line_start_) {
      const std::string_view known = piece.substr(at, deciding_length);
      const line_kind kind = held_.empty() ? kind_of(known) : kind_of(held_ + std::string(known));
      if (kind == line_kind::undecided) {
        held_ += known;
        piece.remove_suffix(piece.size() - at);
        break;
      }
      if (kind == line_kind::starred || !held_.empty()) {
        passed_ += piece.substr(copied, at - copied);
        copied = at;
      }
      if (kind == line_kind::starred)
        passed_ += tools_mark;
      passed_ += held_;
      held_.clear();
      at_line_start_ = false;
    }
    // Looked for one by one: much faster than a search for either.
    if (next_cr < at)
      next_cr = piece.find('\r', at);
    const std::size_t end = std::min(piece.find('\n', at), next_cr);
    if (end == std::string_view::npos)
      break;
    at_line_start_ = true;
    at = end + 1;
  }
  if (copied == 0 && passed_.empty())
    return piece;
  return passed_ += piece.substr(copied);
}

std::string_view line_guard::rest() {
  passed_.clear();
  if (held_.empty())
    return passed_;
  if (held_.find('*') != std::string::npos)
    passed_ += tools_mark;
  passed_ += held_;
  held_.clear();
  at_line_start_ = false;
  return passed_;
}

}  // namespace corvane
