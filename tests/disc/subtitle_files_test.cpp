// Real subtitle files in every character set of the dialog and every format of its filter, drawn by
// the real spumux.
#include "examine/subtitle_characters.h"
#include "examine/subtitle_text_rules.h"
#include "text_studio.h"
#include "tools/subtitles.h"

#include <gmock/gmock.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <iconv.h>
#include <string>
#include <utility>
#include <vector>

namespace corvane::disc {
namespace {

using testing::HasSubstr;

/// UTF-8 text in another set. Fails the test when the set lacks a letter.
std::string in_set(const std::string& utf8, const std::string& charset) {
  const iconv_t converter = ::iconv_open(charset.c_str(), "UTF-8");
  std::string from = utf8, made(utf8.size() * 4, '\0');
  char *in = from.data(), *out = made.data();
  std::size_t left = from.size(), room = made.size();
  EXPECT_EQ(::iconv(converter, &in, &left, &out, &room), 0u) << charset;
  EXPECT_EQ(::iconv(converter, nullptr, nullptr, &out, &room), 0u) << charset;
  ::iconv_close(converter);
  made.resize(made.size() - room);
  return made;
}

std::string subrip(const std::string& line) {
  return "1\n00:00:01,000 --> 00:00:02,500\n" + line + "\n\n";
}

std::string clock_text(int milliseconds) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%02d:%02d:%02d,%03d", milliseconds / 3600000,
                milliseconds / 60000 % 60, milliseconds / 1000 % 60, milliseconds % 1000);
  return text.data();
}

// With letters that the set has and ISO-8859-1 has elsewhere, if it has any. The sets of Chinese
// and Japanese have Greek ones too, which the font can draw.
const std::vector<std::pair<std::string, std::string>> texts_by_set = {
    {"ISO-8859-1", "Größe, déjà vu, señor"},
    {"ISO-8859-2", "Příliš žluťoučký kůň"},
    {"ISO-8859-3", "Ĉu ŝi ĝuas ĥoron"},
    {"ISO-8859-5", "Съешь ещё этих булок"},
    {"ISO-8859-6", "مرحبا بالعالم"},
    {"ISO-8859-7", "Καλημέρα κόσμε"},
    {"ISO-8859-8", "שלום עולם"},
    {"ISO-8859-9", "Pijamalı hasta yağız şoföre"},
    {"ISO-8859-10", "Sámi gïella, ađđa, þurs"},
    {"ISO-8859-13", "Įlinkdama fechtuotojo špaga"},
    {"ISO-8859-15", "Œuvre à 5 €, Žižka"},
    {"KOI8-R", "Широкая электрификация"},
    {"SHIFT_JIS", "ΑΒΓ жука こんにちは"},
    {"ISO-2022-JP", "ΑΒΓ жука こんにちは"},
    {"EUC-JP", "ΑΒΓ жука こんにちは"},
    {"CP1250", "Zażółć gęślą jaźń – „tak”"},
    {"CP1251", "Їжак і ґанок – это №1"},
    {"CP1252", "“Voilà” – 5 €"},
    {"CP1254", "İstanbul’da güneş"},
    {"CP850", "Größe ½ déjà ╬"},
    {"MACINTOSH", "Größe ≠ déjà ∞"},
    {"BIG5", "ΑΒΓω 你好"},
    {"BIG5-HKSCS", "ΑΒΓω 你好"},
};

TEST(SubtitleCharset, EachOfThe23DrawsWhatUtf8Draws) {
  text_studio studio;
  ASSERT_EQ(texts_by_set.size(), charact_items.size());
  for (std::size_t i = 0; i < charact_items.size(); ++i) {
    const auto& [charset, text] = texts_by_set[i];
    ASSERT_EQ(charset, charact_items[i]);
    preview_request r =
        text_studio::request(studio.folder().add(charset + ".srt", in_set(subrip(text), charset)));
    r.settings[subtitle_field::character_set] = charset;
    const drawn_cue own = studio.drawn(r);
    r = text_studio::request(studio.folder().add(charset + "-unicode.srt", subrip(text)));
    r.settings[subtitle_field::character_set] = "UTF-8";
    const drawn_cue unicode = studio.drawn(r);
    EXPECT_GE(seen(own).x1, 0) << charset << ": nothing is drawn";
    EXPECT_TRUE(own.rgba == unicode.rgba) << charset;
  }
}

