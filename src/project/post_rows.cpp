#include "project/post_rows.h"

#include "formats/text.h"
#include "platform/text/utf8.h"

namespace corvane {

std::string post_row(std::string_view command) {
  return padded(command, post_width);
}

std::string post_command_of(std::string_view row) {
  return std::string(trim(row));
}

std::string padded(std::string_view text, std::size_t width) {
  std::size_t end = 0, characters = 0;
  for (; end < text.size() && characters < width; ++characters) {
    ++end;
    while (end < text.size() && continues_character(text[end]))
      ++end;
  }
  return std::string(text.substr(0, end)) + std::string(width - characters, ' ');
}

}  // namespace corvane
