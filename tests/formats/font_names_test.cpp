#include "formats/font_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using std::string_literals::operator""s;

std::string u16(std::uint32_t number) {
  return {static_cast<char>(number >> 8), static_cast<char>(number)};
}

std::string u32(std::uint32_t number) {
  return u16(number >> 16) + u16(number & 0xFFFF);
}

struct name_record {
  std::uint32_t platform, kind;
  std::string text;
};

/// A font of nothing but names. `at`: where in the file it stands.
std::string font(const std::vector<name_record>& records, std::uint32_t at = 0) {
  std::string entries;
  std::string texts;
  for (const name_record& one : records) {
    entries += u16(one.platform) + u16(1) + u16(0x409) + u16(one.kind) +
               u16(static_cast<std::uint32_t>(one.text.size())) +
               u16(static_cast<std::uint32_t>(texts.size()));
    texts += one.text;
  }
  const std::string names = u16(0) + u16(static_cast<std::uint32_t>(records.size())) +
                            u16(static_cast<std::uint32_t>(6 + entries.size())) + entries + texts;
  return u32(0x00010000) + u16(2) + std::string(6, '\0') + "glyf" + u32(0) + u32(0) + u32(0) +
         "name" + u32(0) + u32(at + 44) + u32(static_cast<std::uint32_t>(names.size())) + names;
}

const std::string arial = "\0A\0r\0i\0a\0l"s;

TEST(FontNames, AreFamiliesAndFullNamesInAllLanguages) {
  EXPECT_THAT(font_names(font({{3, 1, arial},
                               {3, 2, "\0B"s},
                               {1, 4, "Arial Bold"},
                               {3, 16, "\x5B\x8B\xD8\x3D\xDE\x00"s},
                               {0, 1, "\xD8\x3D\0x\0\0"s}})),
              ElementsAre("Arial", "Arial Bold", "宋😀", "?x?"));
}

TEST(FontNames, OfACollectionAreThoseOfAllItsFonts) {
  const std::string one = font({{3, 1, arial}}, 20);
  const std::string two = font({{1, 1, "Other"}}, static_cast<std::uint32_t>(20 + one.size()));
  EXPECT_THAT(font_names("ttcf" + u32(0x00010000) + u32(2) + u32(20) +
                         u32(static_cast<std::uint32_t>(20 + one.size())) + one + two),
              ElementsAre("Arial", "Other"));
}

TEST(FontNames, OfWhatIsNoFontOrIsCutOffAreNone) {
  EXPECT_THAT(font_names(""), IsEmpty());
  EXPECT_THAT(font_names("%!PS-AdobeFont-1.0"), IsEmpty());
  const std::string whole = font({{1, 1, "Arial"}});
  for (std::size_t size = 0; size < whole.size(); ++size)
    EXPECT_THAT(font_names(whole.substr(0, size)), IsEmpty()) << size;
  EXPECT_THAT(font_names(whole), ElementsAre("Arial"));
}

TEST(FontNames, OfAFontThatLiesAreFew) {
  std::string lies = font({{1, 1, "Arial"}});
  lies.replace(46, 2, "\xFF\xFF");
  for (int i = 0; i < 65535; ++i)
    lies += u16(1) + u16(1) + u16(1) + u16(1) + u16(500) + u16(0);
  EXPECT_LE(font_names(lies).size(), 400u);
  EXPECT_LE(font_names("ttcf" + u32(0) + u32(0xFFFFFFFF) + lies).size(), 400u);
}

TEST(FontNames, AreComparedWithoutBlanksAndCase) {
  EXPECT_TRUE(is_font_name("dejavu sans", {"x", "DejaVuSans"}));
  EXPECT_FALSE(is_font_name("DejaVu", {"DejaVu Sans"}));
  EXPECT_FALSE(is_font_name("DejaVu", {}));
}

}  // namespace
}  // namespace corvane
