// The driver's whole conversations, with a launcher that starts nothing.
#include "authoring/author.h"

#include "authoring/earlier_disc.h"
#include "authoring/sample_projects.h"
#include "disc/finding_file.h"
#include "examine/disc_traits.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/program_folder.h"
#include "project/disc_of.h"
#include "project/missing_tools.h"
#include "runner/run_files.h"
#include "support/recorded_start.h"
#include "support/scripted_prompts.h"
#include "support/small_streams.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

const char* const subtitle_text = "1\n00:00:01,000 --> 00:00:02,000\nText\n";

/// The disc must not be called complete unseen.
const child_variable makes_disc = {"CORVANE_MAKES_DISC", "yes"};

const file_dialog folder_question = {"enter a folder name to create the dvd", "", "folder"};

class Author : public ::testing::Test {
 protected:
  Author() {
    for (const outside_tool& tool : outside_tools())
      add_tool(tool.name);
    add_tool("conspawn");
    p.List11 = {folder.stored("a.m2v") + "/" + folder.stored("a.ac3")};
    p.List1 = {"title1:a.m2v/a.ac3"};
    p.chapters = {"00:00:00.00"};
    p.delay = {"0"};
    p.subtitledata = {"<none>"};
    out = folder.path("my dvd");
  }

  void add_tool(const std::string& name) {
    const std::string file = tool_path(app, name);
    make_folders(text_of(path_of(file).parent_path()));
    ASSERT_FALSE(write_file(file, "x"));
    std::filesystem::permissions(path_of(file), std::filesystem::perms::all);
  }
  void remove_tool(const std::string& name) {
    std::filesystem::remove(path_of(tool_path(app, name)));
  }
  void expect_folder_question() { ask.expect_save(folder_question, out); }
  std::string in(const std::string& folder_path, const std::string& name) {
    return join_path(folder_path, name);
  }
  /// Puts an earlier disc into the output folder.
  std::string add_disc() {
    const std::string file = in(in(out, "VIDEO_TS"), "VIDEO_TS.IFO");
    make_folders(in(out, "VIDEO_TS"));
    EXPECT_FALSE(write_file(file, "x"));
    return file;
  }
  /// Two subtitles of the title that can be read.
  void add_subtitles() {
    for (const char* name : {"a.srt", "b.srt"})
      folder.add(name, subtitle_text);
    p.subtitledata = {folder.stored("a.srt") + "/" + folder.stored("b.srt")};
  }
  std::string replace_question() {
    return "The folder \"" + out +
           "\" already holds a DVD.  Replace it?\n\nThis will be removed:\n" + in(out, "VIDEO_TS");
  }
  message_box told(const std::string& text, icon picture) {
    return {text, picture, buttons::ok, "Corvane"};
  }
  void expect_other_folder_refusal() {
    ask.expect(told("The edited XML names another output folder than \"" + out +
                        "\", for which this run was prepared.  Please author again.",
                    icon::critical));
  }

  temporary_folder folder;
  std::string app = folder.path("app");
  std::string out;
  scripted_prompts ask;
  memory_settings prefs;
  document doc{ask, prefs};
  project& p = doc.p;
  bool made = (make_folders(app), true);
  folder_lock lock{app};
  recording_listener listener;
  recording_launcher launcher;
  shelled runner{listener, ask, launcher, lock, app};
  author_equipment e{app, lock, runner, {}, {}};
  prepared_run run;
};

TEST_F(Author, AnEmptyTitleListIsRefused) {
  p.List11.clear();
  ask.expect({"please add more titles", icon::exclamation, buttons::ok, "Corvane"});
  EXPECT_EQ(author_command(doc, e, run), author_result::nothing_to_author);
  EXPECT_FALSE(lock.held());
}

TEST_F(Author, ACancelledFolderQuestionEndsInSilence) {
  ask.expect_save(folder_question, "");
  EXPECT_EQ(author_command(doc, e, run), author_result::cancelled);
  EXPECT_FALSE(lock.held());
  EXPECT_FALSE(file_exists(in(app, "process.bat")));
}

TEST_F(Author, WritesEveryFileAndStartsTheScript) {
  p.globalregion = "PAL";
  add_subtitles();
  folder.add("m.m2v");
  p.menulist = {folder.stored("m.m2v") + "/"};
  expect_folder_question();
  EXPECT_EQ(author_command(doc, e, run), author_result::started);
  EXPECT_THAT(run.files,
              ElementsAre(in(app, "process.bat"), in(app, "menu1.xml"), in(app, "sub1-1.xml"),
                          in(app, "sub1-2.xml"), in(app, "config.xml")));
  for (const std::string& file : run.files)
    EXPECT_TRUE(file_exists(file)) << file;
  EXPECT_THAT(launcher.started, ElementsAre("bin/conspawn.exe \"" + in(app, "process.bat") + "\""));
  EXPECT_THAT(launcher.variables, ElementsAre(child_variable{"VIDEO_FORMAT", "PAL"}, makes_disc));
  EXPECT_TRUE(lock.held());
  ASSERT_EQ(listener.starts.size(), 1u);
  EXPECT_EQ(listener.starts[0].first_lines, std::string(version_title) + "\r\n");
  // Please wait, the buttons' pictures, the menu, two subtitles, the title, the disc, complete.
  EXPECT_EQ(listener.starts[0].steps, 8);
}

TEST_F(Author, TheScriptIsToldTheStandardOfTheProject) {
  p.globalregion = "NTSC";
  expect_folder_question();
  EXPECT_EQ(author_command(doc, e, run), author_result::started);
  EXPECT_THAT(launcher.variables, ElementsAre(child_variable{"VIDEO_FORMAT", "NTSC"}, makes_disc));
}

TEST_F(Author, FontsAreAskedForOnceAndOnlyWhenThereAreSubtitles) {
  int asked = 0;
  e.fonts = [&] {
    ++asked;
    return font_list({{"Arial", "Arial.TTF", "/fonts/Arial.TTF"}}, path_style::posix);
  };
  expect_folder_question();
  EXPECT_EQ(prepare_run(doc, e, run), author_result::prepared);
  EXPECT_EQ(asked, 0);
  add_subtitles();
  expect_folder_question();
  EXPECT_EQ(prepare_run(doc, e, run), author_result::prepared);
  EXPECT_EQ(asked, 1);
  EXPECT_THAT(
      folder.read(in("app", "sub1-1.xml")),
      HasSubstr(native_style() == windows ? "font=\"arial.ttf\"" : "font=\"/fonts/Arial.TTF\""));
}

