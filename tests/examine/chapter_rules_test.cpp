// Where chapters land, which merge or are left out, and which number a button's chapter has.
#include "examine/chapter_rules.h"

#include "formats/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

disc_title title_with(const std::string& chapters) {
  disc_title t;
  t.chapters_text = chapters;
  for (const std::string& time : split(chapters, ','))
    t.chapters.push_back(time_of(time));
  return t;
}

// 24 s in units of half a second.
title_length half_seconds() {
  title_length length;
  length.seconds = 24;
  for (int unit = 0; unit < 48; ++unit)
    length.units.push_back(unit * 0.5);
  return length;
}

std::vector<int> numbers(const landed_chapters& landed) {
  std::vector<int> all;
  for (const chapter_fate& fate : landed.fates)
    all.push_back(fate.number);
  return all;
}

std::vector<std::string> found(const disc_description& d, const title_length& length) {
  const std::vector<title_length> lengths(d.titles.size(), length);
  std::vector<std::string> texts;
  for (const finding& f : chapter_findings(d, lengths))
    texts.push_back(f.rule + " at " + place_text(f));
  return texts;
}

disc_description disc_with(const std::string& chapters) {
  disc_description d;
  d.titles.push_back(title_with(chapters));
  return d;
}

void add_button(disc_description& d, const std::string& command) {
  if (d.menus.empty())
    d.menus.emplace_back();
  disc_button b;
  b.action = command_of(command);
  d.menus[0].buttons.push_back(b);
}

TEST(ChaptersOnDisc, EachLandsAtTheNearestUnitAndTheEarlierOneHalfWay) {
  const landed_chapters landed = chapters_on_disc(title_with("0,5.2,5.8,7.25"), half_seconds());
  EXPECT_THAT(landed.begins, ElementsAre(0, 5, 6, 7));
  EXPECT_THAT(numbers(landed), ElementsAre(1, 2, 3, 4));
  EXPECT_FALSE(landed.added);
}

TEST(ChaptersOnDisc, HalfWayIsTheEarlierOneHoweverSecondsAreRounded) {
  title_length length;
  length.seconds = 24;
  length.units = {0, 2.8 - 1e-9, 3.2 - 1e-9};
  EXPECT_THAT(chapters_on_disc(title_with("0,3"), length).begins, ElementsAre(0, length.units[1]));
  length.units = {0, 2.8 + 1e-9, 3.2 + 1e-9};
  EXPECT_THAT(chapters_on_disc(title_with("0,3"), length).begins, ElementsAre(0, length.units[1]));
}

TEST(ChaptersOnDisc, WithoutUnitsEachIsWhereItWasAsked) {
  EXPECT_THAT(chapters_on_disc(title_with("0,5.2,5.8"), {}).begins, ElementsAre(0, 5.2, 5.8));
}

TEST(ChaptersOnDisc, OneIsAddedAtTheBeginning) {
  const landed_chapters landed = chapters_on_disc(title_with("5,10"), half_seconds());
  EXPECT_TRUE(landed.added);
  EXPECT_THAT(landed.begins, ElementsAre(0, 5, 10));
  EXPECT_THAT(numbers(landed), ElementsAre(2, 3));
}

TEST(ChaptersOnDisc, TwoInOneUnitBecomeOne) {
  const landed_chapters landed = chapters_on_disc(title_with("0,5.1,5.2,9"), half_seconds());
  EXPECT_THAT(landed.begins, ElementsAre(0, 5, 9));
  EXPECT_THAT(numbers(landed), ElementsAre(1, 2, 2, 3));
  EXPECT_EQ(landed.fates[2].what, chapter_fate::kind::merged);
}

TEST(ChaptersOnDisc, AFirstOneJustBehindTheBeginningIsTheBeginning) {
  EXPECT_THAT(chapters_on_disc(title_with("0.1,9"), half_seconds()).begins, ElementsAre(0, 9));
}

TEST(ChaptersOnDisc, UnsortedAndLateOnesAreLeftOut) {
  const landed_chapters landed = chapters_on_disc(title_with("0,9,5,24,30"), half_seconds());
  EXPECT_THAT(landed.begins, ElementsAre(0, 9));
  EXPECT_THAT(numbers(landed), ElementsAre(1, 2, 0, 0, 0));
}

TEST(ChaptersOnDisc, ATitleWithoutTimesHasOneChapter) {
  EXPECT_THAT(chapters_on_disc(title_with(""), half_seconds()).begins, ElementsAre(0));
}

TEST(ChapterRules, SortedChaptersFromTheBeginningHaveNoFinding) {
  EXPECT_THAT(found(disc_with("00:00:00.00,00:00:05.00,00:00:10.00"), half_seconds()), IsEmpty());
}

