// The disc that was there and the one that is being made, while corvane-author is left in peace,
// stopped, or killed.
#include "apps/author_fixture_posix.h"
#include "platform/files/change_time.h"
#include "runner/run_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing_support::AuthorProgram;
using testing_support::process_runs;
using testing_support::program_start;
using testing_support::running_program;
using testing_support::wait_until;

class EarlierDiscOfAuthor : public AuthorProgram {
 protected:
  EarlierDiscOfAuthor() {
    folder_.add("disc/VIDEO_TS/old.vob", "old");
    folder_.add("disc/AUDIO_TS/old", "old");
    folder_.add("disc.iso", "old image");
    folder_.add("disc/notes.txt", "mine");
  }

  /// dvdauthor that writes half of its files and then does this.
  void half_dvdauthor(const std::string& then) const {
    add_tool("dvdauthor",
             "/bin/mkdir -p \"$TEST_OUT/VIDEO_TS\" \"$TEST_OUT/AUDIO_TS\"\n"
             "echo half >\"$TEST_OUT/VIDEO_TS/half.vob\"\n" +
                 then);
  }
  void half_mkisofs(const std::string& then) const {
    add_tool("mkisofs",
             "while [ \"$1\" != -o ]; do shift; done\n"
             "echo half >\"$2\"\n" +
                 then);
  }

  void expect_the_earlier_disc() const {
    EXPECT_EQ(folder_.read("disc/VIDEO_TS/old.vob"), "old");
    EXPECT_FALSE(entry_exists(folder_.path("disc/VIDEO_TS/half.vob")));
    EXPECT_FALSE(entry_exists(folder_.path("disc/VIDEO_TS/VIDEO_TS.IFO")));
    EXPECT_EQ(folder_.read("disc/AUDIO_TS/old"), "old");
    EXPECT_EQ(folder_.read("disc.iso"), "old image");
    EXPECT_EQ(files_in(out()), std::vector<std::string>{"notes.txt"});
    expect_no_trace();
  }
  void expect_no_trace() const {
    EXPECT_FALSE(entry_exists(out() + ".earlier"));
    EXPECT_FALSE(entry_exists(app(run_file::unfinished)));
  }

  /// Whether the program was seen alive after this file was written.
  bool seen_alive_after(const std::string& file) const {
    const auto written = changed_at(folder_.path(file));
    const auto alive = changed_at(folder_.path("disc.earlier/corvane.lock"));
    return written && alive && *written < *alive;
  }

  /// Kills a run while this tool is at work, and waits until the tool is gone too.
  void kill_during(const std::string& tool) {
    running_program program(start({"--replace", "--iso", project_, out()}));
    ASSERT_TRUE(started(tool));
    ASSERT_TRUE(wait_until([&] { return seen_alive_after("notes/half"); }));
    program.send(SIGKILL);
    EXPECT_EQ(program.wait(), -SIGKILL);
    const pid_t process = tool_process(tool);
    EXPECT_TRUE(wait_until([&] { return !process_runs(process); }));
  }

  const std::string endless_ = "echo >\"$TEST_OUT/../notes/half\"\nexec /bin/sleep 1000\n";
  const std::string told_ = "The authoring run into \"" + out() +
                            "\" was interrupted.  The earlier DVD, which it was to replace, is in "
                            "its place again.\n";
};

TEST_F(EarlierDiscOfAuthor, GoesWhenTheNewOneIsComplete) {
  EXPECT_EQ(run({"--replace", "--iso", project_, out()}), 0) << stderr_;
  EXPECT_FALSE(entry_exists(folder_.path("disc/VIDEO_TS/old.vob")));
  EXPECT_FALSE(entry_exists(folder_.path("disc/AUDIO_TS/old")));
  expect_a_disc();
  EXPECT_THAT(folder_.read("disc.iso"), HasSubstr("CD001"));
  EXPECT_EQ(files_in(out()), std::vector<std::string>{"notes.txt"});
  EXPECT_THAT(stderr_, Not(HasSubstr("earlier")));
  expect_no_trace();
}

TEST_F(EarlierDiscOfAuthor, IsNoneOfTheFilesOfTheImage) {
  add_tool("mkisofs", "/bin/ls -A \"$TEST_OUT\" >\"$TEST_OUT/../notes/files\"\n" + real("mkisofs"));
  EXPECT_EQ(run({"--replace", "--iso", project_, out()}), 0) << stderr_;
  EXPECT_EQ(folder_.read("notes/files"), "AUDIO_TS\nVIDEO_TS\nnotes.txt\n");
}

