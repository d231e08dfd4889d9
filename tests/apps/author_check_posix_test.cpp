// corvane-author --check: what it prints, how it ends, and that it authors nothing.
#include "apps/author_fixture_posix.h"
#include "platform/files/files.h"
#include "project/menu_rows.h"
#include "support/small_streams.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace corvane {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using testing_support::AuthorProgram;
using testing_support::small_sound;
using testing_support::small_video;

class CheckProgram : public AuthorProgram {
 protected:
  void make_junk() const {
    folder_.add("movie.m2v", "video");
    folder_.add("movie.ac3", "audio");
  }
};

TEST_F(CheckProgram, ACleanProjectEndsWithStatus0) {
  EXPECT_EQ(run({"--check", project_}), 0) << stdout_;
  EXPECT_EQ(stdout_, "Nothing was found that would spoil this disc.\n");
  EXPECT_EQ(run({"--check", "--json", project_}), 0);
  EXPECT_THAT(
      stdout_,
      StartsWith("{\"program\": \"Corvane 0.997 - 1/2/2005\", \"errors\": 0, \"warnings\": 0, "
                 "\"notes\": 0, \"findings\": [], \"disc\": [\n"));
}

TEST_F(CheckProgram, WarningsAloneEndWithStatus0) {
  folder_.add("movie.m2v", small_video(video_standard::ntsc, 1));
  EXPECT_EQ(run({"--check", project_}), 0);
  EXPECT_THAT(stdout_, HasSubstr("warning: title 1, video: the stream says that its pixels are "));
  EXPECT_THAT(stdout_, HasSubstr("\n1 warning\n"));
}

TEST_F(CheckProgram, ErrorsArePrintedWithTheirRemedyAndNothingIsRun) {
  make_junk();
  EXPECT_EQ(run({"--check", project_}), 2) << stderr_;
  EXPECT_EQ(stdout_,
            "error: title 1, video: there is no MPEG video in it.\n"
            "    file: " +
                folder_.path("movie.m2v") +
                "\n"
                "    must be: an MPEG-1 or MPEG-2 video stream\n"
                "    a viewer would see: nothing: the run fails at this file\n"
                "    what to do: choose the right file, or encode it as MPEG-2 video for DVD\n"
                "    rule: video-none\n"
                "\n"
                "error: title 1, audio 1: there is no sound in it that is known.\n"
                "    file: " +
                folder_.path("movie.ac3") +
                "\n"
                "    must be: AC-3 or MPEG audio layer II\n"
                "    a viewer would see: silence: the run fails, or no player decodes it\n"
                "    what to do: encode the sound as AC-3 (ffmpeg: -c:a ac3 -ar 48000)\n"
                "    rule: audio-kind\n"
                "\n"
                "2 errors\n");
  EXPECT_THAT(stderr_, IsEmpty());
  EXPECT_THAT(calls(), IsEmpty());
  EXPECT_FALSE(folder_exists(out()));
  EXPECT_FALSE(file_exists(app("process.bat")));
}

TEST_F(CheckProgram, JsonIsAllThatIsPrinted) {
  make_junk();
  EXPECT_EQ(run({"--check", "--json", project_}), 2) << stderr_;
  EXPECT_THAT(stdout_, HasSubstr("\"errors\": 2, \"warnings\": 0, \"notes\": 0, \"findings\": [\n  "
                                 "{\"rule\": \"video-none\", \"severity\": \"error\", "));
  EXPECT_THAT(stdout_, HasSubstr("\n], \"disc\": [\n  {\"item\": {\"of\": \"disc\"}, \"trait\": "
                                 "\"titles\", \"askedFor\": \"1\"}"));
  EXPECT_THAT(stdout_, testing::EndsWith("}\n]}\n"));
}