TEST(SubtitleCharset, Utf8IsDrawnAlikeWithAndWithoutMarkAndWhateverTheLineEnds) {
  text_studio studio;
  const std::string lf = subrip("Größe Ωж\nzwei");
  std::string crlf_text;
  for (const char c : lf)
    crlf_text += c == '\n' ? "\r\n" : std::string(1, c);
  const std::string mark = "\xEF\xBB\xBF";
  const auto drawn = [&](const std::string& text, const std::string& name,
                         const std::string& charset) {
    preview_request r = text_studio::request(studio.folder().add(name, text));
    r.settings[subtitle_field::character_set] = charset;
    return studio.drawn(r).rgba;
  };
  const auto plain = drawn(lf, "a.srt", "UTF-8");
  EXPECT_TRUE(drawn(crlf_text, "b.srt", "UTF-8") == plain);
  EXPECT_TRUE(drawn(mark + lf, "c.srt", "UTF-8") == plain);
  EXPECT_TRUE(drawn(mark + crlf_text, "d.srt", "UTF-8") == plain);
  // spumux takes these names for a character set of their own.
  EXPECT_TRUE(drawn(lf, "e.utf8", "ISO-8859-1") == plain);
  EXPECT_TRUE(drawn(mark + lf, "f.utf", "ISO-8859-1") == plain);
  EXPECT_TRUE(drawn(in_set(lf, "UTF-16"), "g.srt", "UTF-16") == plain);
}

TEST(SubtitleCharacters, ThatAreSaidToBeMissingAreThoseThatAreDrawnAsALine) {
  text_studio studio;
  font_shelf fonts;
  const font_characters* const font = fonts.find("dejavusans.ttf", system_fonts());
  ASSERT_NE(font, nullptr);
  int number = 0;
  const auto request_of = [&](const std::string& text) {
    preview_request r = text_studio::request(
        studio.folder().add(std::to_string(++number) + ".srt", subrip("x" + text + "x")));
    r.settings[subtitle_field::character_set] = "UTF-8";
    return r;
  };
  const auto line = studio.drawn(request_of("_")).rgba;
  // A glyph, none, one of no width, a tabulator, characters that are taken out, Arabic in its forms
  // and a letter of which the font has none, a gap in its table.
  for (const auto& [text, is_missing] :
       std::vector<std::pair<std::string, bool>>{{"Ж", false},
                                                 {"你", true},
                                                 {"\u00A0", false},
                                                 {"\t", true},
                                                 {"\u200B", false},
                                                 {"\u00AD", false},
                                                 {"\uFEFF", false},
                                                 {"\u202E", false},
                                                 {"\x01", false},
                                                 {"\u0628", false},
                                                 {"\u0620", true},
                                                 {"\u06C0", true},
                                                 {"\u3000", true},
                                                 {"\uFFFD", false},
                                                 {"\uE0FF", true},
                                                 {"\u2028", false}}) {
    const preview_request r = request_of(text);
    const auto found = subtitle_text_findings(*subtitle_file::read(r.file), r.settings, {}, r.file,
                                              std::nullopt, font);
    EXPECT_EQ(found.size(), is_missing ? 1u : 0u) << number << " " << text;
    EXPECT_EQ(studio.drawn(r).rgba == line, is_missing) << number << " " << text;
  }
}

TEST(SubtitleCharset, Utf8ReadAsAnotherSetIsAReason) {
  text_studio studio;
  EXPECT_EQ(studio.refused(subrip("Größe")),
            "\"text.srt\" cannot be shown: it is UTF-8 text, but its character set is ISO-8859-1, "
            "so its letters would come out wrong.");
}

TEST(SubtitleCharset, BytesThatTheSetDoesNotHaveAreToldWithTheirLine) {
  text_studio studio;
  preview_request r = text_studio::request(studio.folder().add("a.srt", subrip("Gr\xF6\xDF"
                                                                               "e")));
  r.settings[subtitle_field::character_set] = "UTF-8";
  EXPECT_EQ(studio.refused(r),
            "\"a.srt\" cannot be shown: its line 3 holds bytes that its character set, UTF-8, does "
            "not have.");
}