TEST_F(Author, ASubtitleThatIsGoneOrEmptyIsNamedBeforeTheFolderQuestion) {
  add_subtitles();
  folder.add("b.srt", "");
  const std::string subject = "Subtitle 2 of title 1 cannot be authored: the file \"" +
                              folder.path("b.srt") + "\" cannot be used, since it is ";
  const std::string advice =
      ".  Please put it back, or reset the title's subtitles and add another one.";
  ask.expect(told(subject + "empty" + advice, icon::exclamation));
  EXPECT_EQ(author_command(doc, e, run), author_result::refused);
  std::filesystem::remove(path_of(folder.path("b.srt")));
  ask.expect(told(subject + "missing" + advice, icon::exclamation));
  EXPECT_EQ(author_command(doc, e, run), author_result::refused);
  EXPECT_THAT(launcher.started, IsEmpty());
}

TEST_F(Author, ASubtitleInNoKnownFormatIsRefused) {
  add_subtitles();
  folder.add("a.srt", "Dear reader,\nthis is a letter.\n");
  ask.expect(told("Subtitle 1 of title 1 cannot be authored: the file \"" + folder.path("a.srt") +
                      "\" cannot be used, since it is in none of the subtitle formats that spumux "
                      "reads.  Please reset the title's subtitles and add one that can be read.",
                  icon::exclamation));
  EXPECT_EQ(author_command(doc, e, run), author_result::refused);
}

TEST_F(Author, AUtf8SubtitleThatWouldBeReadAsAnotherSetIsRefusedWithTheWayOut) {
  add_subtitles();
  folder.add("a.srt", "1\n00:00:01,000 --> 00:00:02,000\nCaf\xC3\xA9\n");
  ask.expect(told("Subtitle 1 of title 1 cannot be authored: the file \"" + folder.path("a.srt") +
                      "\" cannot be used, since it is UTF-8 text, but its character set is "
                      "ISO-8859-1, so its letters would come out wrong.  Please reset the title's "
                      "subtitles, add the file again and have it read as UTF-8.",
                  icon::exclamation));
  EXPECT_EQ(author_command(doc, e, run), author_result::refused);
  p.subtitleoptions = {"center,bottom,60,60,30,30,28.0,arial.ttf,720,478,29.97,UTF-8|"};
  expect_folder_question();
  EXPECT_EQ(prepare_run(doc, e, run), author_result::prepared);
}

TEST_F(Author, PreparingStartsNothing) {
  expect_folder_question();
  EXPECT_EQ(prepare_run(doc, e, run), author_result::prepared);
  EXPECT_THAT(launcher.started, IsEmpty());
  EXPECT_THAT(listener.starts, IsEmpty());
  EXPECT_TRUE(lock.held());
  EXPECT_FALSE(folder_exists(out));
}

TEST_F(Author, WrongMaterialIsAskedAboutLastAndBeforeAnythingIsWritten) {
  folder.add("a.m2v", small_video(video_standard::pal));
  folder.add("a.ac3", small_sound());
  fact_store facts;
  e.material.facts = &facts;
  add_disc();
  expect_folder_question();
  ask.expect({replace_question(), icon::exclamation, buttons::yes_no, "Corvane"}, answer::yes);
  ask.expect_findings(
      "The disc would be wrong, or the run would fail. Author anyway?\nerror: title 1, video: the "
      "video is PAL (720x576, 25 pictures a second) in a project of NTSC.",
      false);
  EXPECT_EQ(author_command(doc, e, run), author_result::refused);
  EXPECT_FALSE(file_exists(in(app, "process.bat")));
  EXPECT_TRUE(folder_exists(in(out, "VIDEO_TS")));
  EXPECT_FALSE(lock.held());
}

TEST_F(Author, WhatCannotBeAuthoredIsToldAtOnceWithAllThatIsKnown) {
  folder.add("a.m2v", small_video(video_standard::pal));
  folder.add("a.ac3", small_sound());
  fact_store facts;
  e.material.facts = &facts;
  p.firstplay = "jump title 7";
  ask.expect_findings(
      "The first-play command, \"jump title 7\", leads to title 7, which does not exist.  Please "
      "change it in the navigation commands. (no run)\nerror: title 1, video: the video is PAL "
      "(720x576, 25 pictures a second) in a project of NTSC.\nerror: disc, command: the first-play "
      "command \"jump title 7\" leads to title 7, but there is only title 1.",
      true);
  EXPECT_EQ(author_command(doc, e, run), author_result::refused) << "whatever is said";
  EXPECT_FALSE(file_exists(in(app, "process.bat")));
}

TEST_F(Author, ALookThatWasSkippedIsSaidInTheLog) {
  folder.add("a.m2v", small_video());
  folder.add("a.ac3", small_sound());
  fact_store facts;
  e.material = {&facts, [](examination&) { return look_end::skipped; }};
  expect_folder_question();
  EXPECT_EQ(author_command(doc, e, run), author_result::started);
  ASSERT_EQ(listener.starts.size(), 1u);
  EXPECT_EQ(listener.starts[0].first_lines,
            std::string(version_title) +
                "\r\nINFO: the files of the project were not examined before this run.\r\n");
}

TEST_F(Author, AnEarlierScriptIsReplacedAndNothingElseInTheProgramFolder) {
  ASSERT_FALSE(write_file(in(app, "process.bat"), std::string(100000, 'x')));
  ASSERT_FALSE(write_file(in(app, "menu9.xml"), "kept"));
  expect_folder_question();
  EXPECT_EQ(prepare_run(doc, e, run), author_result::prepared);
  EXPECT_THAT(folder.read(in("app", "process.bat")), StartsWith("@echo off\r\n"));
  EXPECT_LT(folder.read(in("app", "process.bat")).size(), 10000u);
  EXPECT_EQ(folder.read(in("app", "menu9.xml")), "kept");
}

TEST_F(Author, SeparatorsAtTheFoldersEndAreDropped) {
  const std::string asked = out + separator(native_style()) + separator(native_style());
  ask.expect_save(folder_question, asked);
  EXPECT_EQ(prepare_run(doc, e, run), author_result::prepared);
  EXPECT_EQ(run.where.out, out);
  EXPECT_THAT(folder.read(in("app", "process.bat")), HasSubstr("mkdir \"" + out + "\"\r\n"));
}

TEST_F(Author, TheTopFolderOfADiskIsRefused) {
  ask.expect_save(folder_question, native_style() == path_style::windows ? "C:\\" : "/");
  ask.expect(
      told("The top folder of a disk cannot be the output folder.  Please choose another "
           "folder.",
           icon::exclamation));
  EXPECT_EQ(author_command(doc, e, run), author_result::refused);
}

