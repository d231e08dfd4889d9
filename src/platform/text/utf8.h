// UTF-8, read and written in one place.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace corvane {

/// Whether the text is well-formed UTF-8 (RFC 3629: no overlong forms, no surrogates).
bool is_utf8(std::string_view text);

struct utf8_character {
  std::uint32_t code = 0;
  std::size_t length = 0;  ///< bytes, 1 to 4; 0: the text does not begin with a character
};

/// The well-formed character that the text begins with.
utf8_character first_character(std::string_view text);

/// Whether a byte can only stand within a character of several bytes, not at its beginning.
constexpr bool continues_character(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// The first byte and those behind it that continue its character: what an editor takes as one
/// character in a text that need not be well formed. Empty for an empty text only.
std::string_view first_sequence(std::string_view text);

/// At most `count` characters from the text's beginning. In a text that is not well formed, every
/// byte that continues no character counts.
std::string_view first_characters(std::string_view text, std::size_t count);

/// The text with U+FFFD in the place of each byte that belongs to no well-formed character.
std::string repaired_utf8(std::string_view text);

/// Whether a byte is a control character of ASCII: below the blank, or DEL.
constexpr bool is_control_character(char byte) {
  return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F;
}

/// The text of a character from 1 to 0x10FFFF that is no surrogate.
std::string utf8_text(std::uint32_t code);

}  // namespace corvane
