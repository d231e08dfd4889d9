#include "examine/subtitle_text_rules.h"

#include "made_disc.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>

namespace corvane::testing_support {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr finding_item first_subtitle{finding_item::whole_kind::title, 1,
                                      finding_item::part_kind::subtitle, 1};

std::vector<finding> findings_in(const std::string& text, std::optional<double> seconds = {},
                                 const std::string& charset = "UTF-8") {
  subtitle_settings settings = default_subtitle_settings("PAL");
  settings[subtitle_field::character_set] = charset;
  return subtitle_text_findings(subtitle_file("a.srt", text), settings, first_subtitle, "/m/a.srt",
                                seconds);
}

/// "rule at its time" of each.
std::vector<std::string> told_in(const std::string& text, std::optional<double> seconds = {},
                                 const std::string& charset = "UTF-8") {
  std::vector<std::string> texts;
  for (const finding& f : findings_in(text, seconds, charset))
    texts.push_back(f.rule + " at " +
                    (f.seconds ? std::to_string(static_cast<int>(*f.seconds)) : "none"));
  return texts;
}

/// A SubRip file of one cue, at a second.
std::string cue(const std::string& text) {
  return "1\n00:00:01,000 --> 00:00:03,000\n" + text + "\n";
}

TEST(SubtitleTextRules, PlainCuesGiveNothing) {
  EXPECT_THAT(
      told_in(cue("Hello & {good} bye; a/b #1\n<i>Slanted</i>, <font color=\"red\">red</font>") +
              "\n2\n00:00:03,010 --> 00:00:20,000\nGr\xC3\xBC\xC3\x9F dich!\n"),
      IsEmpty());
}

TEST(SubtitleTextRules, FormatWhoseCuesAreNotReadIsANote) {
  const auto findings = findings_in("FORMAT=TIME\n1 2\nOne\n");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].rule, "subtitle-not-examined");
  EXPECT_EQ(findings[0].severity, finding_severity::note);
}

TEST(SubtitleTextRules, FindingNamesFileItemTimeAndText) {
  const auto findings = findings_in(cue("{\\an8}Up there"));
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].file, "/m/a.srt");
  EXPECT_EQ(place_text(findings[0]), "title 1, subtitle 1, 00:00:01");
  EXPECT_EQ(findings[0].found, "the cue \"{\\an8}Up there\" shows \"{\\an8}\" as letters");
}

TEST(SubtitleTextRules, MarkupThatSpumuxDrawsIsAWarning) {
  for (const char* const text :
       {"{\\an8}a", "Tom &amp; Jerry", "it&#39;s", "a\\hb", "a\\Nb", "{y:i}a"})
    EXPECT_THAT(told_in(cue(text)), ElementsAre("subtitle-markup-shown at 1")) << text;
  EXPECT_THAT(told_in("{25}{50}{y:i}a\n{75}{100}<i>b</i>\n"),
              ElementsAre("subtitle-markup-shown at 1", "subtitle-markup-shown at 3"));
  EXPECT_THAT(told_in("Dialogue: 0,0:00:01.00,0:00:02.50,D,,0,0,0,,{\\b1}a\\Nb\n"), IsEmpty());
  EXPECT_THAT(told_in("Dialogue: 0,0:00:01.00,0:00:02.50,D,,0,0,0,,a\\hb\n"),
              ElementsAre("subtitle-markup-shown at 1"));
}

TEST(SubtitleTextRules, SignsThatAreNoMarkupGiveNothing) {
  for (const char* const text : {"R&D; ok", "AT&T", "{smiles}", "{a:b", "a\\b", "C:\\dir", "& ; &"})
    EXPECT_THAT(told_in(cue(text)), IsEmpty()) << text;
}

TEST(SubtitleTextRules, TextBetweenTheSignsOfATagIsLost) {
  const auto findings = findings_in(cue("I <really> do"));
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].rule, "subtitle-text-lost");
  EXPECT_THAT(findings[0].found, HasSubstr("\"<really>\""));
}

TEST(SubtitleTextRules, RateLineOfMicroDvdIsAWarningOnce) {
  EXPECT_THAT(told_in("{1}{1}23.976\n{25}{50}a\n"), ElementsAre("subtitle-rate-line at 0"));
  EXPECT_THAT(told_in("{0}{0}25\n{25}{50}a\n"), ElementsAre("subtitle-rate-line at 0"));
  EXPECT_THAT(told_in("{1}{20}99\n{25}{50}a\n"), IsEmpty());
}