TEST_F(Author, ARowThatCannotBeAuthoredIsToldBeforeAnythingIsAsked) {
  p.delay = {"0 & calc"};
  ask.expect(
      told("Title 1 has the A/V delay \"0 & calc\", which is not a number of milliseconds.  "
           "Please set the delay again.",
           icon::exclamation));
  EXPECT_EQ(author_command(doc, e, run), author_result::refused);
}

TEST_F(Author, ABitmapThatIsNoneIsToldBeforeAnythingIsAsked) {
  const std::string file = folder.add("b.bmp", "%!PS");
  folder.add("m.m2v");
  p.menulist = {folder.stored("m.m2v") + "/"};
  p.menubuttons = {" 0/0/9/9/exit/black/" + folder.stored("b.bmp")};
  ask.expect(told("Button 1 of menu 1 cannot be authored: the file \"" + file +
                      "\" is not a bitmap.  Please edit the menu.",
                  icon::exclamation));
  EXPECT_EQ(author_command(doc, e, run), author_result::refused);
}

TEST_F(Author, ABitmapThatHasGoneIsToldBeforeAnythingIsAsked) {
  folder.add("m.m2v");
  p.menulist = {folder.stored("m.m2v") + "/"};
  p.menubuttons = {" 0/0/9/9/exit/black/white| 0/9/9/18/exit/black/" + folder.stored("b.bmp")};
  ask.expect(told("Button 2 of menu 1 cannot be authored: the bitmap \"" + folder.path("b.bmp") +
                      "\" is missing.  Please put it back, or edit the menu.",
                  icon::exclamation));
  EXPECT_EQ(author_command(doc, e, run), author_result::refused);
}

TEST_F(Author, AMenuSoundThatHasGoneIsToldBeforeAnythingIsAsked) {
  folder.add("m.m2v");
  p.menulist = {folder.stored("m.m2v") + "/" + folder.stored("m.ac3")};
  ask.expect(told("Menu 1 cannot be authored: the file \"" + folder.path("m.ac3") +
                      "\" is missing.  Please put it back, or remove the menu and add it again.",
                  icon::exclamation));
  EXPECT_EQ(author_command(doc, e, run), author_result::refused);
}

TEST_F(Author, AMenuVideoThatHasGoneIsToldBeforeAnythingIsAsked) {
  p.menulist = {folder.stored("m.m2v") + "/"};
  ask.expect(told("Menu 1 cannot be authored: the file \"" + folder.path("m.m2v") +
                      "\" is missing.  Please put it back, or remove the menu and add it again.",
                  icon::exclamation));
  EXPECT_EQ(author_command(doc, e, run), author_result::refused);
}

TEST_F(Author, AMenuVideoOfTheOtherStandardIsToldBeforeAnythingIsAsked) {
  // A sequence header of 720 by 576.
  folder.add("m.m2v", std::string("\0\0\1\xB3\x2D\x02\x40\x23", 8));
  p.menulist = {folder.stored("m.m2v") + "/"};
  ask.expect(
      told("Menu 1 cannot be authored: its video \"" + folder.path("m.m2v") +
               "\" is PAL, but the project is NTSC.  Please remove the menu and add it with a "
               "video of the project's standard.",
           icon::exclamation));
  EXPECT_EQ(author_command(doc, e, run), author_result::refused);
}

TEST_F(Author, MissingToolsAreNamedInOneMessage) {
  p.isocreate = true;
  remove_tool("mplex");
  remove_tool("mkisofs");
  remove_tool("gm");
  // In the words of the system; which those are is missing_tools' matter.
  const std::string text = missing_tools(app, {"mplex", "mkisofs"});
  ASSERT_NE(text.find("mplex"), std::string::npos);
  ASSERT_NE(text.find("mkisofs"), std::string::npos);
  ask.expect(told(text, icon::critical));
  EXPECT_EQ(author_command(doc, e, run), author_result::tool_missing);
  EXPECT_FALSE(lock.held());
}

TEST_F(Author, AFolderWhoseFilesWouldBeLostIsRefused) {
  make_folders(out);
  ASSERT_FALSE(write_file(in(out, "holiday.mpg"), "x"));
  expect_folder_question();
  ask.expect(told("The output folder holds the file \"" + in(out, "holiday.mpg") +
                      "\", and authoring erases all .mpg files there.  Please move the file or "
                      "choose another folder.",
                  icon::exclamation));
  EXPECT_EQ(author_command(doc, e, run), author_result::refused);
  EXPECT_FALSE(lock.held());
}

TEST_F(Author, AnEarlierDiscIsKeptOnNo) {
  const std::string kept = add_disc();
  expect_folder_question();
  ask.expect({replace_question(), icon::exclamation, buttons::yes_no, "Corvane"}, answer::no);
  EXPECT_EQ(author_command(doc, e, run), author_result::holds_disc);
  EXPECT_TRUE(file_exists(kept));
  EXPECT_FALSE(file_exists(in(app, "process.bat")));
  EXPECT_FALSE(lock.held());
}

TEST_F(Author, AnEarlierDiscGoesOnYesWhenTheRunStarts) {
  const std::string gone = add_disc();
  ASSERT_FALSE(write_file(in(out, "notes.txt"), "kept"));
  expect_folder_question();
  ask.expect({replace_question(), icon::exclamation, buttons::yes_no, "Corvane"}, answer::yes);
  EXPECT_EQ(prepare_run(doc, e, run), author_result::prepared);
  EXPECT_TRUE(file_exists(gone));
  EXPECT_EQ(authordvd(doc, e, run), author_result::started);
  EXPECT_FALSE(file_exists(gone));
  EXPECT_FALSE(folder_exists(in(out, "VIDEO_TS")));
  EXPECT_TRUE(file_exists(in(out, "notes.txt")));
}

TEST_F(Author, AFilmThatIsNamedAsARunNamesItsOwnIsRefusedByItsName) {
  make_folders(out);
  ASSERT_FALSE(write_file(in(out, "title7.mpg"), "a film"));
  expect_folder_question();
  ask.expect(told("The output folder holds the file \"" + in(out, "title7.mpg") +
                      "\", and authoring erases all .mpg files there.  Please move the file or "
                      "choose another folder.",
                  icon::exclamation));
  EXPECT_EQ(author_command(doc, e, run), author_result::refused);
  EXPECT_EQ(folder.read(in("my dvd", "title7.mpg")), "a film");
}

