// What the window of imports says of its files.
#include "import/import_list.h"

#include "made_source.h"
#include "support/command_test.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace corvane {
namespace {

using import_test::made_sound;
using import_test::made_source;
using import_test::made_text;
using import_test::made_video;
using testing::Contains;
using testing::HasSubstr;
using testing::StartsWith;

class ImportList : public testing_support::command_test {
 protected:
  /// Adds a file of H.264 and AAC that was looked into.
  void add_film(const std::string& name, double seconds = 60) {
    source_stream video = made_video(1920, 1080, {25, 1}), sound = made_sound("aac", 2, "deu");
    video.length = sound.length = seconds;
    source_facts facts = made_source(video, sound);
    facts.length = seconds;
    list.add(folder.path(name));
    list.know({folder.path(name), facts, {}, {}});
  }
  void add_broken(const std::string& name) {
    list.add(folder.path(name));
    list.know({folder.path(name), {}, {}, "it is empty"});
  }
  std::string what(std::size_t row) const { return list.shown(row).what; }

  import_list list{folder.path("out")};
};

TEST_F(ImportList, AFileIsLookedAtAndThenPlanned) {
  EXPECT_TRUE(list.add(folder.path("a.mp4")));
  EXPECT_FALSE(list.add(folder.path("a.mp4")));
  EXPECT_EQ(list.shown(0), (import_list::shown_row{"a.mp4", "", "being looked at"}));
  EXPECT_EQ(list.next_unknown(), folder.path("a.mp4"));
  add_film("a.mp4", 3725);
  EXPECT_EQ(list.shown(0), (import_list::shown_row{"a.mp4", "1:02:05", "encoded"}));
  EXPECT_EQ(list.next_unknown(), std::nullopt);
  add_broken("none.mp4");
  EXPECT_EQ(list.shown(1), (import_list::shown_row{"none.mp4", "", "left out: it is empty"}));
  EXPECT_THAT(list.estimate(), StartsWith("1 file, 1:02:05 of film: about "));
}

TEST_F(ImportList, WhatWasRemovedWhileItWasLookedAtStaysAway) {
  list.add(folder.path("a.mp4"));
  list.remove(0);
  list.know({folder.path("a.mp4"), {}, {}, "it is empty"});
  EXPECT_EQ(list.size(), 0u);
}

TEST_F(ImportList, WithoutAFolderItIsThatOfTheFirstFile) {
  import_list other{""};
  other.add(folder.path("a.mp4"));
  other.add(folder.path("deeper/b.mp4"));
  EXPECT_EQ(other.folder(), folder.path());
}

TEST_F(ImportList, TellsWhatBecomesOfEachStream) {
  add_film("a.mp4");
  const item_summary summary = list.summary(0);
  EXPECT_EQ(summary.heading, "a.mp4");
  ASSERT_EQ(summary.lines.size(), 3u);
  EXPECT_EQ(summary.lines[0].name, "video");
  EXPECT_THAT(summary.lines[0].text, StartsWith("H.264, 1920x1080, 25 a second - encoded: it is "));
  EXPECT_THAT(summary.lines[1].text,
              StartsWith("AAC, stereo, 48 kHz, German - encoded: it is AAC"));
  EXPECT_EQ(summary.lines[2], (summary_line{"becomes", "a.m2v, a.ac3"}));
}

TEST_F(ImportList, StreamsAreLeftOutByChoice) {
  source_facts facts = made_source(made_video(1920, 1080, {25, 1}), made_sound("aac", 2, "deu"),
                                   made_sound("aac", 6, "eng"), made_text("subrip", "eng"),
                                   made_video(1, 1, {0, 1}));
  const std::vector<sidecar> beside = {{folder.path("a.fr.srt"), "fr"},
                                       {folder.path("a.srt"), "", "", "it is empty"}};
  list.add(folder.path("a.mkv"));
  EXPECT_FALSE(list.may_choose_streams(0));
  list.know({folder.path("a.mkv"), facts, beside, {}});
  using choosable = import_list::choosable_stream;
  EXPECT_EQ(list.choosable_streams(0),
            (std::vector<choosable>{{"audio 1: AAC, stereo, 48 kHz, German", true},
                                    {"audio 2: AAC, 6 channels, 48 kHz, English", true},
                                    {"subtitles: SubRip subtitles, English", true},
                                    {"beside it: a.fr.srt, French", true}}));
  EXPECT_THAT(list.summary(0).lines.back().text, "a.m2v, a.de.ac3, a.en.ac3, a.en.srt, a.fr.srt");
  list.want(0, {false, true, true, false});
  EXPECT_EQ(list.choosable_streams(0)[0].wanted, false);
  EXPECT_EQ(list.choosable_streams(0)[3].wanted, false);
  const item_summary summary = list.summary(0);
  ASSERT_EQ(summary.lines.size(), 8u);
  EXPECT_EQ(summary.lines[1],
            (summary_line{"audio 1", "AAC, stereo, 48 kHz, German - left out: as you chose"}));
  EXPECT_EQ(summary.lines[5],
            (summary_line{"beside it", "a.fr.srt, French - left out: as you chose"}));
  EXPECT_EQ(summary.lines[6], (summary_line{"beside it", "a.srt - left out: it is empty"}));
  EXPECT_EQ(summary.lines.back(), (summary_line{"becomes", "a.m2v, a.ac3, a.en.srt"}));
  const std::vector<import_job> jobs = list.begin();
  EXPECT_EQ(jobs.at(0).plan.sound.streams.at(0).language, "en");
  EXPECT_FALSE(list.may_choose_streams(0));
  list.want(0, {true, true, true, true});
  EXPECT_EQ(list.choosable_streams(0)[0].wanted, false);
}

TEST_F(ImportList, FilmWhoseSoundIsLeftOutIsSilent) {
  add_film("a.mp4");
  list.want(0, {false});
  ASSERT_EQ(list.summary(0).lines.size(), 4u);
  EXPECT_EQ(list.summary(0).lines[2],
            (summary_line{"silence", "made, since its sound was left out"}));
}

// Hours later they could not be given any more.
TEST_F(ImportList, NamesThatWereTakenMeanwhileAreNotGiven) {
  add_film("a.mp4");
  folder.add("out/a.m2v", "another's");
  EXPECT_EQ(list.begin().at(0).files.video, join_path(folder.path("out"), "a (2).m2v"));
}

TEST_F(ImportList, AStreamThatIsEncodedAfterAllIsToldOf) {
  add_film("a.mp4");
  import_job job = list.begin().at(0);
  job.plan.streams.at(0) = {0, stream_fate::encoded, "12 s are missing inside it"};
  list.changed(0, job);
  list.ended({0, ""}, false);
  EXPECT_THAT(list.summary(0).lines.at(0).text, HasSubstr("encoded: 12 s are missing inside it"));
}

TEST_F(ImportList, SaysWhatIsInTheWayAndWhatToDo) {
  EXPECT_EQ(list.trouble(), "");
  add_broken("none.mp4");
  EXPECT_EQ(list.trouble(),
            "None of these files can be imported, for the reasons that stand with them.");
  add_film("a.mp4", 3600);
  EXPECT_EQ(list.trouble(), "");
  EXPECT_TRUE(list.may_begin());
  list.put_in("somewhere");
  EXPECT_EQ(list.trouble(), "Choose the folder that the files are to be made in.");
  EXPECT_FALSE(list.may_begin());
  list.put_in(folder.path("out"));
  add_film("long.mp4", 100 * 3600.0);
  EXPECT_THAT(list.trouble(),
              StartsWith("There is not enough room on the disc for so many hours."));
  import_choices choices;
  choices.quality = import_quality::mean_rate;
  choices.mean_rate = 8'000'000'000'000;
  list.choose(choices);
  EXPECT_THAT(list.trouble(), StartsWith("That disk has "));
}

TEST_F(ImportList, FilmOfUnknownLengthIsNotTakenForTooLong) {
  add_film("a.mp4", 0);
  EXPECT_THAT(list.trouble(), StartsWith("Nobody knows how long "));
}

// With what multiplexing adds.
TEST_F(ImportList, RoomThatTheProjectTakesIsNotFilledAgain) {
  import_choices choices;
  choices.disc_bytes = 2'000'000'000;
  list.choose(choices);
  add_film("a.mp4", 3600);
  const std::string empty = list.estimate();
  const std::string big = folder.add("big.vob");
  std::filesystem::resize_file(path_of(big), 800'000'000);
  doc.p.List11 = {stored_from_native(big)};
  list.follow(doc.p);
  EXPECT_THAT(empty, testing::EndsWith("; video of 4.08 Mb/s"));
  EXPECT_THAT(list.estimate(), testing::EndsWith("; video of 2.34 Mb/s"));
}

TEST_F(ImportList, WhatRunsIsNotBegunTwice) {
  add_film("a.mp4");
  add_film("b.mp4");
  add_broken("none.mp4");
  EXPECT_EQ(list.begin().size(), 2u);
  EXPECT_EQ(what(0), "waits");
  EXPECT_EQ(list.begin().size(), 0u);
}

TEST_F(ImportList, OneThatFailsIsNamedWithItsReason) {
  add_film("a.mp4");
  add_film("b.mp4");
  list.begin();
  list.runs(0);
  EXPECT_EQ(what(0), "being imported");
  list.ended({0, "the disk is full"}, false);
  list.ended({1, ""}, false);
  EXPECT_EQ(what(0), "not imported: the disk is full");
  EXPECT_EQ(what(1), "done, the title is added");
  EXPECT_EQ(list.outcome(), "1 title added; 1 file was not imported");
  EXPECT_FALSE(list.all_done());
  const std::vector<import_job> again = list.begin();
  ASSERT_EQ(again.size(), 1u);
  EXPECT_EQ(again[0].source, folder.path("a.mp4"));
}

TEST_F(ImportList, TellsHowLongItWillTake) {
  add_film("a.mp4", 3600);
  add_film("b.mp4", 1800);
  import_choices choices;
  choices.quality = import_quality::mean_rate;
  list.choose(choices);
  import_speeds speeds;
  learn_speed(speeds, list.begin().at(0), 2000);
  list.give_up();
  list.expect(speeds);
  EXPECT_THAT(list.estimate(), testing::HasSubstr(" that are free there, about 50 min; video of "));
  choices.quality = import_quality::constant;
  list.choose(choices);
  EXPECT_THAT(list.estimate(),
              StartsWith("2 files, 1:30:00 of film: about 25 min; with constant quality"));
}

TEST_F(ImportList, AFilmWhoseEndIsMissingIsNotCalledComplete) {
  add_film("a.mp4");
  list.begin();
  list.ended({0, "", "the last 0:30 of it could not be read and are missing"}, false);
  EXPECT_EQ(what(0),
            "done, the title is added, but the last 0:30 of it could not be read and are missing");
  EXPECT_EQ(list.outcome(), "1 title added; the end of 1 file is missing");
  EXPECT_FALSE(list.all_done());
}

TEST_F(ImportList, SaysOfAFileThatItEndsTooEarly) {
  source_facts facts = made_source(made_video(1920, 1080, {25, 1}), made_sound("aac"));
  facts.cut_short = true;
  list.add(folder.path("a.mp4"));
  list.know({folder.path("a.mp4"), facts, {}, {}});
  EXPECT_THAT(
      list.summary(0).lines,
      Contains(summary_line{"", "The file ends before its own end: a part of it is missing."}));
  list.begin();
  list.ended({0, "", "the last 0:30 of it could not be read and are missing"}, false);
  EXPECT_THAT(list.summary(0).lines,
              Contains(summary_line{"not complete",
                                    "the last 0:30 of it could not be read and are missing"}));
}

TEST_F(ImportList, SubtitlesWithoutAnyTextAreNamedWhenItIsDone) {
  source_facts facts = made_source(made_video(1920, 1080, {25, 1}), made_sound("aac"),
                                   made_text("subrip", "eng"), made_text("subrip", "fra"));
  list.add(folder.path("a.mkv"));
  list.know({folder.path("a.mkv"), facts, {}, {}});
  list.begin();
  folder.add("out/a.fr.srt", "1\n00:00:01,000 --> 00:00:02,000\nbonjour\n");
  list.ended({0, ""}, false);
  EXPECT_EQ(what(0), "done, the title is added; there is no text for a.en.srt");
}

TEST_F(ImportList, WhatWasStoppedOrHasNotBegunIsPlannedAgain) {
  add_film("a.mp4");
  add_film("b.mp4");
  list.begin();
  list.runs(0);
  list.ended({0, "it was stopped"}, true);
  EXPECT_EQ(what(0), "encoded");
  EXPECT_EQ(what(1), "encoded");
  EXPECT_EQ(list.outcome(), "No title was added; 2 files were not imported");
}

TEST_F(ImportList, ProgressNamesFilePassAndTime) {
  add_film("a.mp4");
  add_film("b.mp4");
  const std::vector<import_job> jobs = list.begin();
  import_progress now;
  now.job = 1;
  now.pictures_a_second = 84.2;
  now.seconds_left = 120;
  EXPECT_EQ(progress_text(now, jobs),
            "file 2 of 2: b.mp4, second pass, 84 pictures a second, about 2 min left");
  now.first_pass = true;
  now.seconds_left.reset();
  EXPECT_EQ(progress_text(now, jobs), "file 2 of 2: b.mp4, first pass, 84 pictures a second");
  now.finishing = true;
  EXPECT_EQ(progress_text(now, {jobs[0], jobs[1]}), "file 2 of 2: b.mp4, finishing");
  now.job = 0;
  EXPECT_EQ(progress_text(now, {jobs[0]}), "a.mp4, finishing");
}

}  // namespace
}  // namespace corvane
