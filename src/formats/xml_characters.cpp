#include "formats/xml_characters.h"

#include "platform/text/utf8.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace corvane {
namespace {

using range = std::pair<std::uint32_t, std::uint32_t>;

constexpr range name_start[] = {
    {':', ':'},       {'A', 'Z'},       {'_', '_'},       {'a', 'z'},
    {0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},    {0x370, 0x37D},
    {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F}, {0x2C00, 0x2FEF},
    {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF}};
constexpr range name_more[] = {
    {'-', '.'}, {'0', '9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};

template <std::size_t count>
bool in_one_of(const range (&ranges)[count], std::uint32_t code) {
  return std::any_of(std::begin(ranges), std::end(ranges),
                     [code](const range& r) { return code >= r.first && code <= r.second; });
}

bool is_allowed(std::uint32_t code) {
  return code == '\t' || code == '\n' || code == '\r' || (code >= 0x20 && code <= 0xD7FF) ||
         (code >= 0xE000 && code <= 0xFFFD) || (code >= 0x10000 && code <= 0x10FFFF);
}

}  // namespace

bool begins_name(std::uint32_t code) {
  return in_one_of(name_start, code);
}

bool continues_name(std::uint32_t code) {
  return begins_name(code) || in_one_of(name_more, code);
}

std::optional<std::uint32_t> character_numbered(std::string_view digits, int base) {
  std::uint32_t code = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), code, base);
  if (error != std::errc() || end != digits.data() + digits.size() || !is_allowed(code))
    return std::nullopt;
  return code;
}

std::size_t first_character_not_allowed(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const utf8_character c = first_character(text.substr(at));
    if (c.length == 0 || !is_allowed(c.code))
      return at;
    at += c.length;
  }
  return std::string_view::npos;
}

}  // namespace corvane
