#include "tools/chapters.h"

#include "support/command_test.h"

#include <clocale>
#include <limits>
#include <locale>

namespace corvane {
namespace {

class Chapter : public testing_support::command_test {
 protected:
  Chapter() {
    add_files_and_title({"one.m2v", "one.ac3"});
    add_files_and_title({"two.m2v", "two.ac3"});
    p.chapters = {"00:00:00.00", "00:00:00.00,00:05:10.25"};
    p.selected = 1;
    p.saved = 1;
  }
};

// Times ------------------------------------------------------------------------------------------

TEST(ChapterTime, IsHoursMinutesSecondsAndHundredths) {
  EXPECT_EQ(chapter_time(0), "00:00:00.00");
  EXPECT_EQ(chapter_time(3725.5), "01:02:05.50");
  EXPECT_EQ(chapter_time(59.99), "00:00:59.99");
  EXPECT_EQ(chapter_time(60), "00:01:00.00");
  EXPECT_EQ(chapter_time(3599.994), "00:59:59.99");
  EXPECT_EQ(chapter_time(100 * 3600.0 + 61), "100:01:01.00");
}

TEST(ChapterTime, SecondsAreRoundedByTheFormatAndNotCarriedIntoMinutes) {
  EXPECT_EQ(chapter_time(59.999), "00:00:60.00");
  EXPECT_EQ(chapter_time(59.995), "00:00:60.00");
  EXPECT_EQ(chapter_time(59.9949), "00:00:59.99");
  EXPECT_EQ(chapter_time(3659.999), "01:00:60.00");
}

TEST(ChapterTime, AHalfHundredthIsRoundedUpWhateverItsBinaryNumber) {
  // 1.005 and what is left of 3661.005 lie to different sides of the half.
  EXPECT_EQ(chapter_time(1.005), "00:00:01.01");
  EXPECT_EQ(chapter_time(3661.005), "01:01:01.01");
  EXPECT_EQ(chapter_time(0.125), "00:00:00.13");
  EXPECT_EQ(chapter_time(0.135), "00:00:00.14");
}

TEST(ChapterTime, PositionsThatAreNoneAreTheBeginning) {
  EXPECT_EQ(chapter_time(-1), "00:00:00.00");
  EXPECT_EQ(chapter_time(std::numeric_limits<double>::quiet_NaN()), "00:00:00.00");
  EXPECT_EQ(chapter_time(std::numeric_limits<double>::infinity()), "32767:00:00.00");
}

/// Numbers as many countries write them.
class comma_numbers : public std::numpunct<char> {
 protected:
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(ChapterTime, HasAPointInEveryLocale) {
  const std::locale before = std::locale::global(std::locale(std::locale(), new comma_numbers));
  std::setlocale(LC_ALL, "de_DE.UTF-8");  // where it is installed
  EXPECT_EQ(chapter_time(3725.5), "01:02:05.50");
  EXPECT_EQ(chapter_time(12345 * 3600.0), "12345:00:00.00");
  EXPECT_EQ(chapter_seconds("01:02:05.50"), 3725.5);
  std::setlocale(LC_ALL, "C");
  std::locale::global(before);
}

TEST(ChapterSeconds, AreThePositionOfATime) {
  EXPECT_EQ(chapter_seconds("00:00:00.00"), 0);
  EXPECT_EQ(chapter_seconds("01:02:05.50"), 3725.5);
  EXPECT_EQ(chapter_seconds("00:00:60.00"), 60);
  EXPECT_EQ(chapter_seconds("100:00:00.00"), 360000);
  EXPECT_EQ(chapter_seconds(" 00:05:00"), 300);
}

TEST(ChapterSeconds, AreNoneOfWhatIsNoTime) {
  for (const char* const text :
       {"", "00:05", "ab:cd:ef.gh", "00:00:00:00", "00::1", "0:0:1.2.3", "0:0:1,5", "-1:00:00.00"})
    EXPECT_EQ(chapter_seconds(text), std::nullopt) << text;
}

// Chapter string and chapter text ----------------------------------------------------------------

TEST(ChapterText, HasATimeALine) {
  EXPECT_EQ(chapter_text("00:00:00.00,00:05:10.25"), "00:00:00.00\r\n00:05:10.25\r\n");
  EXPECT_EQ(chapter_text(",00:00:00.00,,"), "00:00:00.00\r\n");
  EXPECT_EQ(chapter_text(""), "");
}

TEST(ChapterString, JoinsTheTimesInTheirOrder) {
  EXPECT_EQ(chapter_string("00:12:30.50\r\n00:00:00.00\r\n00:12:30.50\r\n"),
            "00:12:30.50,00:00:00.00,00:12:30.50");
}

TEST(ChapterString, BlanksAroundATimeAreNotStored) {
  EXPECT_EQ(chapter_string("00:05:00.00"), "00:05:00.00");
  EXPECT_EQ(chapter_string(" 00:05:00.00"), "00:05:00.00");
  EXPECT_EQ(chapter_string("00:05:00.00   "), "00:05:00.00");
  // The blanks before it are among the 12 characters.
  EXPECT_EQ(chapter_string("  00:05:00.00  "), "00:05:00.0");
}

TEST(ChapterString, OneHourDigitIsATypo) {
  EXPECT_EQ(chapter_string("0:05:00.00"), std::nullopt);
}

TEST(ChapterString, OnlyTheFirst12CharactersCount) {
  EXPECT_EQ(chapter_string("00:05:00.0099"), "00:05:00.009");
  EXPECT_EQ(chapter_string("00:05:00.00 - second song, and so on"), "00:05:00.00");
}

TEST(ChapterString, OnlySeparatorsAreCheckedNeverDigits) {
  EXPECT_EQ(chapter_string("ab:cd:ef.gh"), "ab:cd:ef.gh");
  EXPECT_EQ(chapter_string("00:05:00."), "00:05:00.");
  EXPECT_EQ(chapter_string("00.05:00.00"), std::nullopt);
  EXPECT_EQ(chapter_string("00:05.00.00"), std::nullopt);
  EXPECT_EQ(chapter_string("00:05:00:00"), std::nullopt);
  EXPECT_EQ(chapter_string("00:05:00,00"), std::nullopt);
}

TEST(ChapterString, BlankLinesVanish) {
  EXPECT_EQ(chapter_string("00:00:00.00\r\n\r\n00:10:00.00"), "00:00:00.00,00:10:00.00");
  EXPECT_EQ(chapter_string("\r\n   \r\n"), "");
}

TEST(ChapterString, LinesShorterThan9CharactersAreDropped) {
  EXPECT_EQ(chapter_string("00:05:00\r\n00:10:00.00\r\nxyz"), "00:10:00.00");
  EXPECT_EQ(chapter_string("abc"), "");
  EXPECT_EQ(chapter_string("äöüäöüäö"), "");  // 8 characters
}

TEST(ChapterString, NoTimesAreTheEmptyString) {
  EXPECT_EQ(chapter_string(""), "");
}

TEST(ChapterString, PlacesAreThoseOfCharacters) {
  EXPECT_EQ(chapter_string("äb:cd:ef.ghäää"), "äb:cd:ef.ghä");
}

TEST(ChapterString, WhatTheRowCannotHoldIsATypo) {
  EXPECT_EQ(chapter_string("00:05:00.0,0"), std::nullopt);
  EXPECT_EQ(chapter_string("00:05:00.00\tsong"), std::nullopt);
}

TEST(ChapterString, LineFeedsAloneEndLinesToo) {
  EXPECT_EQ(chapter_string("00:00:00.00\n00:10:00.00\n"), "00:00:00.00,00:10:00.00");
}

// What becomes of each line ----------------------------------------------------------------------

using fate = chapter_line_fate;

TEST(ChapterLines, EachHasItsFate) {
  const std::pair<const char*, fate> lines[] = {
      {"", fate::blank},
      {"   ", fate::blank},
      {"00:05:00.00", fate::stored},
      {" 00:05:00.00   ", fate::stored},
      {"ab:cd:ef.gh", fate::stored},
      {"00:05:00.", fate::stored},
      {"00:05:00", fate::left_out},
      {"5:00", fate::left_out},
      {"             00:05:00.00", fate::left_out},  // nothing in the first 12 characters
      {"0:05:00.00", fate::typo},
      {"00:05:00,00", fate::typo},
      {"00:05:00.1,2", fate::typo},
      {"00:05:00.00 - second song", fate::cut},
      {"  00:05:00.00", fate::cut},
  };
  for (const auto& [line, expected] : lines) {
    const chapter_line judged = judged_chapter_line(line);
    EXPECT_EQ(judged.fate, expected) << '"' << line << '"';
    EXPECT_EQ(judged.time.empty(), expected != fate::stored && expected != fate::cut) << line;
  }
  EXPECT_EQ(judged_chapter_line("00:05:00.00 - second song").time, "00:05:00.00");
}

TEST(ChapterLines, AcceptanceDoesToEachWhatWasSaid) {
  const char* const samples[] = {"",
                                 "  ",
                                 "00:05:00",
                                 "0:05:00.00",
                                 "00:05:00.0099",
                                 "x",
                                 "00:05:00,00",
                                 " 00:05:00.00 ",
                                 "ab:cd:ef.gh",
                                 "\xC3\xA4",
                                 "00:00:00.0,",
                                 "12:34:56.78 and more"};
  for (const char* const first : samples)
    for (const char* const second : samples) {
      const std::string text = std::string(first) + "\r\n" + second;
      std::string said;
      bool refused = false;
      for (const chapter_line& line : judged_chapter_lines(text)) {
        refused = refused || line.fate == fate::typo;
        if (!line.time.empty())
          said += (said.empty() ? "" : ",") + line.time;
      }
      EXPECT_EQ(chapter_string(text), refused ? std::nullopt : std::optional(said)) << text;
    }
}

TEST(ChapterLines, NotesTellHowManyAreStoredAndWhatIsNot) {
  const auto notes = [](const char* text) { return chapter_notes(judged_chapter_lines(text)); };
  using testing_support::rows;
  EXPECT_EQ(notes(""), rows{"0 chapters."});
  EXPECT_EQ(notes("00:00:00.00\r\n"), rows{"1 chapter."});
  EXPECT_EQ(
      notes("00:00:00.00\r\n00:05:00\r\n00:10:00\r\nx\r\n"),
      (rows{"1 chapter.", "3 lines are too short for a time (00:12:30.50) and will be left out."}));
  EXPECT_EQ(notes("00:05:00\n0:05:00.00\n00:05:00.00 song"),
            (rows{"1 chapter.", "1 line is no time (00:12:30.50) and must be corrected first.",
                  "1 line is too short for a time (00:12:30.50) and will be left out.",
                  "1 line is longer than a time and will be cut after 12 characters."}));
  EXPECT_EQ(notes("0:05:00.00\n0:06:00.00")[1],
            "2 lines are no time (00:12:30.50) and must be corrected first.");
}

TEST(ChapterLines, TimesWithoutHundredthsAreCompletedAndNothingElseChanges) {
  EXPECT_EQ(completed_chapter_text("00:05:00"), "00:05:00.00");
  EXPECT_EQ(completed_chapter_text("00:05:00\r\n  00:10:00 \r\n"),
            "00:05:00.00\r\n00:10:00.00\r\n");
  EXPECT_EQ(completed_chapter_text("00:05:00\n\n00:10:00\n"), "00:05:00.00\n\n00:10:00.00\n");
  for (const char* const text : {"", "\r\n", "00:05:00.00\r\n", "0:05:00", "00:05", "00:05:0a",
                                 "00-05-00", "00:05:00x", " \r\n 00:05:00. \r\nx"})
    EXPECT_EQ(completed_chapter_text(text), text);
  EXPECT_TRUE(judged_chapter_line("00:05:00").completable);
  EXPECT_FALSE(judged_chapter_line("00:05:00.00").completable);
  EXPECT_EQ(chapter_string(completed_chapter_text("00:00:00\r\n00:05:00")),
            "00:00:00.00,00:05:00.00");
}

// The dialog -------------------------------------------------------------------------------------

TEST_F(Chapter, WithoutATitleSelectedIsRefused) {
  p.selected = -1;
  expect_refusal("Please select a title to add chapters to.");
  EXPECT_FALSE(chapter::open(doc));
}

TEST_F(Chapter, HandEditedXmlStaysWhenTheUserKeepsIt) {
  p.customxml = "<dvdauthor/>";
  p.selected = -1;  // is not looked at
  expect_guard(answer::cancel);
  EXPECT_FALSE(chapter::open(doc));
  EXPECT_EQ(p.customxml, "<dvdauthor/>");
  EXPECT_EQ(p.saved, 1);
}

TEST_F(Chapter, HandEditedXmlIsAskedAboutBeforeTheTitle) {
  p.customxml = "<dvdauthor/>";
  p.selected = -1;
  expect_guard(answer::ok);
  expect_refusal("Please select a title to add chapters to.");
  EXPECT_FALSE(chapter::open(doc));
  EXPECT_EQ(p.customxml, "");
}

TEST_F(Chapter, HandEditedXmlGoesWhenTheUserAgrees) {
  p.customxml = "<dvdauthor/>";
  expect_guard(answer::ok);
  EXPECT_TRUE(chapter::open(doc));
  EXPECT_EQ(p.customxml, "");
}

TEST_F(Chapter, ShowsNumberRowAndTimesOfTheSelectedTitle) {
  const auto dialog = chapter::open(doc);
  ASSERT_TRUE(dialog);
  EXPECT_EQ(dialog->Label2(), "2");
  EXPECT_EQ(dialog->Label3(), "title2:two.m2v/two.ac3");
  EXPECT_EQ(dialog->RichTextBox1(), "00:00:00.00\r\n00:05:10.25\r\n");
  EXPECT_EQ(dialog->video(), folder.path("two.m2v"));
}

TEST_F(Chapter, VideoOfAMuxedTitleIsItsFile) {
  p.List11[1] = folder.stored("two.vob");
  EXPECT_EQ(chapter::open(doc)->video(), folder.path("two.vob"));
}

TEST_F(Chapter, AcceptingStoresTheTimesOfThisTitleAlone) {
  auto dialog = chapter::open(doc);
  dialog->set_text("00:00:00.00\r\n\r\n00:10:00.00 \r\n");
  EXPECT_TRUE(dialog->accept());
  EXPECT_EQ(p.chapters, (testing_support::rows{"00:00:00.00", "00:00:00.00,00:10:00.00"}));
  EXPECT_EQ(p.saved, 0);
}

TEST_F(Chapter, AcceptingRefreshesTheStatus) {
  p.dvdsizetext = "old";
  EXPECT_TRUE(chapter::open(doc)->accept());
  EXPECT_EQ(p.dvdsizetext, "2 titles\r\n0 menus\r\n0.000 gig total");
}

TEST_F(Chapter, AcceptingWithAMissingStreamTellsSoAndStoresTheTimes) {
  p.List11[0] = folder.stored("gone.m2v");
  auto dialog = chapter::open(doc);
  dialog->set_text("00:10:00.00");
  expect_missing(folder.path("gone.m2v"));
  EXPECT_TRUE(dialog->accept());
  EXPECT_EQ(p.chapters[1], "00:10:00.00");
}

TEST_F(Chapter, ATypoIsToldOnceAndNothingIsStored) {
  auto dialog = chapter::open(doc);
  dialog->set_text("00:00:00.00\r\n0:05:00.00\r\n0:06:00.00\r\n");
  expect_refusal("There appears to be a typo in the chapters list, please correct.");
  EXPECT_FALSE(dialog->accept());
  EXPECT_EQ(p.chapters[1], "00:00:00.00,00:05:10.25");
  EXPECT_EQ(p.saved, 1);
  EXPECT_EQ(dialog->RichTextBox1(), "00:00:00.00\r\n0:05:00.00\r\n0:06:00.00\r\n");
  dialog->set_text("00:00:00.00\r\n00:05:00.00\r\n");
  EXPECT_TRUE(dialog->accept());
  EXPECT_EQ(p.chapters[1], "00:00:00.00,00:05:00.00");
}

TEST_F(Chapter, AcceptingAnEmptyTextClearsTheChapters) {
  auto dialog = chapter::open(doc);
  dialog->set_text("");
  EXPECT_TRUE(dialog->accept());
  EXPECT_EQ(p.chapters[1], "");
}

TEST_F(Chapter, ClosingWithoutAcceptStoresNothing) {
  { chapter::open(doc)->set_text("00:10:00.00"); }
  EXPECT_EQ(p.chapters[1], "00:00:00.00,00:05:10.25");
  EXPECT_EQ(p.saved, 1);
}

TEST_F(Chapter, TitleWithoutAChaptersRowGetsOne) {
  p.chapters.clear();
  auto dialog = chapter::open(doc);
  EXPECT_EQ(dialog->RichTextBox1(), "");
  dialog->set_text("00:10:00.00");
  EXPECT_TRUE(dialog->accept());
  EXPECT_EQ(p.chapters, (testing_support::rows{"", "00:10:00.00"}));
}

}  // namespace
}  // namespace corvane
