// corvane-author when it is interrupted, killed, started twice, or left alone by its reader.
#include "apps/author_fixture_posix.h"
#include "runner/run_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing_support::AuthorProgram;
using testing_support::endless;
using testing_support::process_runs;
using testing_support::program_start;
using testing_support::running_program;
using testing_support::wait_until;

class AuthorSignals : public AuthorProgram {
 protected:
  /// Interrupts a run whose tool does not end; gives the exit status.
  int interrupt(int signal) {
    add_tool("mplex", endless);
    running_program program(start({project_, out()}));
    EXPECT_TRUE(started("mplex"));
    program.send(signal);
    const int status = program.wait();
    stdout_ = program.out();
    stderr_ = program.err();
    return status;
  }
};

TEST_F(AuthorSignals, CtrlCEndsTheToolsToo) {
  EXPECT_EQ(interrupt(SIGINT), 130);
  const pid_t tool = tool_process("mplex");
  EXPECT_TRUE(wait_until([&] { return !process_runs(tool); }));
  EXPECT_THAT(stderr_, HasSubstr("stopped"));
  EXPECT_THAT(stdout_, EndsWith("log: " + app(run_file::log) + "\n"));
  EXPECT_TRUE(file_exists(app(run_file::log)));
  EXPECT_THAT(calls(), ElementsAre("mplex")) << "the script did not go on";
}

TEST_F(AuthorSignals, ARequestToEndIsObeyedLikewise) {
  EXPECT_EQ(interrupt(SIGTERM), 143);
  EXPECT_TRUE(wait_until([&] { return !process_runs(tool_process("mplex")); }));
}

TEST_F(AuthorSignals, AClosedTerminalLikewise) {
  EXPECT_EQ(interrupt(SIGHUP), 129);
  EXPECT_TRUE(wait_until([&] { return !process_runs(tool_process("mplex")); }));
}

TEST_F(AuthorSignals, CtrlCInTheLookAtTheFilesEndsTheRunBeforeAnythingIsWritten) {
  // Takes minutes to read, and no room.
  std::filesystem::resize_file(path_of(folder_.path("movie.m2v")), std::uintmax_t{1} << 40);
  for (const bool prepares : {true, false}) {
    std::vector<std::string> words{project_, out()};
    if (prepares)
      words.insert(words.begin(), "--prepare");
    running_program program(start(words));
    ASSERT_TRUE(wait_until([&] { return file_exists(app("corvane.lock")); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    program.send(SIGINT);
    EXPECT_EQ(program.wait(), 130);
    EXPECT_THAT(program.err(), HasSubstr("stopped; nothing was written.\n"));
    EXPECT_EQ(program.out(), "examining the project's files\n");
    EXPECT_FALSE(file_exists(app(run_file::script)));
    EXPECT_THAT(calls(), testing::IsEmpty());
    std::filesystem::remove(path_of(app("corvane.lock")));
  }
}

TEST_F(AuthorSignals, CtrlCInTheLookAtTheDiscEndsItAtOnce) {
  // Takes minutes to read, and no room.
  const std::string made = folder_.path("notes/made");
  add_tool("dvdauthor", "(" + real("dvdauthor") +
                            ")\n/usr/bin/truncate -s 1T \"$TEST_OUT/VIDEO_TS/VTS_09_1.VOB\"\n"
                            "echo >'" +
                            made + "'\n");
  running_program program(start({project_, out()}));
  ASSERT_TRUE(wait_until([&] { return file_exists(made); }));
  std::this_thread::sleep_for(std::chrono::milliseconds(2500));
  const auto before = std::chrono::steady_clock::now();
  program.send(SIGINT);
  EXPECT_EQ(program.wait(), 130);
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(5));
  EXPECT_THAT(program.err(), HasSubstr("stopped; the tools have been ended."));
  EXPECT_THAT(
      program.out(),
      EndsWith("authoring title(s)\nreading the disc back\nlog: " + app(run_file::log) + "\n"));
  EXPECT_THAT(folder_.read("app/CorvaneLOG.txt"),
              testing::AllOf(HasSubstr("INFO: reading the disc back: 0%"),
                             HasSubstr("*** stopped by the user")));
  EXPECT_FALSE(folder_exists(out() + "/VIDEO_TS")) << "nobody knows whether it is right";
}

TEST_F(AuthorSignals, OneThatWasIgnoredAtTheStartStaysIgnored) {
  add_tool("mplex", "while [ ! -e \"$TEST_OUT/go\" ]; do /bin/sleep 0.05; done\n" + real("mplex"));
  program_start how = start({project_, out()});
  how.ignored_signals = {SIGHUP};
  running_program program(how);
  ASSERT_TRUE(started("mplex"));
  program.send(SIGHUP);
  folder_.add("disc/go");
  EXPECT_EQ(program.wait(), 0) << program.err();
}

TEST_F(AuthorSignals, ASecondRunInTheSameProgramFolderIsRefused) {
  add_tool("mplex", "while [ ! -e \"$TEST_OUT/go\" ]; do /bin/sleep 0.05; done\n" + real("mplex"));
  running_program first(start({project_, out()}));
  ASSERT_TRUE(started("mplex"));
  const std::string script = folder_.read("app/process.bat");
  EXPECT_EQ(run({project_, folder_.path("other")}), 2);
  EXPECT_THAT(stderr_, HasSubstr("Another authoring run is using the program folder"));
  EXPECT_THAT(stderr_, HasSubstr(folder_.path("app")));
  EXPECT_EQ(run({"--prepare", project_, folder_.path("other")}), 2);
  EXPECT_EQ(folder_.read("app/process.bat"), script);
  folder_.add("disc/go");
  EXPECT_EQ(first.wait(), 0) << first.err();
  EXPECT_THAT(calls(), ElementsAre("mplex", "dvdauthor"));
}

TEST_F(AuthorSignals, ARunThatWasKilledDoesNotBlockTheNextAndLeavesNoTool) {
  add_tool("mplex", endless);
  {
    running_program killed(start({project_, out()}));
    ASSERT_TRUE(started("mplex"));
    killed.send(SIGKILL);
    EXPECT_EQ(killed.wait(), -SIGKILL);
  }
  const pid_t tool = tool_process("mplex");
  EXPECT_TRUE(wait_until([&] { return !process_runs(tool); }));
  add_tool("mplex", real("mplex"));
  EXPECT_EQ(run({project_, out()}), 0) << stderr_;
}

TEST_F(AuthorSignals, AReaderThatGoesAwayDoesNotEndTheRun) {
  program_start how = start({project_, out()});
  how.output_unread = true;
  EXPECT_EQ(run_as(how), 0) << stderr_;
  EXPECT_TRUE(file_exists(folder_.path("disc/VIDEO_TS/VIDEO_TS.IFO")));
}

}  // namespace
}  // namespace corvane