TEST(SubtitleTextRules, CharacterBeyondTheBasicPlaneIsAWarning) {
  const auto findings = findings_in(cue("Smile \xF0\x9F\x98\x80"));
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].rule, "subtitle-wide-character");
  EXPECT_THAT(findings[0].found, HasSubstr("U+1F600"));
  EXPECT_THAT(told_in(cue("\xE2\x82\xAC \xEF\xBF\xBD")), IsEmpty());
}

TEST(SubtitleTextRules, Utf16IsReadToo) {
  std::string wide = "\xFF\xFE";
  for (const char c : cue("{\\an8}a ")) {
    wide += c;
    wide += '\0';
  }
  wide += std::string("\x3D\xD8\x00\xDE", 4);
  EXPECT_THAT(told_in(wide, {}, "UTF-16"),
              ElementsAre("subtitle-markup-shown at 1", "subtitle-wide-character at 1"));
}

TEST(SubtitleTextRules, BytesOfOtherCharactersAreNoMarkup) {
  const std::string sign =
      "\x83\x7B\x83\x5C"
      "h\x83\x7D";  // katakana, with bytes "{", "\", "}"
  EXPECT_THAT(told_in(cue(sign), {}, "SHIFT_JIS"), IsEmpty());
}

TEST(SubtitleTextRules, CueOfMoreThanSixteenLinesIsCut) {
  std::string lines = "1";
  for (int i = 2; i <= 16; ++i)
    lines += "\n" + std::to_string(i);
  EXPECT_THAT(told_in(cue(lines)), IsEmpty());
  EXPECT_THAT(told_in(cue(lines + "\n17")), ElementsAre("subtitle-too-many-lines at 1"));
}

TEST(SubtitleTextRules, CueWithoutALengthIsAWarning) {
  EXPECT_THAT(told_in("00:00:05,000 --> 00:00:05,000\na\n"),
              ElementsAre("subtitle-cue-without-length at 5"));
  EXPECT_THAT(told_in("00:00:05,000 --> 00:00:04,000\na\n"),
              ElementsAre("subtitle-cue-without-length at 5"));
  EXPECT_THAT(told_in("{25}{}a\n{100}{120}b\n"), IsEmpty()) << "whose format allows it";
}

TEST(SubtitleTextRules, CuesInEachOthersTimeAreAWarning) {
  const auto findings =
      findings_in("00:00:01,000 --> 00:00:04,000\na\n\n00:00:03,000 --> 00:00:05,000\nb\n");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].rule, "subtitle-cue-overlap");
  EXPECT_EQ(findings[0].found,
            "the cue \"a\" ends at 00:00:04.00, but the next one, \"b\", begins at 00:00:03.00");
  EXPECT_THAT(told_in("00:00:01,000 --> 00:00:03,200\na\n\n00:00:03,000 --> 00:00:05,000\nb\n"),
              IsEmpty());
}

TEST(SubtitleTextRules, CuesOfSsaMayStandInEachOthersTime) {
  EXPECT_THAT(told_in("Dialogue: 0,0:00:01.00,0:00:05.00,D,,0,0,0,,a\n"
                      "Dialogue: 0,0:00:02.00,0:00:03.00,D,,0,0,0,,b\n"),
              IsEmpty());
}

TEST(SubtitleTextRules, LongCueThatLastsUntilTheNextIsCutToSixSeconds) {
  EXPECT_THAT(told_in("00:00:01,000 --> 00:00:09,000\na\n\n00:00:09,000 --> 00:00:11,000\nb\n"),
              ElementsAre("subtitle-cue-cut at 1"));
  EXPECT_THAT(told_in("00:00:01,000 --> 00:00:08,950\na\n\n00:00:09,000 --> 00:00:11,000\nb\n"),
              IsEmpty());
  EXPECT_THAT(told_in("00:00:01,000 --> 00:00:07,000\na\n\n00:00:07,000 --> 00:00:11,000\nb\n"),
              IsEmpty());
}

TEST(SubtitleTextRules, CueOutOfOrderIsANote) {
  const auto findings =
      findings_in("00:00:10,000 --> 00:00:12,000\na\n\n00:00:03,000 --> 00:00:05,000\nb\n");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].rule, "subtitle-cue-order");
  EXPECT_EQ(findings[0].seconds, 3.0);
  EXPECT_EQ(findings[0].severity, finding_severity::note);
}

TEST(SubtitleTextRules, CueAfterTheEndOfTheTitleIsAWarning) {
  EXPECT_THAT(told_in(cue("a"), 1.0), ElementsAre("subtitle-after-end at 1"));
  EXPECT_THAT(told_in(cue("a"), 1.5), IsEmpty());
}

TEST(SubtitleTextRules, FileWithoutCuesIsAnError) {
  const auto findings = findings_in("00:00:01,000 --> 00:00:02,000\n\n");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].rule, "subtitle-no-cues");
  EXPECT_EQ(findings[0].severity, finding_severity::error);
}