TEST_F(Author, AStoppedRunTakesWhatItMadeAndTheEarlierDiscComesBack) {
  const std::string disc = add_disc();
  ASSERT_FALSE(write_file(in(out, "notes.txt"), "kept"));
  e.replace_earlier_disc = true;
  expect_folder_question();
  ASSERT_EQ(author_command(doc, e, run), author_result::started);
  EXPECT_FALSE(file_exists(disc));
  ASSERT_FALSE(write_file(in(out, "title1.mpg"), "half"));
  const std::string half = in(in(out, "VIDEO_TS"), "VTS_01_1.VOB");
  make_folders(in(out, "VIDEO_TS"));
  ASSERT_FALSE(write_file(half, "half"));
  runner.stop();
  EXPECT_TRUE(file_exists(disc));
  EXPECT_FALSE(file_exists(half));
  EXPECT_THAT(files_in(out), ElementsAre("notes.txt"));
  EXPECT_FALSE(folder_exists(out + ".earlier"));
  EXPECT_THAT(folder.read(in("app", "CorvaneLOG.txt")),
              HasSubstr("*** stopped by the user \r\n INFO: what the run had made in \"" + out +
                        "\" was removed \r\n INFO: the earlier DVD is in its place again \r\n"));
}

/// A run that ends well whatever it has made, and what its last step was called.
class ending_child : public testing_support::silent_child {
 public:
  std::optional<std::size_t> waiting() override { return text_.size(); }
  std::optional<std::string> read(std::size_t count) override {
    const std::string piece = text_.substr(0, count);
    text_.erase(0, piece.size());
    return piece;
  }

 private:
  std::string text_ = "\n*process complete\n";
};
class ending_launcher : public process_launcher {
 public:
  start_result start(const std::string&, const std::vector<child_variable>&) override {
    return {std::make_unique<ending_child>(), start_result::step::none, 0};
  }
};
class step_listener : public testing_support::recording_listener {
 public:
  void whole(const run_whole& whole) override { last = whole.name; }
  std::string last;
};

TEST_F(Author, TheLastStepIsTheRemovalOfTheEarlierDiscOnlyWhereTheRunHasMadeAnother) {
  ending_launcher ends;
  for (const bool is_made : {false, true}) {
    step_listener screen;
    shelled own(screen, ask, ends, lock, app);
    author_equipment with{app, lock, own, {}, {}};
    with.replace_earlier_disc = true;
    const std::string disc = add_disc();
    expect_folder_question();
    ASSERT_EQ(author_command(doc, with, run), author_result::started);
    if (is_made)
      make_folders(in(out, "VIDEO_TS"));
    else
      ask.expect(told("The run has not made all of the DVD in \"" + out +
                          "\".  The earlier one is in its place again.",
                      icon::exclamation));
    ask.expect({"Process complete.  Please review the log for more information (recommended).",
                icon::information, buttons::ok_cancel, "Corvane"},
               answer::cancel);
    own.update();
    EXPECT_EQ(file_exists(disc), !is_made);
    EXPECT_EQ(screen.last, is_made ? "removing the earlier disc" : "putting the earlier disc back");
  }
}

TEST_F(Author, WhatARunOfAnotherProgramFolderLeftIsSetInOrderBeforeTheFolderIsLookedAt) {
  const std::string disc = add_disc();
  const std::string other_app = folder.path("other app");
  make_folders(other_app);
  begun_run other = begin_run(other_app, out, {false, {"VIDEO_TS"}, {"title1.mpg"}});
  ASSERT_TRUE(other.place);
  ASSERT_FALSE(write_file(in(out, "title1.mpg"), "half"));
  // Until the clock of the disk has gone on.
  std::this_thread::sleep_for(std::chrono::milliseconds(30));
  other.place->note_alive();
  other.place.reset();
  expect_folder_question();
  ask.expect(told("The authoring run into \"" + out +
                      "\" was interrupted.  The earlier DVD, which it was to replace, is in its "
                      "place again.",
                  icon::information));
  ask.expect({replace_question(), icon::exclamation, buttons::yes_no, "Corvane"}, answer::no);
  EXPECT_EQ(author_command(doc, e, run), author_result::holds_disc);
  EXPECT_TRUE(file_exists(disc));
}

TEST_F(Author, AFolderThatAnotherProgramAuthorsIntoIsRefused) {
  const std::string other_app = folder.path("other app");
  make_folders(other_app);
  const std::string text = "Another authoring run is using the output folder \"" + out +
                           "\".  Please wait until it has finished, or choose another folder.";
  auto other = begin_run(other_app, out, {});
  ASSERT_TRUE(other.place);
  expect_folder_question();
  ask.expect(told(text, icon::critical));
  EXPECT_EQ(author_command(doc, e, run), author_result::folder_in_use);
  settle_run(other_app, {}, *other.place, run_outcome::failed);
  expect_folder_question();
  ASSERT_EQ(prepare_run(doc, e, run), author_result::prepared);
  other = begin_run(other_app, out, {});
  ask.expect(told(text, icon::critical));
  EXPECT_EQ(authordvd(doc, e, run), author_result::folder_in_use);
  EXPECT_FALSE(lock.held());
}

TEST_F(Author, OfADiscThatWentSinceTheQuestionAStoppedRunLeavesNoHalfOneInItsPlace) {
  add_disc();
  e.replace_earlier_disc = true;
  expect_folder_question();
  ASSERT_EQ(prepare_run(doc, e, run), author_result::prepared);
  ASSERT_FALSE(remove_all(in(out, "VIDEO_TS")));
  ASSERT_EQ(authordvd(doc, e, run), author_result::started);
  make_folders(in(out, "VIDEO_TS"));
  runner.stop();
  EXPECT_FALSE(entry_exists(in(out, "VIDEO_TS")));
}

TEST_F(Author, WhatCameIntoTheFolderSinceTheQuestionIsNotLost) {
  expect_folder_question();
  ASSERT_EQ(prepare_run(doc, e, run), author_result::prepared);
  const std::string disc = add_disc();
  ask.expect(told("\"" + in(out, "VIDEO_TS") +
                      "\" was not there when this run was prepared.  Please author again.",
                  icon::critical));
  EXPECT_EQ(authordvd(doc, e, run), author_result::refused);
  EXPECT_TRUE(file_exists(disc));
  ASSERT_FALSE(remove_all(in(out, "VIDEO_TS")));
  ASSERT_FALSE(write_file(in(out, "film.mpg"), "x"));
  ask.expect(told("The output folder holds the file \"" + in(out, "film.mpg") +
                      "\", and authoring erases all .mpg files there.  Please move the file or "
                      "choose another folder.",
                  icon::critical));
  EXPECT_EQ(authordvd(doc, e, run), author_result::refused);
  EXPECT_THAT(launcher.started, IsEmpty());
}

