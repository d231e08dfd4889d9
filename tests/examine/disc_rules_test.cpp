// What of a disc differs from what was foreseen, the file that tells it, and the table of both.
#include "examine/disc_rules.h"

#include "examine/found_disc.h"
#include "examine/told_before.h"
#include "examine/verification.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace corvane {
namespace {

using kind = disc_trait_kind;
using part = finding_item::part_kind;
using whole = finding_item::whole_kind;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

finding_item title(int number, part what = part::whole, int part_number = 0) {
  return {whole::title, number, what, part_number};
}

std::vector<std::string> told(const disc_traits& foreseen, const disc_traits& found,
                              const std::vector<told_item>& before = {}) {
  std::vector<std::string> lines;
  for (const finding& f : differences(foreseen, found, before))
    lines.push_back(line_of(f) + " [" + f.rule + ", " + f.wanted + "]");
  return lines;
}

TEST(DiscDifferences, WhatAgreesIsNotTold) {
  disc_traits foreseen, found;
  foreseen.say(title(1, part::video), kind::aspect, "16:9");
  found.say(title(1, part::video), kind::aspect, "16:9");
  found.say(title(1, part::video), kind::size, "720x480");
  EXPECT_THAT(told(foreseen, found), IsEmpty());
}

TEST(DiscDifferences, EachIsToldWithItsRulePlaceAndBothValues) {
  disc_traits foreseen, found;
  foreseen.say(title(2, part::video), kind::aspect, "16:9");
  found.say(title(2, part::video), kind::aspect, "4:3");
  EXPECT_THAT(told(foreseen, found),
              ElementsAre("error: title 2, video: aspect: 4:3. [disc-picture, 16:9]"));
}

TEST(DiscDifferences, TimesHaveTheirTolerance) {
  disc_traits foreseen;
  foreseen.say_seconds(title(1), kind::length, 10);
  foreseen.say_seconds(title(1, part::audio, 1), kind::sounds_until, 9);
  const auto with = [&](double length, double sound) {
    disc_traits found;
    found.say_seconds(title(1), kind::length, length);
    found.say_seconds(title(1, part::audio, 1), kind::sounds_until, sound);
    return told(foreseen, found);
  };
  EXPECT_THAT(with(10.25, 30), IsEmpty()) << "sound may go on";
  EXPECT_THAT(with(9.97, 8.6), ElementsAre(HasSubstr("note: title 1: its last picture")));
  EXPECT_THAT(with(9.5, 9), ElementsAre(HasSubstr("[disc-length, 00:00:10.00]")));
  EXPECT_THAT(with(10.5, 9), ElementsAre(HasSubstr("disc-length")));
  EXPECT_THAT(with(10, 4.5), ElementsAre(HasSubstr("disc-sound-end")));
}

TEST(DiscDifferences, PicturesThatAreLeftOutAtTheEndAreAWarning) {
  const auto with = [](double sound, double length, double until) {
    disc_traits foreseen, found;
    foreseen.say_seconds(title(1), kind::length, std::max(10.0, sound));
    foreseen.say_seconds(title(1, part::video), kind::shows_until, 10);
    found.say_seconds(title(1), kind::length, length);
    found.say_seconds(title(1, part::video), kind::shows_until, until);
    return told(foreseen, found);
  };
  EXPECT_THAT(with(9, 9.8, 9.8),
              ElementsAre("warning: title 1: the last 0.2 s of its picture are not there. "
                          "[disc-last-pictures, 00:00:10.00]"));
  EXPECT_THAT(with(9, 9.96, 9.96), ElementsAre(HasSubstr("disc-last-picture,")));
  EXPECT_THAT(with(9, 10, 10), IsEmpty());
  EXPECT_THAT(with(9, 9.8, 10), IsEmpty()) << "its times are rounded";
  EXPECT_THAT(with(10.1, 9.9, 9.9), IsEmpty()) << "it is sound that ends last";
}

TEST(DiscDifferences, PicturesEndWithTheirStreamOrLater) {
  disc_traits foreseen;
  foreseen.say_seconds(title(1, part::video), kind::shows_until, 10);
  const auto with = [&](double until) {
    disc_traits found;
    found.say_seconds(title(1, part::video), kind::shows_until, until);
    return told(foreseen, found);
  };
  EXPECT_THAT(with(9.6), IsEmpty()) << "mplex leaves out the last picture";
  EXPECT_THAT(with(12), IsEmpty());
  EXPECT_THAT(with(9.4), ElementsAre("error: title 1, video: shows until: 00:00:09.40. "
                                     "[disc-picture-end, 00:00:10.00]"));
}

TEST(DiscDifferences, AStreamHasItsBytesOrMore) {
  disc_traits foreseen;
  foreseen.say_count(title(1, part::audio, 1), kind::bytes, 100'000);
  const auto with = [&](std::size_t bytes) {
    disc_traits found;
    found.say_count(title(1, part::audio, 1), kind::bytes, bytes);
    return told(foreseen, found, {{title(1)}});
  };
  EXPECT_THAT(with(100'000), IsEmpty());
  EXPECT_THAT(with(120'000), IsEmpty()) << "the last frame is there, too";
  EXPECT_THAT(with(99'999), ElementsAre("error: title 1, audio 1: bytes: 99999. "
                                        "[disc-stream-bytes, at least 100000]"))
      << "what the file's beginning tells is no reason for it";
}

TEST(DiscDifferences, ChaptersAreWithinAUnitOfWhereExaminationSaid) {
  disc_traits foreseen;
  foreseen.say_seconds(title(1, part::chapter, 1), kind::lands, 0);
  foreseen.say_seconds(title(1, part::chapter, 2), kind::lands, 5);
  foreseen.say_seconds(title(1), kind::unit, 0.5);
  const auto with = [&](std::vector<double> chapters) {
    disc_title_contents one;
    one.number = 1;
    one.chapters = std::move(chapters);
    disc_traits found;
    find_landed_chapters(one, foreseen, found);
    return told(foreseen, found);
  };
  EXPECT_THAT(with({0, 5.5}), IsEmpty());
  EXPECT_THAT(with({0, 2.5, 4.9, 7}), IsEmpty()) << "another rule counts them";
  EXPECT_THAT(with({0, 5.6}), ElementsAre("error: title 1, chapter 2: lands at: 00:00:05.60. "
                                          "[disc-chapters, 00:00:05.00]"));
  EXPECT_THAT(with({}), testing::SizeIs(2));
}

TEST(DiscDifferences, AChapterRightAtTheEndMayBeThereOrNot) {
  const auto with = [&](const std::string& asked, std::vector<double> chapters) {
    disc_title_contents one;
    one.number = 1;
    one.chapters = std::move(chapters);
    one.chain.seconds = 3.97;
    one.chain.units = {0, 0.5, 3.5, 3.94};
    disc_traits foreseen, found;
    foresee_chapters(one, asked, foreseen);
    found.say_count(title(1), kind::chapters, one.chapters.size());
    for (std::size_t i = 0; i < one.chapters.size(); ++i)
      found.say_seconds(title(1, part::chapter, static_cast<int>(i) + 1), kind::begins,
                        one.chapters[i]);
    return told(foreseen, found);
  };
  EXPECT_THAT(with("0,3.98", {0, 3.94}), IsEmpty()) << "the last picture goes at 4.004 s";
  EXPECT_THAT(with("0,4.02", {0}), IsEmpty());
  EXPECT_THAT(with("0,3.96", {0}), IsEmpty());
  EXPECT_THAT(with("0,3.5", {0}), testing::SizeIs(2));
  EXPECT_THAT(with("0,3.98", {0, 3.5}), testing::SizeIs(1));
  EXPECT_THAT(with("0,4.2", {0, 3.94}), testing::SizeIs(1));
}

TEST(DiscDifferences, EachCueIsShownWhenItWasForeseen) {
  disc_traits foreseen;
  foreseen.say(title(1, part::subtitle, 2), kind::shown, "1-2 3-4.5 6-");
  const auto with = [&](const std::string& times) {
    disc_traits found;
    found.say(title(1, part::subtitle, 2), kind::shown, times);
    return told(foreseen, found);
  };
  EXPECT_THAT(with("1.05-2 3-4.45 6-9"), IsEmpty());
  EXPECT_THAT(with("1-2 3-4.5"), IsEmpty()) << "another rule counts them";
  EXPECT_THAT(with("1-2 3-5 6-9"),
              ElementsAre("error: title 1, subtitle 2, 00:00:03: cue 2 is shown from 00:00:03.00 "
                          "to 00:00:05.00. "
                          "[disc-subtitle-times, from 00:00:03.00 to 00:00:04.50]"));
  EXPECT_THAT(with("1-2 4-4.5 7-9"), ElementsAre(HasSubstr("; 1 other is not as foreseen, too")));
}

TEST(DiscDifferences, ATypedCommandLeadsToOneOfItsPlaces) {
  disc_traits foreseen;
  foreseen.say(title(1), kind::then, "title 2 chapter 1 or stop");
  const auto with = [&](const std::string& place) {
    disc_traits found;
    found.say(title(1), kind::then, place);
    return told(foreseen, found);
  };
  EXPECT_THAT(with("stop"), IsEmpty());
  EXPECT_THAT(with("title 2 chapter 1"), IsEmpty());
  EXPECT_THAT(with("title 2"), testing::SizeIs(1));
  EXPECT_THAT(with("menu 1"), ElementsAre("error: title 1: then: menu 1. "
                                          "[disc-then, title 2 chapter 1 or stop]"));
}

TEST(DiscDifferences, WhatIsMissingIsTold) {
  disc_traits foreseen;
  foreseen.say(title(2), kind::then, "stop");
  foreseen.say(title(1, part::audio, 2), kind::format, "AC-3");
  EXPECT_THAT(told(foreseen, {}), ElementsAre(HasSubstr("title 2: then: there is none"),
                                              HasSubstr("audio 2: format: it is not there")));
}

TEST(DiscDifferences, WhatCannotBeToldOfAnItemIsNoDifference) {
  disc_traits foreseen, found;
  foreseen.say(title(1), kind::then, "menu 1");
  found.say_seconds(title(1), kind::length, 3);
  EXPECT_THAT(told(foreseen, found), IsEmpty());
}

TEST(DiscDifferences, WhatFollowsFromMaterialThatWasWrongIsAWarning) {
  disc_traits foreseen, found;
  foreseen.say(title(1, part::video), kind::standard, "PAL");
  found.say(title(1, part::video), kind::standard, "NTSC");
  foreseen.say_count({}, kind::titles, 2);
  found.say_count({}, kind::titles, 1);
  foreseen.say(title(2, part::subtitle, 1), kind::shown, "1-2");
  found.say(title(2, part::subtitle, 1), kind::shown, "1-4");
  EXPECT_THAT(told(foreseen, found, {{title(1, part::video)}}),
              ElementsAre(HasSubstr("warning: title 1"), HasSubstr("error: disc: titles: 1"),
                          HasSubstr("error: title 2, subtitle 1")));
  EXPECT_THAT(told(foreseen, found, {{title(2, part::subtitle, 1)}}),
              ElementsAre(HasSubstr("error: title 1"), HasSubstr("error: disc: titles: 1"),
                          HasSubstr("warning: title 2, subtitle 1")));
}

finding broken_times(int of_title) {
  finding f;
  f.rule = "disc-times";
  f.item = title(of_title, part::audio, 1);
  f.severity = finding_severity::error;
  return f;
}

std::size_t errors_in(const std::vector<finding>& findings) {
  return static_cast<std::size_t>(
      std::ranges::count(findings, finding_severity::error, &finding::severity));
}

TEST(DiscDifferences, OnlyAsManyBreaksAreForgivenAsWereKnown) {
  foreseen_run run;
  run.disc.say_count(title(1), kind::breaks, 1);
  std::vector<finding> few(2, broken_times(1)), many(80, broken_times(1)),
      of_other(1, broken_times(2));
  finding of_menu = broken_times(1);
  of_menu.item.whole = whole::menu;
  of_other.push_back(of_menu);
  for (std::vector<finding>* const all : {&few, &many, &of_other})
    soften_what_was_told(*all, run);
  EXPECT_EQ(errors_in(few), 0u) << "what dvdauthor may make of one";
  EXPECT_EQ(errors_in(many), 78u);
  EXPECT_EQ(errors_in(of_other), 2u);
  many.assign(80, broken_times(1));
  run.told = {{title(2, part::audio, 1)}};
  soften_what_was_told(many, run);
  EXPECT_EQ(errors_in(many), 78u) << "another title's";
  run.told = {{title(1, part::audio, 1)}};
  soften_what_was_told(many, run);
  EXPECT_EQ(errors_in(many), 0u);
}

/// A disc of one title, of two cells in two files of VOBs, and a menu.
disc_contents made_contents() {
  disc_contents disc;
  disc.titlesets.resize(1);
  disc_title_contents title;
  title.number = title.titleset = title.number_in_titleset = 1;
  title.chain.tables = std::make_shared<program_chain>();
  title.chain.cells = {{1, 1, 0, 60}, {1, 2, 60, 30}};
  title.chapters = {0};
  disc.titles.push_back(title);
  disc_menu_contents menu;
  menu.titleset = menu.number = 1;
  menu.chain.tables = std::make_shared<program_chain>();
  menu.chain.cells = {{3, 1, 0, 5}};
  menu.chain.seconds = 5;
  disc.menus.push_back(menu);
  disc_vobs vobs;
  vobs.titleset = 1;
  vobs.files = {"VIDEO_TS/VTS_01_1.VOB", "VIDEO_TS/VTS_01_2.VOB"};
  vobs.file_sectors = {100, 50};
  disc.vobs.push_back(vobs);
  return disc;
}

std::vector<finding> found_of(const unit_trouble& trouble) {
  disc_contents disc = made_contents();
  disc.unit_troubles = {trouble};
  return disc_findings(disc, {});
}

TEST(DiscFindings, AUnitHasTheTimeOfItsTitleAndTheByteOfItsFile) {
  const auto found = found_of({1, false, 110, 1, 2, 450'000, false, "it is wrong"});
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].rule, "disc-navigation");
  EXPECT_EQ(line_of(found[0]), "error: title 1, 00:01:05: unit at sector 110: it is wrong.");
  EXPECT_EQ(found[0].file, "VIDEO_TS/VTS_01_2.VOB");
  EXPECT_EQ(found[0].byte, 10u * 2048);
}

TEST(DiscFindings, AUnitOfAMenuIsTheMenus) {
  const auto found = found_of({1, true, 0, 3, 1, 90'000, true, "it is unlike"});
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].rule, "disc-navigation-unlike");
  EXPECT_EQ(line_of(found[0]), "warning: menu 1, 00:00:01: unit at sector 0: it is unlike.");
}

TEST(DiscFindings, AUnitThatNothingPlaysIsTheDiscs) {
  const auto found = found_of({1, false, 149, 9, 1, 0, false, "it is wrong"});
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(line_of(found[0]), "error: disc: unit at sector 149: it is wrong.");
  EXPECT_EQ(found[0].byte, 49u * 2048);
}

TEST(ForeseenRun, IsReadAsItWasWritten) {
  foreseen_run run;
  run.out = "/home/u/a \"b\" & <c>/dvd ü";
  run.image = true;
  run.told = {{title(2, part::audio, 1)}, {title(1, part::audio, 1), true}};
  run.chapters = {"0,5.5", "", unknown_chapters};
  run.disc.say_count({}, kind::titles, 3);
  run.disc.say(title(1, part::subtitle, 2), kind::language, "de");
  run.disc.say_seconds(title(3), kind::length, 12.5);
  const std::string text = foreseen_text(run);
  const auto again = parse_foreseen(text);
  ASSERT_TRUE(again) << again.error;
  EXPECT_EQ(*again, run) << text;
  EXPECT_EQ(text,
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<foreseen folder=\"/home/u/a &quot;b&quot; &amp; &lt;c>/dvd ü\" image=\"yes\">\n"
            "  <told of=\"title\" number=\"2\" part=\"audio\" part-number=\"1\"/>\n"
            "  <told of=\"title\" number=\"1\" part=\"audio\" part-number=\"1\" "
            "by=\"titleset\"/>\n"
            "  <chapters at=\"0,5.5\"/>\n"
            "  <chapters at=\"\"/>\n"
            "  <chapters at=\"unknown\"/>\n"
            "  <trait of=\"disc\" what=\"titles\" is=\"3\"/>\n"
            "  <trait of=\"title\" number=\"1\" part=\"subtitle\" part-number=\"2\" "
            "what=\"language\" is=\"de\"/>\n"
            "  <trait of=\"title\" number=\"3\" what=\"length\" is=\"12.5\"/>\n"
            "</foreseen>\n");
}

TEST(ForeseenRun, AnythingElseIsRefused) {
  EXPECT_FALSE(parse_foreseen(""));
  EXPECT_FALSE(parse_foreseen("<foreseen/>"));
  EXPECT_FALSE(parse_foreseen("<dvdauthor folder=\"/a\"/>"));
  EXPECT_FALSE(
      parse_foreseen("<foreseen folder=\"/a\"><trait what=\"colour\" is=\"1\"/></foreseen>"));
  EXPECT_FALSE(parse_foreseen("<foreseen folder=\"/a\"><told of=\"film\"/></foreseen>"));
  EXPECT_TRUE(parse_foreseen("<foreseen folder=\"/a\"/>"));
}

TEST(DiscTable, ShowsCommandsThatWereTyped) {
  disc_traits foreseen, found;
  const finding_item first{whole::menu, 1, part::button, 1},
      second{whole::menu, 1, part::button, 2};
  found.say(first, kind::leads_to, "title 1 chapter 1");
  found.say(first, kind::does, "JumpVTS_TT 1");
  found.say(second, kind::does, "if (g1 == 2) JumpVTS_TT 1");
  foreseen.say(first, kind::leads_to, "title 1 chapter 1");
  EXPECT_THAT(disc_table(found, foreseen), testing::Not(HasSubstr("JumpVTS_TT 1\n  button 2")));
  EXPECT_THAT(disc_table(found, {}), HasSubstr("button 2: does       if (g1 == 2) JumpVTS_TT 1"));
  disc_traits typed;
  typed.say(first, kind::leads_to, "title 1 chapter 1 or stop");
  EXPECT_THAT(disc_table(found, typed), HasSubstr("JumpVTS_TT 1\n"));
}

TEST(DiscTable, ShowsBothBesideEachOther) {
  disc_traits foreseen, found;
  found.say_count({}, kind::titles, 1);
  found.say(title(1, part::video), kind::size, "720x480");
  found.say_seconds(title(1), kind::length, 65.5);
  foreseen.say_seconds(title(1), kind::length, 65.5);
  foreseen.say(title(1, part::audio, 1), kind::format, "AC-3");
  EXPECT_EQ(disc_table(found, foreseen),
            "                    asked for     on the disc\n"
            "disc\n"
            "  titles                          1\n"
            "title 1\n"
            "  video: size                     720x480\n"
            "  length            00:01:05.50   00:01:05.50\n"
            "  audio 1: format   AC-3          -\n");
  EXPECT_EQ(disc_table(found, {}),
            "                on the disc\n"
            "disc\n"
            "  titles        1\n"
            "title 1\n"
            "  video: size   720x480\n"
            "  length        00:01:05.50\n");
}

TEST(DiscTable, IsTheSameInJson) {
  disc_traits foreseen, found;
  found.say(title(1, part::video), kind::size, "720x480");
  found.say_seconds(title(1), kind::length, 65.5);
  foreseen.say_seconds(title(1), kind::length, 65.5);
  foreseen.say(title(1, part::audio, 1), kind::language, "\"");
  EXPECT_EQ(disc_table_json(found, foreseen),
            R"([
  {"item": {"of": "title", "number": 1, "part": "video"}, "trait": "size", "onTheDisc": "720x480"},
  {"item": {"of": "title", "number": 1}, "trait": "length", "askedFor": "00:01:05.50", "onTheDisc": "00:01:05.50"},
  {"item": {"of": "title", "number": 1, "part": "audio", "partNumber": 1}, "trait": "language", "askedFor": "\""}
])");
  EXPECT_EQ(disc_table_json({}, {}), "[]");
}

}  // namespace
}  // namespace corvane