TEST(SubtitleTextRules, FileThatSpumuxCannotReadIsAnError) {
  EXPECT_THAT(told_in("just text, at 12:00\n"), ElementsAre("subtitle-unreadable at none"));
  EXPECT_THAT(told_in(cue("Gr\xC3\xBC\xC3\x9F"), {}, "ISO-8859-1"),
              ElementsAre("subtitle-unreadable at none"));
}

TEST(SubtitleTextRules, OfOneRuleTwentyFindingsAreToldAndTheRestCounted) {
  std::string text;
  for (int i = 0; i < 50; ++i)
    text += "{" + std::to_string(i * 50) + "}{" + std::to_string(i * 50 + 25) + "}{y:i}a\n";
  const auto findings = findings_in(text);
  ASSERT_THAT(findings, SizeIs(20));
  EXPECT_THAT(findings[19].found, HasSubstr("; 30 more of the file's cues are like this"));
}

/// Of a font that has ASCII and these characters.
font_characters font_with(std::initializer_list<std::uint32_t> more) {
  font_characters font;
  for (std::uint32_t c = 0x20; c < 0x7F; ++c)
    font.add(c);
  for (const std::uint32_t c : more)
    font.add(c);
  return font;
}

std::vector<finding> findings_with(const font_characters& font, const std::string& text,
                                   const std::string& charset = "UTF-8") {
  subtitle_settings settings = default_subtitle_settings("PAL");
  settings[subtitle_field::character_set] = charset;
  settings[subtitle_field::font_file] = "plain.ttf";
  return subtitle_text_findings(subtitle_file("a.srt", text), settings, first_subtitle, "/m/a.srt",
                                {}, &font);
}

TEST(SubtitleTextRules, CharactersThatTheFontLacksAreAWarning) {
  const auto findings = findings_with(font_with({0x443}), cue("Жук ж\nЖ"));
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].rule, "subtitle-character-missing");
  EXPECT_EQ(findings[0].severity, finding_severity::warning);
  EXPECT_EQ(place_text(findings[0]), "title 1, subtitle 1, 00:00:01");
  EXPECT_EQ(findings[0].found,
            "for the cue \"Жук ж Ж\" the font \"plain.ttf\" has no \"Ж\" (U+0416), \"к\" (U+043A) "
            "and \"ж\" (U+0436)");
  EXPECT_EQ(findings[0].consequence, "a \"_\" in the place of each of these characters");
  EXPECT_THAT(findings_with(font_with({0x416, 0x436, 0x443, 0x43A}), cue("Жук ж\nЖ")), IsEmpty());
}

TEST(SubtitleTextRules, OfManyCharactersThatTheFontLacksFiveAreNamed) {
  const auto six = findings_with(font_with({}), cue("αβγδεζ"));
  ASSERT_THAT(six, SizeIs(1));
  EXPECT_THAT(six[0].found, EndsWith("\"ε\" (U+03B5) and \"ζ\" (U+03B6)"));
  const auto seven = findings_with(font_with({}), cue("αβγδεζη"));
  ASSERT_THAT(seven, SizeIs(1));
  EXPECT_THAT(seven[0].found, EndsWith("\"ε\" (U+03B5) and 2 more"));
}

TEST(SubtitleTextRules, CharactersAreThoseOfTheSubtitlesSet) {
  const std::string beetle = cue("\xF6\xD5\xCB");  // in KOI8-R
  EXPECT_THAT(findings_with(font_with({0x416, 0x443, 0x43A}), beetle, "KOI8-R"), IsEmpty());
  const auto findings = findings_with(font_with({}), beetle, "KOI8-R");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_THAT(findings[0].found, HasSubstr("\"Жук\""));
}

TEST(SubtitleTextRules, CharactersThatAreNotDrawnAreNotMissing) {
  EXPECT_THAT(findings_with(font_with({}), "\xEF\xBB\xBF" + cue("a\u200Bb\u00ADc\u202Ed\uFEFF")),
              IsEmpty());
  EXPECT_THAT(findings_with(font_with({}), cue("a <Ж> b <font color=\"Ж\">c</font>")), SizeIs(1))
      << "but for the text that is lost";
  EXPECT_THAT(findings_with(font_with({}), "Dialogue: 0,0:00:01.00,0:00:02.50,Ж,,0,0,0,,{\\Ж}a\n"),
              IsEmpty());
}

TEST(SubtitleTextRules, CharactersThatWouldActInAMessageAreNumbers) {
  const auto findings = findings_with(font_with({'a', 'b'}), cue("a\u0085b"));
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_THAT(findings[0].found, EndsWith("has no U+0085"));
}

