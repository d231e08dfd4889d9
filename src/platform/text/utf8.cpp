#include "platform/text/utf8.h"

#include <cstddef>
#include <cstdint>

namespace corvane {
namespace {

/// Length of the sequence that a lead byte opens; 0 when it opens none.
std::size_t sequence_length(unsigned char lead) {
  if (lead < 0x80)
    return 1;
  if (lead >= 0xC2 && lead <= 0xDF)
    return 2;
  if (lead >= 0xE0 && lead <= 0xEF)
    return 3;
  if (lead >= 0xF0 && lead <= 0xF4)
    return 4;
  return 0;
}

bool in_range(std::size_t length, std::uint32_t code) {
  if (length == 3)
    return code >= 0x800 && (code < 0xD800 || code > 0xDFFF);
  if (length == 4)
    return code >= 0x10000 && code <= 0x10FFFF;
  return true;
}

}  // namespace

bool is_utf8(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i]);
    const std::size_t length = sequence_length(lead);
    if (length == 0 || text.size() - i < length)
      return false;
    std::uint32_t code = length == 1 ? lead : lead & (0x7Fu >> length);
    for (std::size_t k = 1; k < length; ++k) {
      const auto next = static_cast<unsigned char>(text[i + k]);
      if ((next & 0xC0) != 0x80)
        return false;
      code = (code << 6) | (next & 0x3F);
    }
    if (!in_range(length, code))
      return false;
    i += length;
  }
  return true;
}

}  // namespace corvane
