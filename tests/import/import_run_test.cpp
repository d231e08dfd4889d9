// Imports one after the other, with a command that prints what the test wants.
#include "import/import_run.h"

#include "import/import_batch.h"
#include "import/unfinished_imports.h"
#include "made_source.h"
#include "platform/files/paths.h"
#include "support/fake_run.h"
#include "support/small_streams.h"

#include <gmock/gmock.h>

#include <chrono>
#include <thread>

namespace corvane {
namespace {

using import_test::made_disc_video;
using import_test::made_sound;
using import_test::made_source;
using import_test::made_video;
using testing::ElementsAre;
using testing::HasSubstr;

const std::string complete = "*process complete\n";

class ImportRun : public testing::Test {
 protected:
  /// One that encodes with two passes, one that copies.
  import_job job(const std::string& name, bool copied = false) {
    source_stream sound = made_sound("ac3");
    const source_facts facts = copied ? made_source(made_disc_video(), sound)
                                      : made_source(made_video(1280, 720, {30000, 1001}), sound);
    import_place to;
    to.folder = app.path();
    to.is_taken = [](const std::string&) { return false; };
    to.choices.quality = import_quality::mean_rate;
    return plan_batch({{app.add(name, "source"), facts, {}, {}}}, {}, to).entries.at(0).job;
  }
  void begin(std::vector<import_job> jobs) {
    import_events events;
    events.progress = [this](const import_progress& p) { told.push_back(p); };
    events.again = [this](std::size_t number, const std::string& why) {
      again.push_back(std::to_string(number) + ": " + why);
    };
    events.ended = [this](const import_end& e) {
      ended.push_back(std::to_string(e.job) + ": " + e.problem);
      if (!e.note.empty())
        notes.push_back(e.note);
    };
    events.done = [this](bool stopped) { done.push_back(stopped); };
    run.emplace(std::move(jobs), std::move(events), ask, launcher, lock, app.path(),
                [this] { return now; });
    ASSERT_EQ(run->start(), std::nullopt);
  }
  void feed(const std::string& piece) {
    launcher.output->pieces.push_back(piece);
    run->update();
  }
  /// What the tool would have made.
  void make(const import_job& made, const std::string& video = "stream") {
    for (const std::string& file : made.files.all())
      app.add(native_file_name(temporary_name(file)), file == made.files.video ? video : "stream");
  }
  /// Of a source of a minute that could not be read to its end.
  void make_short(const import_job& made) {
    make(made, testing_support::small_video());
    app.add(native_file_name(temporary_name(made.files.sounds.at(0))), std::string(1'440'000, 'x'));
  }
  static void expect_nothing_of(const import_job& job) {
    for (const std::string& file : job.files.all()) {
      EXPECT_FALSE(file_exists(file)) << file;
      EXPECT_FALSE(file_exists(temporary_name(file))) << file;
    }
  }
  /// Until its streams are finished.
  void wait_for_ends(std::size_t count) {
    for (int i = 0; i < 500 && ended.size() < count; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      run->update();
    }
    EXPECT_EQ(ended.size(), count);
  }

