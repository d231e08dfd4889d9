#include "platform/files/long_paths.h"

namespace corvane {

std::size_t windows_length(std::string_view text) {
  std::size_t length = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xC0) != 0x80)
      length += byte >= 0xF0 ? 2 : 1;
  }
  return length;
}

}  // namespace corvane