// All that is wrong at once, and what a file that is there tells as well.
TEST_F(CheckProgram, MissingFilesAreFindingsAmongTheOthers) {
  folder_.add("movie.m2v", "video");
  std::filesystem::remove(path_of(folder_.path("movie.ac3")));
  project p = one_title(folder_);
  p.menulist = {folder_.stored("menu.m2v") + "/"};
  p.moremenuoptions = {new_menu_options};
  p.menubuttons = {" 0/ 0/ 100/ 53/jump title 1/" + folder_.stored("on.bmp") + "/" +
                   folder_.stored("on.bmp")};
  const std::string gone = save(p, "gone.cvp");
  EXPECT_EQ(run({"--check", gone}), 2);
  EXPECT_THAT(stderr_, IsEmpty());
  EXPECT_THAT(stdout_, HasSubstr("error: title 1, video: there is no MPEG video in it.\n"));
  for (const char* const place : {"title 1, audio 1", "menu 1, video"})
    EXPECT_THAT(stdout_, HasSubstr("error: " + std::string(place) + ": the file cannot be read: "));
  EXPECT_THAT(stdout_, HasSubstr("error: menu 1, button 1: its bitmap is not there.\n"));
  for (const char* const file : {"movie.ac3", "menu.m2v", "on.bmp"})
    EXPECT_THAT(stdout_, HasSubstr("    file: " + folder_.path(file) + "\n"));
  EXPECT_THAT(stdout_, HasSubstr("    rule: file-missing\n"));
  EXPECT_EQ(run({"--check", "--json", gone}), 2);
  EXPECT_THAT(stdout_, HasSubstr("{\"rule\": \"file-missing\", \"severity\": \"error\", "));
  EXPECT_EQ(run({gone, out()}), 2);
  EXPECT_THAT(stderr_, HasSubstr("movie.ac3 appears to be missing")) << "before a run as ever";
}

TEST_F(CheckProgram, FilesWithoutWhichADiscIsVerifiedAreNamedOnceEach) {
  project p = one_title(folder_);
  p.subtitledata = {folder_.stored("gone.srt") + "/" + folder_.stored("gone.srt")};
  p.subtitleoptions[0] += p.subtitleoptions[0];
  run({"--verify", save(p, "titled.cvp"), out()});
  EXPECT_EQ(stderr_, "corvane-author: \"" + folder_.path("gone.srt") +
                         "\" cannot be read.  What it would tell of the disc is not known.\n");
}

TEST_F(CheckProgram, ADiscOfXmlThatCannotBeReadIsNotVerified) {
  project p = one_title(folder_);
  p.customxml = "<dvdauthor dest=\"x\">\r\n<vmgm>";
  EXPECT_EQ(run({"--verify", save(p, "edited.cvp"), out()}), 2);
  EXPECT_THAT(stderr_, HasSubstr("the hand-edited XML cannot be read: "));
  EXPECT_THAT(stderr_, HasSubstr(".  The disc was not held against it.\n"));
  EXPECT_THAT(stdout_, IsEmpty());
}

TEST_F(CheckProgram, AProjectWithoutTitlesIsRefusedAsByARun) {
  const std::string empty = save(project{}, "empty.cvp");
  EXPECT_EQ(run({empty, out()}), 2);
  const std::string said = stderr_;
  EXPECT_EQ(said, "corvane-author: please add more titles\n");
  EXPECT_EQ(run({"--check", empty}), 2);
  EXPECT_EQ(stderr_, said);
  EXPECT_THAT(stdout_, IsEmpty());
}

TEST_F(CheckProgram, ControlCharactersOfFileNamesDoNotReachTheTerminal) {
  project p = one_title(folder_);
  p.List11 = {folder_.stored("v\xC2\x9B"
                             "2J.m2v") +
              "/" + folder_.stored("movie.ac3")};
  EXPECT_EQ(run({"--check", save(p)}), 2);
  EXPECT_THAT(stdout_, HasSubstr("v?2J.m2v"));
  EXPECT_THAT(stdout_, Not(HasSubstr("\xC2\x9B")));
}

TEST_F(CheckProgram, ToolsNeedNotBeInstalled) {
  for (const char* const tool : {"mplex", "dvdauthor", "mkisofs"})
    remove_tool(tool);
  EXPECT_EQ(run({"--check", project_}), 0);
  EXPECT_THAT(stderr_, IsEmpty());
}

