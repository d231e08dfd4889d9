// Which characters XML 1.0 allows, and which make a name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace corvane {

bool begins_name(std::uint32_t code);
bool continues_name(std::uint32_t code);

/// The character whose number the digits are; nullopt: they are not that of one that XML allows.
std::optional<std::uint32_t> character_numbered(std::string_view digits, int base);

/// The first byte that is not UTF-8, or begins a character that XML does not allow; npos: none.
std::size_t first_character_not_allowed(std::string_view text);

}  // namespace corvane