TEST(SubtitleCharset, ThatSpumuxDoesNotKnowIsAReason) {
  text_studio studio;
  preview_request r = text_studio::request(studio.folder().add("a.srt", subrip("Text")));
  r.settings[subtitle_field::character_set] = "KLINGON";
  EXPECT_EQ(studio.refused(r),
            "\"a.srt\" cannot be shown: spumux does not know the character set.");
}

// Formats ----------------------------------------------------------------------------------------

struct format_sample {
  const char* name;
  const char* text;
  double begin;  ///< of the first subtitle, whose text is "Hello there"
};

// MicroDVD, AQTitle and PJS count pictures (PJS in tenths); the others tell times.
const std::array<format_sample, 15> formats = {{
    {"subrip.srt", "1\r\n00:00:01,000 --> 00:00:02,500\r\nHello there\r\n\r\n", 1},
    {"microdvd.sub", "{30}{75}Hello there\n{120}{150}next\n", 1.001},
    {"subviewer1.sub", "{T 00:00:01:00\nHello there\n}\n{T 00:00:02:50\n\n}\n", 1},
    {"subviewer2.sub",
     "[INFORMATION]\n[TITLE]x\n[END INFORMATION]\n[SUBTITLE]\n[COLF]&HFFFFFF,[STYLE]no,[SIZE]18\n"
     "00:00:01.00,00:00:02.50\nHello there\n\n00:00:04.00,00:00:05.00\nnext\n\n",
     1},
    {"mpsub.sub", "FORMAT=TIME\n\n1 1.5\nHello there\n\n1.5 1\nnext\n\n", 1},
    {"ssa.ssa",
     "[Script Info]\nScriptType: v4.00\n\n[Events]\n"
     "Format: Marked, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text\n"
     "Dialogue: Marked=0,0:00:01.00,0:00:02.50,Default,,0,0,0,,Hello there\n",
     1},
    {"sami.smi",
     "<SAMI>\n<BODY>\n<SYNC Start=1000><P Class=ENCC>Hello there\n"
     "<SYNC Start=2500><P Class=ENCC>&nbsp;\n</BODY>\n</SAMI>\n",
     1},
    {"real.rt",
     "<window type=\"generic\">\n"
     "<Time Begin=\"0:00:01.0\" End=\"0:00:02.0\" /><clear/>Hello there\n</window>\n",
     1},
    {"vplayer.txt", "00:00:01:Hello there\n00:00:04:next\n", 1},
    {"pjs.txt", "30,75,\"Hello there\"\n120,150,\"next\"\n", 1.001},
    {"timed.txt", "[00:00:01]\nHello there\n[00:00:03]\n\n", 1},
    {"aqtitle.aqt", "-->> 000030\nHello there\n\n-->> 000075\n\n-->> 000120\nnext\n\n", 1.001},
    {"jaco.jss", "0:00:01.00 0:00:02.50 VM Hello there\n0:00:04.00 0:00:05.00 VM next\n", 1},
    {"jaco.js", "0:00:01.00 0:00:02.50 {a note} Hello there\n0:00:04.00 0:00:05.00 D next\n", 1},
    {"webvtt.srt", "WEBVTT\n\n00:00:01.000 --> 00:00:02.500\nHello there\n\n", 1},
}};

/// What is drawn, moved to the bottom line of the picture: formats with one line of text more (an
/// empty one) put theirs higher.
std::vector<std::uint8_t> lines_seen(const drawn_cue& cue) {
  const seen_area area = seen(cue);
  const auto line = static_cast<std::size_t>(cue.width) * 4;
  return {
      cue.rgba.begin() + static_cast<std::ptrdiff_t>(line * static_cast<unsigned>(area.y0)),
      cue.rgba.begin() + static_cast<std::ptrdiff_t>(line * (static_cast<unsigned>(area.y1) + 1))};
}

TEST(SubtitleFormat, EachThatTheDialogOffersShowsItsFirstText) {
  text_studio studio;
  const auto wanted = lines_seen(studio.drawn(subrip("Hello there")));
  for (const format_sample& f : formats) {
    const drawn_cue cue = studio.drawn(f.text, f.name);
    EXPECT_NEAR(cue.begin, f.begin, 0.02) << f.name;
    EXPECT_TRUE(lines_seen(cue) == wanted) << f.name;
  }
}