TEST_F(Author, AnImageAloneIsAskedForToo) {
  p.isocreate = true;
  ASSERT_FALSE(write_file(out + ".iso", "x"));
  expect_folder_question();
  ask.expect({"The disc image \"" + out +
                  ".iso\" already exists.  Replace it?\n\n"
                  "This will be removed:\n" +
                  out + ".iso",
              icon::exclamation, buttons::yes_no, "Corvane"},
             answer::yes);
  EXPECT_EQ(author_command(doc, e, run), author_result::started);
  EXPECT_FALSE(file_exists(out + ".iso"));
}

TEST_F(Author, WhatWasDecidedBeforehandIsNotAsked) {
  const std::string disc = add_disc();
  e.replace_earlier_disc = false;
  expect_folder_question();
  EXPECT_EQ(author_command(doc, e, run), author_result::holds_disc);
  EXPECT_TRUE(file_exists(disc));
  e.replace_earlier_disc = true;
  expect_folder_question();
  EXPECT_EQ(author_command(doc, e, run), author_result::started);
  EXPECT_FALSE(file_exists(disc));
}

// Making links needs a privilege on Windows.
#ifndef _WIN32
TEST_F(Author, ALinkToADiscIsRemovedWithoutWhatItLeadsTo) {
  make_folders(out);
  folder.add(in("elsewhere", "VIDEO_TS.IFO"));
  std::filesystem::create_directory_symlink(path_of(folder.path("elsewhere")),
                                            path_of(in(out, "VIDEO_TS")));
  e.replace_earlier_disc = true;
  expect_folder_question();
  EXPECT_EQ(author_command(doc, e, run), author_result::started);
  EXPECT_FALSE(folder_exists(in(out, "VIDEO_TS")));
  EXPECT_TRUE(file_exists(folder.path(in("elsewhere", "VIDEO_TS.IFO"))));
}
#endif

#ifndef _WIN32
TEST_F(Author, LinksInTheProgramFolderAreReplacedAndNotWrittenThrough) {
  folder.add("m.m2v");
  p.menulist = {folder.stored("m.m2v") + "/"};
  const std::vector<std::string> names = {"process.bat",    "config.xml",  "menu1.xml",
                                          "highlight1.png", "select1.png", "unfinished.txt",
                                          "foreseen.xml",   "findings.xml"};
  for (const std::string& name : names)
    std::filesystem::create_symlink(path_of(folder.add(in("mine", name), "mine")),
                                    path_of(in(app, name)));
  expect_folder_question();
  EXPECT_EQ(author_command(doc, e, run), author_result::started);
  for (const std::string& name : names) {
    EXPECT_EQ(folder.read(in("mine", name)), "mine");
    EXPECT_FALSE(std::filesystem::is_symlink(path_of(in(app, name)))) << name;
  }
  EXPECT_FALSE(entry_exists(in(app, "highlight1.png"))) << "gm would write through it";
}
#endif

/// Expects the next message to hold these words; its reason is the system's own.
class not_written_prompts : public prompts {
 public:
  explicit not_written_prompts(std::string folder) : folder_(std::move(folder)) {}
  answer message(const message_box& box) override {
    told.push_back(box.text);
    EXPECT_EQ(box.picture, icon::critical);
    return answer::ok;
  }
  std::string open_file(const file_dialog&) override { return {}; }
  std::string save_file(const file_dialog&) override { return folder_; }
  std::string input(const input_box&) override { return {}; }
  std::vector<std::string> told;

 private:
  std::string folder_;
};

TEST_F(Author, WhatTheDiscShouldBeIsWrittenWhenTheRunStarts) {
  p.isocreate = true;
  p.chapters = {"00:00:00.00,00:00:05.00"};
  expect_folder_question();
  EXPECT_EQ(prepare_run(doc, e, run), author_result::prepared);
  EXPECT_FALSE(file_exists(in(app, run_file::foreseen))) << "an editor may still change the disc";
  EXPECT_EQ(authordvd(doc, e, run), author_result::started);
  const auto foreseen = parse_foreseen(folder.read(in("app", run_file::foreseen)));
  ASSERT_TRUE(foreseen) << foreseen.error;
  EXPECT_EQ(foreseen->out, out);
  EXPECT_TRUE(foreseen->image);
  EXPECT_THAT(foreseen->told, ::testing::IsEmpty());
  EXPECT_THAT(foreseen->chapters, ElementsAre("00:00:00.00,00:00:05.00"));
  const disc_trait* const titles = foreseen->disc.find({}, disc_trait_kind::titles);
  ASSERT_NE(titles, nullptr);
  EXPECT_EQ(titles->value, "1");
}

TEST_F(Author, WhatAnEarlierRunFoundIsNotThisOnes) {
  finding earlier;
  earlier.found = "of the run before";
  folder.add("app/findings.xml", findings_text({earlier}));
  expect_folder_question();
  EXPECT_EQ(author_command(doc, e, run), author_result::started);
  EXPECT_EQ(folder.read(in("app", "findings.xml")), findings_text({}));
}

TEST_F(Author, DiscThatIsWantedInSpiteOfErrorsIsNoted) {
  folder.add("a.m2v", small_video(video_standard::pal));
  folder.add("a.ac3", small_sound());
  fact_store facts;
  e.material.facts = &facts;
  expect_folder_question();
  ask.expect_findings(
      "The disc would be wrong, or the run would fail. Author anyway?\nerror: title 1, video: the "
      "video is PAL (720x576, 25 pictures a second) in a project of NTSC.",
      true);
  EXPECT_EQ(author_command(doc, e, run), author_result::started);
  const auto foreseen = parse_foreseen(folder.read(in("app", run_file::foreseen)));
  ASSERT_TRUE(foreseen) << foreseen.error;
  const finding_item video{finding_item::whole_kind::title, 1, finding_item::part_kind::video, 0};
  EXPECT_THAT(foreseen->told, ElementsAre(told_item{video, false}));
  const disc_trait* const size = foreseen->disc.find(video, disc_trait_kind::size);
  ASSERT_NE(size, nullptr) << "what the look has found is foreseen";
  EXPECT_EQ(size->value, "720x576");
}

