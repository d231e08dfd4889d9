#include "formats/font_characters.h"

#include "formats/font_tag.h"
#include "formats/table_bytes.h"

#include <algorithm>

namespace corvane {
namespace {

using found_characters = std::optional<font_characters>;

constexpr std::uint32_t last_of_plane = 0xFFFF;

/// Characters that the segments of a table may name, those named twice included.
constexpr std::uint64_t most_named = std::uint64_t{4} * 0x10000;

/// From `at` to the end.
table_bytes rest_of(const table_bytes& bytes, std::uint64_t at) {
  return table_bytes(
      bytes.all().subspan(static_cast<std::size_t>(std::min<std::uint64_t>(at, bytes.size()))));
}

std::optional<table_bytes> table_of(const table_bytes& file, std::uint64_t font,
                                    std::uint32_t name) {
  const std::uint64_t tables = file.u16(font + 4);
  for (std::uint64_t i = 0; i < tables; ++i) {
    const std::uint64_t entry = font + 12 + 16 * i;
    if (file.u32(entry) != name)
      continue;
    const std::uint64_t at = file.u32(entry + 8), size = file.u32(entry + 12);
    if (!file.holds(at, size))
      return std::nullopt;
    return table_bytes(
        file.all().subspan(static_cast<std::size_t>(at), static_cast<std::size_t>(size)));
  }
  return std::nullopt;
}

/// The part of "cmap" that FreeType takes, to the end of the table: the last one of all Unicode, or
/// else the last one of its first plane.
std::optional<table_bytes> unicode_part(const table_bytes& cmap) {
  constexpr int unicode = 0, iso = 2, windows = 3;
  constexpr int variants_format = 14;
  std::optional<std::uint64_t> all, plane;
  const std::uint64_t count = cmap.u16(2);
  for (std::uint64_t i = 0; i < count; ++i) {
    const std::uint64_t record = 4 + 8 * i;
    const int platform = cmap.u16(record), encoding = cmap.u16(record + 2);
    const std::uint64_t at = cmap.u32(record + 4);
    if (!cmap.holds(record, 8) || !cmap.holds(at, 2) || cmap.u16(at) == variants_format)
      continue;
    if ((platform == windows && encoding == 10) || (platform == unicode && encoding == 4))
      all = at;
    else if (platform == unicode || (platform == iso && encoding == 1) ||
             (platform == windows && encoding == 1))
      plane = at;
  }
  if (!all && !plane)
    return std::nullopt;
  return rest_of(cmap, all ? *all : *plane);
}

// Formats; nullopt for a table that is damaged ----------------------------------------------------

/// A byte for each of 256.
found_characters read_bytes(const table_bytes& part) {
  constexpr std::uint64_t at = 6;
  if (!part.holds(at, 256))
    return std::nullopt;
  font_characters found;
  for (std::uint32_t c = 0; c < 256; ++c)
    if (part.u8(at + c) != 0)
      found.add(c);
  return found;
}

/// Numbers of glyphs, from a first character on.
found_characters read_array(const table_bytes& part, std::uint64_t at, std::uint64_t first,
                            std::uint64_t count) {
  if (!part.holds(at, 2 * count))
    return std::nullopt;
  font_characters found;
  for (std::uint64_t i = 0; i < count && first + i <= last_of_plane; ++i)
    if (part.u16(at + 2 * i) != 0)
      found.add(static_cast<std::uint32_t>(first + i));
  return found;
}

/// A segment of format 4: neighbours whose glyphs are neighbours too, or stand in an array.
struct cmap_segment {
  std::uint32_t first = 0, last = 0, delta = 0, offset = 0;
  std::uint64_t offset_at = 0;  // what `offset` counts from
};

std::uint32_t glyph_of(const table_bytes& part, const cmap_segment& s, std::uint32_t character) {
  constexpr std::uint32_t none = 0xFFFF;  // some fonts end with such a segment
  if (s.offset == none)
    return 0;
  if (s.offset == 0)
    return (character + s.delta) & 0xFFFF;
  const std::uint32_t glyph =
      part.u16(s.offset_at + s.offset + std::uint64_t{2} * (character - s.first));
  return glyph == 0 ? 0 : (glyph + s.delta) & 0xFFFF;
}

found_characters read_segments(const table_bytes& part) {
  const std::uint64_t count = part.u16(6) / 2, size = 2 * count;
  const std::uint64_t lasts = 14, firsts = lasts + size + 2;
  if (!part.holds(lasts, 4 * size + 2))
    return std::nullopt;
  font_characters found;
  std::uint64_t named = 0;
  for (std::uint64_t i = 0; i < count; ++i) {
    const std::uint64_t at = firsts + 2 * i;
    const cmap_segment s{part.u16(at), part.u16(lasts + 2 * i), part.u16(at + size),
                         part.u16(at + 2 * size), at + 2 * size};
    if (s.first > s.last || (named += s.last - s.first + 1) > most_named)
      return std::nullopt;
    for (std::uint32_t c = s.first; c <= s.last; ++c)
      if (glyph_of(part, s, c) != 0)
        found.add(c);
  }
  return found;
}

/// Groups in the order of their characters. `one_glyph`: all of a group have the same.
found_characters read_groups(const table_bytes& part, bool one_glyph) {
  constexpr std::uint64_t begin = 16, size = 12;
  const std::uint64_t count = part.u32(12);
  if (!part.holds(begin, count * size))
    return std::nullopt;
  font_characters found;
  std::uint64_t next = 0;
  for (std::uint64_t i = 0; i < count; ++i) {
    const std::uint64_t at = begin + i * size;
    const std::uint32_t first = part.u32(at), last = part.u32(at + 4), glyph = part.u32(at + 8);
    if (first < next || last < first)
      return std::nullopt;
    next = std::uint64_t{last} + 1;
    for (std::uint32_t c = first; c <= std::min(last, last_of_plane); ++c)
      if (glyph + (one_glyph ? 0 : c - first) != 0)
        found.add(c);
  }
  return found;
}

}  // namespace

std::optional<font_characters> read_font_characters(std::span<const std::uint8_t> file) {
  const table_bytes bytes(file);
  const std::uint64_t font = bytes.u32(0) == font_tag("ttcf") ? bytes.u32(12) : 0;
  const std::uint32_t kind = bytes.u32(font);
  if (kind != 0x00010000 && kind != font_tag("OTTO") && kind != font_tag("true"))
    return std::nullopt;
  const auto cmap = table_of(bytes, font, font_tag("cmap"));
  const auto part = cmap ? unicode_part(*cmap) : std::nullopt;
  if (!part)
    return std::nullopt;
  switch (part->u16(0)) {
    case 0:
      return read_bytes(*part);
    case 4:
      return read_segments(*part);
    case 6:
      return read_array(*part, 10, part->u16(6), part->u16(8));
    case 10:
      return read_array(*part, 20, part->u32(12), part->u32(16));
    case 12:
      return read_groups(*part, false);
    case 13:
      return read_groups(*part, true);
    default:
      return std::nullopt;
  }
}

}  // namespace corvane
