#include "formats/font_characters.h"

#include "formats/arabic_forms.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string be16(std::uint32_t number) {
  return {static_cast<char>(number >> 8), static_cast<char>(number)};
}

std::string be32(std::uint32_t number) {
  return be16(number >> 16) + be16(number & 0xFFFF);
}

std::uint32_t size_of(const std::string& bytes) {
  return static_cast<std::uint32_t>(bytes.size());
}

struct cmap_part {
  std::uint32_t platform, encoding;
  std::string bytes;
};

std::string cmap_of(const std::vector<cmap_part>& parts) {
  std::string records, all;
  const std::uint32_t begin = 4 + 8 * static_cast<std::uint32_t>(parts.size());
  for (const cmap_part& one : parts) {
    records += be16(one.platform) + be16(one.encoding) + be32(begin + size_of(all));
    all += one.bytes;
  }
  return be16(0) + be16(static_cast<std::uint32_t>(parts.size())) + records + all;
}

/// A font of nothing but its characters. `at`: where in the file it stands.
std::string font_with(const std::vector<cmap_part>& parts, std::uint32_t at = 0) {
  const std::string cmap = cmap_of(parts);
  return be32(0x00010000) + be16(2) + std::string(6, '\0') + "OS/2" + be32(0) + be32(0) + be32(0) +
         "cmap" + be32(0) + be32(at + 44) + be32(size_of(cmap)) + cmap;
}

/// Format 4: of each segment its first and last character, the delta and the offset; then glyphs.
struct made_segment {
  std::uint32_t first, last, delta, offset;
};

std::string segments(const std::vector<made_segment>& all,
                     const std::vector<std::uint32_t>& glyphs = {}) {
  std::string lasts, firsts, deltas, offsets, array;
  for (const made_segment& one : all) {
    firsts += be16(one.first);
    lasts += be16(one.last);
    deltas += be16(one.delta);
    offsets += be16(one.offset);
  }
  for (const std::uint32_t glyph : glyphs)
    array += be16(glyph);
  const std::string rest = lasts + be16(0) + firsts + deltas + offsets + array;
  return be16(4) + be16(14 + size_of(rest)) + be16(0) +
         be16(2 * static_cast<std::uint32_t>(all.size())) + be16(0) + be16(0) + be16(0) + rest;
}

struct made_group {
  std::uint32_t first, last, glyph;
};

std::string groups(std::uint32_t format, const std::vector<made_group>& all) {
  std::string bytes =
      be16(format) + be16(0) + be32(0) + be32(0) + be32(static_cast<std::uint32_t>(all.size()));
  for (const made_group& one : all)
    bytes += be32(one.first) + be32(one.last) + be32(one.glyph);
  return bytes;
}

std::optional<font_characters> characters_of(std::string_view file) {
  return read_font_characters({reinterpret_cast<const std::uint8_t*>(file.data()), file.size()});
}

/// The characters of a table that is the font's only one; 0 alone if it is none.
std::vector<std::uint32_t> held_by(const std::string& file) {
  const auto found = characters_of(file);
  if (!found)
    return {0};
  std::vector<std::uint32_t> held;
  for (std::uint32_t c = 0; c <= 0x20000; ++c)
    if (found->holds(c))
      held.push_back(c);
  EXPECT_EQ(held.size(), found->count());
  return held;
}

std::vector<std::uint32_t> held_by_part(const std::string& bytes) {
  return held_by(font_with({{3, 1, bytes}}));
}

TEST(FontCharacters, OfBytesAreThoseWithAGlyph) {
  std::string glyphs(256, '\0');
  glyphs['A'] = 7;
  glyphs[0xFF] = 1;
  EXPECT_THAT(held_by_part(be16(0) + be16(262) + be16(0) + glyphs), ElementsAre('A', 0xFF));
}

TEST(FontCharacters, OfSegmentsAreThoseWithAGlyph) {
  EXPECT_THAT(held_by_part(segments({{'A', 'C', 0x10000 - 'A' + 5, 0}, {0xFFFF, 0xFFFF, 1, 0}})),
              ElementsAre('A', 'B', 'C'));
  EXPECT_THAT(held_by_part(segments({{'A', 'C', 0x10000 - 'B', 0}, {0xFFFF, 0xFFFF, 1, 0}})),
              ElementsAre('A', 'C'))
      << "B has the glyph 0";
  EXPECT_THAT(
      held_by_part(segments({{'A', 'D', 0, 4}, {0x410, 0x411, 0xFFFE, 10}}, {3, 0, 4, 5, 2, 1})),
      ElementsAre('A', 'C', 'D', 0x411))
      << "by the array; the delta makes the glyph 2 none";
  EXPECT_THAT(held_by_part(segments({{'A', 'A', 1, 0}, {0xFFFF, 0xFFFF, 1, 0xFFFF}})),
              ElementsAre('A'))
      << "an end that some fonts have";
}

TEST(FontCharacters, OfAnArrayAreThoseWithAGlyph) {
  EXPECT_THAT(held_by_part(be16(6) + be16(16) + be16(0) + be16(0x3B1) + be16(3) + be16(9) +
                           be16(0) + be16(8)),
              ElementsAre(0x3B1, 0x3B3));
  EXPECT_THAT(held_by_part(be16(10) + be16(0) + be32(26) + be32(0) + be32(0xFFFE) + be32(3) +
                           be16(1) + be16(1) + be16(1)),
              ElementsAre(0xFFFE, 0xFFFF))
      << "those of the first plane";
}

