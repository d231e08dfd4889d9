// Cleaned copies of subtitle files: what changes and what stays, in each format that the
// examination reads, and that the examination finds nothing of it any more.
#include "tools/cleaned_subtitles.h"

#include "examine/subtitle_text_rules.h"
#include "formats/text.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace corvane {
namespace {

using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;
using ::testing::SizeIs;

subtitle_settings settings_in(const std::string& charset) {
  subtitle_settings settings = default_subtitle_settings("PAL");
  settings[subtitle_field::character_set] = charset;
  return settings;
}

cleaned_subtitles cleaned(const std::string& text, const std::string& charset = "UTF-8") {
  const auto done = clean_subtitles(subtitle_file("a.srt", text), settings_in(charset));
  EXPECT_TRUE(done) << done.error << "\n" << text;
  return done ? *done : cleaned_subtitles();
}

/// A SubRip file of one cue.
std::string cue(const std::string& text) {
  return "1\n00:00:01,000 --> 00:00:03,000\n" + text + "\n";
}

/// The text of its cue when it was cleaned.
std::string cleaned_cue_of(const std::string& text) {
  const std::string whole = cleaned(cue(text)).text, begin = cue("");
  EXPECT_EQ(whole.substr(0, begin.size() - 1), begin.substr(0, begin.size() - 1));
  std::string left = whole.substr(begin.size() - 1);
  if (left.ends_with('\n'))
    left.pop_back();
  return left;
}

// SubRip -----------------------------------------------------------------------------------------

TEST(CleanedSubtitles, MarkupThatWouldBeDrawnGoes) {
  EXPECT_EQ(cleaned_cue_of("{\\an8}Up there"), "Up there");
  EXPECT_EQ(cleaned_cue_of("{\\an8}{\\i1}Up {y:i}there"), "Up there");
  EXPECT_EQ(cleaned_cue_of("a\\hb"), "a b");
  EXPECT_EQ(cleaned_cue_of("{\\an8}\nTwo"), "Two") << "an empty line would end the cue";
  EXPECT_EQ(cleaned_cue_of("One\\N\\NTwo"), "One\nTwo");
}

TEST(CleanedSubtitles, EntitiesBecomeWhatTheyStandFor) {
  EXPECT_EQ(cleaned_cue_of("Tom &amp; Jerry"), "Tom & Jerry");
  EXPECT_EQ(cleaned_cue_of("&quot;it&#39;s&quot; &apos;so&apos;&nbsp;now"), "\"it's\" 'so' now");
  EXPECT_EQ(cleaned_cue_of("&#xE9;t&#233;"), "\xC3\xA9t\xC3\xA9");
  EXPECT_EQ(cleaned_cue_of("R&amp;amp;D"), "R&D") << "written twice";
  EXPECT_EQ(cleaned_cue_of("5 &lt; 6 &gt; 4"), "5 \xE2\x80\xB9 6 \xE2\x80\xBA 4");
  EXPECT_EQ(cleaned_cue_of("&#123;\\an8&#125;"), "(\\an8)") << "no new markup";
  EXPECT_EQ(cleaned_cue_of("&#dead; &#0; &#xD800;"), "& #dead; & #0; & #xD800;");
}

TEST(CleanedSubtitles, TextBetweenTheSignsOfATagIsKept) {
  EXPECT_EQ(cleaned_cue_of("I <really> do"), "I \xE2\x80\xB9really\xE2\x80\xBA do");
  EXPECT_EQ(cleaned_cue_of("3 < 4, he says"), "3 \xE2\x80\xB9 4, he says");
  EXPECT_EQ(cleaned_cue_of("I <3 you <i>so</i> {\\b1}"),
            "I \xE2\x80\xB9"
            "3 you <i>so</i> ");
}

TEST(CleanedSubtitles, TextInBracesThatIsNoCodeIsKept) {
  EXPECT_EQ(cleaned_cue_of("{a:wise man} {y:es}"), "(a:wise man) (y:es)");
  EXPECT_EQ(cleaned_cue_of("{\\an8 before {y:i}after"), "(\\an8 before after");
}

TEST(CleanedSubtitles, CharactersBeyondTheBasicPlaneAreReplaced) {
  EXPECT_EQ(cleaned_cue_of("\xF0\x9F\x8E\xB5 la \xF0\x9F\x8E\xB6"), "\xE2\x99\xAA la \xE2\x99\xAB");
  EXPECT_EQ(cleaned_cue_of("hat \xF0\x9F\x8E\xA9\xEF\xB8\x8F!"), "hat \xE2\x96\xA1!");
}

TEST(CleanedSubtitles, WhatSpumuxUnderstandsStaysAsItIs) {
  for (const char* const text :
       {"<i>Slanted</i>, <font color=\"red\">red</font>", "R&D; AT&T", "{smiles} {a:b", "a\\b",
        "C:\\dir\\new", "\xE2\x82\xAC \xEF\xBF\xBD", "  ", "{\\an8 without an end"}) {
    const cleaned_subtitles done = cleaned(cue(text));
    EXPECT_EQ(done.text, cue(text));
    EXPECT_THAT(done.changes, IsEmpty()) << text;
  }
}

TEST(CleanedSubtitles, EverythingOutsideOfTextsStaysByteForByte) {
  const std::string before =
      "\r\n1 \r\n00:00:01,000 --> 00:00:02,5  X1:5\r\n{\\an8}a\r\nb &amp; c\r\n\r\n"
      "  &amp; between\r\n\r\n02\r\n0:0:5,000-->0:0:6,000\r\nplain";
  const std::string after =
      "\r\n1 \r\n00:00:01,000 --> 00:00:02,5  X1:5\r\na\r\nb & c\r\n\r\n"
      "  &amp; between\r\n\r\n02\r\n0:0:5,000-->0:0:6,000\r\nplain";
  EXPECT_EQ(cleaned(before).text, after);
}

TEST(CleanedSubtitles, ChangesAreToldCueByCue) {
  const cleaned_subtitles done = cleaned(
      "1\n00:00:01,000 --> 00:00:02,000\nplain\n\n"
      "2\n00:00:03,000 --> 00:00:04,000\n{\\an8}Tom &amp; J.\nsecond {\\an8}\n\n"
      "3\n00:00:05,000 --> 00:00:06,000\n{\\an8}\n");
  ASSERT_THAT(done.changes, SizeIs(2));
  EXPECT_EQ(done.changes[0].line, 6);
  EXPECT_EQ(done.changes[0].begin, 3.0);
  EXPECT_EQ(done.changes[0].before, "{\\an8}Tom &amp; J.\nsecond {\\an8}");
  EXPECT_EQ(done.changes[0].after, "Tom & J.\nsecond ");
  EXPECT_EQ(done.changes[0].why, "\"{\\an8}\" and \"&amp;\" would be shown as letters");
  EXPECT_EQ(done.changes[1].before, "{\\an8}");
  EXPECT_EQ(done.changes[1].after, "");
}

// Other formats ----------------------------------------------------------------------------------

TEST(CleanedSubtitles, MicroDvdLosesItsRateLineAndCodes) {
  const cleaned_subtitles done =
      cleaned("{1}{1}29.97\r\n{25}{50}{y:i}One|{Y:b}two <i>x</i>\r\n{75}{}{y:i}|a\\Nb\r\n");
  EXPECT_EQ(done.text, "{25}{50}One|two x\r\n{75}{}a|b\r\n");
  EXPECT_EQ(done.rate, "29.97");
  ASSERT_THAT(done.changes, SizeIs(3));
  EXPECT_EQ(done.changes[0].before, "29.97");
  EXPECT_EQ(done.changes[0].after, "");
  EXPECT_EQ(done.changes[1].before, "{y:i}One\n{Y:b}two <i>x</i>");
  EXPECT_EQ(done.changes[1].after, "One\ntwo x");
}

TEST(CleanedSubtitles, NumberThatIsNoRateStays) {
  EXPECT_EQ(cleaned("{1}{1}a\n{1}{1}25\n{2}{9}{y:i}b\n").text, "{1}{1}a\n{1}{1}25\n{2}{9}b\n");
  EXPECT_EQ(cleaned("{25}{25}30\n{50}{90}a\n").rate, "");
  EXPECT_EQ(cleaned("{1}{1}25\n").text, "{1}{1}25\n") << "nothing else is there";
}

TEST(CleanedSubtitles, SsaKeepsItsBlocksAndBreaks) {
  const std::string begin = "Dialogue: 0,0:00:01.00,0:00:02.50,D,,0,0,0,,";
  EXPECT_EQ(cleaned(begin + "{\\b1}a\\hb\\Nc &amp; d{\\b0}, e\n").text,
            begin + "{\\b1}a b\\Nc & d{\\b0}, e\n");
  EXPECT_THAT(cleaned(begin + "{\\pos(1,2)}a\\nb\n").changes, IsEmpty());
  EXPECT_EQ(cleaned(begin + "&am{\\b1}p;\n").text, begin + "&\n") << "parted by a block";
}

TEST(CleanedSubtitles, SubViewerOfBothKinds) {
  EXPECT_EQ(cleaned("00:00:01.00,00:00:02.00\n<i>a</i>[br]b &amp; c|{y:i}\n").text,
            "00:00:01.00,00:00:02.00\na[br]b & c\n");
  EXPECT_EQ(cleaned("{T 00:00:01:00\n<b>a</b>\n{y:i}}b\n}\n{T 00:00:02:00\n\n}\n").text,
            "{T 00:00:01:00\na\n)b\n}\n{T 00:00:02:00\n\n}\n");
}

TEST(CleanedSubtitles, VPlayer) {
  EXPECT_EQ(cleaned("00:00:01:a &lt;3|\\Nb\n00:00:02:\n").text,
            "00:00:01:a \xE2\x80\xB9"
            "3|b\n00:00:02:\n");
}

TEST(CleanedSubtitles, SamiKeepsItsTags) {
  const std::string begin = "<SAMI>\n<BODY>\n<SYNC Start=1000><P Class=EN>",
                    end = "\n<SYNC Start=2000><P Class=EN>&nbsp;\n</BODY>\n</SAMI>\n";
  EXPECT_EQ(cleaned(begin + "a &amp; <b>b</b><br>c <sighs>" + end).text,
            begin + "a & <b>b</b><br>c \xE2\x80\xB9sighs\xE2\x80\xBA" + end);
  EXPECT_THAT(cleaned(begin + "a&nbsp;b<br/>c" + end).changes, IsEmpty());
}

// Files ------------------------------------------------------------------------------------------

TEST(CleanedSubtitles, CopyIsUtf8WhateverTheFileIs) {
  EXPECT_EQ(cleaned(cue("{\\an8}Gr\xFC\xDF"), "ISO-8859-1").text, cue("Gr\xC3\xBC\xC3\x9F"));
  EXPECT_EQ(cleaned("\xEF\xBB\xBF" + cue("{\\an8}a")).text, cue("a"));
  std::string wide = "\xFF\xFE";
  for (const char c : cue("{\\an8}a ")) {
    wide += c;
    wide += '\0';
  }
  wide += std::string("\x3D\xD8\x00\xDE", 4);
  EXPECT_EQ(cleaned(wide, "UTF-16").text, cue("a ") + "\xE2\x98\xBA");
}

TEST(CleanedSubtitles, MarkOfUtf8NoLongerHidesTheFirstLine) {
  const cleaned_subtitles done = cleaned("\xEF\xBB\xBF{1}{1}25\n{25}{50}a\n");
  EXPECT_EQ(done.text, "{25}{50}a\n");
  EXPECT_EQ(done.rate, "25");
}

TEST(CleanedSubtitles, WhatCannotBeReadIsNamed) {
  const auto why = [](const std::string& text, const std::string& charset) {
    return clean_subtitles(subtitle_file("a.srt", text), settings_in(charset)).error;
  };
  EXPECT_EQ(why("FORMAT=TIME\n1 2\nOne\n", "UTF-8"),
            "it is in a format whose cues this program does not read");
  EXPECT_EQ(why(cue("Gr\xC3\xBC\xC3\x9F"), "ISO-8859-1"),
            "it is UTF-8 text, but its character set is ISO-8859-1, so its letters would come out "
            "wrong");
  EXPECT_EQ(why("just text\n", "UTF-8"), "it is in none of the subtitle formats that spumux reads");
}

TEST(CleanedSubtitles, CopyHasANameThatIsFree) {
  const testing_support::temporary_folder folder;
  const std::string film = folder.add("my.film.srt"), bare = folder.add("bare");
  EXPECT_EQ(free_name_of_copy(film), folder.path("my.film.cleaned.srt"));
  folder.add("my.film.cleaned.srt");
  folder.add("my.film.cleaned-2.srt");
  EXPECT_EQ(free_name_of_copy(film), folder.path("my.film.cleaned-3.srt"));
  EXPECT_EQ(free_name_of_copy(bare), folder.path("bare.cleaned"));
}

// Made lines of all kinds ------------------------------------------------------------------------

const std::set<std::string> cleaned_rules = {"subtitle-markup-shown", "subtitle-text-lost",
                                             "subtitle-rate-line", "subtitle-wide-character"};

std::vector<std::string> left_in(const std::string& text) {
  std::vector<std::string> left;
  for (const finding& f : subtitle_text_findings(subtitle_file("a.srt", text), settings_in("UTF-8"),
                                                 {}, "a.srt", std::nullopt))
    if (cleaned_rules.contains(f.rule))
      left.push_back(f.found);
  return left;
}

/// Builds files of one format whose texts are made of words and of all that can go wrong.
class made_file {
 public:
  made_file(std::size_t format, std::mt19937& random) : format_(format), random_(random) {}

