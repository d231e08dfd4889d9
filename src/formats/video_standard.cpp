#include "formats/video_standard.h"

#include <cstddef>

namespace corvane {

std::string video_standard_of(std::string_view stream_start) {
  constexpr std::string_view sequence_header("\0\0\1\xB3", 4);
  const std::size_t at = stream_start.find(sequence_header);
  if (at == std::string_view::npos || at + 7 > stream_start.size())
    return {};
  // Twelve bits of width, twelve of height.
  const auto byte = [&](std::size_t i) {
    return static_cast<unsigned>(static_cast<unsigned char>(stream_start[at + i]));
  };
  switch ((byte(5) & 15) << 8 | byte(6)) {
    case 576:
    case 288:
      return "PAL";
    case 480:
    case 240:
      return "NTSC";
    default:
      return {};
  }
}

}  // namespace corvane