TEST(SubtitleFormat, ThatSpumuxDoesNotReadIsAReason) {
  text_studio studio;
  for (const auto& [name, text] : std::vector<std::pair<std::string, std::string>>{
           {"mpl2.txt", "[10][25]Hello there\n[40][50]next\n"},
           {"lyrics.txt", "[00:01.00]Hello there\n"},
           {"letter.txt", "Dear reader,\nhello there.\n"}})
    EXPECT_EQ(studio.refused(text, name),
              "\"" + name +
                  "\" cannot be shown: it is in none of the subtitle formats that spumux "
                  "reads.");
}

TEST(SubtitleFormat, RealTextWithoutEndsIsAReason) {
  text_studio studio;
  EXPECT_EQ(studio.refused("<window>\n<Time Begin=\"0:00:01\" />Hello there\n</window>\n", "a.rt"),
            "\"a.rt\" cannot be shown: spumux found no text in it.");
}

TEST(SubtitleFormat, OnWhichSpumuxCrashesIsAReason) {
  text_studio studio;
  EXPECT_THAT(
      studio.refused("0:00:01.00 0:00:02.50 Hello there\n0:00:04.00 0:00:05.00 next\n", "bare.jss"),
      HasSubstr("\"bare.jss\" cannot be shown: spumux crashed on it"));
}

// Bad files and odd ones -------------------------------------------------------------------------

TEST(SubtitleFileDrawn, MissingEmptyAndBinaryOnesAreReasons) {
  text_studio studio;
  EXPECT_EQ(studio.refused(text_studio::request(studio.folder().path("gone.srt"))),
            "\"gone.srt\" cannot be shown: it is missing.");
  EXPECT_EQ(studio.refused("", "a.srt"), "\"a.srt\" cannot be shown: it is empty.");
  EXPECT_EQ(studio.refused(std::string("1\n\0\xFF\0", 5), "a.srt"),
            "\"a.srt\" cannot be shown: it is not a text file.");
  EXPECT_EQ(studio.refused("1\n00:00:01,000 --> 00:00:02,500\n", "a.srt"),
            "\"a.srt\" cannot be shown: spumux found no text in it.");
}

TEST(SubtitleFileDrawn, OfACueThatOverlapsTheNextEndsWhereThatBegins) {
  text_studio studio;
  const std::string file = studio.folder().add(
      "a.srt", "1\n00:00:01,000 --> 00:00:05,000\nA\n\n2\n00:00:03,000 --> 00:00:08,000\nB\n\n");
  const drawn_cue first = studio.drawn(text_studio::request(file, 1));
  const drawn_cue second = studio.drawn(text_studio::request(file, 2));
  EXPECT_NEAR(first.begin, 1, 0.02);
  EXPECT_NEAR(first.end, 3, 0.02);
  EXPECT_NEAR(second.begin, 3, 0.02);
  EXPECT_NEAR(second.end, 8, 0.02);
  EXPECT_TRUE(first.rgba != second.rgba);
}

TEST(SubtitleFileDrawn, Of10000CuesShowsTheFirstsAtOnce) {
  text_studio studio;
  std::string text;
  for (int i = 0; i < 10000; ++i)
    text += std::to_string(i + 1) + "\n" + clock_text(i * 700) + " --> " +
            clock_text(i * 700 + 600) + "\nCue " + std::to_string(i + 1) + "\n\n";
  const std::string file = studio.folder().add("a.srt", text);
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(studio.drawn(text_studio::request(file, 1)).number, 1);
  EXPECT_EQ(studio.drawn(text_studio::request(file, 20)).number, 20);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
}

TEST(SubtitleFileDrawn, InAFontTooLargeForTheScreenIsAReasonOrIsDrawn) {
  text_studio studio;
  preview_request r = text_studio::request(studio.folder().add(
      "a.srt", subrip("A line that is quite long for the screen, and that goes on and on")));
  r.settings[subtitle_field::font_size] = "127";
  EXPECT_THAT(studio.refused(r),
              HasSubstr("spumux crashed on it, as it does on text larger than the "
                        "screen and on some JACOsub files"));
  r.file = studio.folder().add("b.srt", subrip("Hi"));
  EXPECT_GE(seen(studio.drawn(r)).x1, 0);
}

}  // namespace
}  // namespace corvane::disc
