// The characters that a font file has signs for, as its table of characters ("cmap") tells.
//
// Of the Basic Multilingual Plane alone: spumux draws no others. A file may hold anything: the time
// taken grows with its length alone.
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace corvane {

class font_characters {
 public:
  /// Unicode; false for all beyond U+FFFF.
  bool holds(std::uint32_t character) const {
    return character < all_.size() && all_[static_cast<std::size_t>(character)];
  }
  std::size_t count() const { return all_.count(); }

  /// `character` is below 0x10000.
  void add(std::uint32_t character) { all_.set(static_cast<std::size_t>(character)); }

 private:
  std::bitset<0x10000> all_;
};

/// Of a TrueType or OpenType font, or of the first one in a collection, by the table that FreeType
/// takes. `file` is the whole file. Returns nullopt if it is no such font, has no table of Unicode
/// characters in one of the formats 0, 4, 6, 10, 12 and 13, or that table is damaged.
std::optional<font_characters> read_font_characters(std::span<const std::uint8_t> file);

}  // namespace corvane