  testing_support::temporary_folder app;
  testing_support::scripted_prompts ask;
  testing_support::fake_launcher launcher;
  folder_lock lock{app.path()};
  std::vector<import_progress> told;
  std::vector<std::string> again, ended, notes;
  std::vector<bool> done;
  double now = 1000;  ///< seconds
  std::optional<import_run> run;
};

TEST_F(ImportRun, GivesFilesTheirNamesOneImportAfterTheOther) {
  const import_job a = job("a.mpg", true), b = job("b.mpg", true);
  begin({a, b});
  EXPECT_TRUE(lock.held());
  make(a);
  feed("*importing a.mpg.....\n" + complete);
  wait_for_ends(1);
  EXPECT_TRUE(file_exists(a.files.video));
  EXPECT_TRUE(run->running());
  make(b);
  feed("*importing b.mpg.....\n" + complete);
  wait_for_ends(2);
  EXPECT_THAT(ended, ElementsAre("0: ", "1: "));
  EXPECT_THAT(done, ElementsAre(false));
  EXPECT_TRUE(file_exists(b.files.video));
  EXPECT_FALSE(file_exists(b.files.video + ".part"));
  EXPECT_FALSE(lock.held());
  EXPECT_FALSE(run->running());
}

TEST_F(ImportRun, GoesOnWithTheNextAfterAFailureAndLeavesNothingOfIt) {
  const import_job a = job("a.mpg", true), b = job("b.mpg", true);
  begin({a, b});
  make(a);
  feed("*importing a.mpg.....\nbroken\nERR:  ffmpeg.exe ended with status 1\n" + complete);
  wait_for_ends(1);
  EXPECT_THAT(ended, ElementsAre("0: ffmpeg.exe ended with status 1"));
  expect_nothing_of(a);
  make(b);
  feed(complete);
  wait_for_ends(2);
  EXPECT_THAT(ended, ElementsAre(testing::_, "1: "));
}

// ffmpeg ends with status 0 then.
TEST_F(ImportRun, ADiskThatBecomesFullWithTheLastBytesFailsIt) {
  const import_job a = job("a.mpg", true);
  begin({a});
  make(a);
  feed("frame= 9\nError closing file a.ac3.part: No space left on device\n" + complete);
  wait_for_ends(1);
  EXPECT_THAT(ended, ElementsAre("0: the disk is full"));
  expect_nothing_of(a);
  EXPECT_THAT(app.read("CorvaneIMPORT.txt"),
              HasSubstr("ERR:  \"" + a.source + "\" was not imported: the disk is full\r\n"));
}

TEST_F(ImportRun, SoundThatEndsTooEarlyFailsIt) {
  import_job a = job("a.mp4");
  a.plan.sound.streams.at(0).fate = stream_fate::encoded;
  begin({a});
  make(a);
  app.add("a.ac3.part", std::string(1'400'000, 'x'));  // of 1,440,000
  feed(complete);
  wait_for_ends(1);
  EXPECT_THAT(ended, ElementsAre("0: " + a.files.sounds[0] + " is not whole"));
  EXPECT_THAT(app.read("CorvaneIMPORT.txt"), HasSubstr("a.ac3 is not whole"));
}

TEST_F(ImportRun, ASourceThatIsGoneIsSaidToBe) {
  const import_job a = job("a.mp4");
  remove_all(a.source);
  begin({a});
  feed("a.mp4: No such file or directory\nERR:  ffmpeg.exe ended with status 1\n" + complete);
  wait_for_ends(1);
  EXPECT_THAT(ended, ElementsAre("0: the file is not there any more"));
}

TEST_F(ImportRun, AFilmWhoseEndCannotBeReadIsAddedWithAWord) {
  import_job a = job("a.mp4");
  a.plan.sound.streams.at(0).fate = stream_fate::encoded;
  a.plan.chapters = {0, 30};
  begin({a});
  make_short(a);
  feed(complete);
  wait_for_ends(1);
  EXPECT_THAT(ended, ElementsAre("0: "));
  EXPECT_THAT(notes, ElementsAre("the last 1:00 of it could not be read and are missing"));
  EXPECT_EQ(app.read("a.ac3").size(), 768u * 2);
  EXPECT_THAT(run->jobs()[0].plan.chapters, ElementsAre(0));
  EXPECT_THAT(app.read("CorvaneIMPORT.txt"), HasSubstr("a.mp4\" was imported, but the last 1:00"));
}

TEST_F(ImportRun, HowLongItTookIsKeptForTheNextOnes) {
  import_job a = job("a.mpg", true), b = job("b.mpg", true);
  a.plan.source_bytes = b.plan.source_bytes = 2'000'000'000;
  begin({a, b});
  now += 40;
  make(a);
  feed(complete);
  wait_for_ends(1);
  EXPECT_EQ(app.read("import-speeds.txt"), "copy 2.000e-08\n");
  now += 80;
  make(b);
  feed(complete);
  wait_for_ends(2);
  EXPECT_EQ(app.read("import-speeds.txt"), "copy 3.000e-08\n");
}

TEST_F(ImportRun, OfAFailureNoTimeIsKept) {
  import_job a = job("a.mpg", true);
  a.plan.source_bytes = 2'000'000'000;
  begin({a});
  now += 40;
  feed("ERR:  no\n" + complete);
  wait_for_ends(1);
  EXPECT_FALSE(file_exists(app.path("import-speeds.txt")));
}

TEST_F(ImportRun, ASourceThatIsCutOffWhileItIsReadIsNotImported) {
  import_job a = job("a.mp4");
  a.plan.source_bytes = 1000;
  begin({a});
  make_short(a);
  feed(complete);
  wait_for_ends(1);
  EXPECT_THAT(ended, ElementsAre(HasSubstr("0: the file was changed, or went away, while it was "
                                           "read: the last 1:00 of it")));
  expect_nothing_of(a);
}

// A recording in which packets are missing: a stream that is copied has no times.
TEST_F(ImportRun, WhatCannotStayAsItWasIsEncodedInASecondRun) {
  import_job a = job("a.mpg", true);
  a.plan.container = "mpegts";
  a.plan.seconds = 10;
  begin({a});
  EXPECT_THAT(app.read("import.bat"), HasSubstr("-c:v copy"));
  make(a, testing_support::small_video());
  feed(complete);
  for (int i = 0; i < 500 && launcher.started.size() < 2; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
    run->update();
  }
  ASSERT_EQ(launcher.started.size(), 2u);
  EXPECT_TRUE(lock.held());
  EXPECT_THAT(app.read("import.bat"), testing::Not(HasSubstr("-c:v copy")));
  EXPECT_FALSE(file_exists(a.files.video + ".part")) << "the first run's";
  EXPECT_THAT(again, ElementsAre(HasSubstr("0: the video is encoded after all: 9.97 s")));
  EXPECT_EQ(run->jobs()[0].plan.video.fate, stream_fate::encoded);
  EXPECT_LT(told.back().percent, 50);
  run->stop();
  EXPECT_THAT(ended, ElementsAre("0: it was stopped"));
  EXPECT_THAT(app.read("CorvaneIMPORT.txt"), HasSubstr("are missing inside it\r\n"));
}

TEST_F(ImportRun, AStopWhileStreamsAreFinishedDoesNotWaitForAllOfThem) {
  const import_job a = job("a.mpg", true);
  begin({a});
  make(a, testing_support::small_video());
  feed(complete);
  run->stop();
  EXPECT_EQ(ended.size(), 1u);
  EXPECT_FALSE(run->running());
  EXPECT_FALSE(file_exists(a.files.video + ".part"));
}

TEST_F(ImportRun, AVideoThatCannotBeReadFailsIt) {
  const import_job a = job("a.mpg", true);
  begin({a});
  app.add("a.m2v.part/folder", "which cannot be read as a file");
  feed(complete);
  wait_for_ends(1);
  EXPECT_THAT(ended, ElementsAre("0: " + a.files.video + ": it cannot be read"));
}

TEST_F(ImportRun, WhereNobodyKnewThePicturesLengthItsEndIsNotCalledDamage) {
  import_job a = job("a.mp4");
  a.plan.may_end_earlier = true;
  begin({a});
  make_short(a);
  feed(complete);
  wait_for_ends(1);
  EXPECT_THAT(notes, ElementsAre("the picture ends 1:00 before the file does; what is heard after "
                                 "it is left out"));
}

TEST_F(ImportRun, WhatAKilledProgramHasLeftIsRemoved) {
  const import_job lost = job("lost.mpg", true), next = job("next.mpg", true);
  make(lost);
  ASSERT_EQ(note_unfinished(app.path(), lost), std::nullopt);
  begin({next});
  EXPECT_FALSE(file_exists(lost.files.video + ".part"));
  EXPECT_THAT(app.read(run_file::unfinished_import), HasSubstr("next.m2v.part\n"));
  run->stop();
  EXPECT_FALSE(file_exists(app.path(run_file::unfinished_import)));
}

TEST_F(ImportRun, NobodyElseMayBeginWhileStreamsAreFinished) {
  const import_job a = job("a.mpg", true);
  begin({a});
  make(a);
  feed(complete);
  EXPECT_TRUE(lock.held());
  wait_for_ends(1);
  EXPECT_FALSE(lock.held());
  EXPECT_FALSE(file_exists(app.path(run_file::unfinished_import)));
}

TEST_F(ImportRun, FailsWhereTheToolHasMadeNothing) {
  begin({job("a.mpg", true)});
  feed(complete);
  wait_for_ends(1);
  EXPECT_THAT(ended, ElementsAre(HasSubstr("a.m2v was not made")));
  EXPECT_THAT(done, ElementsAre(false));
}

TEST_F(ImportRun, StopRemovesWhatIsNotComplete) {
  const import_job a = job("a.mpg", true), b = job("b.mpg", true);
  begin({a, b});
  make(a);
  run->stop();
  EXPECT_THAT(ended, ElementsAre("0: it was stopped"));
  EXPECT_THAT(done, ElementsAre(true));
  EXPECT_EQ(launcher.output->killed, 1);
  EXPECT_FALSE(file_exists(a.files.video + ".part"));
  EXPECT_FALSE(lock.held());
}

TEST_F(ImportRun, ProgressCountsBothPassesAndNeverGoesBack) {
  begin({job("a.mp4")});
  const std::string line =
      "frame=  90 fps=180 q=2.0 size=N/A time=00:00:30.00 bitrate=N/A speed=6x \r";
  feed("*importing a.mp4, first pass.....\n" + line);
  EXPECT_TRUE(told.back().first_pass);
  EXPECT_NEAR(told.back().percent, 25, 0.01);
  EXPECT_EQ(told.back().pictures_a_second, 180);
  feed("*importing a.mp4.....\n");
  EXPECT_FALSE(told.back().first_pass);
  EXPECT_NEAR(told.back().percent, 50, 0.01);
  feed(line);
  EXPECT_NEAR(told.back().percent, 75, 0.01);
  feed("frame= 1 fps=2 time=00:00:59.99 bitrate=1 speed=6x \r");
  double before = 0;
  for (const import_progress& p : told) {
    EXPECT_GE(p.percent, before);
    EXPECT_LT(p.percent, 100);
    before = p.percent;
  }
}

TEST_F(ImportRun, LogHoldsAllImportsAndIsNotThatOfADisc) {
  app.add("CorvaneLOG.txt", "of a disc");
  app.add("CorvaneIMPORT.txt", "of earlier imports");
  begin({job("a.mpg", true), job("b.mpg", true)});
  feed("of the first\nERR:  no\n" + complete);
  wait_for_ends(1);
  feed("of the second\nERR:  no\n" + complete);
  wait_for_ends(2);
  const std::string log = app.read("CorvaneIMPORT.txt");
  EXPECT_THAT(log, HasSubstr("of the first"));
  EXPECT_THAT(log, HasSubstr("of the second"));
  EXPECT_THAT(log, testing::Not(HasSubstr("earlier")));
  EXPECT_EQ(app.read("CorvaneLOG.txt"), "of a disc");
}

TEST_F(ImportRun, IsRefusedWhileAnotherRunGoesOn) {
  folder_lock other(app.path());
  ASSERT_TRUE(other.take());
  import_run refused({job("a.mpg", true)}, {}, ask, launcher, lock, app.path());
  EXPECT_TRUE(refused.start());
  EXPECT_FALSE(refused.running());
  EXPECT_TRUE(launcher.started.empty());
}

}  // namespace
}  // namespace corvane
