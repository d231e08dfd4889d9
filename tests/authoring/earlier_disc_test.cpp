// The disc that was there, through everything that may become of the run that replaces it.
#include "authoring/earlier_disc.h"

#include "platform/files/files.h"
#include "support/scripted_prompts.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <thread>

#ifndef _WIN32
#include <sys/prctl.h>
#include <unistd.h>
#endif

namespace corvane::testing_support {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

std::string native(std::string name) {
  if (native_style() == path_style::windows)
    std::replace(name.begin(), name.end(), '/', '\\');
  return name;
}

TEST(RunRecord, IsReadAsItWasWritten) {
  for (const run_record& record :
       {run_record{}, run_record{true, {"VIDEO_TS", "AUDIO_TS", "image.iso"}, {"title1.mpg"}},
        run_record{
            false, {"VIDEO_TS"}, {"title12.mpg", "menu1.mpg", "menusub1.mpg", "presub.mpg"}}})
    EXPECT_EQ(parse_record(record_text(record)), record);
}

TEST(RunRecord, ThatIsCutOffIsNone) {
  const std::string whole = record_text({true, {"VIDEO_TS"}, {"title1.mpg"}});
  for (std::size_t size = 0; size + 1 < whole.size(); ++size)
    EXPECT_FALSE(parse_record(whole.substr(0, size))) << size;
}

TEST(RunRecord, OfAStrangerNamesNothingThatNoRunHas) {
  std::string text = record_text({false, {"VIDEO_TS"}, {"title1.mpg"}});
  text.insert(text.find("end\n"),
              "earlier ../VIDEO_TS\nearlier notes\nstream ../title1.mpg\nstream holiday.mpg\n"
              "stream /title1.mpg\nstream \nearlier \nwhatever\n");
  EXPECT_EQ(parse_record(text), (run_record{false, {"VIDEO_TS"}, {"title1.mpg"}}));
}

TEST(UnfinishedRuns, AreKeptUntilTheyAreDroppedAndTheirFileGoesWithTheLast) {
  const temporary_folder app;
  const unfinished_run a{app.path("a"), app.path("a.earlier")};
  const unfinished_run b{app.path("b"), app.path("b.earlier")};
  EXPECT_THAT(unfinished_runs(app.path()), IsEmpty());
  EXPECT_FALSE(add_unfinished_run(app.path(), a));
  EXPECT_FALSE(add_unfinished_run(app.path(), b));
  EXPECT_FALSE(add_unfinished_run(app.path(), b));
  EXPECT_THAT(unfinished_runs(app.path()), ElementsAre(a, b));
  EXPECT_FALSE(drop_unfinished_run(app.path(), a));
  EXPECT_THAT(unfinished_runs(app.path()), ElementsAre(b));
  EXPECT_FALSE(drop_unfinished_run(app.path(), b));
  EXPECT_THAT(files_in(app.path()), IsEmpty());
}

TEST(UnfinishedRuns, LinesThatAreNoneAreLeftOut) {
  const temporary_folder app;
  app.add("unfinished.txt", "\n\t\nhere\nout\tplace\n" + app.path("a") + "\tplace\n" +
                                app.path("a") + "\t" + app.path("a.earlier"));
  EXPECT_THAT(unfinished_runs(app.path()),
              ElementsAre(unfinished_run{app.path("a"), app.path("a.earlier")}));
}

class EarlierDisc : public ::testing::Test {
 protected:
  EarlierDisc() {
    put("dvd/VIDEO_TS/VIDEO_TS.IFO", "old ifo");
    put("dvd/AUDIO_TS/x", "old audio");
    put("dvd.iso", "old image");
    put("dvd/notes.txt", "mine");
  }

  void put(const std::string& name, const std::string& bytes) { folder.add(native(name), bytes); }
  bool there(const std::string& name) const { return entry_exists(folder.path(native(name))); }
  std::string read(const std::string& name) const { return folder.read(native(name)); }

