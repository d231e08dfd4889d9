// Character sets, as far as the system knows them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// What the system's converter makes of bytes in a character set.
struct decoded_bytes {
  bool is_known = false;           ///< the system has the set; false: nothing can be said
  std::optional<std::size_t> bad;  ///< where the first bytes are that the set does not have
};

/// Decodes bytes in a character set named as iconv names it ("ISO-8859-2", "SHIFT_JIS"). On Windows
/// no set is known: its converter has other tables than the one that subtitles are read with.
decoded_bytes decode(std::string_view bytes, const std::string& charset);

}  // namespace corvane
