// corvane-author.exe in a folder of its own, with stand-ins for the outside tools in its bin.
#include "platform/program_folder.h"
#include "platform/wide_windows.h"
#include "project/project_file.h"
#include "project/subtitle_rows.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>
#include <windows.h>

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;
using testing_support::temporary_folder;

class AuthorProgram : public testing::Test {
 protected:
  AuthorProgram() {
    const fs::path built = path_of(own_executable()).parent_path();
    fs::create_directories(path_of(folder_.path(program_ + "\\bin")));
    copy(built / "corvane-author.exe", "corvane-author.exe");
    copy(built / "conspawn.exe", "bin\\conspawn.exe");
    for (const outside_tool& tool : outside_tools())
      copy(built / "test_apps_tool.exe", "bin\\" + tool.name + ".exe");
    folder_.add("movie ü.m2v");
    folder_.add("movie ü.ac3");
    project p;
    p.List11 = {folder_.stored("movie ü.m2v") + "/" + folder_.stored("movie ü.ac3")};
    p.chapters = {"0"};
    p.delay = {"0"};
    p.subtitledata = {"<none>"};
    p.subtitleoptions = {default_subtitleoptions("NTSC")};
    rebuild_List1(p);
    project_ = folder_.add("film ü.cvp", project_text(p));
  }

  void copy(const fs::path& from, const std::string& to) const {
    fs::copy_file(from, path_of(folder_.path(program_ + "\\" + to)));
  }
  std::string in_program(const std::string& name) const { return program_ + "\\" + name; }

  /// What it says goes to the files said + "out" and said + "err".
  PROCESS_INFORMATION begin(const std::string& arguments, const std::string& said = "std") const {
    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    const auto file = [&](const std::string& name) {
      return ::CreateFileW(wide(folder_.path(name)).c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                           &inherit, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    };
    STARTUPINFOW how{};
    how.cb = sizeof how;
    how.dwFlags = STARTF_USESTDHANDLES;
    how.hStdOutput = file(said + "out");
    how.hStdError = file(said + "err");
    const std::string program = folder_.path(in_program("corvane-author.exe"));
    std::wstring line = wide("\"" + program + "\" " + arguments);
    PROCESS_INFORMATION info{};
    EXPECT_TRUE(::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE,
                                 CREATE_NEW_PROCESS_GROUP, nullptr, wide(folder_.path()).c_str(),
                                 &how, &info));
    ::CloseHandle(how.hStdOutput);
    ::CloseHandle(how.hStdError);
    return info;
  }

  /// The exit status, and what it said in stdout_ and stderr_ with bare line feeds.
  DWORD end(const PROCESS_INFORMATION& info, const std::string& said = "std") {
    EXPECT_EQ(::WaitForSingleObject(info.hProcess, 60'000), WAIT_OBJECT_0);
    DWORD status = 0;
    ::GetExitCodeProcess(info.hProcess, &status);
    ::CloseHandle(info.hProcess);
    ::CloseHandle(info.hThread);
    stdout_ = without_returns(folder_.read(said + "out"));
    stderr_ = without_returns(folder_.read(said + "err"));
    return status;
  }
  DWORD run(const std::string& arguments) { return end(begin(arguments)); }

  static std::string without_returns(std::string text) {
    std::erase(text, '\r');
    return text;
  }

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
  EXPECT_EQ(without_returns(folder_.read(in_program("bin\\calls"))), "mplex\ndvdauthor\nmkisofs\n");
  EXPECT_THAT(stderr_, HasSubstr("Process complete."));
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
  folder_.add(odd + "\\movie.m2v");
  folder_.add(odd + "\\movie.ac3");
  rebuild_List1(p);
  const std::string project = folder_.add(odd + "\\film.cvp", project_text(p));
  const std::string disc = folder_.path(odd + "\\disc");
  folder_.add(odd + "\\disc\\presub.mpg", "left by a stopped run");
  EXPECT_EQ(run("\"" + project + "\" \"" + disc + "\""), 0u) << stderr_;
  EXPECT_EQ(without_returns(folder_.read(in_program("bin\\calls"))), "mplex\ndvdauthor\n");
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
  PROCESS_INFORMATION begin_waiting() {
    folder_.add(in_program("bin\\behaviour"), "wait");
    const PROCESS_INFORMATION first = begin("\"film ü.cvp\" disc");
    for (int i = 0; i < 600 && !file_exists(folder_.path(in_program("bin\\calls"))); ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_TRUE(file_exists(folder_.path(in_program("bin\\calls"))));
    return first;
  }
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
};

TEST_F(AuthorProgramRunning, ASecondRunInTheSameProgramFolderIsRefused) {
  const PROCESS_INFORMATION first = begin_waiting();
  EXPECT_EQ(end(begin("\"film ü.cvp\" other", "second"), "second"), 2u);
  EXPECT_THAT(stderr_, HasSubstr("Another authoring run"));
  fs::remove(path_of(folder_.path(in_program("bin\\behaviour"))));
  EXPECT_EQ(end(first), 0u);
}

TEST_F(AuthorProgramRunning, OneThatWasKilledLeavesNoToolAndDoesNotBlockTheNext) {
  const PROCESS_INFORMATION first = begin_waiting();
  ::TerminateProcess(first.hProcess, 9);
  EXPECT_EQ(end(first), 9u);
  EXPECT_TRUE(tool_has_ended());
  copy(path_of(folder_.path(in_program("bin\\gm.exe"))), "bin\\mplex.exe");
  fs::remove(path_of(folder_.path(in_program("bin\\behaviour"))));
  EXPECT_EQ(run("\"film ü.cvp\" disc"), 0u) << stderr_;
}

}  // namespace
}  // namespace corvane
