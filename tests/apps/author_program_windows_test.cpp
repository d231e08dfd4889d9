// corvane-author.exe in a folder of its own, with stand-ins for the outside tools in its bin.
#include "apps/program_windows.h"
#include "platform/files/program_folder.h"
#include "project/project_file.h"
#include "project/subtitle_rows.h"
#include "support/small_streams.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;
using testing_support::install_author;
using testing_support::program_start;
using testing_support::running_program;
using testing_support::small_sound;
using testing_support::small_video;
using testing_support::temporary_folder;

class AuthorProgram : public testing::Test {
 protected:
  AuthorProgram() {
    install_author(folder_.path(program_), "test_apps_tool.exe");
    folder_.add("movie ü.m2v", small_video());
    folder_.add("movie ü.ac3", small_sound());
    project p;
    p.List11 = {folder_.stored("movie ü.m2v") + "/" + folder_.stored("movie ü.ac3")};
    p.chapters = {"0"};
    p.delay = {"0"};
    p.subtitledata = {"<none>"};
    p.subtitleoptions = {default_subtitleoptions("NTSC")};
    rebuild_List1(p);
    project_ = folder_.add("film ü.cvp", project_text(p));
  }

  std::string in_program(const std::string& name) const { return program_ + "\\" + name; }

  std::unique_ptr<running_program> begin(const std::string& arguments) const {
    return std::make_unique<running_program>(
        program_start{folder_.path(in_program("corvane-author.exe")), arguments, folder_.path()});
  }

  /// The exit status, and what it said in stdout_ and stderr_.
  DWORD end(running_program& program) {
    const DWORD status = program.wait();
    stdout_ = program.out();
    stderr_ = program.err();
    return status;
  }
  DWORD run(const std::string& arguments) { return end(*begin(arguments)); }

  std::string calls() const { return folder_.read(in_program("bin\\calls")); }

  temporary_folder folder_;
  const std::string program_ = "Corvane ü & 字";
  std::string project_, stdout_, stderr_;
};

TEST_F(AuthorProgram, TellsItsVersionAndHelp) {
  EXPECT_EQ(run("--version"), 0u);
  EXPECT_EQ(stdout_, "corvane-author (Corvane 0.997 - 1/2/2005)\n");
  EXPECT_EQ(run("--help"), 0u);
  EXPECT_THAT(stdout_, StartsWith("Usage: corvane-author "));
  EXPECT_EQ(run(""), 2u);
  EXPECT_THAT(stderr_, HasSubstr("PROJECT.cvp is missing"));
}

TEST_F(AuthorProgram, PrepareWritesAndNamesTheFilesAndRunsNothing) {
  EXPECT_EQ(run("--prepare \"film ü.cvp\" \"disc ü\""), 0u) << stderr_;
  EXPECT_EQ(stdout_, folder_.path(in_program("process.bat")) + "\n" +
                         folder_.path(in_program("config.xml")) + "\n");
  EXPECT_THAT(folder_.read(in_program("process.bat")),
              HasSubstr("mkdir \"" + folder_.path("disc ü") + "\"\r\n"));
  EXPECT_FALSE(file_exists(folder_.path(in_program("bin\\calls"))));
}

TEST_F(AuthorProgram, ADiscIsAuthored) {
  EXPECT_EQ(run("--iso \"" + project_ + "\" \"disc ü\""), 0u) << stderr_;
  EXPECT_EQ(calls(), "mplex\r\ndvdauthor\r\nmkisofs\r\n");
  EXPECT_THAT(stdout_, HasSubstr("Process complete."));
  EXPECT_THAT(stdout_, HasSubstr("log: " + folder_.path(in_program("CorvaneLOG.txt")) + "\n"));
}