  std::shared_ptr<run_place> begin() {
    const begun_run begun = begin_run(app, out, record);
    EXPECT_TRUE(begun.place) << begun.why;
    return begun.place;
  }
  /// What tools that are ended half way leave.
  void make_half_a_disc() {
    put("dvd/VIDEO_TS/VTS_01_1.VOB", "half");
    put("dvd/AUDIO_TS/half", "");
    put("dvd/title1.mpg", "half");
    if (record.image)
      put("dvd.iso", "half");
  }
  /// The run is seen alive with what it has made by now.
  static void see_alive(run_place& place) {
    // Until the clock of the disk has gone on.
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    place.note_alive();
  }
  void die_with_half_a_disc() {
    const auto place = begin();
    make_half_a_disc();
    see_alive(*place);
  }
  void make_a_disc() {
    make_half_a_disc();
    put("dvd/VIDEO_TS/VIDEO_TS.IFO", "new ifo");
  }
  void expect_the_earlier_disc() const {
    EXPECT_EQ(read("dvd/VIDEO_TS/VIDEO_TS.IFO"), "old ifo");
    EXPECT_FALSE(there("dvd/VIDEO_TS/VTS_01_1.VOB"));
    EXPECT_EQ(read("dvd/AUDIO_TS/x"), "old audio");
    EXPECT_FALSE(there("dvd/AUDIO_TS/half"));
    EXPECT_EQ(read("dvd.iso"), "old image");
    EXPECT_EQ(files_in(out), std::vector<std::string>{"notes.txt"});
  }
  void expect_no_trace() const {
    EXPECT_FALSE(there("dvd.earlier"));
    EXPECT_THAT(files_in(app), ElementsAre("corvane.lock"));
  }
  void expect_told(const std::string& text, icon picture = icon::information) {
    ask.expect({text, picture, buttons::ok, "Corvane"});
  }
  std::string interrupted() const {
    return "The authoring run into \"" + out + "\" was interrupted.";
  }
  std::string came_back() const {
    return interrupted() + "  The earlier DVD, which it was to replace, is in its place again.";
  }
  void expect_told_that_it_came_back() { expect_told(came_back()); }
  std::string moved(const std::string& from, const std::string& to) const {
    return "\n\"" + folder.path(native(from)) +
           "\" was changed when that run had ended, or just before: it may be half of what the run "
           "made, or somebody's own.  It was moved to \"" +
           folder.path(native(to)) + "\".";
  }