  std::string text(int cues) {
    std::string all = format_ == 5 ? "<SAMI><BODY>\n" : format_ == 1 && is(2) ? "{1}{1}25\n" : "";
    for (int i = 1; i <= cues; ++i)
      all += cue(i);
    return all;
  }

  std::vector<std::string> words;  ///< of the texts, in their order

 private:
  bool is(unsigned one_in) { return random_() % one_in == 0; }

  std::string cue(int i) {
    const std::string s = std::to_string(i % 50 + 10);
    switch (format_) {
      case 0:
        return "00:00:" + s + ",000 --> 00:00:" + s + ",900\n" + lines("\n") + "\n\n";
      case 1:
        return "{" + std::to_string(i * 100) + "}{" + std::to_string(i * 100 + 50) + "}" +
               lines("|") + "\n";
      case 2:
        return "00:00:" + s + ".00,00:00:" + s + ".90\n" + lines("[br]") + "\n\n";
      case 3:
        return "{T 00:00:" + s + ":00\n" + lines("\n") + "\n}\n";
      case 4:
        return "Dialogue: 0,0:00:" + s + ".00,0:00:" + s + ".90,D,,0,0,0,," + lines("\\N") + "\n";
      case 5:
        return "<SYNC Start=" + std::to_string(i * 1000) + "><P Class=EN>" + lines("<br>") + "\n";
      default:
        return "00:00:" + s + ":" + lines("|") + "\n";
    }
  }

