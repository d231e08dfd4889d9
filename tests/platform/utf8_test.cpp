// UTF-8 as the program reads and writes it.
#include "platform/text/utf8.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

/// "CODE/LENGTH" of the character that the text begins with.
std::string first_of(std::string_view text) {
  const utf8_character c = first_character(text);
  return std::to_string(c.code) + "/" + std::to_string(c.length);
}

TEST(Utf8, CharactersHaveTheirCodesAndLengths) {
  EXPECT_EQ(first_of("a\xC3\xA9"), "97/1");
  EXPECT_EQ(first_of({"\0", 1}), "0/1");
  EXPECT_EQ(first_of("\x7F"), "127/1");
  EXPECT_EQ(first_of("\xC2\x80"), "128/2");
  EXPECT_EQ(first_of("\xDF\xBFx"), "2047/2");
  EXPECT_EQ(first_of("\xE0\xA0\x80"), "2048/3");
  EXPECT_EQ(first_of("\xED\x9F\xBF"), "55295/3");
  EXPECT_EQ(first_of("\xEE\x80\x80"), "57344/3");
  EXPECT_EQ(first_of("\xEF\xBF\xBF"), "65535/3");
  EXPECT_EQ(first_of("\xF0\x90\x80\x80"), "65536/4");
  EXPECT_EQ(first_of("\xF4\x8F\xBF\xBFx"), "1114111/4");
}

TEST(Utf8, WhatIsNotWellFormedIsNoCharacter) {
  for (const char* const text :
       {"", "\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xC3", "\xC3x", "\xC3\xC3", "\xE0\x9F\xBF",
        "\xE2\x82", "\xE2\x82x", "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF", "\xF0\x90\x80",
        "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "\xFE"}) {
    EXPECT_EQ(first_of(text), "0/0") << text;
    EXPECT_EQ(is_utf8(text), *text == '\0') << text;
    EXPECT_EQ(is_utf8("a" + std::string(text) + "a"), *text == '\0') << text;
  }
  EXPECT_TRUE(is_utf8("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x93\x80"));
}

TEST(Utf8, EachCharacterIsWrittenAsItIsRead) {
  for (std::uint32_t code = 1; code <= 0x10FFFF; ++code) {
    if (code >= 0xD800 && code <= 0xDFFF)
      continue;
    const std::string text = utf8_text(code);
    const utf8_character c = first_character(text);
    ASSERT_EQ(c.code, code);
    ASSERT_EQ(c.length, text.size());
  }
}

TEST(Utf8, BytesOfNoCharacterAreReplacedOneByOne) {
  EXPECT_EQ(repaired_utf8("a\xC3\xA9\xF0\x9F\x93\x80"), "a\xC3\xA9\xF0\x9F\x93\x80");
  EXPECT_EQ(repaired_utf8("a\xE2\x82z\xFF"), "a\xEF\xBF\xBD\xEF\xBF\xBDz\xEF\xBF\xBD");
  EXPECT_EQ(repaired_utf8({"\0\x80", 2}), std::string("\0\xEF\xBF\xBD", 4));
  EXPECT_EQ(repaired_utf8(""), "");
}

TEST(Utf8, ControlCharactersAreThoseOfAscii) {
  for (int byte = 0; byte < 256; ++byte)
    EXPECT_EQ(is_control_character(static_cast<char>(byte)), byte < 32 || byte == 127) << byte;
}

TEST(Utf8, SequencesEndBeforeTheNextCharacter) {
  EXPECT_EQ(first_sequence(""), "");
  EXPECT_EQ(first_sequence("ab"), "a");
  EXPECT_EQ(first_sequence("\xC3\xA9z"), "\xC3\xA9");
  EXPECT_EQ(first_sequence("\xA9\xA9\xC3"), "\xA9\xA9");
  EXPECT_EQ(first_sequence("\xC3\xC3"), "\xC3");
}

TEST(Utf8, FirstCharactersAreCounted) {
  EXPECT_EQ(first_characters("a\xC3\xA9\xE2\x82\xACz", 3), "a\xC3\xA9\xE2\x82\xAC");
  EXPECT_EQ(first_characters("ab", 3), "ab");
  EXPECT_EQ(first_characters("ab", 0), "");
  EXPECT_EQ(first_characters("\xA9\xFF\xA9x", 1), "\xA9\xFF\xA9");
}

}  // namespace
}  // namespace corvane