TEST(SubtitleTextRules, TabulatorIsDrawnAsIfTheFontLackedIt) {
  const auto findings = findings_with(font_with({9}), cue("a\tb"));
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_THAT(findings[0].found, EndsWith("has no U+0009"));
}

TEST(SubtitleTextRules, CharacterBeyondTheBasicPlaneIsToldOfOnce) {
  const auto findings = findings_with(font_with({}), cue("Smile \xF0\x9F\x98\x80"));
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].rule, "subtitle-wide-character");
}

TEST(SubtitleTextRules, ArabicLettersAreLookedForAsTheirForms) {
  EXPECT_THAT(findings_with(font_with({0xFE8F}), cue("\u0628")), IsEmpty());
  EXPECT_THAT(findings_with(font_with({0xFE90}), cue("\u0628")), IsEmpty());
  EXPECT_THAT(findings_with(font_with({0x0628}), cue("\u0628")), SizeIs(1));
}

TEST(SubtitleTextRules, FormatsThatAreNotReadHaveNoCharacters) {
  const auto findings = findings_with(font_with({}), "30,75,\"Жук\"\n");
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_EQ(findings[0].rule, "subtitle-not-examined");
}

disc_description with_subtitle(const std::string& path, const std::string& font = "arial.ttf") {
  disc_description d = made_disc({made_title()});
  subtitle_settings settings = default_subtitle_settings("NTSC");
  settings[subtitle_field::font_file] = font;
  d.titles[0].subtitles = {
      {stored_from_native(path), std::make_shared<subtitle_settings>(settings), 12}};
  return d;
}

TEST(SubtitleTextRules, FilesOfTheDiscAreRead) {
  const temporary_folder folder;
  const disc_description d = with_subtitle(folder.add("a.srt", cue("{\\an8}a")));
  EXPECT_THAT(told(subtitle_findings(d, native_style())),
              ElementsAre("subtitle-markup-shown @ title 1, subtitle 1, 00:00:01"));
  const std::optional<double> seconds[] = {0.5};
  EXPECT_THAT(subtitle_findings(d, native_style(), seconds), SizeIs(2));
  EXPECT_THAT(told(subtitle_findings(with_subtitle(folder.path("gone.srt")), native_style())),
              ElementsAre("subtitle-unreadable @ title 1, subtitle 1"));
}

TEST(SubtitleTextRules, FontThatIsNotInstalledIsAWarning) {
  const font_list fonts({{"DejaVu Sans", "DejaVuSans.ttf", "/f/DejaVuSans.ttf"}},
                        path_style::posix);
  EXPECT_THAT(subtitle_font_findings(with_subtitle("/a.srt", "dejavusans.ttf"), fonts), IsEmpty());
  const auto chosen = subtitle_font_findings(with_subtitle("/a.srt", "comic.ttf"), fonts);
  ASSERT_THAT(chosen, SizeIs(1));
  EXPECT_EQ(chosen[0].severity, finding_severity::warning);
  const auto first = subtitle_font_findings(with_subtitle("/a.srt"), fonts);
  ASSERT_THAT(first, SizeIs(1));
  EXPECT_EQ(first[0].severity, finding_severity::note);
}

// A font of the letter A alone.
std::string smallest_font() {
  using namespace std::string_literals;
  return "\0\1\0\0\0\1\0\0\0\0\0\0"s + "cmap\0\0\0\0\0\0\0\x1C\0\0\0\x18"s +
         "\0\0\0\1\0\3\0\1\0\0\0\x0C\0\6\0\x0C\0\0\0A\0\1\0\1"s;
}

TEST(SubtitleTextRules, FontsOfTheDiscAreRead) {
  const temporary_folder folder;
  const disc_description d = with_subtitle(folder.add("a.srt", cue("A B")), "one.ttf");
  const auto found_with = [&](const std::string& bytes) {
    const font_list fonts({{"One", "One.ttf", folder.add("One.ttf", bytes)}});
    return told(subtitle_findings(d, native_style(), {}, &fonts));
  };
  EXPECT_THAT(found_with(smallest_font()),
              ElementsAre("subtitle-character-missing @ title 1, subtitle 1, 00:00:01"));
  EXPECT_THAT(found_with("no font"), IsEmpty());
  EXPECT_THAT(found_with(smallest_font().substr(0, 40)), IsEmpty());
  const font_list gone({{"One", "One.ttf", folder.path("gone.ttf")}});
  EXPECT_THAT(subtitle_findings(d, native_style(), {}, &gone), IsEmpty());
  const font_list others({{"Two", "Two.ttf", folder.path("One.ttf")}});
  EXPECT_THAT(subtitle_findings(d, native_style(), {}, &others), IsEmpty());
}

}  // namespace
}  // namespace corvane::testing_support