  std::string lines(const std::string& separator) {
    std::string all = line();
    while (is(3))
      all += separator + line();
    return all;
  }

  /// Begins with a word, so that it is none that ends a cue.
  std::string line() {
    static const std::vector<std::string> odd = {"{\\an8}",
                                                 "{\\i1}",
                                                 "{y:i}",
                                                 "{C:$0000ff}",
                                                 "{a:",
                                                 "}",
                                                 "{",
                                                 "{",
                                                 "\\",
                                                 "\\h",
                                                 "\\N",
                                                 "&amp;",
                                                 "&lt;",
                                                 "&gt;",
                                                 "&",
                                                 "#39;",
                                                 "&#39;",
                                                 "&#x1F600;",
                                                 "&#0;",
                                                 "amp;",
                                                 "&#123;",
                                                 "<i>",
                                                 "</i>",
                                                 "<font x>",
                                                 "<font ",
                                                 "<",
                                                 ">",
                                                 "<sighs>",
                                                 "<b",
                                                 "<!--",
                                                 "\xF0\x9F\x98\x80",
                                                 "\xF0\x9F\x8E\xB5",
                                                 "\xC3\xA9",
                                                 "\xE2\x80\x8D",
                                                 "y:i}",
                                                 "an8}",
                                                 "&quot;",
                                                 "&nbsp;",
                                                 "{\\",
                                                 " ",
                                                 "&#92;",
                                                 "&am",
                                                 "p;",
                                                 "<u>"};
    std::string all = word();
    while (!is(4)) {
      all += odd[random_() % odd.size()];
      if (is(2))
        all += word();
    }
    return all;
  }