TEST(ChapterRules, AnAddedChapterIsANote) {
  const disc_description d = disc_with("5,10");
  EXPECT_THAT(found(d, half_seconds()), ElementsAre("chapter-added at title 1"));
  EXPECT_EQ(chapter_findings(d, {})[0].found,
            "the first chapter is at 00:00:05.00; one at the beginning is added");
}

TEST(ChapterRules, MergedChaptersAreNamedByEntryAndTime) {
  EXPECT_THAT(found(disc_with("0,5.1,5.2"), half_seconds()),
              ElementsAre("chapter-merged at title 1, chapter 3, 00:00:05"));
}

TEST(ChapterRules, ChaptersThatBeginElsewhereAreANoteForTheirTitle) {
  const disc_description d = disc_with("0,5.2,7.05,9.75");
  ASSERT_THAT(found(d, half_seconds()), ElementsAre("chapter-moved at title 1"));
  const auto findings = chapter_findings(d, std::vector{half_seconds()});
  EXPECT_EQ(findings[0].severity, finding_severity::note);
  EXPECT_EQ(findings[0].found, "\"5.2\" begins at 00:00:05.00, \"9.75\" begins at 00:00:09.50");
  EXPECT_THAT(found(d, {}), IsEmpty()) << "where the units are not known";
}

TEST(ChapterRules, OfManyChaptersElsewhereTheFirstAreNamed) {
  std::string chapters = "0";
  for (int second = 1; second <= 12; ++second)
    chapters += "," + std::to_string(second) + ".2";
  const auto findings = chapter_findings(disc_with(chapters), std::vector{half_seconds()});
  ASSERT_EQ(findings.size(), 1u);
  EXPECT_TRUE(findings[0].found.ends_with("\"10.2\" begins at 00:00:10.00, and 2 more elsewhere"))
      << findings[0].found;
}

TEST(ChapterRules, UnsortedAndLateEntriesAreNamed) {
  EXPECT_THAT(found(disc_with("0,9,5,30"), half_seconds()),
              ElementsAre("chapter-order at title 1, chapter 3, 00:00:05",
                          "chapter-after-end at title 1, chapter 4, 00:00:30"));
}

TEST(ChapterRules, AButtonWhoseChapterHasAnotherNumberIsTold) {
  disc_description d = disc_with("5,10");
  add_button(d, "jump title 1 chapter 2");
  EXPECT_THAT(found(d, half_seconds()),
              ElementsAre("chapter-added at title 1", "chapter-number at menu 1, button 1"));
  const auto findings = chapter_findings(d, {});
  EXPECT_EQ(
      findings.back().found,
      "chapter 2 of title 1 will begin at 00:00:05.00, not at 00:00:10.00, which is chapter 3");
  EXPECT_EQ(findings.back().wanted, "chapter 3");
}

TEST(ChapterRules, AButtonWhoseChapterIsNoneIsTold) {
  disc_description d = disc_with("0,9,5,12");
  add_button(d, "jump title 1 chapter 3");
  const auto findings = chapter_findings(d, std::vector{half_seconds()});
  ASSERT_FALSE(findings.empty());
  EXPECT_EQ(findings.back().rule, "chapter-number");
  EXPECT_EQ(findings.back().found,
            "chapter 3 of title 1 will begin at 00:00:12.00, not at 00:00:05.00, which is no "
            "chapter");
}

TEST(ChapterRules, AButtonBehindAMergedChapterIsTold) {
  disc_description d = disc_with("0,5.1,5.2,9");
  add_button(d, "jump title 1 chapter 2");
  add_button(d, "jump title 1 chapter 3");
  EXPECT_THAT(found(d, half_seconds()),
              ElementsAre("chapter-merged at title 1, chapter 3, 00:00:05",
                          "chapter-number at menu 1, button 2"));
}

TEST(ChapterRules, AChapterThatIsNoLongerThereIsAnError) {
  disc_description d = disc_with("0,5.1,5.2");
  d.titles[0].post = command_of("jump title 1 chapter 3");
  const auto findings = chapter_findings(d, std::vector<title_length>{half_seconds()});
  ASSERT_EQ(findings.size(), 2u);
  EXPECT_EQ(findings[1].rule, "chapter-missing");
  EXPECT_EQ(findings[1].severity, finding_severity::error);
  EXPECT_EQ(findings[1].found,
            "chapter 3 of title 1 is not on the disc: of its 3 times 2 become chapters");
}

// Blank pieces of the list are no chapters: neither the list that a person sees nor the disc counts
// them.
TEST(ChapterRules, BlankPiecesAreNotCounted) {
  disc_description d = disc_with("0,, ,5,5.1,10");
  EXPECT_THAT(found(d, half_seconds()),
              ElementsAre("chapter-merged at title 1, chapter 3, 00:00:05"));
  d = disc_with("0,,5,10,");
  add_button(d, "jump title 1 chapter 3");
  EXPECT_THAT(found(d, half_seconds()), IsEmpty());
  add_button(d, "jump title 1 chapter 4");
  EXPECT_THAT(found(d, half_seconds()), IsEmpty()) << "which the navigation rules tell";
  d = disc_with("0,,5.1,5.2");
  add_button(d, "jump title 1 chapter 3");
  EXPECT_EQ(chapter_findings(d, std::vector{half_seconds()}).back().found,
            "chapter 3 of title 1 is not on the disc: of its 3 times 2 become chapters");
}