TEST_F(Author, WithoutRoomForWhatTheDiscShouldBeNothingIsStarted) {
  expect_folder_question();
  EXPECT_EQ(prepare_run(doc, e, run), author_result::prepared);
  make_folders(in(app, run_file::foreseen));
  not_written_prompts any("");
  const prompts_relay::answered_by others(doc.ask, any);
  EXPECT_EQ(authordvd(doc, e, run), author_result::not_written);
  ASSERT_EQ(any.told.size(), 1u);
  EXPECT_THAT(any.told[0], StartsWith("The file \"" + in(app, run_file::foreseen) +
                                      "\" could not be written: "));
  EXPECT_FALSE(lock.held());
  EXPECT_THAT(launcher.started, IsEmpty());
}

TEST_F(Author, ASecondRunInTheProgramFolderIsRefused) {
  folder_lock other(app);
  ASSERT_TRUE(other.take());
  expect_folder_question();
  ask.expect(told("Another authoring run is using the program folder \"" + app +
                      "\".  Please wait until it has finished.",
                  icon::critical));
  EXPECT_EQ(author_command(doc, e, run), author_result::folder_in_use);
  EXPECT_FALSE(file_exists(in(app, "process.bat")));
  other.release();
  expect_folder_question();
  EXPECT_EQ(author_command(doc, e, run), author_result::started);
}

#ifndef _WIN32
TEST_F(Author, AProgramFolderThatCannotBeWrittenIsNotBlamedOnAnotherRun) {
  make_folders(in(folder.path("closed"), "corvane.lock"));  // so that no lock can be made
  folder_lock none(folder.path("closed"));
  author_equipment closed{e.app, none, e.runner, e.edit_xml, e.replace_earlier_disc};
  expect_folder_question();
  ask.expect(told("Nothing can be written into the program folder \"" + app +
                      "\", where the files of a run go: Is a directory.  Please let it be written.",
                  icon::critical));
  EXPECT_EQ(author_command(doc, closed, run), author_result::not_written);
  EXPECT_THAT(launcher.started, IsEmpty());
}
#endif

TEST_F(Author, AFileThatCannotBeWrittenIsNamedAndTheLockReleased) {
  make_folders(in(app, "config.xml"));
  not_written_prompts answers(out);
  const prompts_relay::answered_by others(doc.ask, answers);
  EXPECT_EQ(author_command(doc, e, run), author_result::not_written);
  ASSERT_EQ(answers.told.size(), 1u);
  EXPECT_THAT(answers.told[0],
              StartsWith("The file \"" + in(app, "config.xml") + "\" could not be written: "));
  EXPECT_FALSE(lock.held());
  EXPECT_THAT(launcher.started, IsEmpty());
}

// On Windows a file in use cannot be removed; FoldersOfWindows has that.
#ifndef _WIN32
/// While this lives the folder can neither be changed nor moved, not by root either.
class kept_folder {
 public:
  explicit kept_folder(const std::string& folder) : folder_(path_of(folder)) {
    std::filesystem::permissions(folder_, std::filesystem::perms(0555));
    if (::geteuid() == 0) {
      constexpr uid_t nobody = 65534;
      EXPECT_EQ(::seteuid(nobody), 0);
    }
  }
  ~kept_folder() {
    EXPECT_EQ(::seteuid(::getuid()), 0);
    // A process that has changed its user may not be traced, which the leak sanitizer does.
    ::prctl(PR_SET_DUMPABLE, 1);
    std::filesystem::permissions(folder_, std::filesystem::perms::owner_all);
  }
  kept_folder(const kept_folder&) = delete;
  kept_folder& operator=(const kept_folder&) = delete;

 private:
  std::filesystem::path folder_;
};

/// An earlier disc that is to be replaced, in folders of which one cannot be changed.
class AuthorOverWhatStays : public Author {
 protected:
  AuthorOverWhatStays() {
    for (const std::string& changed : {folder.path(), app, out})
      std::filesystem::permissions(path_of(changed), std::filesystem::perms::all);
  }

  /// The run is not started, with this message, while `fixed` cannot be changed.
  void expect_refused(const std::string& fixed, const std::string& message) {
    e.replace_earlier_disc = true;
    not_written_prompts answers(out);
    const prompts_relay::answered_by others(doc.ask, answers);
    ASSERT_EQ(prepare_run(doc, e, run), author_result::prepared);
    {
      const kept_folder kept(fixed);
      EXPECT_EQ(authordvd(doc, e, run), author_result::refused);
    }
    ASSERT_EQ(answers.told.size(), 1u);
    EXPECT_THAT(answers.told[0], StartsWith(message + " could not be put aside: "));
    EXPECT_THAT(answers.told[0], EndsWith(".  Authoring was not started."));
    EXPECT_TRUE(file_exists(disc));
    EXPECT_FALSE(folder_exists(out + ".earlier"));
    EXPECT_FALSE(file_exists(in(app, "unfinished.txt")));
    EXPECT_FALSE(lock.held());
    EXPECT_THAT(launcher.started, IsEmpty());
  }

  std::string disc = add_disc();
};

TEST_F(AuthorOverWhatStays, ADiscThatCannotBePutAsideIsToldAndTheRunIsNotStarted) {
  expect_refused(in(out, "VIDEO_TS"), "\"" + in(out, "VIDEO_TS") + "\" of the earlier DVD");
}
#endif

TEST_F(Author, ARunnerThatCannotStartTellsItself) {
  const std::string disc = add_disc();
  e.replace_earlier_disc = true;
  launcher.works = false;
  expect_folder_question();
  ask.expect(told("Binaries not found, please reinstall the program.", icon::critical));
  EXPECT_EQ(author_command(doc, e, run), author_result::not_started);
  EXPECT_TRUE(file_exists(disc));
  EXPECT_FALSE(lock.held());
}

TEST_F(Author, AMissingScriptRunnerIsToldBeforeAnythingIsRemoved) {
  const std::string disc = add_disc();
  remove_tool("conspawn");
  e.replace_earlier_disc = true;
  expect_folder_question();
  ask.expect(told("Binaries not found, please reinstall the program.", icon::critical));
  EXPECT_EQ(author_command(doc, e, run), author_result::not_started);
  EXPECT_TRUE(file_exists(disc));
  EXPECT_FALSE(lock.held());
  EXPECT_THAT(launcher.started, IsEmpty());
  EXPECT_THAT(listener.starts, IsEmpty());
}

// Hand-edited XML -------------------------------------------------------------------------------

std::string edited_xml(const std::string& dest) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<dvdauthor dest=\"" +
         replace_all(dest, "&", "&amp;") + "\">\r\n<!-- mine -->\r\n</dvdauthor>\r\n";
}