TEST_F(EarlierDiscOfAuthor, ComesBackWhenAToolFails) {
  half_dvdauthor("echo 'ERR:  no luck' >&2\nexit 1\n");
  EXPECT_EQ(run({"--replace", "--iso", project_, out()}), 1);
  expect_the_earlier_disc();
  EXPECT_THAT(stderr_, HasSubstr("corvane-author: the earlier DVD is in its place again\n"));
  EXPECT_THAT(folder_.read("app/CorvaneLOG.txt"),
              HasSubstr("INFO: the earlier DVD is in its place again"));
}

TEST_F(EarlierDiscOfAuthor, ComesBackWhenTheImageFails) {
  half_mkisofs("exit 1\n");
  EXPECT_EQ(run({"--replace", "--iso", project_, out()}), 1);
  expect_the_earlier_disc();
}

TEST_F(EarlierDiscOfAuthor, ComesBackWhenTheToolsMadeNothingWithStatusZero) {
  add_tool("dvdauthor", "");
  EXPECT_EQ(run({"--replace", "--no-iso", project_, out()}), 1);
  EXPECT_THAT(stdout_, HasSubstr("\n    file: " + out() + "\n"));
  EXPECT_THAT(stderr_, testing::Not(HasSubstr("ERR:"))) << "said once";
  EXPECT_THAT(stderr_, HasSubstr("the earlier DVD is in its place again"));
  expect_the_earlier_disc();
}

TEST_F(EarlierDiscOfAuthor, ComesBackWhenTheRunIsStopped) {
  half_mkisofs(endless_);
  running_program program(start({"--replace", "--iso", project_, out()}));
  ASSERT_TRUE(started("mkisofs"));
  ASSERT_TRUE(wait_until([&] { return entry_exists(folder_.path("notes/half")); }));
  EXPECT_EQ(folder_.read("disc.iso"), "half\n");
  program.send(SIGINT);
  EXPECT_EQ(program.wait(), 130);
  expect_the_earlier_disc();
  EXPECT_THAT(program.err(), HasSubstr("the earlier DVD is in its place again"));
}

TEST_F(EarlierDiscOfAuthor, WithoutOneAFailedRunLeavesNoDisc) {
  for (const char* const name : {"disc/VIDEO_TS", "disc/AUDIO_TS", "disc.iso"})
    fs::remove_all(folder_.path(name));
  half_mkisofs("exit 1\n");
  EXPECT_EQ(run({"--iso", project_, out()}), 1);
  EXPECT_FALSE(entry_exists(folder_.path("disc/VIDEO_TS")));
  EXPECT_FALSE(entry_exists(folder_.path("disc/AUDIO_TS")));
  EXPECT_FALSE(entry_exists(folder_.path("disc.iso")));
  EXPECT_EQ(folder_.read("disc/notes.txt"), "mine");
  EXPECT_THAT(stderr_, HasSubstr("what the run had made in \"" + out() + "\" was removed\n"));
}

TEST_F(EarlierDiscOfAuthor, IsKeptAsideWhenTheProgramIsKilledAndComesBackAtTheNextStart) {
  half_dvdauthor(endless_);
  kill_during("dvdauthor");
  EXPECT_TRUE(entry_exists(folder_.path("disc/VIDEO_TS/half.vob")));
  EXPECT_TRUE(entry_exists(folder_.path("disc/title1.mpg")));
  EXPECT_EQ(folder_.read("disc.earlier/VIDEO_TS/old.vob"), "old");
  // Any start will do, also one that authors nothing.
  EXPECT_EQ(run({folder_.path("absent.cvp"), out()}), 2);
  EXPECT_THAT(stderr_, HasSubstr(told_));
  expect_the_earlier_disc();
  EXPECT_EQ(run({folder_.path("absent.cvp"), out()}), 2);
  EXPECT_THAT(stderr_, Not(HasSubstr("interrupted")));
}

TEST_F(EarlierDiscOfAuthor, AnotherDiscThatCameAfterAKillIsKept) {
  half_mkisofs(endless_);
  kill_during("mkisofs");
  fs::remove_all(folder_.path("disc/VIDEO_TS"));
  folder_.add("disc/VIDEO_TS/VIDEO_TS.IFO", "another");
  folder_.add("disc.iso", "another image");
  EXPECT_EQ(run({folder_.path("absent.cvp"), out()}), 2);
  EXPECT_THAT(stderr_, HasSubstr("It was moved to \"" + out() + ".interrupted/VIDEO_TS\".\n"));
  EXPECT_THAT(stderr_, HasSubstr("It was moved to \"" + out() + ".interrupted/disc.iso\".\n"));
  expect_the_earlier_disc();
  EXPECT_EQ(folder_.read("disc.interrupted/VIDEO_TS/VIDEO_TS.IFO"), "another");
  EXPECT_EQ(folder_.read("disc.interrupted/disc.iso"), "another image");
}