TEST(ChapterRules, AChapterAfterMergedOnesBehindAnAddedOneIsAnError) {
  disc_description d = disc_with("5.1,5.2");
  add_button(d, "jump title 1 chapter 3");
  const auto findings = chapter_findings(d, std::vector{half_seconds()});
  EXPECT_EQ(findings.back().rule, "chapter-missing");
  EXPECT_EQ(findings.back().found,
            "chapter 3 of title 1 is not on the disc: of its 2 times 1 becomes a chapter");
}

TEST(ChapterRules, TimesAreReadAsDvdauthorReadsThem) {
  EXPECT_THAT(chapters_on_disc(title_with(".5 :1,0:0:0:2"), half_seconds()).begins,
              ElementsAre(0, 0.5, 1, 2));
}

TEST(ChapterRules, CommandsToRightNumbersHaveNoFinding) {
  disc_description d = disc_with("0,5,10");
  add_button(d, "jump title 1 chapter 3");
  add_button(d, "jump title 1");
  EXPECT_THAT(found(d, half_seconds()), IsEmpty());
}

TEST(ChapterRules, ATitlesetsFirstTitleIsItsOwn) {
  disc_description d = disc_with("0,5.1,5.2");
  d.titles.push_back(title_with("0,5,10"));
  d.titles[1].titleset = 2;
  const std::string merged = "chapter-merged at title 1, chapter 3, 00:00:05";
  d.titles[1].post = command_of("jump title 1 chapter 3");
  EXPECT_THAT(found(d, half_seconds()), ElementsAre(merged)) << "which is title 2 of the disc";
  d.titles[0].post = command_of("jump title 1 chapter 3");
  EXPECT_THAT(found(d, half_seconds()), ElementsAre(merged, "chapter-missing at title 1, command"));
}

TEST(ChapterRules, ChaptersThatTypedCommandsNameAreLookedFor) {
  disc_description d = disc_with("0,5.1,5.2");
  add_button(d, "g3=1; jump title 1 chapter 3");
  EXPECT_THAT(found(d, half_seconds()), Contains("chapter-missing at menu 1, button 1"));
  d.menus.clear();
  d.titles[0].post = command_of("if (g3 eq 1) jump chapter 3; else jump chapter 2;");
  EXPECT_THAT(found(d, half_seconds()), Contains("chapter-missing at title 1, command"));
  d.titles[0].post.reset();
  d.titles[0].pre = command_of("jump chapter 3");
  EXPECT_THAT(found(d, half_seconds()), Contains("chapter-missing at title 1, command"));
}

// Titles of several files -------------------------------------------------------------------------

TEST(ChapterRules, AFurtherFileHasAChapterAtItsBeginningOnlyWithoutAList) {
  const auto in_further = [](const std::string& list) {
    return chapters_in_file(title_with(list), half_seconds(), false).begins;
  };
  EXPECT_THAT(in_further(""), ElementsAre(0));
  EXPECT_THAT(in_further(" ,"), ElementsAre(0));
  EXPECT_THAT(in_further("1"), ElementsAre(1));
  EXPECT_THAT(in_further("0,1"), ElementsAre(0, 1));
  EXPECT_THAT(in_further("0.1,0.2,1.1"), ElementsAre(0, 1));
  EXPECT_THAT(in_further("3,1"), ElementsAre(3));
  EXPECT_THAT(in_further("30,1"), IsEmpty()) << "the first one is behind its end";
}

TEST(ChapterRules, FilesOfATitleHaveTheirChaptersBehindEachOther) {
  disc_description d = disc_with("0,5");
  title_length length = half_seconds();
  for (const char* const list : {"", "2,2.1,40", "1"}) {
    d.titles[0].further.push_back(title_with(list));
    length.further.push_back(half_seconds());
  }
  EXPECT_THAT(chapters_on_disc(d.titles[0], length).begins, ElementsAre(0, 5, 24, 50, 73));
  EXPECT_THAT(found(d, length), ElementsAre("chapter-merged at title 1, chapter 4",
                                            "chapter-after-end at title 1, chapter 5"));
  add_button(d, "jump title 1 chapter 5");
  EXPECT_THAT(found(d, half_seconds()), Not(Contains(HasSubstr("button"))));
  add_button(d, "jump title 1 chapter 7");
  EXPECT_THAT(found(d, length), Contains("chapter-missing at menu 1, button 2"));
}

}  // namespace
}  // namespace corvane