TEST(FontCharacters, OfGroupsAreThoseWithAGlyph) {
  EXPECT_THAT(held_by_part(groups(12, {{'A', 'B', 0}, {0x416, 0x417, 3}, {0xFFFF, 0x10001, 9}})),
              ElementsAre('B', 0x416, 0x417, 0xFFFF));
  EXPECT_THAT(held_by_part(groups(13, {{'A', 'B', 0}, {0x416, 0x417, 3}})),
              ElementsAre(0x416, 0x417));
}

TEST(FontCharacters, AreThoseOfTheTableThatFreeTypeTakes) {
  const auto one = [](std::uint32_t c) { return segments({{c, c, 1, 0}}); };
  EXPECT_THAT(held_by(font_with({{0, 3, one('A')}, {1, 0, one('B')}, {3, 1, one('C')}})),
              ElementsAre('C'));
  EXPECT_THAT(held_by(font_with({{0, 4, one('A')}, {3, 1, one('C')}})), ElementsAre('A'));
  EXPECT_THAT(held_by(font_with({{0, 3, one('A')}, {0, 5, be16(14) + one('B')}, {3, 0, one('C')}})),
              ElementsAre('A'));
}

TEST(FontCharacters, OfACollectionAreThoseOfItsFirstFont) {
  const std::string first = font_with({{3, 1, segments({{'A', 'A', 1, 0}})}}, 20);
  const std::string second = font_with({{3, 1, segments({{'B', 'B', 1, 0}})}}, 20 + size_of(first));
  EXPECT_THAT(held_by("ttcf" + be32(0x00010000) + be32(2) + be32(20) + be32(20 + size_of(first)) +
                      first + second),
              ElementsAre('A'));
}

TEST(FontCharacters, OfAFontWithoutThemAreNotKnown) {
  EXPECT_FALSE(characters_of(""));
  EXPECT_FALSE(characters_of("%!PS-AdobeFont-1.0"));
  EXPECT_FALSE(characters_of(font_with({})));
  EXPECT_FALSE(characters_of(font_with({{3, 0, segments({{'A', 'A', 1, 0}})}}))) << "symbols";
  EXPECT_FALSE(characters_of(font_with({{1, 0, segments({{'A', 'A', 1, 0}})}}))) << "MacRoman";
  EXPECT_FALSE(characters_of(font_with({{3, 1, be16(2) + std::string(600, '\0')}})))
      << "a format of other character sets";
  EXPECT_THAT(held_by_part(segments({})), IsEmpty()) << "but an empty table is one";
}

// What is cut off must not pass for a font that lacks its characters.
TEST(FontCharacters, OfAFontThatIsCutOffAreNotKnown) {
  for (const std::string& part :
       {be16(0) + be16(262) + be16(0) + std::string(256, '\1'),
        segments({{'A', 'D', 0, 4}, {0xFFFF, 0xFFFF, 1, 0}}, {3, 1, 4, 5}),
        be16(6) + be16(16) + be16(0) + be16(0x3B1) + be16(3) + be16(9) + be16(7) + be16(8),
        groups(12, {{'A', 'B', 1}, {0x416, 0x417, 3}})}) {
    const std::string whole = font_with({{3, 1, part}});
    EXPECT_TRUE(characters_of(whole));
    for (std::size_t size = 0; size < whole.size(); ++size)
      EXPECT_FALSE(characters_of(std::string_view(whole).substr(0, size))) << size;
  }
}

TEST(FontCharacters, OfATableThatIsDamagedAreNotKnown) {
  EXPECT_FALSE(characters_of(font_with({{3, 1, segments({{'B', 'A', 1, 0}})}})));
  EXPECT_FALSE(characters_of(font_with({{3, 10, groups(12, {{'B', 'C', 1}, {'A', 'A', 1}})}})));
  EXPECT_FALSE(characters_of(font_with({{3, 10, groups(12, {{'B', 'A', 1}})}})));
  EXPECT_FALSE(characters_of(
      font_with({{3, 1, be16(6) + be16(16) + be16(0) + be16(0x3B1) + be16(3) + be16(9)}})))
      << "an array that goes on behind the end";
  EXPECT_FALSE(characters_of(
      font_with({{3, 1, segments({{'A', 'A', 1, 0}, {0xFFFF, 0xFFFF, 1, 0}}).substr(0, 28)}})));
  EXPECT_FALSE(characters_of(
      font_with({{3, 10, be16(12) + be16(0) + be32(0) + be32(0) + be32(0xFFFFFFFF)}})));
}

TEST(FontCharacters, OfAFontThatLiesTakeNoTime) {
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_FALSE(characters_of(
      font_with({{3, 1, segments(std::vector<made_segment>(0x3FFF, {0, 0xFFFE, 1, 4}))}})));
  EXPECT_FALSE(characters_of(
      font_with({{3, 10, groups(12, std::vector<made_group>(100'000, {0, 0xFFFFFFFF, 1}))}})));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
}

TEST(ArabicForms, OfALetterAreInUnicodesBlocks) {
  EXPECT_EQ(isolated_form(0x628), 0xFE8Fu);
  EXPECT_EQ(isolated_form(0x622), 0xFE81u) << "the first";
  EXPECT_EQ(isolated_form(0x6D3), 0xFBB0u) << "the last";
  EXPECT_EQ(isolated_form(0x621), 0x621u) << "joins nothing";
  EXPECT_EQ(isolated_form('A'), std::uint32_t{'A'});
  EXPECT_EQ(isolated_form(0x10000), 0x10000u);
}

}  // namespace
}  // namespace corvane