TEST_F(Author, HandEditedXmlNamesTheFolderAndIsWrittenAsItStands) {
  out = folder.path("this & that");
  p.customxml = edited_xml(out);
  EXPECT_EQ(author_command(doc, e, run), author_result::started);
  EXPECT_EQ(run.where.out, out);
  EXPECT_EQ(folder.read(in("app", "config.xml")), p.customxml);
  EXPECT_THAT(folder.read(in("app", "process.bat")), HasSubstr("mkdir \"" + out + "\"\r\n"));
}

TEST_F(Author, HandEditedXmlMayNameItsFolderWithASeparatorLast) {
  p.customxml = edited_xml(out + separator(native_style()));
  EXPECT_EQ(author_command(doc, e, run), author_result::started);
  EXPECT_EQ(run.where.out, out);
  EXPECT_EQ(folder.read(in("app", "config.xml")), p.customxml);
  EXPECT_EQ(launcher.started.size(), 1u);
}

TEST_F(Author, HandEditedXmlWithoutAFolderIsRefused) {
  p.customxml = "<?xml version=\"1.0\"?>\r\n<dvdauthor>\r\n</dvdauthor>\r\n";
  ask.expect(
      told("The hand-edited XML cannot be authored: its second line is not the one that "
           "names the output folder.  Please edit the XML again, or discard the edit by "
           "changing the project.",
           icon::exclamation));
  EXPECT_EQ(author_command(doc, e, run), author_result::refused);
}

TEST_F(Author, TheXmlEditorOpensInsteadOfTheRun) {
  int opened = 0;
  e.edit_xml = [&] { ++opened; };
  p.editxml = true;
  expect_folder_question();
  EXPECT_EQ(author_command(doc, e, run), author_result::editing);
  EXPECT_EQ(opened, 1);
  EXPECT_THAT(launcher.started, IsEmpty());
  EXPECT_TRUE(lock.held());
  EXPECT_EQ(authordvd(doc, e, run), author_result::started);
  EXPECT_EQ(launcher.started.size(), 1u);
}

/// The editor would open on XML that is made of these rows.
TEST_F(Author, CommandsThatCannotBeAuthoredAreToldBeforeTheXmlEditorOpens) {
  e.edit_xml = [] { FAIL() << "the editor opened"; };
  p.editxml = true;
  p.firstplay = "jump title 7";
  ask.expect(
      told("The first-play command, \"jump title 7\", leads to title 7, which does not "
           "exist.  Please change it in the navigation commands.",
           icon::exclamation));
  EXPECT_EQ(author_command(doc, e, run), author_result::refused);
  EXPECT_FALSE(lock.held());
}

TEST_F(Author, AnEditThatCannotBeAuthoredOpensInTheEditorAndIsRefusedAtTheStart) {
  bool opened = false;
  e.edit_xml = [&] { opened = true; };
  p.editxml = true;
  p.customxml = edited_xml(out);
  p.customxml.insert(p.customxml.find("</dvdauthor>"), "<vob file=\"x|\"/>");
  EXPECT_EQ(author_command(doc, e, run), author_result::editing);
  EXPECT_TRUE(opened);
  EXPECT_EQ(run.where.out, out);
  EXPECT_EQ(folder.read(in("app", "config.xml")), p.customxml);
  ask.expect(
      told("The hand-edited XML cannot be authored: in line 4, the attribute \"file\" of "
           "\"vob\", \"x|\", ends "
           "in a vertical bar (|), which would run it as a command.  Please edit the XML again, or "
           "discard the edit by changing the project.",
           icon::critical));
  EXPECT_EQ(authordvd(doc, e, run), author_result::refused);
  EXPECT_FALSE(lock.held());
  EXPECT_THAT(launcher.started, IsEmpty());
}

TEST_F(Author, AnEditThatHasLostItsFolderAsksForOneBeforeTheEditor) {
  bool opened = false;
  e.edit_xml = [&] { opened = true; };
  p.editxml = true;
  for (const char* const edit :
       {"just text", "<x>\r\n<y a=\"/dest\"/>\r\n</x>", "<?xml?>\r\n<dvdauthor dest=\"\">"}) {
    p.customxml = edit;
    expect_folder_question();
    EXPECT_EQ(author_command(doc, e, run), author_result::editing) << edit;
    EXPECT_EQ(run.where.out, out);
  }
  EXPECT_TRUE(opened);
}

TEST_F(Author, WithoutAnEditorTheOptionStartsTheRun) {
  p.editxml = true;
  expect_folder_question();
  EXPECT_EQ(author_command(doc, e, run), author_result::started);
  EXPECT_EQ(launcher.started.size(), 1u);
}

TEST_F(Author, WhatTheEditorLeftIsCheckedAgain) {
  expect_folder_question();
  ASSERT_EQ(prepare_run(doc, e, run), author_result::prepared);
  p.customxml = edited_xml(folder.path("other"));
  expect_other_folder_refusal();
  EXPECT_EQ(authordvd(doc, e, run), author_result::refused);
  EXPECT_FALSE(lock.held());
  EXPECT_THAT(launcher.started, IsEmpty());
}

TEST_F(Author, NothingIsRemovedWhenWhatTheEditorLeftIsRefused) {
  const std::string disc = add_disc();
  e.replace_earlier_disc = true;
  expect_folder_question();
  ASSERT_EQ(prepare_run(doc, e, run), author_result::prepared);
  p.customxml = edited_xml(folder.path("other"));
  expect_other_folder_refusal();
  EXPECT_EQ(authordvd(doc, e, run), author_result::refused);
  EXPECT_TRUE(file_exists(disc));
}

/// Notes what is asked about, by rules, and answers the same each time.
class answering_prompts : public prompts {
 public:
  explicit answering_prompts(std::string folder) : folder_(std::move(folder)) {}
  answer message(const message_box& box) override {
    told.push_back(box.text);
    return answer::ok;
  }
  std::string open_file(const file_dialog&) override { return {}; }
  std::string save_file(const file_dialog&) override { return folder_; }
  std::string input(const input_box&) override { return {}; }
  bool go_on_despite(const findings_question& question) override {
    std::vector<std::string> rules;
    for (const finding& f : question.findings)
      rules.push_back(f.rule);
    asked.push_back(std::move(rules));
    return goes_on;
  }
  bool goes_on = true;
  std::vector<std::vector<std::string>> asked;
  std::vector<std::string> told;

 private:
  std::string folder_;
};

