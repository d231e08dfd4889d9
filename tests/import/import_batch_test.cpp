// Several files at once: how they follow each other, share the disc and come into the project.
#include "import/import_batch.h"

#include "import/disc_budget.h"
#include "made_source.h"
#include "platform/files/paths.h"
#include "support/command_test.h"

#include <gmock/gmock.h>

namespace corvane {
namespace {

using import_test::made_disc_video;
using import_test::made_sound;
using import_test::made_source;
using import_test::made_text;
using import_test::made_video;
using testing::HasSubstr;
using testing_support::rows;

class ImportBatch : public testing_support::command_test {
 protected:
  probed_source probed(const std::string& name, const source_facts& facts) {
    return {join_path(folder.path(), name), facts, {}, {}};
  }
  source_facts film(double seconds, const std::string& language = {}) {
    source_stream video = made_video(1920, 1080, {25, 1}), sound = made_sound("aac", 2, language);
    video.length = sound.length = seconds;
    source_facts facts = made_source(video, sound);
    facts.length = seconds;
    return facts;
  }
  import_place place() {
    import_place to;
    to.folder = folder.path("out");
    to.is_taken = [this](const std::string& file) { return taken.contains(file); };
    return to;
  }
  /// Adds what the import of a job has made: all its files, or all but one.
  void add_made(const import_job& job, std::string_view but = {}) {
    for (const std::string& file : job.files.all())
      if (const std::string name = native_file_name(file); name != but)
        folder.add("out/" + name);
    add_to_project(doc, job);
  }
  std::set<std::string> taken;
};

TEST_F(ImportBatch, TheFirstFileDecidesAndTheNextFollow) {
  const import_batch batch =
      plan_batch({probed("a.mp4", film(60)),
                  probed("b.mp4", made_source(made_video(640, 480, {30000, 1001}),
                                              made_sound("aac"), made_sound("aac")))},
                 {}, place());
  ASSERT_EQ(batch.entries.size(), 2u);
  for (const batch_entry& entry : batch.entries) {
    EXPECT_EQ(entry.problem, "");
    EXPECT_EQ(entry.job.plan.demands.standard, video_standard::pal);
    EXPECT_EQ(entry.job.plan.demands.aspect, disc_aspect::sixteen_nine);
    EXPECT_EQ(entry.job.plan.sound.streams.size(), 1u);
  }
}

TEST_F(ImportBatch, AFileOfWhichNothingIsKnownIsNamedAndTheOthersGoOn) {
  probed_source none = probed("none.mp4", {});
  none.problem = "it is empty";
  const import_batch batch = plan_batch(
      {none, probed("sound.mp3", made_source(made_sound("mp3"))), probed("a.mp4", film(60))}, {},
      place());
  EXPECT_EQ(batch.entries[0].problem, "it is empty");
  EXPECT_EQ(batch.entries[1].problem, "there is no video in it");
  EXPECT_EQ(batch.entries[2].problem, "");
  EXPECT_EQ(batch.entries[0].bytes, 0u);
  EXPECT_GT(batch.entries[2].bytes, 0u);
}

TEST_F(ImportBatch, EqualNamesOfSeveralFoldersGetNumbers) {
  const import_batch batch = plan_batch({probed(join_path("one", "film.mp4"), film(60)),
                                         probed(join_path("two", "film.mp4"), film(60))},
                                        {}, place());
  EXPECT_EQ(batch.entries[0].job.files.video, join_path(folder.path("out"), "film.m2v"));
  EXPECT_EQ(batch.entries[1].job.files.video, join_path(folder.path("out"), "film (2).m2v"));
}

TEST_F(ImportBatch, WhatIsThereKeepsItsName) {
  taken = {join_path(folder.path("out"), "film.ac3")};
  const import_batch batch = plan_batch({probed("film.mp4", film(60))}, {}, place());
  EXPECT_EQ(batch.entries[0].job.files.video, join_path(folder.path("out"), "film (2).m2v"));
}

TEST_F(ImportBatch, TheRoomOfADiscIsSharedByLength) {
  const import_batch batch =
      plan_batch({probed("a.mp4", film(5400)), probed("b.mp4", film(2700))}, {}, place());
  EXPECT_EQ(batch.problem, "");
  EXPECT_EQ(batch.entries[0].job.bits.mean, batch.entries[1].job.bits.mean);
  const budget_title titles[] = {{5400, 192'000, {}}, {2700, 192'000, {}}};
  EXPECT_EQ(batch.entries[0].job.bits.mean, video_rate_to_fill(single_layer_bytes, 0, titles));
  const std::uint64_t disc = bytes_on_disc(titles, batch.entries[0].job.bits.mean);
  EXPECT_LE(disc, single_layer_bytes);
  EXPECT_GE(static_cast<double>(disc), 0.98 * static_cast<double>(single_layer_bytes));
  EXPECT_NEAR(static_cast<double>(batch.entries[0].bytes + batch.entries[1].bytes),
              static_cast<double>(disc), 0.03 * 4.7e9);
}

TEST_F(ImportBatch, TooManyHoursForTheDiscAreTold) {
  const import_batch batch = plan_batch({probed("a.mp4", film(20 * 3600))}, {}, place());
  EXPECT_THAT(batch.problem, HasSubstr("not enough room on the disc"));
}

TEST_F(ImportBatch, WhatWasMadeComesIntoTheProject) {
  source_facts facts = film(60, "deu");
  facts.streams.push_back(made_text("subrip", "eng"));
  facts.streams.back().index = 2;
  facts.chapters = {{0, 30, ""}, {30, 60, ""}};
  const import_batch batch = plan_batch({probed("film.mp4", facts)}, {}, place());
  add_made(batch.entries.at(0).job);
  EXPECT_EQ(doc.p.List1, rows{"title1:film.m2v/film.ac3"});
  EXPECT_EQ(doc.p.chapters, rows{"00:00:00.00,00:00:30.00"});
  EXPECT_EQ(doc.p.globalregion, "PAL");
  EXPECT_EQ(doc.p.languagetags, (rows{"Audio tag:\tGERMAN DE ", "Subtitle tag:\tENGLISH EN"}));
  EXPECT_TRUE(doc.p.subtitledata[0].ends_with("film.en.srt")) << doc.p.subtitledata[0];
}

// Sound that is copied keeps its frames, and so its distance to the picture.
TEST_F(ImportBatch, WhenCopiedSoundBeginsBecomesTheDelayOfTheTitle) {
  source_stream sound = made_sound("ac3");
  sound.start = 0.12;
  const import_batch batch =
      plan_batch({probed("film.mkv", made_source(made_disc_video(), sound))}, {}, place());
  const import_job& job = batch.entries[0].job;
  EXPECT_EQ(job.plan.sound.streams.at(0).fate, stream_fate::copied);
  add_made(job);
  EXPECT_EQ(doc.p.delay, rows{"-120"});
}

// The tags of those behind it move up.
TEST_F(ImportBatch, SubtitlesWithoutAnyTextAreNotAdded) {
  source_facts facts = film(60, "deu");
  for (const char* const language : {"eng", "fra"}) {
    facts.streams.push_back(made_text("subrip", language));
    facts.streams.back().index = static_cast<int>(facts.streams.size()) - 1;
  }
  const import_batch batch = plan_batch({probed("film.mp4", facts)}, {}, place());
  add_made(batch.entries.at(0).job, "film.en.srt");
  EXPECT_EQ(doc.p.languagetags, (rows{"Audio tag:\tGERMAN DE ", "Subtitle tag:\tFRENCH FR"}));
  EXPECT_TRUE(doc.p.subtitledata[0].ends_with("film.fr.srt")) << doc.p.subtitledata[0];
  EXPECT_EQ(doc.p.subtitledata[0].find("film.en.srt"), std::string::npos);
}

// The tag of a number is that stream's.
TEST_F(ImportBatch, TagsEndWhereALanguageIsNotKnown) {
  source_facts facts = film(60);
  facts.streams.push_back(made_sound("aac", 2, "eng"));
  facts.streams.back().index = 2;
  const import_batch batch = plan_batch({probed("film.mp4", facts)}, {}, place());
  add_made(batch.entries.at(0).job);
  EXPECT_EQ(doc.p.languagetags, rows{});
}

// Some file systems know both for the same.
TEST_F(ImportBatch, NamesThatDifferInCapitalsAloneAreTaken) {
  const import_batch batch =
      plan_batch({probed("Film.mkv", film(60)), probed("film.mp4", film(60))}, {}, place());
  EXPECT_EQ(batch.entries.at(0).job.files.video, join_path(folder.path("out"), "Film.m2v"));
  EXPECT_EQ(batch.entries.at(1).job.files.video, join_path(folder.path("out"), "film (2).m2v"));
}

// The second was planned to agree with the first.
TEST_F(ImportBatch, TagsAreThoseOfTheTitlesThatCame) {
  source_facts german = film(60, "deu"), english = film(60, "eng");
  german.streams.push_back(made_text("subrip", "deu"));
  english.streams.push_back(made_text("subrip", "eng"));
  german.streams.back().index = english.streams.back().index = 2;
  const import_batch batch =
      plan_batch({probed("a.mp4", german), probed("b.mp4", english)}, {}, place());
  const import_job& job = batch.entries.at(1).job;
  for (const std::string& file : job.files.all())
    folder.add("out/" + file.substr(file.find_last_of("/\\") + 1));
  add_to_project(doc, job);
  EXPECT_EQ(doc.p.languagetags, (rows{"Audio tag:\tENGLISH EN", "Subtitle tag:\tENGLISH EN"}));
}

}  // namespace
}  // namespace corvane