TEST_F(CheckProgram, HandEditedXmlThatCannotBeReadIsSaid) {
  project p = one_title(folder_);
  p.customxml = "<dvdauthor>\r\n<vmgm>";
  EXPECT_EQ(run({"--check", save(p, "edited.cvp")}), 2);
  EXPECT_THAT(stderr_, HasSubstr("the hand-edited XML cannot be read: "));
  EXPECT_THAT(stdout_, IsEmpty());
}

// What no rule of its own tells of, a run would refuse nonetheless.
TEST_F(CheckProgram, WhatARunRefusesIsAnError) {
  project edited = one_title(folder_);
  edited.customxml = "<?xml version=\"1.0\"?>\r\n<dvdauthor dest=\"" + out() +
                     "\">\r\n<titleset><titles><video format=\"ntsc\"/><pgc><vob file=\"" + out() +
                     "/title1.mpg\"/></pgc><pgc><vob file=\"a&#10;*process complete&#10;\"/></pgc>"
                     "</titles></titleset></dvdauthor>\r\n";
  EXPECT_EQ(run({"--check", save(edited, "edited.cvp")}), 2) << stdout_;
  EXPECT_THAT(stdout_, HasSubstr("error: disc: The hand-edited XML cannot be authored: in line 3, "
                                 "the attribute \"file\" of \"vob\", "));
  EXPECT_THAT(stdout_, HasSubstr("    rule: not-authorable\n"));

  project quoted = one_title(folder_);
  folder_.add("a\"b.m2v", small_video());
  quoted.List11 = {folder_.stored("a\"b.m2v") + "/" + folder_.stored("movie.ac3")};
  const std::string saved = save(quoted, "quoted.cvp");
  EXPECT_EQ(run({"--check", saved}), 2) << stdout_;
  EXPECT_THAT(stdout_, HasSubstr("    rule: not-authorable\n"));
  EXPECT_THAT(stdout_, HasSubstr("\n1 error\n"));
  EXPECT_EQ(run({"--check", "--json", saved}), 2);
  EXPECT_THAT(stdout_, HasSubstr("\"errors\": 1, \"warnings\": 0, \"notes\": 0, \"findings\": [\n  "
                                 "{\"rule\": \"not-authorable\", "));
  EXPECT_EQ(run({"--force", saved, out()}), 2) << "as a run does";
  EXPECT_THAT(calls(), IsEmpty());
}

// A disk of the system's own, on which nobody can write.
TEST_F(CheckProgram, FolderWithoutRoomIsSaid) {
  EXPECT_EQ(run({"--check", project_, "/proc/dvd"}), 2) << stderr_;
  EXPECT_THAT(stdout_, HasSubstr("error: disc: the disk of the output folder has 0 bytes free, but "
                                 "the run needs "));
  EXPECT_THAT(stdout_, HasSubstr("    file: /proc/dvd\n"));
  EXPECT_THAT(stdout_, HasSubstr("\n1 error\n"));
  EXPECT_EQ(run({"--check", project_, out()}), 0) << stdout_;
  EXPECT_FALSE(folder_exists(out()));
}

TEST_F(CheckProgram, AnotherFolderThanThatOfTheXmlIsRefusedAsBeforeARun) {
  project p = one_title(folder_);
  p.customxml = "<?xml version=\"1.0\"?>\r\n<dvdauthor dest=\"/proc/dvd\">\r\n</dvdauthor>\r\n";
  const std::string edited = save(p, "edited.cvp");
  EXPECT_EQ(run({"--check", edited, out()}), 2);
  EXPECT_THAT(stderr_, HasSubstr("authors into \"/proc/dvd\", not into \"" + out() + "\""));
  EXPECT_THAT(stdout_, IsEmpty());
}

TEST_F(CheckProgram, AProjectThatIsNotThereIsRefused) {
  EXPECT_EQ(run({"--check", folder_.path("none.cvp")}), 2);
  EXPECT_THAT(stdout_, IsEmpty());
}