TEST_F(AuthorProgram, NamesMayHoldWhatCommandPromptsAndPrintfTakeForTheirOwn) {
  const std::string odd = "50% & it's #1 ! ^ $HOME `x` %PATH% 字 %d";
  project p;
  p.List11 = {folder_.stored(odd + "\\movie.m2v") + "/" + folder_.stored(odd + "\\movie.ac3")};
  p.chapters = {"0"};
  p.delay = {"0"};
  p.subtitledata = {"<none>"};
  p.subtitleoptions = {default_subtitleoptions("NTSC")};
  folder_.add(odd + "\\movie.m2v", small_video());
  folder_.add(odd + "\\movie.ac3", small_sound());
  rebuild_List1(p);
  const std::string project = folder_.add(odd + "\\film.cvp", project_text(p));
  const std::string disc = folder_.path(odd + "\\disc");
  EXPECT_EQ(run("\"" + project + "\" \"" + disc + "\""), 0u) << stderr_;
  EXPECT_EQ(calls(), "mplex\r\ndvdauthor\r\n");
  EXPECT_TRUE(folder_exists(disc));
  EXPECT_EQ(files_in(disc), std::vector<std::string>{});
  EXPECT_THAT(folder_.read(in_program("process.bat")), HasSubstr("mkdir \"" + disc + "\"\r\n"));
}

TEST_F(AuthorProgram, AToolThatFailsGivesStatusOne) {
  folder_.add(in_program("bin\\behaviour"), "fail");
  EXPECT_EQ(run("\"film ü.cvp\" disc"), 1u);
  EXPECT_THAT(stderr_, HasSubstr("mplex.exe ended with status 1"));
}

TEST_F(AuthorProgram, AToolThatIsNotThereGivesStatusThree) {
  fs::remove(path_of(folder_.path(in_program("bin\\dvdauthor.exe"))));
  EXPECT_EQ(run("\"film ü.cvp\" disc"), 3u);
  EXPECT_THAT(stderr_, HasSubstr("dvdauthor.exe: https://dvdauthor.sourceforge.net\n"));
  EXPECT_THAT(stderr_, HasSubstr("dvdauthor.exe is not in the folder \"" +
                                 folder_.path(in_program("bin")) + "\".  It comes from "));
  EXPECT_FALSE(file_exists(folder_.path(in_program("bin\\calls"))));
}

/// The rest needs a tool that is running.
class AuthorProgramRunning : public AuthorProgram {
 protected:
  std::unique_ptr<running_program> begin_waiting() {
    folder_.add(in_program("bin\\behaviour"), "wait");
    auto first = begin("\"film ü.cvp\" disc");
    for (int i = 0; i < 600 && !file_exists(folder_.path(in_program("bin\\calls"))); ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_TRUE(file_exists(folder_.path(in_program("bin\\calls"))));
    return first;
  }
  void let_tools_end() const { fs::remove(path_of(folder_.path(in_program("bin\\behaviour")))); }

  /// A tool that still ran would keep its file from being removed.
  bool tool_has_ended() const {
    std::error_code error;
    for (int i = 0; i < 200; ++i) {
      if (fs::remove(path_of(folder_.path(in_program("bin\\mplex.exe"))), error))
        return true;
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return false;
  }
  /// Nothing of the stopped run is in the way of the next.
  void expect_that_the_next_works() {
    fs::copy_file(path_of(folder_.path(in_program("bin\\gm.exe"))),
                  path_of(folder_.path(in_program("bin\\mplex.exe"))));
    let_tools_end();
    EXPECT_EQ(run("\"film ü.cvp\" disc"), 0u) << stderr_;
  }
};

TEST_F(AuthorProgramRunning, ASecondRunInTheSameProgramFolderIsRefused) {
  const auto first = begin_waiting();
  EXPECT_EQ(run("\"film ü.cvp\" other"), 2u);
  EXPECT_THAT(stderr_, HasSubstr("Another authoring run"));
  let_tools_end();
  EXPECT_EQ(end(*first), 0u);
}

TEST_F(AuthorProgramRunning, OneThatWasKilledLeavesNoToolAndDoesNotBlockTheNext) {
  const auto first = begin_waiting();
  first->kill(9);
  EXPECT_EQ(end(*first), 9u);
  EXPECT_TRUE(tool_has_ended());
  expect_that_the_next_works();
}

}  // namespace
}  // namespace corvane
