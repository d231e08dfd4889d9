#include "platform/text/utf8.h"

#include <algorithm>

namespace corvane {
namespace {

/// Length of the sequence that a lead byte beyond ASCII opens; 0 when it opens none.
std::size_t sequence_length(unsigned char lead) {
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
  while (!text.empty()) {
    const std::size_t length = first_character(text).length;
    if (length == 0)
      return false;
    text.remove_prefix(length);
  }
  return true;
}

utf8_character first_character(std::string_view text) {
  if (text.empty())
    return {};
  const auto lead = static_cast<unsigned char>(text[0]);
  if (lead < 0x80)
    return {lead, 1};
  const std::size_t length = sequence_length(lead);
  if (length == 0 || text.size() < length)
    return {};
  std::uint32_t code = lead & (0x7Fu >> length);
  for (const char c : text.substr(1, length - 1)) {
    if (!continues_character(c))
      return {};
    code = (code << 6) | (static_cast<unsigned char>(c) & 0x3Fu);
  }
  if (!in_range(length, code))
    return {};
  return {code, length};
}

std::string_view first_sequence(std::string_view text) {
  std::size_t end = text.empty() ? 0 : 1;
  while (end < text.size() && continues_character(text[end]))
    ++end;
  return text.substr(0, end);
}

std::string_view first_characters(std::string_view text, std::size_t count) {
  std::size_t end = 0;
  for (; end < text.size(); ++end)
    if (!continues_character(text[end]) && count-- == 0)
      break;
  return text.substr(0, end);
}

std::string repaired_utf8(std::string_view text) {
  std::string whole;
  whole.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = first_character(text).length;
    if (length == 0)
      whole += "\xEF\xBF\xBD";
    else
      whole += text.substr(0, length);
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return whole;
}

std::string utf8_text(std::uint32_t code) {
  const auto byte = [](std::uint32_t b) { return static_cast<char>(b); };
  const auto next = [code, byte](unsigned shift) { return byte(0x80 | (code >> shift & 0x3F)); };
  if (code < 0x80)
    return {byte(code)};
  if (code < 0x800)
    return {byte(0xC0 | code >> 6), next(0)};
  if (code < 0x10000)
    return {byte(0xE0 | code >> 12), next(6), next(0)};
  return {byte(0xF0 | code >> 18), next(12), next(6), next(0)};
}

}  // namespace corvane