TEST_F(CheckProgram, RunTellsAllErrorsOfAProjectThatCannotBeAuthoredAtAll) {
  make_junk();
  project p = one_title(folder_);
  p.delay = {"soon"};
  p.firstplay = "jump title 7";
  const std::string broken = save(p, "broken.cvp");
  EXPECT_EQ(run({"--force", broken, out()}), 2);
  EXPECT_THAT(stderr_, HasSubstr("error: title 1: "));
  for (const char* const rule :
       {"video-none", "audio-kind", "delay-not-number", "command-target-missing"})
    EXPECT_THAT(stderr_, HasSubstr("    rule: " + std::string(rule) + "\n"));
  EXPECT_THAT(stderr_,
              HasSubstr("corvane-author: Title 1 has the A/V delay \"soon\", which is not a "
                        "number of milliseconds.  Please set the delay again.  --force "
                        "does not change that.\n"));
  EXPECT_FALSE(file_exists(app("process.bat")));
}

class RunOnWrongMaterial : public CheckProgram {};

TEST_F(RunOnWrongMaterial, IsRefusedBeforeAnythingIsWrittenOrRemoved) {
  make_junk();
  folder_.add("disc/VIDEO_TS/VIDEO_TS.IFO", "earlier");
  EXPECT_EQ(run({"--replace", project_, out()}), 2);
  EXPECT_THAT(stderr_, HasSubstr("error: title 1, video: there is no MPEG video in it."));
  EXPECT_THAT(stderr_,
              HasSubstr("error: title 1, audio 1: there is no sound in it that is known."));
  EXPECT_THAT(stderr_, HasSubstr("Give --force to author anyway."));
  EXPECT_THAT(calls(), IsEmpty());
  EXPECT_EQ(folder_.read("disc/VIDEO_TS/VIDEO_TS.IFO"), "earlier");
  EXPECT_FALSE(file_exists(app("process.bat")));
}

TEST_F(RunOnWrongMaterial, IsNotReadToItsEndIfTheLookIsSkippedWhichTheLogSays) {
  // A stray byte far behind the beginning.
  std::string sound;
  while (sound.size() < 2 << 20)
    sound += small_sound();
  folder_.add("movie.ac3", sound + "?" + small_sound());
  EXPECT_EQ(run({"--check", project_}), 2) << stdout_;
  EXPECT_THAT(stdout_, HasSubstr("error: title 1, audio 1, 00:01:"));
  EXPECT_EQ(run({"--skip-look", project_, out()}), 0) << stderr_;
  EXPECT_THAT(stderr_, Not(HasSubstr("error: title 1, audio 1")));
  EXPECT_THAT(folder_.read("app/CorvaneLOG.txt"),
              HasSubstr("INFO: the files of the project were not examined before this run."));
}

TEST_F(RunOnWrongMaterial, GoesOnWithForce) {
  folder_.add("wide.m2v", small_video(video_standard::ntsc, 3));
  project p = one_title(folder_);
  p.List11.push_back(folder_.stored("wide.m2v") + "/" + folder_.stored("movie.ac3"));
  for (auto* const rows : {&p.chapters, &p.delay, &p.subtitledata, &p.subtitleoptions})
    rows->push_back(rows->front());
  rebuild_List1(p);
  EXPECT_EQ(run({"--force", save(p), out()}), 0) << stderr_;
  EXPECT_THAT(stderr_, HasSubstr("error: title 2, video: "));
  EXPECT_THAT(calls(), testing::ElementsAre("mplex", "mplex", "dvdauthor"));
  // What follows from it is told again, and the disc stays.
  EXPECT_THAT(folder_.read("app/CorvaneLOG.txt"),
              HasSubstr("WARN: title 2, video: aspect: 4:3; it must be 16:9"));
  expect_a_disc();
}

TEST_F(RunOnWrongMaterial, WarningsArePrintedAndTheRunGoesOn) {
  folder_.add("movie.m2v", small_video(video_standard::ntsc, 1));
  EXPECT_EQ(run({project_, out()}), 0) << stderr_;
  EXPECT_THAT(stderr_, HasSubstr("warning: title 1, video: "));
  EXPECT_THAT(calls(), testing::ElementsAre("mplex", "dvdauthor"));
}

}  // namespace
}  // namespace corvane
