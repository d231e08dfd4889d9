#include "import/language_codes.h"

#include "tools/language_tags.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(LanguageCodes, ThreeLettersOfEitherKindBecomeTwo) {
  EXPECT_EQ(language_code_of("deu"), "de");
  EXPECT_EQ(language_code_of("ger"), "de");
  EXPECT_EQ(language_code_of("FRE"), "fr");
  EXPECT_EQ(language_code_of("fra"), "fr");
  EXPECT_EQ(language_code_of("zho"), "zh");
  EXPECT_EQ(language_code_of("zul"), "zu");
  EXPECT_EQ(language_code_of("aar"), "aa");
}

TEST(LanguageCodes, ACountryOrAScriptIsLeftOut) {
  EXPECT_EQ(language_code_of("pt-BR"), "pt");
  EXPECT_EQ(language_code_of("zh_Hant"), "zh");
}

TEST(LanguageCodes, WhatIsNoLanguageHasNone) {
  for (const char* const none : {"", "und", "zxx", "mul", "x", "engl", "-", "xx", "a a"})
    EXPECT_EQ(language_code_of(none), "") << none;
}

TEST(LanguageCodes, OldCodesAreThoseOfToday) {
  EXPECT_EQ(language_code_of("IW"), "he");
  EXPECT_EQ(language_code_of("in"), "id");
  EXPECT_TRUE(same_language("ji", "yid"));
  EXPECT_TRUE(same_language("mo", "rum"));
  EXPECT_FALSE(same_language("und", "und"));
  EXPECT_FALSE(same_language("de", "en"));
}

// A tag of the project names a language that a file's stream can be found to have.
TEST(LanguageCodes, EachLanguageThatTagsOfferIsKnown) {
  for (const std::string_view entry : language_entries) {
    const std::string_view trimmed = entry.substr(0, entry.find_last_not_of(' ') + 1);
    const std::string code(trimmed.substr(trimmed.size() - 2));
    // Groups of languages, whose codes were withdrawn.
    if (code == "BH" || code == "SH")
      continue;
    EXPECT_EQ(language_code_of(code).size(), 2u) << entry;
  }
}

TEST(LanguageCodes, EntryOfALanguageIsTheFirstThatNamesIt) {
  EXPECT_EQ(language_entry("deu"), "GERMAN DE ");
  EXPECT_EQ(language_entry("pt-BR"), "PORTUGUESE PT");
  EXPECT_EQ(language_entry("bn"), "BENGALI BN");
  EXPECT_EQ(language_entry("he"), "HEBREW IW");
  for (const char* const none : {"", "und", "bs", "GERMAN"})
    EXPECT_EQ(language_entry(none), "") << none;
  EXPECT_EQ(name_in_entry("GERMAN DE "), "GERMAN");
  EXPECT_EQ(name_in_entry("PERSIAN(farsi) FA"), "PERSIAN(farsi)");
}

}  // namespace
}  // namespace corvane
