#include "formats/subtitle_cues.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

std::vector<text_cue> cues_of(const std::string& text, subtitle_format wanted) {
  const subtitle_cues all = read_subtitle_cues(text, 25);
  EXPECT_EQ(all.format, wanted);
  return all.cues;
}

void expect_times(const text_cue& cue, double begin, double end) {
  EXPECT_NEAR(cue.begin, begin, 0.001);
  ASSERT_TRUE(cue.end);
  EXPECT_NEAR(*cue.end, end, 0.001);
}

TEST(SubtitleCues, SubRipHasTimesAndLines) {
  const auto cues = cues_of(
      "1\r\n00:00:01,999 --> "
      "00:01:02.500\r\nOne\r\n<i>two</i>\r\n\r\n2\r\n00:00:05:0-->00:00:06:0\n"
      "Three",
      subtitle_format::subrip);
  ASSERT_THAT(cues, SizeIs(2));
  expect_times(cues[0], 1.99, 62.5);
  EXPECT_THAT(cues[0].text, ElementsAre("One", "two"));
  EXPECT_EQ(cues[0].line, 2);
  EXPECT_EQ(cues[0].lost, "");
  expect_times(cues[1], 5, 6);
  EXPECT_EQ(cues[1].line, 7);
}

/// What stands at the places of all cues.
std::vector<std::string> placed(const std::string& text) {
  std::vector<std::string> all;
  for (const text_cue& cue : read_subtitle_cues(text, 25).cues)
    for (const text_place& place : cue.places)
      all.push_back(text.substr(place.at, place.size));
  return all;
}

TEST(SubtitleCues, PlacesAreWhereTheTextsStandInTheFile) {
  EXPECT_THAT(placed("1\r\n00:00:01,0 --> 00:00:02,0\r\nOne\r\n<i>two</i>\r\n\r\nnot this\n"),
              ElementsAre("One", "<i>two</i>"));
  EXPECT_THAT(placed("{25}{50}{y:i}a|b\r\n{60}{}c"), ElementsAre("{y:i}a|b", "c"));
  EXPECT_THAT(placed("Dialogue: 0,0:00:01.00,0:00:02.50,D,,0,0,0,,{\\b1}a\\Nb, c\n"),
              ElementsAre("{\\b1}a\\Nb, c"));
  EXPECT_THAT(placed("00:00:01.00,00:00:02.00\na[br]b\n"), ElementsAre("a[br]b"));
  EXPECT_THAT(placed("{T 00:00:01:00\na\nb\n}\n"), ElementsAre("a", "b"));
  EXPECT_THAT(placed("00:00:01:a|b\n"), ElementsAre("a|b"));
  EXPECT_THAT(placed("<SAMI>\n<SYNC Start=1000><P Class=EN>a<br>b\n<SYNC Start=2000><P>c\n"),
              ElementsAre("a<br>b\n", "c\n"));
}

TEST(SubtitleCues, CueOfSubRipWithoutTextIsLeftOut) {
  EXPECT_THAT(cues_of("00:00:01,0 --> 00:00:02,0\n\n00:00:03,0 --> 00:00:04,0\n\n",
                      subtitle_format::subrip),
              IsEmpty());
}

TEST(SubtitleCues, WhatStandsBetweenTheSignsOfATagIsLost) {
  const auto cues = cues_of(
      "00:00:01,0 --> 00:00:02,0\na <b>bold</b> <sighs> <more> > end\n\n"
      "00:00:03,0 --> 00:00:04,0\n3 < 4, he says\n",
      subtitle_format::subrip);
  ASSERT_THAT(cues, SizeIs(2));
  EXPECT_THAT(cues[0].text, ElementsAre("a bold    end"));
  EXPECT_EQ(cues[0].lost, "<sighs>");
  EXPECT_THAT(cues[1].text, ElementsAre("3 "));
  EXPECT_EQ(cues[1].lost, "< 4, he says");
}

TEST(SubtitleCues, MicroDvdCountsPictures) {
  const auto cues =
      cues_of("{1}{1}25\n{25}{50}One|two\n{75}{}Three\n{80}{90}\n", subtitle_format::microdvd);
  ASSERT_THAT(cues, SizeIs(3));
  expect_times(cues[0], 0.04, 0.04);
  expect_times(cues[1], 1, 2);
  EXPECT_THAT(cues[1].text, ElementsAre("One", "two"));
  EXPECT_FALSE(cues[2].end);
}