  std::string word() { return "w" + std::to_string(++count_) + "."; }

  std::size_t format_;
  std::mt19937& random_;
  int count_ = 0;
};

/// What is drawn of all cues, and their times.
std::string times_of(const std::string& text) {
  std::string all;
  for (const text_cue& c : read_subtitle_cues(text, 25).cues)
    if (!c.text.empty())
      all += std::to_string(c.begin) + "-" + std::to_string(c.end.value_or(-1)) + "\n";
  return all;
}

TEST(CleanedSubtitles, NothingIsFoundInTheOutcomeNorChangedInItAgain) {
  std::mt19937 random(7);
  int changed = 0;
  for (int round = 0; round < 700; ++round) {
    const std::string text = made_file(static_cast<std::size_t>(round) % 7, random).text(6);
    const cleaned_subtitles done = cleaned(text);
    changed += done.changes.empty() ? 0 : 1;
    ASSERT_THAT(left_in(done.text), IsEmpty()) << text << "\nbecame\n" << done.text;
    const cleaned_subtitles again = cleaned(done.text);
    ASSERT_EQ(again.text, done.text) << text;
    ASSERT_THAT(again.changes, IsEmpty()) << text;
    if (done.rate.empty()) {
      ASSERT_EQ(times_of(done.text), times_of(text)) << text << "\nbecame\n" << done.text;
    }
  }
  EXPECT_GT(changed, 600);
}

/// The file with some bytes changed, left out or doubled.
std::string damaged(std::string text, std::mt19937& random) {
  const std::string signs = "{}<>&;\\\n\r|:,0123 -hN\xF0\x80";
  for (int i = 0; i < 6; ++i) {
    const std::size_t at = random() % text.size(), count = random() % 9;
    if (random() % 3 == 0)
      text.erase(at, count);
    else if (random() % 2 == 0)
      text.insert(at, text.substr(random() % text.size(), count));
    else
      text[at] = signs[random() % signs.size()];
  }
  return text;
}

TEST(CleanedSubtitles, DamagedFilesAreCleanedOnceAndForAllOrRefused) {
  std::mt19937 random(3);
  int refused = 0;
  for (int round = 0; round < 1400; ++round) {
    const std::string text =
        damaged(made_file(static_cast<std::size_t>(round) % 7, random).text(4), random);
    const auto done = clean_subtitles(subtitle_file("a.srt", text), settings_in("UTF-8"));
    refused += done ? 0 : 1;
    if (!done)
      continue;
    ASSERT_THAT(left_in(done->text), IsEmpty()) << text << "\nbecame\n" << done->text;
    const auto again = clean_subtitles(subtitle_file("a.srt", done->text), settings_in("UTF-8"));
    ASSERT_TRUE(again) << again.error << text << "\nbecame\n" << done->text;
    ASSERT_EQ(again->text, done->text) << text;
  }
  EXPECT_LT(refused, 1000);
}

TEST(CleanedSubtitles, NoTextThatIsDrawnIsLost) {
  std::mt19937 random(11);
  const auto drawn = [](const std::string& text) {
    std::string all;
    for (const text_cue& c : read_subtitle_cues(text, 25).cues)
      all += join(c.text, "\n") + "\n";
    return all;
  };
  for (int round = 0; round < 700; ++round) {
    const std::string text = made_file(static_cast<std::size_t>(round) % 7, random).text(6);
    const std::string before = drawn(text), after = drawn(cleaned(text).text);
    for (int i = 1; i < 200; ++i) {
      const std::string word = "w" + std::to_string(i) + ".";
      const auto at = before.find(word);
      if (at == std::string::npos || after.find(word) != std::string::npos)
        continue;
      // It may have stood within "{\...}" or a tag, where it was no text.
      const auto line_begin = before.rfind('\n', at) + 1;
      const std::string ahead = before.substr(line_begin, at - line_begin);
      EXPECT_TRUE(ahead.find("{\\") != std::string::npos || ahead.find('<') != std::string::npos)
          << word << " of\n"
          << text << "\nbecame\n"
          << after;
    }
  }
}

TEST(CleanedSubtitles, LinesThatAreMadeToTakeLongDoNot) {
  for (const std::string& piece :
       {std::string("{y:"), std::string("<"), std::string("&amp;"), std::string("&"),
        std::string("{\\"), std::string("{{y:i}y:i}"), std::string("<i"), std::string("\\N"),
        std::string("&#123;"), std::string("<font ")}) {
    std::string line;
    while (line.size() < 300'000)
      line += piece;
    for (const std::string& text : {cue(line), "{25}{50}" + line + "\n",
                                    "Dialogue: 0,0:00:01.00,0:00:02.50,D,,0,0,0,," + line + "\n"}) {
      const cleaned_subtitles done = cleaned(text);
      EXPECT_THAT(left_in(done.text), IsEmpty()) << piece;
    }
  }
}

}  // namespace
}  // namespace corvane