  temporary_folder folder;
  std::string app = folder.path("app"), out = folder.path("dvd");
  std::string beside = folder.path("dvd.earlier");
  run_record record{true, {"VIDEO_TS", "AUDIO_TS", "image.iso"}, {"title1.mpg"}};
  scripted_prompts ask;
  memory_settings prefs;
  document doc{ask, prefs};
  project& p = doc.p;
  bool made = (make_folders(app), true);
  folder_lock lock{app};
};

TEST_F(EarlierDisc, IsPutAsideBesideTheFolderWhileTheRunGoesOn) {
  const auto place = begin();
  EXPECT_EQ(place->path(), beside);
  EXPECT_FALSE(there("dvd/VIDEO_TS"));
  EXPECT_FALSE(there("dvd/AUDIO_TS"));
  EXPECT_FALSE(there("dvd.iso"));
  EXPECT_EQ(read("dvd.earlier/VIDEO_TS/VIDEO_TS.IFO"), "old ifo");
  EXPECT_EQ(read("dvd.earlier/AUDIO_TS/x"), "old audio");
  EXPECT_EQ(read("dvd.earlier/image.iso"), "old image");
  EXPECT_EQ(files_in(out), std::vector<std::string>{"notes.txt"}) << "goes into the image";
  EXPECT_THAT(unfinished_runs(app), ElementsAre(unfinished_run{out, beside}));
}

TEST_F(EarlierDisc, GoesWhenTheNewOneIsComplete) {
  const auto place = begin();
  make_a_disc();
  std::filesystem::remove(path_of(folder.path(native("dvd/title1.mpg"))));
  const run_settled told = settle_run(app, record, *place, run_outcome::success);
  EXPECT_THAT(told.notes, IsEmpty());
  EXPECT_THAT(told.warnings, IsEmpty());
  EXPECT_EQ(read("dvd/VIDEO_TS/VIDEO_TS.IFO"), "new ifo");
  EXPECT_TRUE(there("dvd/VIDEO_TS/VTS_01_1.VOB"));
  EXPECT_EQ(read("dvd.iso"), "half");
  expect_no_trace();
}

TEST_F(EarlierDisc, ComesBackWhenTheRunFailsIsStoppedOrCouldNotBeStarted) {
  for (const run_outcome outcome : {run_outcome::failed, run_outcome::stopped, run_outcome::none}) {
    const auto place = begin();
    make_a_disc();
    const run_settled told = settle_run(app, record, *place, outcome);
    EXPECT_THAT(told.notes, ElementsAre("what the run had made in \"" + out + "\" was removed",
                                        "the earlier DVD is in its place again"));
    EXPECT_THAT(told.warnings, IsEmpty());
    expect_the_earlier_disc();
    expect_no_trace();
  }
}

TEST_F(EarlierDisc, ComesBackWhenTheToolsEndedWellAndMadeNotAllOfTheNewOne) {
  const auto no_image = begin();
  make_a_disc();
  std::filesystem::remove(path_of(folder.path("dvd.iso")));
  run_settled told = settle_run(app, record, *no_image, run_outcome::success);
  EXPECT_THAT(told.warnings, ElementsAre("The run has not made all of the DVD in \"" + out +
                                         "\".  The earlier one is in its place again."));
  expect_the_earlier_disc();

  record = {false, {"VIDEO_TS", "AUDIO_TS"}, {}};
  const auto nothing = begin();
  told = settle_run(app, record, *nothing, run_outcome::success);
  EXPECT_EQ(told.warnings.size(), 1u);
  expect_the_earlier_disc();
  expect_no_trace();
}

TEST_F(EarlierDisc, WithoutOneAFailedRunLeavesNothingThatLooksLikeADisc) {
  for (const char* const name : {"dvd/VIDEO_TS", "dvd/AUDIO_TS", "dvd.iso"})
    remove_all(folder.path(native(name)));
  record.earlier.clear();
  const auto place = begin();
  make_half_a_disc();
  const run_settled told = settle_run(app, record, *place, run_outcome::failed);
  EXPECT_THAT(told.notes, ElementsAre("what the run had made in \"" + out + "\" was removed"));
  EXPECT_FALSE(there("dvd/VIDEO_TS"));
  EXPECT_FALSE(there("dvd/AUDIO_TS"));
  EXPECT_FALSE(there("dvd.iso"));
  EXPECT_EQ(read("dvd/notes.txt"), "mine");
  expect_no_trace();
}

TEST_F(EarlierDisc, NothingIsRemovedButWhatTheRunMade) {
  record = {false, {"VIDEO_TS", "AUDIO_TS"}, {"title1.mpg"}};
  const auto place = begin();
  make_half_a_disc();
  put("dvd/title2.mpg", "somebody's");
  put("dvd/other/VIDEO_TS/x", "somebody's");
  put("dvd/cover.jpg", "somebody's");
  settle_run(app, record, *place, run_outcome::failed);
  EXPECT_EQ(read("dvd.iso"), "old image") << "no image was to be made";
  EXPECT_EQ(files_in(out), (std::vector<std::string>{"cover.jpg", "notes.txt", "title2.mpg"}));
  EXPECT_TRUE(there("dvd/other/VIDEO_TS/x"));
}

TEST_F(EarlierDisc, AFolderThatHasTheImagesNameStays) {
  remove_all(folder.path("dvd.iso"));
  put("dvd.iso/keep.txt", "mine");
  record.earlier = {"VIDEO_TS", "AUDIO_TS"};
  const auto place = begin();
  settle_run(app, record, *place, run_outcome::failed);
  EXPECT_EQ(read("dvd.iso/keep.txt"), "mine");
}

// A run that dies -------------------------------------------------------------------------------

TEST_F(EarlierDisc, ComesBackAtTheNextStartAfterTheRunDied) {
  die_with_half_a_disc();
  expect_told_that_it_came_back();
  settle_interrupted_runs(doc, app, lock);
  EXPECT_FALSE(lock.held());
  expect_the_earlier_disc();
  expect_no_trace();
  settle_interrupted_runs(doc, app, lock);
  expect_the_earlier_disc();
}

TEST_F(EarlierDisc, TheLogOfARunThatDiedIsKeptAndToldOfAtTheNextStart) {
  put("app/CorvaneLOG.txt.part", "*one.....\r\n");
  ASSERT_TRUE(lock.take());
  settle_interrupted_runs(doc, app, lock);  // it may be the log of a run of ours
  EXPECT_TRUE(there("app/CorvaneLOG.txt.part"));
  lock.release();
  expect_told(
      "The last authoring run was lost with its program.  Its log, as far as it was "
      "written, is kept in \"" +
      join_path(app, "CorvaneLOG.txt") + "\".");
  settle_interrupted_runs(doc, app, lock);
  EXPECT_FALSE(lock.held());
  EXPECT_FALSE(there("app/CorvaneLOG.txt.part"));
  EXPECT_TRUE(read("app/CorvaneLOG.txt").starts_with("*one.....\r\n"));
  settle_interrupted_runs(doc, app, lock);
}

TEST_F(EarlierDisc, WithoutOneTheHalfDiscOfARunThatDiedIsRemovedAndThatIsTold) {
  for (const char* const name : {"dvd/VIDEO_TS", "dvd/AUDIO_TS", "dvd.iso"})
    remove_all(folder.path(native(name)));
  record.earlier.clear();
  die_with_half_a_disc();
  expect_told(interrupted() + "  What it had made was removed.");
  settle_interrupted_runs(doc, app, lock);
  EXPECT_FALSE(there("dvd/VIDEO_TS"));
  EXPECT_FALSE(there("dvd.iso"));
  expect_no_trace();
}

// Somebody came when the run had died -----------------------------------------------------------

TEST_F(EarlierDisc, AnotherDiscThatWasPutInItsPlaceIsKept) {
  die_with_half_a_disc();
  remove_all(folder.path(native("dvd/VIDEO_TS")));
  remove_all(folder.path("dvd.iso"));
  put("dvd/VIDEO_TS/VIDEO_TS.IFO", "somebody's");
  put("dvd.iso", "somebody's");
  expect_told(came_back() + moved("dvd/VIDEO_TS", "dvd.interrupted/VIDEO_TS") +
                  moved("dvd.iso", "dvd.interrupted/dvd.iso"),
              icon::exclamation);
  settle_interrupted_runs(doc, app, lock);
  expect_the_earlier_disc();
  expect_no_trace();
  EXPECT_EQ(read("dvd.interrupted/VIDEO_TS/VIDEO_TS.IFO"), "somebody's");
  EXPECT_EQ(read("dvd.interrupted/dvd.iso"), "somebody's");
  EXPECT_FALSE(there("dvd.interrupted/AUDIO_TS")) << "which is the run's";
}

TEST_F(EarlierDisc, HalfADiscThatSomebodyAddedToOrWroteOverIsKept) {
  for (const char* const name : {"VIDEO_TS.IFO", "VTS_01_1.VOB"}) {
    die_with_half_a_disc();
    const std::string file = native("dvd/VIDEO_TS/") + name;
    put(file, "somebody's");
    expect_told(came_back() + moved("dvd/VIDEO_TS", "dvd.interrupted/VIDEO_TS"), icon::exclamation);
    EXPECT_TRUE(settle_interrupted_at(doc, out));
    expect_the_earlier_disc();
    EXPECT_EQ(read(std::string("dvd.interrupted/VIDEO_TS/") + name), "somebody's");
    remove_all(folder.path("dvd.interrupted"));
  }
}

TEST_F(EarlierDisc, DiscOfAnyAgeThatWasMovedToItsPlaceIsKept) {
  put("older/VIDEO_TS/VIDEO_TS.IFO", "older");
  {
    const auto place = begin();
    put("other/VIDEO_TS/VIDEO_TS.IFO", "other");
    make_half_a_disc();
    see_alive(*place);
  }
  remove_all(folder.path(native("dvd/VIDEO_TS")));
  remove_all(folder.path(native("dvd/AUDIO_TS")));
  ASSERT_FALSE(
      move_entry(folder.path(native("other/VIDEO_TS")), folder.path(native("dvd/VIDEO_TS"))));
  ASSERT_FALSE(
      move_entry(folder.path(native("older/VIDEO_TS")), folder.path(native("dvd/AUDIO_TS"))));
  expect_told(came_back() + moved("dvd/VIDEO_TS", "dvd.interrupted/VIDEO_TS") +
                  moved("dvd/AUDIO_TS", "dvd.interrupted/AUDIO_TS"),
              icon::exclamation);
  settle_interrupted_runs(doc, app, lock);
  expect_the_earlier_disc();
  EXPECT_EQ(read("dvd.interrupted/VIDEO_TS/VIDEO_TS.IFO"), "other");
  EXPECT_EQ(read("dvd.interrupted/AUDIO_TS/VIDEO_TS.IFO"), "older");
}

TEST_F(EarlierDisc, FilmOfAStreamsNameIsKept) {
  die_with_half_a_disc();
  put("dvd/title1.mpg", "a film");
  expect_told(came_back() + moved("dvd/title1.mpg", "dvd.interrupted/title1.mpg"),
              icon::exclamation);
  settle_interrupted_runs(doc, app, lock);
  expect_the_earlier_disc();
  EXPECT_EQ(read("dvd.interrupted/title1.mpg"), "a film");
}

TEST_F(EarlierDisc, WhatIsNotKnownToBeTheRunsIsKeptThoughNoEarlierDiscComesBack) {
  for (const char* const name : {"dvd/VIDEO_TS", "dvd/AUDIO_TS", "dvd.iso"})
    remove_all(folder.path(native(name)));
  put("dvd.interrupted/VIDEO_TS/VIDEO_TS.IFO", "kept before");
  record = {false, {}, {}};
  begin();
  put("dvd/VIDEO_TS/VTS_01_1.VOB", "half");
  expect_told(interrupted() + moved("dvd/VIDEO_TS", "dvd.interrupted2/VIDEO_TS"),
              icon::exclamation);
  settle_interrupted_runs(doc, app, lock);
  EXPECT_FALSE(there("dvd/VIDEO_TS"));
  EXPECT_EQ(read("dvd.interrupted2/VIDEO_TS/VTS_01_1.VOB"), "half");
  EXPECT_EQ(read("dvd.interrupted/VIDEO_TS/VIDEO_TS.IFO"), "kept before");
  expect_no_trace();
}

TEST_F(EarlierDisc, StaysAsideWhereAnotherDiscCannotBeMovedAway) {
  remove_all(folder.path(native("dvd/AUDIO_TS")));
  record = {false, {"VIDEO_TS"}, {}};
  begin();
  put("dvd/VIDEO_TS/VIDEO_TS.IFO", "somebody's");
  put("dvd.interrupted", "");
  for (int number = 2; number <= 99; ++number)
    put("dvd.interrupted" + std::to_string(number), "");
  expect_told(interrupted() + "\n\"" + join_path(out, "VIDEO_TS") +
                  "\" of the earlier DVD could not be put back: all names such as \"" +
                  folder.path("dvd.interrupted") + "\" are taken.  It lies in \"" + beside + "\".",
              icon::exclamation);
  settle_interrupted_runs(doc, app, lock);
  EXPECT_EQ(read("dvd/VIDEO_TS/VIDEO_TS.IFO"), "somebody's");
  EXPECT_EQ(read("dvd.earlier/VIDEO_TS/VIDEO_TS.IFO"), "old ifo");
}

TEST_F(EarlierDisc, ComesBackWhenAnyProgramIsToAuthorIntoTheFolder) {
  die_with_half_a_disc();
  expect_told_that_it_came_back();
  EXPECT_TRUE(settle_interrupted_at(doc, out));
  expect_the_earlier_disc();
  EXPECT_FALSE(there("dvd.earlier"));
  // The program folder of the run finds nothing to do.
  settle_interrupted_runs(doc, app, lock);
  expect_no_trace();
}

TEST_F(EarlierDisc, IsLeftAloneAtAStartWhileItsRunGoesOn) {
  auto place = begin();
  settle_interrupted_runs(doc, app, lock);
  EXPECT_FALSE(settle_interrupted_at(doc, out));
  place.reset();
  folder_lock other(app);
  ASSERT_TRUE(other.take());
  settle_interrupted_runs(doc, app, lock);
  EXPECT_TRUE(there("dvd.earlier/VIDEO_TS"));
  EXPECT_FALSE(there("dvd/VIDEO_TS"));
  EXPECT_THAT(unfinished_runs(app).size(), 1u);
}

TEST_F(EarlierDisc, IsWholeWhereverTheRunDiedWhilePuttingItAside) {
  // Before the record, within it, before anything was moved, and between two parts.
  const std::string whole = record_text(record);
  for (const std::string& text : {std::string(), whole.substr(0, whole.size() / 2), whole}) {
    put("dvd.earlier/corvane.lock", "");
    put("dvd.earlier/run.txt", text);
    EXPECT_TRUE(settle_interrupted_at(doc, out));
    expect_the_earlier_disc();
    expect_no_trace();
  }
  put("dvd.earlier/run.txt", whole);
  ASSERT_FALSE(
      move_entry(folder.path(native("dvd/VIDEO_TS")), folder.path(native("dvd.earlier/VIDEO_TS"))));
  expect_told_that_it_came_back();
  EXPECT_TRUE(settle_interrupted_at(doc, out));
  expect_the_earlier_disc();
  expect_no_trace();
}

TEST_F(EarlierDisc, ComesBackWhereNothingStandsWhenItsRecordIsSpoilt) {
  begin();
  put("dvd.earlier/run.txt", "spoilt");
  put("dvd/AUDIO_TS/x", "somebody's by now");
  expect_told_that_it_came_back();
  settle_interrupted_runs(doc, app, lock);
  EXPECT_EQ(read("dvd/VIDEO_TS/VIDEO_TS.IFO"), "old ifo");
  EXPECT_EQ(read("dvd/AUDIO_TS/x"), "somebody's by now");
  EXPECT_EQ(read("dvd.earlier/AUDIO_TS/x"), "old audio");
}

TEST_F(EarlierDisc, IsWholeWhereverTheProgramDiedWhileBringingItBack) {
  die_with_half_a_disc();
  // One part is back, of the next the half one is gone, the last is not looked at yet.
  remove_all(folder.path(native("dvd/VIDEO_TS")));
  ASSERT_FALSE(
      move_entry(folder.path(native("dvd.earlier/VIDEO_TS")), folder.path(native("dvd/VIDEO_TS"))));
  remove_all(folder.path(native("dvd/AUDIO_TS")));
  expect_told_that_it_came_back();
  settle_interrupted_runs(doc, app, lock);
  expect_the_earlier_disc();
  expect_no_trace();
}

TEST_F(EarlierDisc, DoesNotComeBackOverACompleteOneWhereverTheProgramDied) {
  begin();
  make_a_disc();
  ASSERT_FALSE(move_entry(folder.path(native("dvd.earlier/run.txt")),
                          folder.path(native("dvd.earlier/done.txt"))));
  remove_all(folder.path(native("dvd.earlier/AUDIO_TS")));
  settle_interrupted_runs(doc, app, lock);
  EXPECT_EQ(read("dvd/VIDEO_TS/VIDEO_TS.IFO"), "new ifo");
  EXPECT_EQ(read("dvd.iso"), "half");
  expect_no_trace();
}

TEST_F(EarlierDisc, ThatCannotBePutBackIsNamedWithItsPlaceAndComesBackLater) {
  auto place = begin();
  ASSERT_FALSE(remove_all(out));
  const run_settled told = settle_run(app, record, *place, run_outcome::failed);
  place.reset();
  ASSERT_EQ(told.warnings.size(), 2u);
  EXPECT_THAT(told.warnings[0], StartsWith("\"" + join_path(out, "VIDEO_TS") +
                                           "\" of the earlier DVD could not be put back: "));
  EXPECT_THAT(told.warnings[0], HasSubstr("It lies in \"" + beside + "\"."));
  EXPECT_EQ(read("dvd.iso"), "old image");
  EXPECT_EQ(read("dvd.earlier/VIDEO_TS/VIDEO_TS.IFO"), "old ifo");

  put("dvd/AUDIO_TS/x", "somebody's by now");
  expect_told_that_it_came_back();
  settle_interrupted_runs(doc, app, lock);
  settle_interrupted_runs(doc, app, lock);
  EXPECT_EQ(read("dvd/VIDEO_TS/VIDEO_TS.IFO"), "old ifo");
  EXPECT_EQ(read("dvd/AUDIO_TS/x"), "somebody's by now");
  EXPECT_EQ(read("dvd.earlier/AUDIO_TS/x"), "old audio");
  const auto next = begin();
  ASSERT_TRUE(next);
  EXPECT_EQ(next->path(), folder.path("dvd.earlier2"));
}

TEST_F(EarlierDisc, WaitsForADiskThatIsNotThere) {
  begin();
  const std::string away = folder.path("away");
  add_unfinished_run(app, {join_path(away, "dvd"), join_path(away, "dvd.earlier")});
  expect_told_that_it_came_back();
  settle_interrupted_runs(doc, app, lock);
  EXPECT_THAT(unfinished_runs(app),
              ElementsAre(unfinished_run{join_path(away, "dvd"), join_path(away, "dvd.earlier")}));
  make_folders(away);
  settle_interrupted_runs(doc, app, lock);
  EXPECT_THAT(unfinished_runs(app), IsEmpty()) << "the disk is there, and nothing on it";
}

// Its place -------------------------------------------------------------------------------------

TEST_F(EarlierDisc, SomebodysOwnFolderOfItsPlacesNameIsNotTouched) {
  put("dvd.earlier/VIDEO_TS/VIDEO_TS.IFO", "somebody's");
  put("dvd.earlier2", "somebody's");
  EXPECT_TRUE(settle_interrupted_at(doc, out));
  const auto place = begin();
  EXPECT_EQ(place->path(), folder.path("dvd.earlier3"));
  make_a_disc();
  settle_run(app, record, *place, run_outcome::success);
  EXPECT_FALSE(there("dvd.earlier3"));
  EXPECT_EQ(read("dvd.earlier/VIDEO_TS/VIDEO_TS.IFO"), "somebody's");
  EXPECT_EQ(read("dvd.earlier2"), "somebody's");
}

TEST_F(EarlierDisc, TwoRunsDoNotWorkOnOneFolder) {
  const auto first = begin();
  const std::string other_app = folder.path("other app");
  make_folders(other_app);
  const begun_run second = begin_run(other_app, out, {});
  EXPECT_TRUE(second.in_use);
  EXPECT_FALSE(second.place);
  EXPECT_THAT(unfinished_runs(other_app), IsEmpty());
  settle_run(app, record, *first, run_outcome::failed);
  EXPECT_TRUE(begin_run(other_app, out, {}).place);
}

TEST_F(EarlierDisc, IsLeftWhereItIsWhenTheRunCannotBeWrittenDown) {
  make_folders(join_path(app, "unfinished.txt"));
  const begun_run begun = begin_run(app, out, record);
  EXPECT_FALSE(begun.place);
  EXPECT_THAT(begun.why, StartsWith("The file \"" + join_path(app, "unfinished.txt") +
                                    "\" could not be written: "));
  expect_the_earlier_disc();
  EXPECT_FALSE(there("dvd.earlier"));
}

// Making links and taking rights away works otherwise on Windows.
#ifndef _WIN32
TEST_F(EarlierDisc, AFolderThatIsReachedThroughALinkHasOnePlace) {
  make_folders(folder.path("elsewhere"));
  const std::string other = folder.path("elsewhere/link");
  std::filesystem::create_directory_symlink(path_of(out), path_of(other));
  record = {false, {"VIDEO_TS", "AUDIO_TS"}, {}};
  const begun_run begun = begin_run(app, other, record);
  ASSERT_TRUE(begun.place) << begun.why;
  EXPECT_EQ(begun.place->path(), beside);
  EXPECT_TRUE(begin_run(app, out, record).in_use);
  EXPECT_FALSE(there("dvd/VIDEO_TS"));
  settle_run(app, record, *begun.place, run_outcome::stopped);
  expect_the_earlier_disc();
}

/// Another user's rights while this lives, also when root runs the tests.
class as_nobody {
 public:
  as_nobody() {
    if (::geteuid() == 0) {
      constexpr uid_t nobody = 65534;
      EXPECT_EQ(::seteuid(nobody), 0);
    }
  }
  ~as_nobody() {
    EXPECT_EQ(::seteuid(::getuid()), 0);
    // A process that has changed its user may not be traced, which the leak sanitizer does.
    ::prctl(PR_SET_DUMPABLE, 1);
  }
  as_nobody(const as_nobody&) = delete;
  as_nobody& operator=(const as_nobody&) = delete;
};

TEST_F(EarlierDisc, ThatCannotBeRemovedIsNamedAndNeverComesBackOverTheCompleteOne) {
  namespace fs = std::filesystem;
  for (const std::string& changed : {folder.path(), app, out, join_path(out, "VIDEO_TS")})
    fs::permissions(path_of(changed), fs::perms::all);
  fs::create_directories(path_of(join_path(out, "VIDEO_TS/sub")));
  folder.add("dvd/VIDEO_TS/sub/x");
  record = {false, {"VIDEO_TS"}, {}};
  run_settled told;
  {
    const as_nobody rights;
    const auto place = begin();
    ASSERT_TRUE(place);
    fs::create_directory(path_of(join_path(out, "VIDEO_TS")));
    told = settle_run(app, record, *place, run_outcome::success);
  }
  ASSERT_EQ(told.warnings.size(), 1u);
  EXPECT_THAT(told.warnings[0], StartsWith("\"" + join_path(beside, "VIDEO_TS") +
                                           "\" of the earlier DVD could not be removed: "));
  EXPECT_THAT(told.warnings[0],
              HasSubstr("You can remove the folder \"" + beside + "\" yourself."));
  settle_interrupted_runs(doc, app, lock);
  EXPECT_FALSE(there("dvd/VIDEO_TS/sub"));
  expect_no_trace();
}

/// Nothing can be made beside the output folder.
class EarlierDiscAlone : public EarlierDisc {
 protected:
  EarlierDiscAlone() {
    namespace fs = std::filesystem;
    for (const char* const name : {"app", "dvd", "dvd/VIDEO_TS", "dvd/AUDIO_TS"})
      fs::permissions(path_of(folder.path(name)), fs::perms::all);
    fs::permissions(path_of(folder.path()), fs::perms(0555));
  }
  ~EarlierDiscAlone() override {
    std::filesystem::permissions(path_of(folder.path()), std::filesystem::perms::owner_all);
  }
};

TEST_F(EarlierDiscAlone, IsKeptInTheFolderWhenNoImageIsMade) {
  record = {false, {"VIDEO_TS", "AUDIO_TS"}, {"title1.mpg"}};
  const as_nobody rights;
  const auto place = begin();
  ASSERT_TRUE(place);
  EXPECT_EQ(place->path(), join_path(out, "corvane.earlier"));
  EXPECT_FALSE(there("dvd/VIDEO_TS"));
  EXPECT_TRUE(begin_run(app, out, record).in_use);
  settle_run(app, record, *place, run_outcome::failed);
  expect_the_earlier_disc();
  EXPECT_FALSE(there("dvd/corvane.earlier"));
}

TEST_F(EarlierDiscAlone, IsFoundInTheFolderAfterTheRunDied) {
  record = {false, {"VIDEO_TS", "AUDIO_TS"}, {"title1.mpg"}};
  const as_nobody rights;
  begin();
  expect_told_that_it_came_back();
  EXPECT_TRUE(settle_interrupted_at(doc, out));
  expect_the_earlier_disc();
}

TEST_F(EarlierDiscAlone, IsNotReplacedWhenAnImageIsMade) {
  const as_nobody rights;
  const begun_run begun = begin_run(app, out, record);
  EXPECT_FALSE(begun.place);
  EXPECT_FALSE(begun.in_use);
  EXPECT_THAT(begun.why,
              StartsWith("Nothing can be written beside the output folder \"" + out + "\": "));
  expect_the_earlier_disc();
  EXPECT_THAT(unfinished_runs(app), IsEmpty());
}
#endif

}  // namespace
}  // namespace corvane::testing_support
