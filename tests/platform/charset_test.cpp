// The converter is another one on Windows; what it says must be the same.
#include "platform/text/charset.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvane {
namespace {

struct set_size {
  const char* name;
  int bytes;  ///< that are a character by themselves
  int pairs;  ///< of bytes that are one together
};

// The sets that the subtitle dialog offers.
const std::vector<set_size> sets = {
    {"ISO-8859-1", 256, 0},   {"ISO-8859-2", 256, 0},    {"ISO-8859-3", 249, 0},
    {"ISO-8859-5", 256, 0},   {"ISO-8859-6", 211, 0},    {"ISO-8859-7", 253, 0},
    {"ISO-8859-8", 220, 0},   {"ISO-8859-9", 256, 0},    {"ISO-8859-10", 256, 0},
    {"ISO-8859-13", 256, 0},  {"ISO-8859-15", 256, 0},   {"KOI8-R", 256, 0},
    {"SHIFT_JIS", 191, 6879}, {"ISO-2022-JP", 127, 0},   {"EUC-JP", 158, 6942},
    {"CP1250", 251, 0},       {"CP1251", 255, 0},        {"CP1252", 251, 0},
    {"CP1254", 249, 0},       {"CP850", 256, 0},         {"MACINTOSH", 256, 0},
    {"BIG5", 129, 13911},     {"BIG5-HKSCS", 129, 18463}};

bool is_good(const std::string& bytes, const std::string& charset) {
  const decoded_bytes d = decode(bytes, charset);
  EXPECT_TRUE(d.is_known) << charset;
  return !d.bad;
}

std::string byte(int number) {
  return std::string(1, static_cast<char>(number));
}

TEST(Charset, EachOfThe23HasItsCharactersAndNoOthers) {
  EXPECT_EQ(sets.size(), 23u);
  for (const set_size& set : sets) {
    int bytes = 0, pairs = 0;
    for (int first = 0; first < 256; ++first) {
      if (is_good(byte(first), set.name)) {
        ++bytes;
        continue;
      }
      for (int second = 0; second < 256; ++second)
        pairs += is_good(byte(first) + byte(second), set.name) ? 1 : 0;
    }
    EXPECT_EQ(bytes, set.bytes) << set.name;
    EXPECT_EQ(pairs, set.pairs) << set.name;
  }
}

TEST(Charset, TellsWhereTheFirstBadBytesAre) {
  EXPECT_EQ(decode("Caf\xE9!", "UTF-8").bad, 3u);
  EXPECT_EQ(decode("good\nbad \xD2", "ISO-8859-7").bad, 9u);
  EXPECT_EQ(decode("\x82\xB1\x82", "SHIFT_JIS").bad, 2u) << "half a character at the end";
  EXPECT_EQ(decode("\x1B$B$3\xB3", "ISO-2022-JP").bad, 5u);
  EXPECT_EQ(decode("\x1B$B$3$s\x1B(B.", "ISO-2022-JP").bad, std::nullopt);
  EXPECT_EQ(decode("", "BIG5").bad, std::nullopt);
}

TEST(Charset, LargeTextsAreReadToTheirEnd) {
  const std::string text(100'000, '\xFC');
  EXPECT_EQ(decode(text, "CP1252").bad, std::nullopt);
  EXPECT_EQ(decode(text + "\x81", "CP1252").bad, text.size());
}

TEST(Charset, BytesOfASetAreTextInUtf8) {
  EXPECT_EQ(in_utf8("Caf\xE9", "ISO-8859-1"), "Caf\u00E9");
  EXPECT_EQ(in_utf8("\x1B$B$3$s\x1B(B.", "ISO-2022-JP"), "\u3053\u3093.");
  EXPECT_EQ(in_utf8("", "BIG5"), "");
  EXPECT_EQ(in_utf8("Caf\xE9!", "UTF-8"), std::nullopt);
  EXPECT_EQ(in_utf8("x", "KLINGON"), std::nullopt);
  std::string large;
  for (int i = 0; i < 100'000; ++i)
    large += "\u00FC";
  EXPECT_EQ(in_utf8(std::string(100'000, '\xFC'), "CP1252"), large);
}

TEST(Charset, NamesMayBeInSmallLetters) {
  EXPECT_TRUE(decode("x", "iso-8859-2").is_known);
  EXPECT_TRUE(decode("x", "utf-8").is_known);
}

TEST(Charset, OfAnUnknownNameNothingIsSaid) {
  EXPECT_FALSE(decode("\xFF", "KLINGON").is_known);
  EXPECT_EQ(decode("\xFF", "KLINGON").bad, std::nullopt);
}

}  // namespace
}  // namespace corvane
