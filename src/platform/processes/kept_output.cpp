#include "platform/processes/kept_output.h"

#include <algorithm>

namespace corvane {

void kept_output::add(std::string_view piece) {
  const std::size_t room = std::min(piece.size(), first - beginning_.size());
  beginning_ += piece.substr(0, room);
  end_ += piece.substr(room);
  // Cut only now and then: each cut moves what stays.
  if (end_.size() <= 2 * last)
    return;
  end_.erase(0, end_.size() - last);
  is_cut_ = true;
}

std::string kept_output::text() const {
  if (!is_cut_ && end_.size() <= last)
    return beginning_ + end_;
  const std::string_view end = std::string_view(end_).substr(end_.size() - last);
  const std::size_t line = end.find_first_of("\r\n");
  return beginning_ + "\n" + std::string(line == std::string_view::npos ? "" : end.substr(line));
}

}  // namespace corvane
