// Character sets, as far as the system knows them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// What the converter makes of bytes in a character set.
struct decoded_bytes {
  bool is_known = false;           ///< it has the set; false: nothing can be said
  std::optional<std::size_t> bad;  ///< where the first bytes are that the set does not have
};

/// Decodes bytes in a character set named as iconv names it ("ISO-8859-2", "SHIFT_JIS"), by the
/// same tables that subtitles are read with on either system.
decoded_bytes decode(std::string_view bytes, const std::string& charset);

/// The same bytes as UTF-8. Returns nullopt if the converter does not know the set, or the set does
/// not have the bytes.
std::optional<std::string> in_utf8(std::string_view bytes, const std::string& charset);

/// UTF-8 text in the system's own 8-bit set, for a program that reads its files so: on Windows the
/// ANSI code page that programs have without a say of their own; elsewhere UTF-8. Returns nullopt
/// if that set lacks a character.
std::optional<std::string> in_system_charset(std::string_view text);

}  // namespace corvane