TEST_F(EarlierDiscOfAuthor, ComesBackWhenAnotherProgramFolderIsToAuthorThereAfterAKill) {
  half_mkisofs(endless_);
  kill_during("mkisofs");
  EXPECT_EQ(folder_.read("disc.iso"), "half\n");
  program_start other = start({project_, out()});
  other.environment.emplace_back("CORVANE_HOME", folder_.path("other app"));
  EXPECT_EQ(run_as(other), 2);
  EXPECT_THAT(stderr_, HasSubstr(told_));
  EXPECT_THAT(stderr_, HasSubstr("\"" + out() + "\" already holds a DVD"));
  EXPECT_EQ(folder_.read("disc.iso"), "old image");
  EXPECT_FALSE(entry_exists(out() + ".earlier"));
}

TEST_F(EarlierDiscOfAuthor, WhatAKilledRunMadeDoesNotKeepTheNextFromTheFolder) {
  for (const char* const name : {"disc/VIDEO_TS", "disc/AUDIO_TS", "disc.iso"})
    fs::remove_all(folder_.path(name));
  half_dvdauthor(endless_);
  kill_during("dvdauthor");
  add_tool("dvdauthor", real("dvdauthor"));
  EXPECT_EQ(run({project_, out()}), 0) << stderr_;
  EXPECT_THAT(stderr_, HasSubstr("was interrupted.  What it had made was removed.\n"));
  EXPECT_FALSE(entry_exists(folder_.path("disc/VIDEO_TS/half.vob")));
  expect_a_disc();
  expect_no_trace();
}

TEST_F(EarlierDiscOfAuthor, TwoProgramFoldersDoNotAuthorIntoOneFolder) {
  add_tool("mplex",
           "while [ ! -e \"$TEST_OUT/../go\" ]; do /bin/sleep 0.05; done\n" + real("mplex"));
  running_program first(start({"--replace", project_, out()}));
  ASSERT_TRUE(started("mplex"));
  program_start second = start({"--replace", project_, out()});
  second.environment.emplace_back("CORVANE_HOME", folder_.path("other app"));
  EXPECT_EQ(run_as(second), 2);
  EXPECT_THAT(stderr_, HasSubstr("Another authoring run is using the output folder \"" + out() +
                                 "\".  Please wait until it has finished, or choose another "
                                 "folder."));
  folder_.add("go");
  EXPECT_EQ(first.wait(), 0) << first.err();
  EXPECT_THAT(calls(), ElementsAre("mplex", "dvdauthor"));
  EXPECT_EQ(run_as(second), 0) << stderr_;
  EXPECT_FALSE(entry_exists(out() + ".earlier"));
}

TEST_F(EarlierDiscOfAuthor, CtrlCAfterTheEndDoesNotMakeASuccessAStop) {
  add_tool("mplex",
           "while [ ! -e \"$TEST_OUT/../go\" ]; do /bin/sleep 0.02; done\n" + real("mplex"));
  running_program program(start({"--replace", project_, out()}));
  ASSERT_TRUE(started("mplex"));
  // The program looks away until script and tools have ended.
  program.send(SIGSTOP);
  folder_.add("go");
  ASSERT_TRUE(wait_until([&] { return calls().size() == 2; }));
  const pid_t tool = tool_process("dvdauthor");
  ASSERT_TRUE(wait_until([&] { return !process_runs(tool); }));
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  program.send(SIGINT);
  program.send(SIGCONT);
  EXPECT_EQ(program.wait(), 0) << program.err();
  EXPECT_THAT(program.out(), HasSubstr("Process complete."));
  EXPECT_THAT(program.err(), Not(HasSubstr("stopped")));
  expect_a_disc();
}

TEST_F(EarlierDiscOfAuthor, LinksInTheProgramFolderAreNotWrittenThrough) {
  const std::vector<std::string> names = {"process.bat",         "config.xml", "CorvaneLOG.txt",
                                          "CorvaneLOG.txt.part", "fake.png",   "fake.xml"};
  fs::create_directories(folder_.path("app"));
  for (const std::string& name : names)
    fs::create_symlink(folder_.add("mine/" + name, "mine"), app(name));
  EXPECT_EQ(run({"--replace", "--cleanup", project_, out()}), 0) << stderr_;
  for (const std::string& name : names) {
    EXPECT_EQ(folder_.read("mine/" + name), "mine");
    EXPECT_FALSE(fs::is_symlink(app(name))) << name;
  }
  EXPECT_THAT(folder_.read("app/CorvaneLOG.txt"), HasSubstr("*process complete"));
}

}  // namespace
}  // namespace corvane
