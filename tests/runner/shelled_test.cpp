#include "fake_run.h"
#include "runner/run_log.h"

namespace corvane {
namespace {

using testing_support::fake_run;

const std::string title = "Corvane 0.997 - 1/2/2005\r\n";

TEST(Shelled, StartsTheScriptThroughConspawnWithTheScriptInQuotes) {
  fake_run run;
  run.start();
  EXPECT_EQ(run.launcher.started,
            std::vector<std::string>{"bin/conspawn.exe \"" + run.script() + "\""});
  EXPECT_EQ(run.runner.CommandLine, run.script());
  EXPECT_TRUE(run.runner.running());
  EXPECT_EQ(run.runner.outcome(), run_outcome::running);
  EXPECT_TRUE(run.screen.timer);
  EXPECT_FALSE(run.screen.main_enabled);
  EXPECT_EQ(run.screen.progress, std::vector<double>{0});
  EXPECT_TRUE(run.lock.held());
}

TEST(Shelled, WithoutAnArgumentRunsTheStoredCommandLine) {
  fake_run run;
  run.runner.CommandLine = "stored.bat";
  run.runner.ExecuteCommand();
  EXPECT_EQ(run.launcher.started, std::vector<std::string>{"bin/conspawn.exe \"stored.bat\""});
}

TEST(Shelled, ArgumentReplacesTheStoredCommandLine) {
  fake_run run;
  run.runner.CommandLine = "stored.bat";
  run.runner.ExecuteCommand("other.bat");
  EXPECT_EQ(run.runner.CommandLine, "other.bat");
}

TEST(Shelled, EmptyCommandLineIsRefusedAndLeavesTheMainWindowDisabled) {
  fake_run run;
  ASSERT_TRUE(run.lock.take());
  run.ask.expect({"Command Line empty", icon::critical, buttons::ok, "Corvane"});
  run.runner.ExecuteCommand();
  EXPECT_TRUE(run.launcher.started.empty());
  EXPECT_FALSE(run.screen.main_enabled);
  EXPECT_FALSE(run.screen.timer);
  EXPECT_FALSE(run.runner.running());
  EXPECT_FALSE(run.lock.held());
}

TEST(Shelled, PipeThatCannotBeMadeIsToldWithItsErrorNumber) {
  fake_run run;
  run.launcher.fails = start_result::step::pipe;
  run.launcher.error = 24;
  run.ask.expect({"CreatePipe failed. Error: 24", icon::critical, buttons::ok, "Corvane"});
  run.start();
  EXPECT_FALSE(run.screen.timer);
  EXPECT_FALSE(run.screen.log_shown);
  EXPECT_TRUE(run.screen.main_enabled) << "nobody could use the program any more";
  EXPECT_FALSE(run.runner.running());
  EXPECT_EQ(run.runner.outcome(), run_outcome::none);
  EXPECT_FALSE(run.lock.held());
  EXPECT_FALSE(file_exists(run.app.path("CorvaneLOG.txt")));
}

TEST(Shelled, MissingScriptRunnerIsToldAndTheMainWindowEnabledAgain) {
  fake_run run;
  run.launcher.fails = start_result::step::process;
  run.launcher.error = 2;
  run.ask.expect({"Binaries not found, please reinstall the program.", icon::critical, buttons::ok,
                  "Corvane"});
  run.start();
  EXPECT_FALSE(run.screen.log_shown);
  EXPECT_TRUE(run.screen.main_enabled);
  EXPECT_FALSE(run.screen.timer);
  EXPECT_FALSE(run.runner.running());
  EXPECT_FALSE(run.lock.held());
}

TEST(Shelled, CanRunAgainAfterAStartThatFailed) {
  fake_run run;
  run.launcher.fails = start_result::step::process;
  run.ask.expect({"Binaries not found, please reinstall the program.", icon::critical});
  run.start();
  run.launcher.fails = start_result::step::none;
  run.start();
  EXPECT_TRUE(run.runner.running());
}

TEST(Shelled, PassWithoutOutputKeepsPolling) {
  fake_run run;
  run.start();
  run.runner.update();
  EXPECT_TRUE(run.runner.running());
  EXPECT_TRUE(run.screen.timer);
  EXPECT_TRUE(run.screen.texts.empty());
}

TEST(Shelled, OutputIsShownWithItsCaptionAndProgress) {
  fake_run run;
  run.start();
  run.feed("*multiplexing title: 1.....\n  45.3% done\n");
  EXPECT_EQ(run.screen.texts.back(), title + "*multiplexing title: 1..... \r\n   45.3% done \r\n ");
  EXPECT_EQ(run.screen.captions.back(), "Corvane log - multiplexing title: 1..... ");
  EXPECT_EQ(run.screen.progress.back(), 45.3);
  EXPECT_TRUE(run.screen.timer);
}

TEST(Shelled, TimerIsOffDuringAPassAndOnAgainAfterIt) {
  fake_run run;
  run.start();
  run.feed("one\n");
  ASSERT_FALSE(run.screen.texts.empty());
  EXPECT_FALSE(run.screen.timer_during_text);
  EXPECT_TRUE(run.screen.timer);
}

TEST(Shelled, PercentageAtThePiecesBeginningLeavesTheBarUnchanged) {
  fake_run run;
  run.start();
  run.feed("45% done\n");
  EXPECT_EQ(run.screen.progress, std::vector<double>{0});
}

TEST(Shelled, ProgressOutOfRangeStaysInTheBar) {
  fake_run run;
  run.start();
  run.feed("at 250% \n");
  EXPECT_EQ(run.screen.progress.back(), 100);
  run.feed("at -3% \n");
  EXPECT_EQ(run.screen.progress.back(), 0);
}

TEST(Shelled, OutputWithoutALineBreakInSightRefreshesTheLogWindow) {
  fake_run run;
  run.start();
  run.feed(std::string(8000, 'x'));
  EXPECT_EQ(run.screen.refreshed, 1);
  EXPECT_TRUE(run.screen.texts.empty());
  EXPECT_TRUE(run.screen.timer);
}

TEST(Shelled, MarkerEndsTheRunInTheSamePassEvenIfMoreFollows) {
  fake_run run;
  run.start();
  run.feed("*authoring title(s).....\n");
  run.expect_success();
  run.feed("done\n*process complete\nand more 50%");
  EXPECT_FALSE(run.runner.running());
  EXPECT_EQ(run.runner.outcome(), run_outcome::success);
  EXPECT_FALSE(run.screen.timer);
  EXPECT_TRUE(run.screen.main_enabled);
  EXPECT_FALSE(run.screen.log_shown);
  EXPECT_EQ(run.screen.texts.back(), "");
  EXPECT_TRUE(run.launcher.output->closed);
  EXPECT_FALSE(run.lock.held());
  EXPECT_EQ(run.log(), title +
                           "*authoring title(s)..... \r\n done \r\n *process complete \r\n "
                           "and more 50%\r\n");
}

TEST(Shelled, MarkerSplitOverTwoReadsEndsTheRun) {
  fake_run run;
  run.start();
  run.feed("done\n*process com");
  EXPECT_TRUE(run.runner.running());
  run.expect_success();
  run.feed("plete\n");
  EXPECT_EQ(run.runner.outcome(), run_outcome::success);
}

TEST(Shelled, MarkerAfterALineLeftOpenEndsTheRunAsSuccessWhenThePipeBreaks) {
  fake_run run;
  run.start();
  run.feed("no line end*process complete\n");
  run.expect_success();
  run.break_pipe();
  EXPECT_EQ(run.runner.outcome(), run_outcome::success);
}

TEST(Shelled, ScriptRunnerThatDiesAfterTheMarkerLineSpoilsNothing) {
  fake_run run;
  run.start();
  run.launcher.output->status = exit_status{true, 11};
  run.launcher.output->broken = true;
  run.expect_success();
  run.feed("done\n*process complete");
  EXPECT_EQ(run.runner.outcome(), run_outcome::success);
  EXPECT_EQ(run.log(), title + "done \r\n *process complete\r\n");
}

TEST(Shelled, ScriptRunnerThatDiesWithinTheMarkerIsAFailure) {
  fake_run run;
  run.start();
  run.feed("done\n*process comp");
  run.launcher.output->status = exit_status{true, 9};
  run.expect_failure();
  run.break_pipe();
  EXPECT_EQ(run.runner.outcome(), run_outcome::failed);
}

TEST(Shelled, ScriptRunnerThatDiesAfterAFileNamedLikeTheMarkerIsAFailure) {
  // 1 is what a program ended from outside gives on Windows.
  for (const exit_status how :
       {exit_status{true, 9}, exit_status{false, 0xC0000005}, exit_status{false, 1}}) {
    fake_run run;
    run.start();
    run.feed("INFO: opening /dvd/*process complete\n");
    run.launcher.output->status = how;
    run.expect_failure();
    run.break_pipe();
    EXPECT_EQ(run.runner.outcome(), run_outcome::failed);
  }
}

TEST(Shelled, ErrorOfAToolIsNotToldTwiceWhenTheMarkerFollowsALineLeftOpen) {
  fake_run run;
  run.start();
  run.feed("\nERR:  mplex.exe ended with status 1\nleft open*process complete\n");
  run.launcher.output->status = exit_status{false, 1};
  run.expect_failure();
  run.break_pipe();
  EXPECT_EQ(run.log().find("before its last line"), std::string::npos) << run.log();
}

TEST(Shelled, FileNamedLikeTheMarkerDoesNotEndTheRun) {
  fake_run run;
  run.start();
  run.feed("INFO: File /dvd/*process complete.m2v looks like video\n");
  EXPECT_TRUE(run.runner.running());
  run.feed("INFO: opening /dvd/*process complete\n");
  EXPECT_TRUE(run.runner.running());
  run.expect_failure();
  run.feed("ERR:  no such file\n*process complete\n");
  EXPECT_EQ(run.runner.outcome(), run_outcome::failed);
}

TEST(Shelled, PipeThatBreaksWithoutTheMarkerEndsTheRunOnThatPassAsAFailure) {
  fake_run run;
  run.start();
  run.feed("working");
  run.launcher.output->status = exit_status{true, 9};
  run.expect_failure();
  run.break_pipe();
  EXPECT_FALSE(run.runner.running());
  EXPECT_EQ(run.runner.outcome(), run_outcome::failed);
  EXPECT_EQ(run.log(), title +
                           "working \r\n ERR:  the work script ended before its last line "
                           "(conspawn was ended by signal 9)\r\n");
}

TEST(Shelled, PipeThatBreaksBeforeAnyOutputIsAFailure) {
  fake_run run;
  run.start();
  run.launcher.output->status = exit_status{false, 3};
  run.expect_failure();
  run.break_pipe();
  EXPECT_EQ(run.log(), title +
                           " \r\n ERR:  the work script ended before its last line "
                           "(conspawn ended with status 3)\r\n");
}

TEST(Shelled, ReadThatFailsEndsTheRun) {
  fake_run run;
  run.start();
  run.launcher.output->read_fails = true;
  run.expect_failure();
  run.feed("never read");
  EXPECT_FALSE(run.runner.running());
}

TEST(Shelled, ErrorLineMakesTheRunAFailureAndKeepsTheFiles) {
  fake_run run;
  run.app.add("process.bat");
  run.app.add("config.xml");
  run.screen.clean = true;
  run.start();
  run.expect_failure();
  run.feed("one\nERR:  cannot open\n*process complete\n");
  EXPECT_EQ(run.runner.outcome(), run_outcome::failed);
  EXPECT_TRUE(file_exists(run.app.path("process.bat")));
  EXPECT_TRUE(file_exists(run.app.path("config.xml")));
}

TEST(Shelled, ErrInTheMiddleOfALineIsNoFailureWithoutTwoStarsBeforeIt) {
  fake_run run;
  run.start();
  run.expect_success();
  run.feed("one\nno ERR here\n*process complete\n");
  run.start();
  run.expect_failure();
  run.feed("one\nmplex: **ERROR: under-run\n*process complete\n");
}

// The first line follows the title line without the blank that every later line begins with. Work
// scripts begin with lines of their own, so no tool's line is the first.
TEST(Shelled, ErrAsTheVeryFirstLineIsNoFailureAndOnAnyLaterLineItIs) {
  for (const char* first : {"ERR:  x\n", "**ERROR: [mplex] x\n"}) {
    fake_run run;
    run.start();
    run.expect_success();
    run.feed(std::string(first) + "*process complete\n");
    run.start();
    run.expect_failure();
    run.feed("Send problems to us\n" + std::string(first) + "*process complete\n");
  }
}

TEST(Shelled, ErrorLineThatEndsInCarriageReturnsOnlyIsFound) {
  fake_run run;
  run.start();
  run.expect_failure();
  run.feed("STAT: 0:00:00.000\rERR:  Unable to open file nohl.png\r*process complete\n");
}

TEST(Shelled, ErrorLineOfTheRunBeforeDoesNotCount) {
  fake_run run;
  run.start();
  run.expect_failure();
  run.feed("\nERR:  x\n*process complete\n");
  run.start();
  run.expect_success();
  run.feed("\n*process complete\n");
  EXPECT_EQ(run.log(), title + " \r\n *process complete \r\n \r\n");
}

TEST(Shelled, SuccessWithCleanUpRemovesEveryXmlBatAndPngButTheLog) {
  fake_run run;
  for (const char* name : {"process.bat", "config.xml", "menu1.xml", "highlight1.png", "users.png",
                           "users.bat", "notes.txt"})
    run.app.add(name);
  run.screen.clean = true;
  run.start();
  run.expect_success();
  run.feed("\n*process complete\n");
  EXPECT_EQ(files_in(run.app.path()),
            (std::vector<std::string>{"CorvaneLOG.txt", "corvane.lock", "notes.txt"}));
}

TEST(Shelled, SuccessWithoutCleanUpKeepsTheFiles) {
  fake_run run;
  run.app.add("process.bat");
  run.start();
  run.expect_success();
  run.feed("\n*process complete\n");
  EXPECT_TRUE(file_exists(run.app.path("process.bat")));
  EXPECT_FALSE(file_exists(run.app.path("fake.png")));
}

TEST(Shelled, OkOpensTheLogAndCancelDoesNot) {
  fake_run run;
  run.start();
  run.expect_success(answer::cancel);
  run.feed("\n*process complete\n");
  EXPECT_TRUE(run.screen.opened.empty());
  run.start();
  run.expect_failure(answer::ok);
  run.feed("\nERR:  x\n*process complete\n");
  EXPECT_EQ(run.screen.opened, std::vector<std::string>{run.app.path("CorvaneLOG.txt")});
}

TEST(Shelled, LogIsRewrittenNotAppendedByEveryRun) {
  fake_run run;
  run.start();
  run.expect_success();
  run.feed("the first run\n*process complete\n");
  run.start();
  run.expect_success();
  run.feed("second\n*process complete\n");
  EXPECT_EQ(run.log(), title + "second \r\n *process complete \r\n \r\n");
}

TEST(Shelled, LogThatCannotBeWrittenIsToldBeforeTheOutcome) {
  fake_run run;
  ASSERT_FALSE(make_folders(run.app.path("CorvaneLOG.txt/in the way")));
  run.start();
  const std::string reason = [] {
    testing_support::temporary_folder folder;
    std::filesystem::create_directories(path_of(folder.path("log/x")));
    run_log log;
    log.begin(folder.path("log"));
    log.open();
    return *log.finish();
  }();
  run.ask.expect({"The log file could not be written: " + reason, icon::critical});
  run.expect_success();
  run.feed("\n*process complete\n");
  EXPECT_EQ(run.runner.outcome(), run_outcome::success);
}

TEST(Shelled, EndprocessEndsTheWatchingWithoutAWordOrAKill) {
  fake_run run;
  run.start();
  run.feed("working\n");
  run.runner.endprocess();
  EXPECT_EQ(run.launcher.output->killed, 0);
  EXPECT_TRUE(run.launcher.output->closed);
  EXPECT_FALSE(run.screen.timer);
  EXPECT_TRUE(run.screen.main_enabled);
  EXPECT_EQ(run.screen.texts.back(), "");
  EXPECT_FALSE(run.lock.held());
  EXPECT_FALSE(run.runner.running());
  EXPECT_EQ(run.log(), title + "working \r\n \r\n");
}

TEST(Shelled, StopEndsTheCommandAndSaysSoInTheLog) {
  fake_run run;
  run.start();
  run.feed("work");
  run.launcher.output->pieces.push_back("ing");
  run.runner.stop();
  EXPECT_EQ(run.launcher.output->killed, 1);
  EXPECT_TRUE(run.launcher.output->closed);
  EXPECT_EQ(run.runner.outcome(), run_outcome::stopped);
  EXPECT_TRUE(run.screen.main_enabled);
  EXPECT_FALSE(run.lock.held());
  EXPECT_EQ(run.log(), title + "working \r\n *** stopped by the user \r\n \r\n");
}

TEST(Shelled, NothingHappensWhenNothingRuns) {
  fake_run run;
  run.runner.update();
  run.runner.endprocess();
  run.runner.stop();
  EXPECT_EQ(run.runner.outcome(), run_outcome::none);
  EXPECT_FALSE(file_exists(run.app.path("CorvaneLOG.txt")));
}

TEST(Shelled, SecondStartDuringARunIsIgnored) {
  fake_run run;
  run.start();
  run.runner.ExecuteCommand("other.bat");
  EXPECT_EQ(run.launcher.started.size(), 1u);
  EXPECT_EQ(run.runner.CommandLine, run.script());
}

TEST(Shelled, UnexpectedErrorIsReportedAndStopsThePolling) {
  fake_run run;
  run.start();
  run.feed("before\n");
  run.screen.thrown_by_text =
      std::make_exception_ptr(std::system_error(7, std::generic_category(), "no room"));
  const std::string what = std::system_error(7, std::generic_category(), "no room").what();
  run.ask.expect(
      {"Unexpected error7 in the update code.\r\n" + what, icon::none, buttons::ok, "Corvane"});
  run.feed("after\n");
  EXPECT_FALSE(run.screen.timer);
  EXPECT_FALSE(run.screen.main_enabled);
  EXPECT_EQ(run.app.read("updatecodelog.txt"),
            title + "before \r\n after \r\n \r\nUnexpected error in gui7 in the update code.\r\n" +
                what + "\r\n");
}

TEST(Shelled, UnexpectedErrorWithoutANumberIsReportedAsZero) {
  fake_run run;
  run.start();
  run.screen.thrown_by_text = std::make_exception_ptr(std::runtime_error("odd"));
  run.ask.expect({"Unexpected error0 in the update code.\r\nodd"});
  run.feed("x\n");
}

TEST(Shelled, RunCanBeStoppedAfterAnUnexpectedError) {
  fake_run run;
  run.start();
  run.screen.thrown_by_text = std::make_exception_ptr(std::runtime_error("odd"));
  run.ask.expect({"Unexpected error0 in the update code.\r\nodd"});
  run.feed("x\n");
  run.screen.thrown_by_text = nullptr;
  run.runner.stop();
  EXPECT_FALSE(run.runner.running());
  EXPECT_TRUE(run.screen.main_enabled);
}

TEST(Shelled, CleanUpThatFailsIsAnUnexpectedErrorWithTheLogWritten) {
  fake_run run;
  run.screen.clean = true;  // but no process.bat that could be copied
  run.start();
  std::string what;
  try {
    std::filesystem::copy_file(path_of(run.app.path("process.bat")),
                               path_of(run.app.path("fake.png")));
  } catch (const std::filesystem::filesystem_error& error) {
    what = "Unexpected error" + std::to_string(error.code().value()) + " in the update code.\r\n" +
           error.what();
  }
  run.ask.expect({what});
  run.feed("\n*process complete\n");
  EXPECT_EQ(run.log(), title + " \r\n *process complete \r\n \r\n");
  EXPECT_EQ(run.app.read("updatecodelog.txt").substr(0, title.size()), title);
  EXPECT_TRUE(run.screen.main_enabled);
}

TEST(Shelled, OutputOfAnyLengthIsReadInPiecesOfBoundedSize) {
  fake_run run;
  run.start();
  std::string output(5u << 20, 'x');
  output.back() = '\n';
  run.launcher.output->pieces.push_back(output);
  for (int pass = 0; pass < 1000 && !run.launcher.output->pieces.empty(); ++pass)
    run.runner.update();
  run.expect_success();
  run.feed("*process complete\n");
  EXPECT_EQ(run.log().size(),
            title.size() + (5u << 20) - 1 + 4 + std::string("*process complete").size() + 4 + 2);
}

}  // namespace
}  // namespace corvane
