#include "platform/files/long_paths.h"

#include "platform/text/utf8.h"

namespace corvane {

std::size_t windows_length(std::string_view text) {
  std::size_t length = 0;
  for (const char c : text)
    if (!continues_character(c))
      length += static_cast<unsigned char>(c) >= 0xF0 ? 2 : 1;
  return length;
}

}  // namespace corvane
