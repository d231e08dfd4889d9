// Which characters XML 1.0 allows, and which make a name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace corvane {

struct xml_character {
  std::uint32_t code;
  std::size_t length;  ///< bytes
};

/// The character at a byte; what is not UTF-8 there, or the end, is code 0 of one byte.
xml_character character_at(std::string_view text, std::size_t at);

bool begins_name(std::uint32_t code);
bool continues_name(std::uint32_t code);

/// Whether digits are the number of a character that XML allows.
bool is_allowed_number(std::string_view digits, int base);

/// The first byte that is not UTF-8, or begins a character that XML does not allow; npos: none.
std::size_t first_character_not_allowed(std::string_view text);

}  // namespace corvane