/// A run that is prepared, and what the XML editor leaves then.
class AuthorAfterTheEditor : public Author {
 protected:
  AuthorAfterTheEditor() {
    folder.add("a.m2v", small_video());
    folder.add("wide.m2v", small_video(video_standard::ntsc, 3));
    folder.add("a.ac3", small_sound());
    e.material.facts = &facts;
  }

  void add_wide_title() {
    p.List11.push_back(folder.stored("wide.m2v") + "/" + folder.stored("a.ac3"));
    p.List1.push_back("title2:wide.m2v/a.ac3");
    for (auto* const rows : {&p.chapters, &p.delay, &p.subtitledata})
      rows->push_back(rows->front());
  }
  void prepare() { ASSERT_EQ(prepare_run(doc, e, run), author_result::prepared); }
  /// XML with a titleset for each of these, what stands in the <pgc> of its title.
  std::string xml(const std::vector<std::string>& titles) {
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<dvdauthor dest=\"" + out + "\">\r\n";
    for (const std::string& title : titles)
      text += "<titleset><titles><video format=\"ntsc\"/><pgc>" + title +
              "</pgc></titles></titleset>\r\n";
    return text + "</dvdauthor>\r\n";
  }
  std::string title(int number) {
    return "<vob file=\"" + in(out, run_file::title_stream(number)) + "\"/>";
  }
  std::vector<told_item> forgiven() {
    const auto read = parse_foreseen(folder.read(in("app", run_file::foreseen)));
    EXPECT_TRUE(read) << read.error;
    return read ? read->told : std::vector<told_item>();
  }

  fact_store facts;
  answering_prompts any{out};
  const prompts_relay::answered_by others{doc.ask, any};
};

TEST_F(AuthorAfterTheEditor, TheDiscOfTheEditIsLookedAtBeforeTheRunStarts) {
  const std::string disc = add_disc();
  e.replace_earlier_disc = true;
  prepare();
  EXPECT_THAT(any.asked, IsEmpty());
  p.customxml = xml({title(1) + "<post>jump title 7;</post>"});
  any.goes_on = false;
  EXPECT_EQ(authordvd(doc, e, run), author_result::refused);
  EXPECT_THAT(any.asked, ElementsAre(ElementsAre("command-target-missing")));
  EXPECT_FALSE(lock.held());
  EXPECT_THAT(launcher.started, IsEmpty());
  EXPECT_TRUE(file_exists(disc));
  EXPECT_FALSE(file_exists(in(app, run_file::foreseen)));
  any.goes_on = true;
  EXPECT_EQ(authordvd(doc, e, run), author_result::started);
}

TEST_F(AuthorAfterTheEditor, FilesThatOnlyTheEditNamesAreLookedAtAndForeseen) {
  prepare();
  p.customxml = xml({title(1), "<vob file=\"" + folder.path("none.vob") + "\"/>"});
  EXPECT_EQ(authordvd(doc, e, run), author_result::started);
  EXPECT_THAT(any.asked, ElementsAre(testing::Contains("file-missing")));
}

TEST_F(AuthorAfterTheEditor, AnErrorThatTheEditHasCuredIsNotForgiven) {
  add_wide_title();
  prepare();
  ASSERT_THAT(any.asked, ElementsAre(ElementsAre("titleset-aspect")));
  p.customxml = xml({title(1), title(2)});
  EXPECT_EQ(authordvd(doc, e, run), author_result::started);
  EXPECT_EQ(any.asked.size(), 1u) << "nothing is wrong with it any more";
  EXPECT_THAT(forgiven(), IsEmpty());
}

TEST_F(AuthorAfterTheEditor, WhatWasToldBeforeIsNotAskedAboutAgain) {
  add_wide_title();
  prepare();
  ASSERT_EQ(any.asked.size(), 1u);
  p.customxml = xml({title(1) + "</pgc>\r\n<pgc>" + title(2)});
  EXPECT_EQ(authordvd(doc, e, run), author_result::started);
  EXPECT_EQ(any.asked.size(), 1u);
  EXPECT_THAT(forgiven(), testing::Not(IsEmpty()));
}

TEST_F(AuthorAfterTheEditor, WhatIsNewIsAskedAboutWithWhatIsLeft) {
  add_wide_title();
  prepare();
  p.customxml = xml({title(1) + "<post>jump title 7;</post></pgc>\r\n<pgc>" + title(2)});
  EXPECT_EQ(authordvd(doc, e, run), author_result::started);
  EXPECT_THAT(any.asked, ElementsAre(ElementsAre("titleset-aspect"),
                                     testing::UnorderedElementsAre("titleset-aspect",
                                                                   "command-target-missing")));
}

TEST_F(AuthorAfterTheEditor, ALookThatIsSkippedThenIsSaidInTheLog) {
  prepare();
  EXPECT_FALSE(run.material_unseen);
  folder.add("more.m2v", small_video());
  e.material.examine = [](examination&) { return look_end::skipped; };
  p.customxml = xml({title(1), "<vob file=\"" + folder.path("more.m2v") + "\"/>"});
  EXPECT_EQ(authordvd(doc, e, run), author_result::started);
  ASSERT_EQ(listener.starts.size(), 1u);
  EXPECT_THAT(listener.starts[0].first_lines, HasSubstr(skipped_look));
}

TEST_F(AuthorAfterTheEditor, ALookThatIsStoppedStartsNothing) {
  prepare();
  folder.add("more.m2v", small_video());
  e.material.examine = [](examination&) { return look_end::stopped; };
  p.customxml = xml({title(1), "<vob file=\"" + folder.path("more.m2v") + "\"/>"});
  EXPECT_EQ(authordvd(doc, e, run), author_result::cancelled);
  EXPECT_FALSE(lock.held());
  EXPECT_THAT(launcher.started, IsEmpty());
}

/// The XML of the rows is made of commands that nobody has looked at while there was an edit.
TEST_F(AuthorAfterTheEditor, AnEditThatIsTakenBackLeavesTheCommandsOfTheRows) {
  e.edit_xml = [] {};
  p.editxml = true;
  p.firstplay = "jump title 7";
  p.customxml = xml({title(1)});
  EXPECT_EQ(author_command(doc, e, run), author_result::editing);
  p.customxml.clear();
  EXPECT_EQ(authordvd(doc, e, run), author_result::refused);
  EXPECT_THAT(any.told,
              ElementsAre("The first-play command, \"jump title 7\", leads to title 7, which does "
                          "not exist.  Please change it in the navigation commands."));
  EXPECT_THAT(launcher.started, IsEmpty());
}

}  // namespace
}  // namespace corvane::testing_support
