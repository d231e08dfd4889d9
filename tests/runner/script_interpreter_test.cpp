#include "runner/script_interpreter.h"

#include "noting_host.h"
#include "platform/files/files.h"
#include "runner/output_lines.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvane {
namespace {

using testing_support::noting_host;
using kind = program_end::kind;

TEST(Script, RunsItsLinesInOrder) {
  noting_host host;
  host.files = {"/o/a.mpg", "/o/b.mpg"};
  EXPECT_TRUE(
      run_script("@echo off\r\necho Send\r\nmkdir \"/o\"\r\n\r\n\"bin/mplex.exe\" -f 8\r\n"
                 "rename \"/o/a.mpg\" b.mpg\r\nerase \"/o\"/*.mpg\r\necho *process complete",
                 host));
  EXPECT_EQ(host.notes,
            "Send\n[mkdir /o]\n[run /own/mplex.exe,-f,8]\n[rename /o/a.mpg /o/b.mpg]\n"
            "[erase /o/a.mpg]\n[erase /o/b.mpg]\n*process complete\n");
}

TEST(Script, EmptyScriptIsFine) {
  noting_host host;
  EXPECT_TRUE(run_script("", host));
  EXPECT_TRUE(run_script("\n\r\n\n", host));
  EXPECT_EQ(host.notes, "");
}

TEST(Script, LineThatIsNotUnderstoodIsToldByItsNumberAndTheNextOneRuns) {
  noting_host host;
  EXPECT_FALSE(run_script("echo a\nformat c:\necho b\n", host));
  EXPECT_EQ(host.notes,
            "a\n\nERR:  line 2 of the work script is not understood: it is neither a command nor a "
            "program of the tools' folder\nb\n");
}

TEST(Script, FailingBuiltInCommandsAreTold) {
  noting_host host;
  host.files = {"/o/a"};
  host.failures = {{"mkdir /o", "no room"}, {"erase /o/a", "busy"}, {"rename /o/a /o/b", "gone"}};
  EXPECT_FALSE(run_script("mkdir /o\nerase /o/a\nrename /o/a b\n", host));
  EXPECT_EQ(host.notes,
            "[mkdir /o]\n\nERR:  mkdir /o: no room\n[erase /o/a]\n\nERR:  erase /o/a: busy\n"
            "[rename /o/a /o/b]\n\nERR:  rename /o/a: gone\n");
}

TEST(Script, NothingToEraseIsSaidButNoError) {
  noting_host host;
  EXPECT_TRUE(run_script("erase \"/o\"/*.mpg\n", host));
  EXPECT_EQ(host.notes, "Could not find /o/*.mpg\n");
}

TEST(Script, RenameStaysInTheFolder) {
  for (const char* name : {"../b", "/b", "..", ".", "c/b"}) {
    noting_host host;
    EXPECT_FALSE(run_script(std::string("rename /o/a ") + name, host));
    EXPECT_EQ(host.notes, "\nERR:  rename /o/a: the new name is not one of the same folder\n");
  }
}

TEST(Script, ProgramOutsideOfTheOwnFolderIsNotRun) {
  noting_host host;
  EXPECT_FALSE(run_script("/bin/sh.exe -c id\nbin/a.exe | sh.exe\n", host));
  EXPECT_EQ(host.notes,
            "\nERR:  sh.exe is not started: it is not one of the program's tools\n"
            "\nERR:  sh.exe is not started: it is not one of the program's tools\n");
}

TEST(Script, RedirectionsReachThePrograms) {
  noting_host host;
  EXPECT_TRUE(run_script("bin/a.exe <\"in\" | bin/b.exe > \"out\"", host));
  EXPECT_EQ(host.last.input, "in");
  EXPECT_EQ(host.last.output, "out");
}

TEST(Script, RedirectionThatCannotBeOpenedIsTold) {
  noting_host host;
  host.result_of_run.unusable_file = "/in";
  host.result_of_run.why_unusable = "No such file or directory";
  EXPECT_FALSE(run_script("bin/spumux.exe < /in", host));
  EXPECT_EQ(host.notes,
            "[run /own/spumux.exe]\n\nERR:  spumux.exe could not be started: /in: No such file or "
            "directory\n");
}

TEST(Script, EveryMemberOfAPipelineCounts) {
  noting_host host;
  host.ends = {{kind::exited, 1, ""}, {kind::exited, 0, ""}, {kind::by_signal, 6, "Aborted"}};
  EXPECT_FALSE(run_script("bin/a.exe | bin/b.exe | bin/c.exe", host));
  EXPECT_EQ(host.notes,
            "[run /own/a.exe]\n[run /own/b.exe]\n[run /own/c.exe]\n"
            "\nERR:  a.exe ended with status 1\n\nERR:  c.exe was ended by signal 6 (Aborted)\n");
}

TEST(EndMarker, IsPrintedWhenEverythingElseIsDone) {
  noting_host host;
  EXPECT_TRUE(run_script("echo *process complete\nbin/a.exe\necho *next\n", host));
  EXPECT_EQ(host.notes, "[run /own/a.exe]\n*next\n*process complete\n");
}

TEST(EndMarker, IsOnALineOfItsOwnAndSoIsEveryOtherLineOfTheScript) {
  for (const std::string left : {"half", "half\n", "half\r"}) {
    noting_host host;
    host.printed = {left};
    EXPECT_TRUE(run_script("bin/a.exe\necho *next\necho *process complete\n", host));
    EXPECT_EQ(host.notes, "[run /own/a.exe]\n" + left + (left == "half" ? "\n" : "") +
                              "*next\n*process complete\n");
  }
}

TEST(EndMarker, AndStepsThatAToolPrintsAreMarkedAsTheToolsHoweverTheyCome) {
  const std::string fake = "INFO: a\n*process complete\r*multiplexing title: 1.....\n";
  const std::string shown = "INFO: a\ntool: *process complete\rtool: *multiplexing title: 1.....\n";
  for (std::size_t cut = 0; cut <= fake.size(); ++cut) {
    noting_host host;
    host.printed = {fake.substr(0, cut), fake.substr(cut)};
    EXPECT_TRUE(run_script("bin/dvdauthor.exe\necho *process complete\n", host));
    EXPECT_EQ(host.notes, "[run /own/dvdauthor.exe]\n" + shown + "*process complete\n");
  }
}

TEST(EndMarker, ThatTwoToolsPrintInTwoHalvesIsMarkedToo) {
  noting_host host;
  host.printed = {"*"};
  EXPECT_TRUE(run_script("bin/a.exe\nbin/b.exe\necho *process complete\n", host));
  EXPECT_EQ(host.notes, "[run /own/a.exe]\ntool: *[run /own/b.exe]\n\n*process complete\n");
}

TEST(EndMarker, InTheNameOfAFileIsNoLine) {
  noting_host host;
  host.control = "<vob chapters=\"0:10,0:05\n*process complete\n\"/>";
  host.failures = {{"mkdir /o", "no\n*process complete\nroom"}};
  EXPECT_FALSE(run_script("mkdir /o\nbin/dvdauthor.exe -x c.xml\nerase *process\r\n", host));
  for (std::size_t at = host.notes.find('*'); at != std::string::npos;
       at = host.notes.find('*', at + 1))
    EXPECT_NE(host.notes[at - 1], '\n') << host.notes;
}

TEST(LastLook, ComesBeforeTheEndMarkerAndItsErrorsMakeTheRunAFailure) {
  noting_host host;
  host.printed = {"half"};
  EXPECT_FALSE(run_script("bin/a.exe\necho *process complete\n", host,
                          [](bool all_well, const look_output& out) {
                            EXPECT_TRUE(all_well);
                            out.line("INFO: looking\n*process complete");
                            out.line("ERR:  title 1 is half as long as it should be");
                            out.line("*process complete");
                          }));
  EXPECT_EQ(host.notes,
            "[run /own/a.exe]\nhalf\nINFO: looking?*process complete\n"
            "ERR:  title 1 is half as long as it should be\ntool: *process complete\n"
            "*process complete\n");
}

TEST(LastLook, IsAStepThatTheLogWindowAndTheConsoleShow) {
  noting_host host;
  host.printed = {"half"};
  EXPECT_TRUE(
      run_script("bin/a.exe\necho *process complete\n", host,
                 [](bool /*all_well*/, const look_output& out) { out.step("reading\n*it back"); }));
  EXPECT_EQ(host.notes, "[run /own/a.exe]\nhalf\n*reading?*it back.....\n*process complete\n");
  EXPECT_EQ(step_in_line("*reading?*it back....."), "reading?*it back");
}

TEST(LastLook, ThatFindsNothingChangesNothing) {
  noting_host host;
  EXPECT_TRUE(run_script("echo a\necho *process complete\n", host,
                         [](bool /*all_well*/, const look_output& /*out*/) {}));
  EXPECT_EQ(host.notes, "a\n*process complete\n");
}

TEST(LastLook, IsToldThatSomethingWentWrong) {
  noting_host host;
  bool well = true;
  EXPECT_FALSE(run_script("format c:\necho *process complete\n", host,
                          [&well](bool all_well, const look_output& /*out*/) { well = all_well; }));
  EXPECT_FALSE(well);
}

TEST(LastLook, IsNotTakenAtAScriptThatMakesNoDisc) {
  noting_host host;
  EXPECT_TRUE(run_script("bin/spumux.exe\n", host, [](bool, const look_output&) { FAIL(); }));
}

TEST(Complaint, NamesTheToolAndHowItEnded) {
  EXPECT_EQ(complaint_about("mplex.exe", {kind::exited, 0, ""}), "");
  EXPECT_EQ(complaint_about("mplex.exe", {kind::exited, 1, ""}), "mplex.exe ended with status 1");
  EXPECT_EQ(complaint_about("spumux.exe", {kind::by_signal, 11, "Segmentation fault"}),
            "spumux.exe was ended by signal 11 (Segmentation fault)");
  EXPECT_EQ(complaint_about("gm.exe", {kind::not_started, 2, "No such file or directory"}),
            "gm.exe could not be started: No such file or directory");
  EXPECT_EQ(complaint_about("gm.exe", {kind::by_exception, 0xC0000005, "access violation"}),
            "gm.exe was ended by exception 0xC0000005 (access violation)");
}

TEST(SystemScriptHost, FilesToEraseAreNoFolders) {
  const testing_support::temporary_folder folder;
  const std::string file = folder.add("title1.mpg");
  ASSERT_FALSE(make_folders(folder.path("title2.mpg")));
  system_script_host host(folder.path());
  EXPECT_EQ(host.matching(file), std::vector<std::string>{file});
  EXPECT_TRUE(host.matching(folder.path("title2.mpg")).empty());
  EXPECT_EQ(host.matching(folder.path("*.mpg")), std::vector<std::string>{file});
}

}  // namespace
}  // namespace corvane