TEST(SubtitleCues, SubViewerHasItsTextInOneLine) {
  const auto cues = cues_of("[INFORMATION]\n00:00:01.50,00:00:02.00\nOne[br]two|three\n",
                            subtitle_format::subviewer);
  ASSERT_THAT(cues, SizeIs(1));
  expect_times(cues[0], 1.5, 2);
  EXPECT_THAT(cues[0].text, ElementsAre("One", "two", "three"));
}

TEST(SubtitleCues, SubViewer2HasNoEnds) {
  const auto cues = cues_of("{T 00:00:01:50\nOne\ntwo\n}\n", subtitle_format::subviewer2);
  ASSERT_THAT(cues, SizeIs(1));
  EXPECT_FALSE(cues[0].end);
  EXPECT_THAT(cues[0].text, ElementsAre("One", "two"));
}

TEST(SubtitleCues, SsaHasItsTextBehindNineFields) {
  const auto cues = cues_of(
      "[Events]\nDialogue: 0,0:00:01.00,0:00:02.50,Default,,0,0,0,,One, {\\b1}two{\\b0}\\Nthree\n"
      "Dialogue: Marked=0,0:00:03.00,0:00:04.00,S,N,0000,0000,0000,!E,Four\n",
      subtitle_format::ssa);
  ASSERT_THAT(cues, SizeIs(2));
  expect_times(cues[0], 1, 2.5);
  EXPECT_THAT(cues[0].text, ElementsAre("One, two", "three"));
  EXPECT_THAT(cues[1].text, ElementsAre("Four"));
}

TEST(SubtitleCues, SamiCueLastsUntilTheNextOne) {
  const auto cues = cues_of(
      "<SAMI>\n<BODY>\n<SYNC Start=1000><P Class=EN>One<br>two &amp; <x>\n"
      "<SYNC Start=2000><P Class=EN>&nbsp;\n<SYNC Start=3000><P Class=EN>Three\n</BODY></SAMI>\n",
      subtitle_format::sami);
  ASSERT_THAT(cues, SizeIs(2));
  expect_times(cues[0], 1, 1.99);
  EXPECT_EQ(cues[0].line, 3);
  EXPECT_THAT(cues[0].text, ElementsAre("One", "two &amp;"));
  EXPECT_EQ(cues[0].lost, "<x>");
  EXPECT_THAT(cues[1].text, ElementsAre("Three"));
  EXPECT_FALSE(cues[1].end);
}

TEST(SubtitleCues, VPlayerHasBeginningsOnly) {
  const auto cues = cues_of("00:00:01:One|two\n00:00:03 Three\n", subtitle_format::vplayer);
  ASSERT_THAT(cues, SizeIs(2));
  EXPECT_EQ(cues[0].begin, 1);
  EXPECT_THAT(cues[0].text, ElementsAre("One", "two"));
}

TEST(SubtitleCues, OtherFormatsAreKnownByName) {
  for (const char* const text : {"<window>\n", "10,20,\"One\"\n", "FORMAT=TIME\n", "-->> 10\n",
                                 "[00:00:01]\n", "@10 @20 One\n", "0:0:1.0 0:0:2.0 One\n"})
    EXPECT_THAT(cues_of(text, subtitle_format::other), IsEmpty()) << text;
}

TEST(SubtitleCues, TextWithoutATimeIsInNoFormat) {
  EXPECT_THAT(cues_of("One\ntwo\n", subtitle_format::unknown), IsEmpty());
  EXPECT_THAT(cues_of("", subtitle_format::unknown), IsEmpty());
  std::string late;
  for (int i = 0; i < 100; ++i)
    late += "\n";
  EXPECT_THAT(cues_of(late + "{1}{2}One\n", subtitle_format::unknown), IsEmpty());
}

TEST(SubtitleCues, HostileTextsEnd) {
  const std::string time = "00:00:01,0 --> 00:00:02,0\n";
  for (const std::string& text :
       {time + std::string(100'000, '<'), time + std::string(100'000, '>'),
        "{1}{2}" + std::string(100'000, '{'), "<SAMI>" + std::string(100'000, '<'),
        "{" + std::string(100'000, '9') + "}{1}a", std::string(100'000, '\0')})
    read_subtitle_cues(text, 25);
  std::string many = "<SAMI>";
  for (int i = 0; i < 5'000; ++i)
    many += "Start=1<P>a<br>";
  read_subtitle_cues(many, 25);
  std::string more;
  for (std::size_t i = 0; i < most_cues + 10; ++i)
    more += "{1}{2}a\n";
  EXPECT_THAT(read_subtitle_cues(more, 25).cues, SizeIs(most_cues));
}

}  // namespace
}  // namespace corvane
