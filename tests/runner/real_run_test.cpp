// Each way in which a tool can fail, or seem to, through the real runner and the real conspawn.
#include "real_run.h"

#include "menu_stream.h"
#include "support/environment_variable.h"

#include <cstdlib>

namespace corvane {
namespace {

using testing_support::buttons_at;
using testing_support::environment_variable;
using testing_support::picture_at;
using testing_support::real_run;
using testing_support::sound_at;

const std::string head = "Send problems to us\n*first step\n";
const std::string tail = "*process complete\n\n";

TEST(RealRun, ToolThatWorksIsSuccess) {
  real_run run;
  EXPECT_EQ(run.succeeds(run.tool("mplex") + " print \"   INFO: [mplex] done\\n\"\r\n"),
            head + "   INFO: [mplex] done\n" + tail);
}

TEST(RealRun, MissingToolIsFailure) {
  real_run run;
  run.remove_tool("mplex.exe");
  const std::string log = run.fails(run.tool("mplex") + " -f 8\r\n");
  const std::string begin = head + "\nERR:  mplex.exe could not be started: ";
  EXPECT_EQ(log.substr(0, begin.size()), begin);
  EXPECT_EQ(log.substr(log.size() - tail.size()), tail);
}

TEST(RealRun, Status1WithoutAWordIsFailure) {
  real_run run;
  EXPECT_EQ(run.fails(run.tool("mplex") + " status 1\r\n"),
            head + "\nERR:  mplex.exe ended with status 1\n" + tail);
}

TEST(RealRun, NegativeStatusIsItsLowestByteOnEverySystem) {
  real_run run;
  EXPECT_EQ(run.fails(run.tool("mkisofs") + " status -1\r\n"),
            head + "\nERR:  mkisofs.exe ended with status 255\n" + tail);
}

TEST(RealRun, CrashIsFailure) {
  real_run run;
  const std::string log = run.fails(run.tool("spumux") + " print half crash\r\n");
  EXPECT_NE(log.find("half\nERR:  spumux.exe was ended by "), std::string::npos) << log;
  EXPECT_EQ(log.substr(log.size() - tail.size()), tail);
}

TEST(RealRun, ErrLineWithStatus0IsFailure) {
  real_run run;
  EXPECT_EQ(run.fails(run.tool("spumux") + " error \"STAT: 0:00\\nERR:  no file\\n\"\r\n"),
            head + "STAT: 0:00\nERR:  no file\n" + tail);
}

TEST(RealRun, StarStarErrorLineIsFailure) {
  real_run run;
  EXPECT_EQ(run.fails(run.tool("mplex") + " error \"**ERROR: [mplex] under-runs\\n\"\r\n"),
            head + "**ERROR: [mplex] under-runs\n" + tail);
}

/// The lines of a run that puts buttons on menu 2, whose stream already holds what spumux would
/// have put there.
std::string menu_lines(const real_run& run, const std::string& stream) {
  run.app.add("menu2.xml", "<spu>\r\n    <button x0=\"0\"/>\r\n</spu>\r\n");
  run.app.add("menu2.mpg", stream);
  return run.tool("spumux") + " \"" + run.app.path("menu2.xml") + "\" <\"" +
         run.app.path("menu2.mpg") + "\" > \"" + run.app.path("menusub2.mpg") + "\"\r\n";
}

TEST(RealRun, MenuToWhichSpumuxAddedNothingIsFailureThatNamesTheMenu) {
  real_run run;
  EXPECT_EQ(run.fails(menu_lines(run, picture_at(0.1) + sound_at(0.1))),
            head +
                "\nERR:  the buttons of menu 2 will not be seen: no picture of them was added\n" +
                tail);
}

TEST(RealRun, MenuThatEndsBeforeItsButtonsComeIsFailureThatNamesTheMenu) {
  real_run run;
  EXPECT_EQ(run.fails(menu_lines(run, picture_at(0.1) + buttons_at(20))),
            head +
                "\nERR:  the buttons of menu 2 will not be seen: their picture comes up after the "
                "end of the menu\n" +
                tail);
}

TEST(RealRun, MenuWithTheSubpictureOfItsButtonsIsSuccess) {
  real_run run;
  EXPECT_EQ(run.succeeds(menu_lines(run, picture_at(0.1) + buttons_at(0.1))), head + tail);
}

TEST(RealRun, ImageIsNotMadeAfterTheErrorOfAnotherTool) {
  for (const std::string way : {"status 1", "crash", "error \"ERR:  no room\\n\""}) {
    SCOPED_TRACE(way);
    real_run run;
    const std::string log = run.fails(run.tool("dvdauthor") + " " + way + "\r\n" +
                                      run.tool("mkisofs") + " write image.iso x\r\n");
    EXPECT_FALSE(file_exists(run.app.path("image.iso")));
    const std::string end = "INFO: no image is made, since something went wrong before\n" + tail;
    EXPECT_EQ(log.substr(log.size() - std::min(log.size(), end.size())), end);
  }
  real_run run;
  run.succeeds(run.tool("dvdauthor") + " error \"STAT: fine\\n\"\r\n" + run.tool("mkisofs") +
               " write image.iso x\r\n");
  EXPECT_TRUE(file_exists(run.app.path("image.iso")));
}

TEST(RealRun, EachToolFailingInEachWayIsFailureAndLeavesAWholeLog) {
  for (const std::string tool : {"mplex", "gm", "spumux", "dvdauthor", "mkisofs"}) {
    for (const std::string way :
         {"missing", "status 1", "crash", "error \"ERR:  no room\\n\"",
          "error \"**ERROR: [x] no room\\n\" status 1", "print \"no line end\" status 2"}) {
      SCOPED_TRACE(tool + " " + way);
      real_run run;
      if (way == "missing")
        run.remove_tool(tool + ".exe");
      const std::string log =
          run.fails(run.tool(tool) + " " + way + "\r\n" + "echo *next step\r\n");
      EXPECT_EQ(log.substr(0, head.size()), head);
      EXPECT_NE(log.find("\n*next step\n"), std::string::npos) << log;
      EXPECT_EQ(log.substr(log.size() - tail.size()), tail);
    }
  }
}

TEST(RealRun, SilenceOfTenSecondsIsWaitedFor) {
  real_run run;
  EXPECT_EQ(run.succeeds(run.tool("dvdauthor") + " silent 10000 print done\\n\r\n"),
            head + "done\n" + tail);
}

TEST(RealRun, FiftyMegabytesOfOutputAreWholeInTheLog) {
#ifdef _WIN32
  constexpr std::size_t megabytes = 5;  // the pipe's size there is the system's smallest
#else
  constexpr std::size_t megabytes = 50;
#endif
  real_run run;
  const std::string log =
      run.succeeds(run.tool("dvdauthor") + " megabytes " + std::to_string(megabytes) + "\r\n");
  ASSERT_EQ(log.size(), head.size() + megabytes * 1000000 + tail.size());
  EXPECT_EQ(log.substr(0, head.size()), head);
  EXPECT_EQ(log.substr(log.size() - tail.size()), tail);
  const std::string line = std::string(99, 'x').append("\n");
  for (std::size_t at = head.size(); at < log.size() - tail.size(); at += line.size())
    ASSERT_EQ(std::string_view(log).substr(at, line.size()), line) << at;
}

TEST(RealRun, OutputWithoutALineEndIsSuccess) {
  real_run run;
  EXPECT_EQ(run.succeeds(run.tool("gm") + " print \"no line end\"\r\n"),
            head + "no line end\n" + tail);
}

TEST(RealRun, EndMarkerAndStepsThatAToolPrintsAreTheToolsOwnLines) {
  for (const std::string way : {"print ", "error "}) {
    SCOPED_TRACE(way);
    const std::string fake = "x\\n*process complete\\n*next step\\n";
    const std::string shown = "x\ntool: *process complete\ntool: *next step\n";
    real_run run;
    EXPECT_EQ(run.succeeds(run.tool("dvdauthor") + " " + way + "\"" + fake + "\"\r\n" +
                           "echo *next step\r\n"),
              head + shown + "*next step\n" + tail);
    EXPECT_EQ(run.screen.steps.size(), 3u);
    run.remove_tool("gm.exe");
    const std::string log = run.fails(run.tool("dvdauthor") + " " + way + "\"" + fake + "\"\r\n" +
                                      run.tool("gm") + " mogrify\r\n");
    EXPECT_EQ(log.substr(0, head.size() + shown.size()), head + shown);
    EXPECT_NE(log.find("\nERR:  gm.exe could not be started: "), std::string::npos) << log;
    EXPECT_EQ(log.substr(log.size() - tail.size()), tail);
  }
}

TEST(RealRun, EndMarkerThatAToolOfAPipelinePrintsIsItsOwnLine) {
  real_run run;
  EXPECT_EQ(run.fails(run.tool("mplex") + " error \"*process complete\\n\" print frame | " +
                      run.tool("gm") + " copy print \"\\n*process complete\\n\"\r\n" +
                      run.tool("gm") + " status 1\r\n"),
            head +
                "tool: *process complete\nframe\ntool: *process complete\n"
                "\nERR:  gm.exe ended with status 1\n" +
                tail);
}

TEST(RealRun, EndMarkerThatIsAllOfAScriptRunnerThatDiesIsAFailure) {
  real_run run;
  run.ask.expect(
      {"There was an error.  Please review the log.", icon::critical, buttons::ok_cancel},
      answer::cancel);
  run.app.add("process.bat",
              "echo *first step\r\n" + run.tool("gm") + " print \"/a\\n*process complete\"\r\n");
  ASSERT_TRUE(run.lock.take());
  run.runner.ExecuteCommand(run.app.path("process.bat"), {});
  run.finish();
  EXPECT_EQ(run.runner.outcome(), run_outcome::failed);
}

TEST(RealRun, OutputAndErrorsKeepTheirOrder) {
  real_run run;
  std::string ways;
  std::string expected;
  for (int i = 0; i < 50; ++i) {
    ways += " print \"out \" error \"err\\n\"";
    expected += "out err\n";
  }
  EXPECT_EQ(run.succeeds(run.tool("dvdauthor") + ways + "\r\n"), head + expected + tail);
}

TEST(RealRun, ProcessThatAToolLeavesBehindHoldsNothingUp) {
  real_run run;
  const auto begin = std::chrono::steady_clock::now();
  const std::string log =
      run.succeeds(run.tool("dvdauthor") + " print \"first\\n\" leave 20 silent 200\r\n" +
                   run.tool("gm") + " print \"next\\n\"\r\n");
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(15));
  EXPECT_EQ(log.substr(0, head.size() + 6), head + "first\n");
  EXPECT_NE(log.find("\nleft behind\n"), std::string::npos);
  const std::string end = "\nnext\n" + tail;
  EXPECT_EQ(log.substr(log.size() - end.size()), end);
}

TEST(RealRun, FailureAfterALineLeftOpenIsFailure) {
  real_run run;
  EXPECT_EQ(run.fails(run.tool("gm") + " print \"no line end\" status 3\r\n"),
            head + "no line end\nERR:  gm.exe ended with status 3\n" + tail);
}

TEST(RealRun, ScriptGoesOnAfterAFailure) {
  real_run run;
  EXPECT_EQ(run.fails(run.tool("mplex") + " status 1\r\necho *next\r\n" + run.tool("gm") +
                      " print drawn\\n\r\n"),
            head + "\nERR:  mplex.exe ended with status 1\n*next\ndrawn\n" + tail);
}

TEST(RealRun, DrawingThatGmRefusesAsEmptyIsNoFailure) {
  real_run run;
  const std::string refusal =
      "gm.exe mogrify: Non-conforming drawing primitive definition (roundrectangle).";
  EXPECT_EQ(run.succeeds(run.tool("gm") + " error \"" + refusal + "\\n\" status 1\r\n"),
            head + refusal + "\n" + tail);
}

TEST(RealRun, AnotherComplaintOfGmIsFailure) {
  real_run run;
  EXPECT_EQ(run.fails(run.tool("gm") + " error \"gm.exe mogrify: Unable to open\\n\" status 1\r\n"),
            head + "gm.exe mogrify: Unable to open\n\nERR:  gm.exe ended with status 1\n" + tail);
}

TEST(RealRun, FilesAreReadWrittenRenamedAndErased) {
  real_run run;
  const std::string out = run.app.path("my dvd & more/deep");
  const std::string log =
      run.succeeds("mkdir \"" + out + "\"\r\nmkdir \"" + out + "\"\r\n" + run.tool("mplex") +
                   " write \"" + join_path(out, "title1.mpg") + "\" pictures\r\n" + "rename \"" +
                   join_path(out, "title1.mpg") + "\" presub.mpg\r\n" + run.tool("spumux") +
                   " copy print \"+sub\" <\"" + join_path(out, "presub.mpg") + "\" > \"" +
                   join_path(out, "title1.mpg") + "\"\r\nerase \"" + join_path(out, "presub.mpg") +
                   "\"\r\n" + run.tool("mplex") + " write \"" + join_path(out, "keep.vob") +
                   "\" x\r\n" + run.tool("spumux") + " copy <\"" + join_path(out, "title1.mpg") +
                   "\" > \"" + join_path(run.app.path(), "seen.txt") + "\"\r\nerase \"" + out +
                   "\"" + separator(native_style()) + "*.mpg\r\n");
  EXPECT_EQ(log, head + tail);
  EXPECT_EQ(files_in(out), std::vector<std::string>{"keep.vob"});
  EXPECT_EQ(run.app.read("seen.txt"), "pictures+sub");
}

TEST(RealRun, PipelinePassesOutputOnAndEveryStatusCounts) {
  real_run run;
  EXPECT_EQ(run.succeeds(run.tool("mplex") + " print frame | " + run.tool("gm") +
                         " copy print \" encoded\\n\"\r\n"),
            head + "frame encoded\n" + tail);
  EXPECT_EQ(run.fails(run.tool("mplex") + " print frame status 4 | " + run.tool("gm") +
                      " copy print \" encoded\\n\"\r\n"),
            head + "frame encoded\n\nERR:  mplex.exe ended with status 4\n" + tail);
}

TEST(RealRun, ArgumentsArriveAsTheScriptHoldsThem) {
  real_run run;
  const std::string text = "#010101 & % $HOME `id` ! ^ ' ; ( ) ~ {} \\ a\\b ..";
  EXPECT_EQ(run.succeeds(run.tool("gm") + " arguments \"" + text +
                         "\" \"C:\\my dvd\\\\\" \"\" a\"b c\"d\r\n"),
            head + "[" + text + "]\n[C:\\my dvd\\\\]\n[]\n[ab cd]\n" + tail);
}

TEST(RealRun, StandardInputIsEmpty) {
  real_run run;
  EXPECT_EQ(run.succeeds(run.tool("gm") + " copy print end\\n\r\n"), head + "end\n" + tail);
}

TEST(RealRun, VariablesOfAStartReachTheToolsInPlaceOfOursOfTheSameNames) {
  const environment_variable format("VIDEO_FORMAT", "NTSC");
  const environment_variable other("VIDEO_FORMAT_OTHER", "ours");
  real_run run;
  EXPECT_EQ(run.succeeds(run.tool("gm") + " variable VIDEO_FORMAT print \", \" variable " +
                             "VIDEO_FORMAT_OTHER print \", \" variable ADDED print \\n\r\n",
                         {{"VIDEO_FORMAT", "PAL"}, {"ADDED", "a=b c"}}),
            head + "PAL, ours, a=b c\n" + tail);
}

TEST(RealRun, VariablesOfAStartDoNotGetIntoOurEnvironment) {
  const environment_variable format("VIDEO_FORMAT", "NTSC");
  real_run run;
  run.succeeds("", {{"VIDEO_FORMAT", "PAL"}, {"ADDED", "x"}});
  EXPECT_STREQ(std::getenv("VIDEO_FORMAT"), "NTSC");
  EXPECT_EQ(std::getenv("ADDED"), nullptr);
  EXPECT_EQ(run.succeeds(run.tool("gm") + " variable VIDEO_FORMAT print \\n\r\n"),
            head + "NTSC\n" + tail);
}

TEST(RealRun, RedirectionFromAMissingFileIsFailureAndNothingRuns) {
  real_run run;
  const std::string log =
      run.fails(run.tool("gm") + " write ran.txt x <\"" + run.app.path("missing") + "\"\r\n");
  EXPECT_NE(log.find("\nERR:  gm.exe could not be started: " + run.app.path("missing") + ": "),
            std::string::npos);
  EXPECT_FALSE(file_exists(run.app.path("ran.txt")));
}

TEST(RealRun, FailedCommandLeavesWhatItWrote) {
  real_run run;
  run.fails(run.tool("spumux") + " print half status 1 > \"" + run.app.path("out.mpg") + "\"\r\n");
  EXPECT_EQ(run.app.read("out.mpg"), "half");
}

TEST(RealRun, ProgramOfAnotherFolderIsNotStarted) {
  real_run run;
  std::filesystem::copy_file(path_of(CORVANE_STAND_IN_TOOL), path_of(run.app.path("evil.exe")));
  const std::string log = run.fails("\"" + run.app.path("evil.exe") + "\" write ran.txt x\r\n" +
                                    run.tool("conspawn") + " x\r\nevil.exe write ran.txt x\r\n");
  EXPECT_EQ(log, head +
                     "\nERR:  evil.exe is not started: it is not one of the program's tools\n"
                     "\nERR:  conspawn.exe is not started: it is not one of the program's tools\n"
                     "\nERR:  evil.exe is not started: it is not one of the program's tools\n" +
                     tail);
  EXPECT_FALSE(file_exists(run.app.path("ran.txt")));
}

TEST(RealRun, RenameOntoAFileThatIsThereIsFailureAndKeepsBoth) {
  real_run run;
  run.app.add("a.mpg", "a");
  run.app.add("b.mpg", "b");
  EXPECT_EQ(run.fails("rename \"" + run.app.path("a.mpg") + "\" b.mpg\r\n"),
            head + "\nERR:  rename " + run.app.path("a.mpg") +
                ": a file of the new name is there already\n" + tail);
  EXPECT_EQ(run.app.read("b.mpg"), "b");
}

TEST(RealRun, GarbageInTheScriptIsFailureAndTheRestRuns) {
  real_run run;
  std::string garbage;
  for (int c = 0; c < 256; ++c)
    if (c != '\n')
      garbage += static_cast<char>(c);
  const std::string log = run.fails(garbage + "\r\n" + run.tool("gm") + " print well\\n\r\n");
  EXPECT_EQ(log, head +
                     "\nERR:  line 4 of the work script is not understood: it holds a NUL "
                     "character\nwell\n" +
                     tail);
}

TEST(RealRun, MissingScriptIsFailure) {
  real_run run;
  run.ask.expect(
      {"There was an error.  Please review the log.", icon::critical, buttons::ok_cancel},
      answer::cancel);
  run.runner.ExecuteCommand(run.app.path("missing.bat"));
  EXPECT_EQ(run.finish(),
            "\nERR:  the work script cannot be read: the file does not exist\n"
            "\nERR:  the work script ended before its last line (conspawn ended with status 1)\n");
}

TEST(RealRun, MissingScriptRunnerIsTold) {
  real_run run;
  run.remove_tool("conspawn.exe");
  run.ask.expect({"Binaries not found, please reinstall the program.", icon::critical});
  run.start("");
  EXPECT_FALSE(run.runner.running());
  EXPECT_TRUE(run.screen.main_enabled);
  EXPECT_FALSE(run.lock.held());
}

TEST(RealRun, StopEndsAtOnceAndASecondRunFollows) {
  real_run run;
  run.start(run.tool("dvdauthor") + " print working\\n silent 60000 write late.txt x\r\n");
  const auto begin = std::chrono::steady_clock::now();
  while (run.screen.texts.empty() || run.screen.texts.back().find("working") == std::string::npos) {
    run.runner.update();
    ASSERT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(30));
  }
  run.runner.stop();
  EXPECT_EQ(run.runner.outcome(), run_outcome::stopped);
  EXPECT_EQ(run.log(), head + "working\n*** stopped by the user\n\n");
  EXPECT_FALSE(run.lock.held());
  EXPECT_EQ(run.succeeds(run.tool("gm") + " print again\\n\r\n"), head + "again\n" + tail);
}

TEST(RealRun, ProgressAndStepsReachTheScreen) {
  real_run run;
  run.succeeds("echo *authoring title(s).....\r\n" + run.tool("dvdauthor") +
               " print \"STAT: fixing VOBU at 2MB (33/192, 16%)\\n\" silent 300\r\n");
  EXPECT_EQ(run.screen.captions.back(), "Corvane log - *authoring title(s)..... ");
  EXPECT_EQ(run.screen.bar.back(), 16);
}

}  // namespace
}  // namespace corvane
