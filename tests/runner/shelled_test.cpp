#include "runner/run_log.h"
#include "support/fake_run.h"

#include <chrono>
#include <stdexcept>
#include <system_error>
#include <thread>

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
  EXPECT_TRUE(run.runner.watching());
  EXPECT_FALSE(run.screen.main_enabled);
  EXPECT_EQ(run.screen.bar, std::vector<double>{0});
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

TEST(Shelled, LogBeginsWithTheFirstLinesOfTheRun) {
  fake_run run;
  run_options options;
  options.first_lines = title + "INFO: something was left out.\r\n";
  ASSERT_TRUE(run.lock.take());
  run.runner.ExecuteCommand(run.script(), options);
  run.expect_success();
  run.feed("a\n*process complete\n");
  EXPECT_EQ(run.log(), options.first_lines + "a \r\n *process complete \r\n \r\n");
}

TEST(Shelled, LogOfAnotherNameLeavesThatOfTheLastDiscAlone) {
  fake_run run;
  run.app.add("CorvaneLOG.txt", "of the disc");
  run_options options;
  options.log = "other.txt";
  ASSERT_TRUE(run.lock.take());
  run.runner.ExecuteCommand(run.script(), options);
  run.expect_success();
  run.feed("a\n*process complete\n");
  EXPECT_EQ(run.app.read("other.txt"), title + "a \r\n *process complete \r\n \r\n");
  EXPECT_EQ(run.log(), "of the disc");
}

TEST(Shelled, OutcomeIsLeftToWhoeverWantsToTellItHimself) {
  for (const char* const printed : {"*process complete\n", "\nERR:  no\n*process complete\n"}) {
    fake_run run;
    run_options options;
    options.tells_outcome = false;
    ASSERT_TRUE(run.lock.take());
    run.runner.ExecuteCommand(run.script(), options);
    run.feed(printed);  // a message would be one that nobody expects
    EXPECT_FALSE(run.runner.running());
    EXPECT_FALSE(run.lock.held());
  }
}

TEST(Shelled, LockStaysTakenForWhoeverGoesOnInTheFolder) {
  fake_run run;
  run_options options;
  options.tells_outcome = false;
  options.keeps_lock = true;
  ASSERT_TRUE(run.lock.take());
  run.runner.ExecuteCommand(run.script(), options);
  run.feed("*process complete\n");
  EXPECT_FALSE(run.runner.running());
  EXPECT_TRUE(run.lock.held());
  // Also where nothing could be started.
  run.launcher.fails = start_result::step::pipe;
  run.launcher.error = 5;
  run.ask.expect({"CreatePipe failed. Error: 5", icon::critical, buttons::ok, "Corvane"});
  run.runner.ExecuteCommand(run.script(), options);
  EXPECT_TRUE(run.lock.held());
}

TEST(Shelled, EmptyCommandLineIsRefusedAndLeavesTheMainWindowDisabled) {
  fake_run run;
  ASSERT_TRUE(run.lock.take());
  run.ask.expect({"Command Line empty", icon::critical, buttons::ok, "Corvane"});
  run.runner.ExecuteCommand();
  EXPECT_TRUE(run.launcher.started.empty());
  EXPECT_FALSE(run.screen.main_enabled);
  EXPECT_FALSE(run.runner.watching());
  EXPECT_FALSE(run.runner.running());
  EXPECT_FALSE(run.lock.held());
}

TEST(Shelled, PipeThatCannotBeMadeIsToldWithItsErrorNumber) {
  fake_run run;
  run.launcher.fails = start_result::step::pipe;
  run.launcher.error = 24;
  run.ask.expect({"CreatePipe failed. Error: 24", icon::critical, buttons::ok, "Corvane"});
  run.start();
  EXPECT_FALSE(run.runner.watching());
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
  EXPECT_FALSE(run.runner.watching());
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
  EXPECT_TRUE(run.runner.watching());
  EXPECT_TRUE(run.screen.texts.empty());
}

TEST(Shelled, OutputIsShownWithItsCaptionAndProgress) {
  fake_run run;
  run.start();
  run.feed("*multiplexing title: 1.....\n  45.3% done\n");
  EXPECT_EQ(run.screen.texts.back(), title + "*multiplexing title: 1..... \r\n   45.3% done \r\n ");
  EXPECT_EQ(run.screen.captions.back(), "Corvane log - multiplexing title: 1..... ");
  EXPECT_EQ(run.screen.bar.back(), 45.3);
  EXPECT_TRUE(run.runner.watching());
}

/// A run of one title, whose stream grows as the test writes it.
struct growing_run : fake_run {
  growing_run() {
    const std::string in = app.add("film.m2v", std::string(1000, 'x'));
    app.add("process.bat", "echo *multiplexing title: 1.....\r\n\"" + app.path("bin/mplex.exe") +
                               "\" -f 8 -o \"" + app.path("title1.mpg") + "\" \"" + in +
                               "\"\r\necho *process complete\r\n");
  }
  /// A pass late enough to tell where the run is.
  void look() {
    std::this_thread::sleep_for(std::chrono::milliseconds(260));
    runner.update();
  }
};

TEST(Shelled, WholeRunIsToldWhileNothingIsPrinted) {
  growing_run run;
  run.start();
  run.feed("*multiplexing title: 1.....\n");
  run.look();
  run.app.add("title1.mpg", std::string(510, 'x'));
  run.look();
  ASSERT_EQ(run.screen.wholes.size(), 3u);
  for (const run_whole& whole : run.screen.wholes) {
    EXPECT_EQ(whole.step, 1);
    EXPECT_EQ(whole.count, 1);
    EXPECT_EQ(whole.name, "multiplexing title: 1");
    EXPECT_LT(whole.percent, 100);
  }
  EXPECT_GT(run.screen.wholes[2].percent, 0);
}

TEST(Shelled, SpeedsAreKeptForTheNextRunAfterASuccessAlone) {
  for (const bool fails : {true, false}) {
    growing_run run;
    run.start();
    run.feed("one\n*multiplexing title: 1.....\n");
    run.look();
    run.app.add("title1.mpg", std::string(1020, 'x'));
    fails ? run.expect_failure() : run.expect_success();
    run.feed(std::string(fails ? "ERR:  no\n" : "") + "*process complete\n");
    EXPECT_EQ(file_exists(run.app.path("speeds.txt")), !fails);
  }
}

TEST(Shelled, NothingIsLearnedOfARunWhoseEndIsFoundByAStop) {
  for (const bool already : {true, false}) {
    growing_run run;
    run_options options;
    options.removed = {run.app.add("earlier.iso", std::string(5000, 'x'))};
    ASSERT_TRUE(run.lock.take());
    run.runner.ExecuteCommand(run.script(), options);
    run.feed("one\n*multiplexing title: 1.....\n");
    run.look();
    run.app.add("title1.mpg", std::string(1020, 'x'));
    const auto end = [&run] { run.launcher.output->pieces.push_back("*process complete\n"); };
    if (already)
      end();
    else
      run.launcher.output->during_kill = end;
    run.expect_success();
    run.runner.stop();
    EXPECT_EQ(run.runner.outcome(), run_outcome::success);
    EXPECT_FALSE(file_exists(run.app.path("speeds.txt")));
  }
}

TEST(Shelled, RemovalOfTheEarlierDiscIsToldAsTheLastStep) {
  growing_run run;
  run_options options;
  options.removed = {run.app.add("earlier.iso", std::string(5000, 'x'))};
  std::size_t told_before = 0;
  options.settle = [&](run_outcome) {
    told_before = run.screen.wholes.size();
    std::this_thread::sleep_for(std::chrono::milliseconds(700));
    return run_settled{};
  };
  ASSERT_TRUE(run.lock.take());
  run.runner.ExecuteCommand(run.script(), options);
  run.feed("*multiplexing title: 1.....\n");
  EXPECT_EQ(run.screen.wholes.back().count, 2);
  run.expect_success();
  run.feed("*process complete\n");
  ASSERT_GE(run.screen.wholes.size(), told_before + 2) << "while it is done";
  ASSERT_GE(told_before, 1u);
  for (std::size_t i = told_before - 1; i < run.screen.wholes.size(); ++i) {
    EXPECT_EQ(run.screen.wholes[i].name, "removing the earlier disc");
    EXPECT_EQ(run.screen.wholes[i].step, 2);
  }
}

TEST(Shelled, EarlierDiscThatIsPutBackIsNotSaidToBeRemoved) {
  growing_run run;
  run_options options;
  options.removed = {run.app.add("earlier.iso", std::string(5000, 'x'))};
  options.gives_up_earlier = [] { return false; };
  options.settle = [](run_outcome) {
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    return run_settled{};
  };
  ASSERT_TRUE(run.lock.take());
  run.runner.ExecuteCommand(run.script(), options);
  run.feed("*multiplexing title: 1.....\n");
  run.expect_success();
  run.feed("*process complete\n");
  EXPECT_EQ(run.screen.wholes.back().name, "putting the earlier disc back");
  for (const run_whole& whole : run.screen.wholes)
    EXPECT_NE(whole.name, "removing the earlier disc");
}

TEST(Shelled, PassDoesNotBeginInAnother) {
  fake_run run;
  run.start();
  run.screen.during_output = [&run] {
    ASSERT_LT(run.launcher.output->pieces.size(), 9u);
    run.launcher.output->pieces.push_back("two\n");
    run.runner.update();
    EXPECT_EQ(run.launcher.output->pieces.size(), 1u) << "read by the inner pass";
    run.screen.during_output = nullptr;
  };
  run.feed("one\n");
  EXPECT_EQ(run.screen.texts.size(), 1u);
  EXPECT_TRUE(run.runner.watching());
}

TEST(Shelled, PercentageAtThePiecesBeginningLeavesTheBarUnchanged) {
  fake_run run;
  run.start();
  run.feed("45% done\n");
  EXPECT_EQ(run.screen.bar, std::vector<double>{0});
}

TEST(Shelled, ProgressOutOfRangeStaysInTheBar) {
  fake_run run;
  run.start();
  run.feed("at 250% \n");
  EXPECT_EQ(run.screen.bar.back(), 100);
  run.feed("at -3% \n");
  EXPECT_EQ(run.screen.bar.back(), 0);
}

TEST(Shelled, OutputWithoutALineBreakInSightRefreshesTheLogWindow) {
  fake_run run;
  run.start();
  run.feed(std::string(8000, 'x'));
  EXPECT_EQ(run.screen.refreshed, 1);
  EXPECT_TRUE(run.screen.texts.empty());
  EXPECT_TRUE(run.runner.watching());
}

TEST(Shelled, MarkerEndsTheRunInTheSamePassEvenIfMoreFollows) {
  fake_run run;
  run.start();
  run.feed("*authoring title(s).....\n");
  run.expect_success();
  run.feed("done\n*process complete\nand more 50%");
  EXPECT_FALSE(run.runner.running());
  EXPECT_EQ(run.runner.outcome(), run_outcome::success);
  EXPECT_FALSE(run.runner.watching());
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

TEST(Shelled, ScriptRunnerThatDiesAfterTheMarkerLineSpoilsNothing) {
  fake_run run;
  run.start();
  run.launcher.output->status = exit_status{true, 11};
  run.launcher.output->broken = true;
  run.expect_success();
  run.feed("done\n*process complete");
  EXPECT_EQ(run.runner.outcome(), run_outcome::success);
  EXPECT_EQ(run.log(), title + "done \r\n *process complete\r\n");
  ASSERT_EQ(run.screen.steps.size(), 1u);
  EXPECT_EQ(run.screen.steps[0].name, "process complete");
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

// The script runner begins a line for it, whatever a tool has left open.
TEST(Shelled, MarkerWithinALineIsAFileOfThatNameHoweverTheScriptRunnerEnds) {
  for (const std::optional<exit_status>& how :
       {std::optional<exit_status>(), std::optional<exit_status>({false, 0}),
        std::optional<exit_status>({false, 1}), std::optional<exit_status>({true, 9})}) {
    fake_run run;
    run.start();
    run.feed("INFO: opening /dvd/*process complete\n");
    run.launcher.output->status = how;
    run.expect_failure();
    run.break_pipe();
    EXPECT_EQ(run.runner.outcome(), run_outcome::failed);
  }
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
  run.clean = true;
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
  run.clean = true;
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
  EXPECT_TRUE(run.ask.shown.empty());
  run.start();
  run.expect_failure(answer::ok);
  run.feed("\nERR:  x\n*process complete\n");
  EXPECT_EQ(run.ask.shown, std::vector<std::string>{run.app.path("CorvaneLOG.txt")});
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

/// Why the log cannot be written where a folder with something in it has its name.
std::string why_not_logged() {
  testing_support::temporary_folder folder;
  EXPECT_FALSE(make_folders(folder.path("log/x")));
  run_log log;
  log.begin(folder.path("log"));
  log.open();
  return log.finish().value_or("it was written");
}

std::string left_beside(const testing_support::temporary_folder& app) {
  return ".  The log of this run is in \"" + app.path("CorvaneLOG.txt.part") + "\".";
}

TEST(Shelled, LogThatCannotBeWrittenIsToldBeforeTheOutcome) {
  fake_run run;
  ASSERT_FALSE(make_folders(run.app.path("CorvaneLOG.txt/in the way")));
  run.start();
  const std::string reason = why_not_logged();
  run.ask.expect(
      {"The log file could not be written: " + reason + left_beside(run.app), icon::critical});
  run.expect_success();
  run.feed("\n*process complete\n");
  EXPECT_EQ(run.runner.outcome(), run_outcome::success);
  ASSERT_EQ(run.screen.ends.back().troubles.size(), 1u);
  EXPECT_EQ(run.screen.ends.back().troubles[0].file, run.app.path("CorvaneLOG.txt"));
  EXPECT_EQ(run.screen.ends.back().troubles[0].text, "could not be written: " + reason);
}

TEST(Shelled, WhatTheCleanUpCouldNotDoIsToldInAMessageWhereThereIsNoLog) {
  fake_run run;
  const std::string script = run.app.add("process.bat");
  const std::string in_the_way = run.app.path("fake.xml");
  ASSERT_FALSE(make_folders(join_path(in_the_way, "x")));
  ASSERT_FALSE(make_folders(run.app.path("CorvaneLOG.txt/in the way")));
  run.clean = true;
  run.start();
  run.ask.expect({"The log file could not be written: " + why_not_logged() + left_beside(run.app),
                  icon::critical});
  run.ask.expect({"The clean-up could not do everything:\n\"" + in_the_way +
                      "\" could not be written by the clean-up: " +
                      copy_file(script, in_the_way).value_or("it was copied"),
                  icon::exclamation});
  run.expect_success();
  run.feed("\n*process complete\n");
  EXPECT_EQ(run.runner.outcome(), run_outcome::success);
  ASSERT_EQ(run.screen.ends.back().troubles.size(), 2u);
  EXPECT_EQ(run.screen.ends.back().troubles[1].file, in_the_way);
}

TEST(Shelled, EndprocessEndsTheWatchingWithoutAWordOrAKill) {
  fake_run run;
  run.start();
  run.feed("working\n");
  run.runner.endprocess();
  EXPECT_EQ(run.launcher.output->killed, 0);
  EXPECT_TRUE(run.launcher.output->closed);
  EXPECT_FALSE(run.runner.watching());
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

TEST(Shelled, StopAfterTheEndTellsTheOutcome) {
  fake_run run;
  run.start();
  run.launcher.output->pieces = {"working\n", "*process complete\n"};
  run.expect_success();
  run.runner.stop();
  EXPECT_EQ(run.runner.outcome(), run_outcome::success);
  EXPECT_EQ(run.launcher.output->killed, 0);
  EXPECT_TRUE(run.launcher.output->closed);
  EXPECT_EQ(run.log(), title + "working \r\n *process complete \r\n \r\n");
}

TEST(Shelled, StopAfterTheEndTellsOfAFailureAsOne) {
  fake_run run;
  run.start();
  run.launcher.output->pieces = {"working\nERR:  no luck\n*process complete\n"};
  run.expect_failure();
  run.runner.stop();
  EXPECT_EQ(run.runner.outcome(), run_outcome::failed);
  ASSERT_EQ(run.screen.ends.size(), 1u);
  EXPECT_EQ(run.screen.ends[0].errors, std::vector<std::string>{"ERR:  no luck"});
}

TEST(Shelled, StopAfterTheScriptRunnerEndedWithoutTheMarkerTellsOfAFailure) {
  fake_run run;
  run.start();
  run.launcher.output->pieces = {"working\n"};
  run.launcher.output->broken = true;
  run.launcher.output->status = exit_status{false, 1};
  run.expect_failure();
  run.runner.stop();
  EXPECT_EQ(run.runner.outcome(), run_outcome::failed);
}

TEST(Shelled, StopThatReachedTheScriptRunnerTooIsAStop) {
  // Ctrl-C on a console: a signal, on Windows a status of the system's.
  for (const exit_status end : {exit_status{true, 2}, exit_status{false, 0xC000013Au}}) {
    fake_run run;
    run.start();
    run.launcher.output->broken = true;
    run.launcher.output->status = end;
    run.runner.stop();
    EXPECT_EQ(run.runner.outcome(), run_outcome::stopped);
    EXPECT_EQ(run.log(), title + "*** stopped by the user \r\n \r\n");
  }
}

TEST(Shelled, EndThatComesWhileTheRunIsBeingStoppedCounts) {
  fake_run run;
  run.start();
  run.launcher.output->during_kill = [&run] {
    run.launcher.output->pieces.push_back("*process complete\n");
  };
  run.expect_success();
  run.runner.stop();
  EXPECT_EQ(run.launcher.output->killed, 1);
  EXPECT_EQ(run.runner.outcome(), run_outcome::success);
}

TEST(Shelled, WhatARunLeftIsSetInOrderOnceBeforeTheOutcomeIsTold) {
  fake_run run;
  std::vector<run_outcome> settled;
  run_options options;
  options.settle = [&](run_outcome outcome) {
    EXPECT_TRUE(run.lock.held()) << "another run could begin";
    EXPECT_TRUE(run.launcher.output->closed);
    EXPECT_EQ(run.screen.events, std::vector<std::string>{"started"});
    settled.push_back(outcome);
    finding what_was_found;
    what_was_found.found = "no sound";
    return run_settled{{"the earlier one is back"},
                       {"One thing.", "Another thing."},
                       {{what_was_found}},
                       "It is back."};
  };
  ASSERT_TRUE(run.lock.take());
  run.runner.ExecuteCommand(run.script(), options);
  run.ask.expect({"One thing.\nAnother thing.", icon::exclamation, buttons::ok, "Corvane"});
  run.expect_failure();
  run.feed("a\nERR:  x\n*process complete\n");
  EXPECT_EQ(settled, std::vector<run_outcome>{run_outcome::failed});
  EXPECT_EQ(run.log(),
            title +
                "a \r\n ERR:  x \r\n *process complete \r\n INFO: the earlier one is back \r\n "
                "INFO: One thing. \r\n INFO: Another thing. \r\n \r\n");
  EXPECT_EQ(run.screen.ends.back().notes, std::vector<std::string>{"the earlier one is back"});
  ASSERT_TRUE(run.screen.ends.back().findings);
  EXPECT_EQ(run.screen.ends.back().findings->at(0).found, "no sound");
  EXPECT_EQ(run.screen.ends.back().restored, "It is back.");
  // The next run has its own.
  run.start();
  run.expect_success();
  run.feed("*process complete\n");
  EXPECT_EQ(settled.size(), 1u);
  EXPECT_TRUE(run.screen.ends.back().notes.empty());
  EXPECT_FALSE(run.screen.ends.back().findings);
  EXPECT_EQ(run.screen.ends.back().restored, "");
}

TEST(Shelled, WhatARunLeftIsSetInOrderByEachOutcomeButNotWhenItIsLeftToItself) {
  fake_run run;
  std::vector<run_outcome> settled;
  run_options options;
  options.settle = [&](run_outcome outcome) {
    settled.push_back(outcome);
    return run_settled{};
  };
  const auto start = [&] {
    ASSERT_TRUE(run.lock.take());
    run.runner.ExecuteCommand(run.script(), options);
  };
  start();
  run.expect_success();
  run.feed("*process complete\n");
  start();
  run.runner.stop();
  start();
  run.runner.endprocess();
  run.launcher.fails = start_result::step::process;
  run.ask.expect({"Binaries not found, please reinstall the program.", icon::critical});
  start();
  EXPECT_EQ(settled, (std::vector<run_outcome>{run_outcome::success, run_outcome::stopped,
                                               run_outcome::none}));
}

TEST(Shelled, ARunIsNotedAliveInEachPassUntilItsEnd) {
  fake_run run;
  const auto passes = std::make_shared<int>(0);
  run_options options;
  options.alive = [passes] { ++*passes; };
  ASSERT_TRUE(run.lock.take());
  run.runner.ExecuteCommand(run.script(), options);
  options = {};
  run.runner.update();
  run.runner.update();
  EXPECT_EQ(*passes, 2);
  run.expect_success();
  run.feed("*process complete\n");
  EXPECT_EQ(passes.use_count(), 1) << "it may hold a lock";
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
  run.screen.during_output = [] { throw std::system_error(7, std::generic_category(), "no room"); };
  const std::string what = std::system_error(7, std::generic_category(), "no room").what();
  run.ask.expect(
      {"Unexpected error7 in the update code.\r\n" + what, icon::none, buttons::ok, "Corvane"});
  run.feed("after\n");
  EXPECT_FALSE(run.runner.watching());
  EXPECT_FALSE(run.screen.main_enabled);
  EXPECT_EQ(run.app.read("updatecodelog.txt"),
            title + "before \r\n after \r\n \r\nUnexpected error in gui7 in the update code.\r\n" +
                what + "\r\n");
}

TEST(Shelled, UnexpectedErrorWithoutANumberIsReportedAsZero) {
  fake_run run;
  run.start();
  run.screen.during_output = [] { throw std::runtime_error("odd"); };
  run.ask.expect({"Unexpected error0 in the update code.\r\nodd"});
  run.feed("x\n");
}

TEST(Shelled, RunCanBeStoppedAfterAnUnexpectedError) {
  fake_run run;
  run.start();
  run.screen.during_output = [] { throw std::runtime_error("odd"); };
  run.ask.expect({"Unexpected error0 in the update code.\r\nodd"});
  run.feed("x\n");
  run.screen.during_output = nullptr;
  run.runner.stop();
  EXPECT_FALSE(run.runner.running());
  EXPECT_TRUE(run.screen.main_enabled);
}

TEST(Shelled, EventsComeInTheOrderOfARun) {
  fake_run run;
  run.start();
  EXPECT_EQ(run.screen.events, std::vector<std::string>{"started"});
  run.feed("working\n");
  run.expect_success();
  run.feed("*process complete\n");
  EXPECT_EQ(run.screen.events, (std::vector<std::string>{"started", "closed", "finished"}));
}

TEST(Shelled, LogIsInItsPlaceWhenTheRunIsClosedAndTheCleanUpIsDoneWhenItHasFinished) {
  fake_run run;
  run.app.add("process.bat");
  run.clean = true;
  run.start();
  run.screen.during_closed = [&run] {
    EXPECT_TRUE(file_exists(run.app.path("CorvaneLOG.txt")));
    EXPECT_TRUE(file_exists(run.app.path("process.bat")));
  };
  run.screen.during_finished = [&run] {
    EXPECT_FALSE(file_exists(run.app.path("process.bat")));
    EXPECT_FALSE(run.ask.all_asked()) << "the outcome was told before";
  };
  run.expect_success();
  run.feed("\n*process complete\n");
  EXPECT_EQ(run.screen.events.back(), "finished");
}

TEST(Shelled, StepsAreCountedAmongThoseThatTheScriptAnnounces) {
  fake_run run;
  run.app.add("process.bat",
              "@echo off\r\necho Send\r\necho ***please wait.\r\necho *multiplexing title: "
              "1.....\r\n\"bin/mplex.exe\" *x\r\necho *process complete\r\n");
  run.start();
  EXPECT_EQ(run.screen.starts.back().steps, 3);
  run.feed("Send\n***please wait.\n*multiplexing title: 1.....\n*a tool's own\n");
  ASSERT_EQ(run.screen.steps.size(), 3u);
  EXPECT_EQ(run.screen.steps[0].number, 1);
  EXPECT_EQ(run.screen.steps[0].name, "please wait");
  EXPECT_EQ(run.screen.steps[1].number, 2);
  EXPECT_EQ(run.screen.steps[1].count, 3);
  EXPECT_EQ(run.screen.steps[1].line, "*multiplexing title: 1.....");
  EXPECT_EQ(run.screen.steps[2].number, 2);
  run.expect_success();
  run.feed("*process complete\n");
  EXPECT_EQ(run.screen.steps.back().number, 3);
}

TEST(Shelled, StepWithMoreThanTwentyLinesAfterItInOnePassIsNotLost) {
  fake_run run;
  run.start();
  std::string output = "Send\n*multiplexing title: 1.....\n";
  for (int i = 0; i < 30; ++i)
    output += "INFO: line " + std::to_string(i) + "\n";
  run.feed(output);
  ASSERT_EQ(run.screen.steps.size(), 1u);
  EXPECT_EQ(run.screen.steps[0].name, "multiplexing title: 1");
  EXPECT_EQ(run.screen.captions,
            std::vector<std::string>{"Corvane log - *multiplexing title: 1..... "});
}

TEST(Shelled, StepWithMoreThanTheViewAfterItInOnePassIsNotLost) {
  fake_run run;
  run.start();
  run.feed("Send\n*multiplexing title: 1.....\n" + std::string(8000, 'x'));
  EXPECT_EQ(run.screen.captions,
            std::vector<std::string>{"Corvane log - *multiplexing title: 1..... "});
}

TEST(Shelled, StepOfTheRunBeforeIsNotShownInTheNext) {
  fake_run run;
  run.start();
  run.expect_success();
  run.feed("Send\n*process complete\n");
  run.start();
  run.feed("Send\nworking\n");
  EXPECT_TRUE(run.screen.captions.empty());
}

TEST(Shelled, PercentageInAPieceWithANewStepMayBeOfTheStepBefore) {
  fake_run run;
  run.start();
  run.feed(" 99% done\n*two\n");
  run.feed(" 3% done\n");
  ASSERT_EQ(run.screen.percents.size(), 2u);
  EXPECT_FALSE(run.screen.percents[0].of_last_step);
  EXPECT_TRUE(run.screen.percents[1].of_last_step);
}

TEST(Shelled, EndTellsTheOutcomeAndTheFirstErrors) {
  fake_run run;
  run.start();
  run.expect_failure();
  run.feed("Send\nERR:  one\nmplex: **ERROR: two\n*process complete\n");
  ASSERT_EQ(run.screen.ends.size(), 1u);
  EXPECT_EQ(run.screen.ends[0].outcome, run_outcome::failed);
  EXPECT_EQ(run.screen.ends[0].errors,
            (std::vector<std::string>{"ERR:  one", "mplex: **ERROR: two"}));
  EXPECT_EQ(run.screen.ends[0].error_count, 2u);
  run.start();
  run.expect_success();
  run.feed("Send\n*process complete\n");
  EXPECT_EQ(run.screen.ends[1].outcome, run_outcome::success);
  EXPECT_EQ(run.screen.ends[1].error_count, 0u);
}

TEST(Shelled, LogThatCannotBeOpenedIsToldWithItsPath) {
  fake_run run;
  run.ask.shows = false;
  run.start();
  run.expect_success(answer::ok);
  run.ask.expect({"The log cannot be opened.  It is in " + run.app.path("CorvaneLOG.txt") + ".",
                  icon::information, buttons::ok, "Corvane"});
  run.feed("\n*process complete\n");
}

TEST(Shelled, UnexpectedErrorBreaksTheRunOff) {
  fake_run run;
  run.start();
  run.screen.during_output = [] { throw std::runtime_error("odd"); };
  run.ask.expect({"Unexpected error0 in the update code.\r\nodd"});
  run.feed("x\n");
  EXPECT_EQ(run.screen.events, (std::vector<std::string>{"started", "broken off"}));
  EXPECT_TRUE(run.runner.running());
  run.feed("not read any more\n");
  EXPECT_EQ(run.launcher.output->pieces.size(), 1u);
}

TEST(Shelled, RunThatDidNotStartHasFinishedWithoutAnOutcome) {
  fake_run run;
  run.launcher.fails = start_result::step::process;
  run.ask.expect({"Binaries not found, please reinstall the program.", icon::critical});
  run.start();
  EXPECT_EQ(run.screen.events, (std::vector<std::string>{"started", "finished"}));
  EXPECT_EQ(run.screen.ends[0].outcome, run_outcome::none);
}

/// What the system says when the file cannot be copied.
std::string why_not_copied(const std::string& from, const std::string& to) {
  return copy_file(from, to).value_or("it was copied");
}

TEST(Shelled, CleanUpWithoutTheScriptIsStillASuccess) {
  fake_run run;
  run.app.add("config.xml");
  run.clean = true;  // but no process.bat that could be copied
  run.start();
  run.expect_success();
  run.feed("\n*process complete\n");
  EXPECT_EQ(run.runner.outcome(), run_outcome::success);
  EXPECT_FALSE(file_exists(run.app.path("config.xml")));
  EXPECT_FALSE(file_exists(run.app.path("updatecodelog.txt")));
  ASSERT_EQ(run.screen.ends.back().troubles.size(), 2u);
  EXPECT_EQ(run.screen.ends.back().troubles[0].file, run.app.path("fake.png"));
}

TEST(Shelled, WhatTheCleanUpCouldNotDoIsToldAtTheEndAndInTheLog) {
  fake_run run;
  const std::string script = run.app.add("process.bat");
  run.app.add("config.xml");
  const std::string in_the_way = run.app.path("fake.xml");
  ASSERT_FALSE(make_folders(join_path(in_the_way, "x")));
  const std::string why =
      "could not be written by the clean-up: " + why_not_copied(script, in_the_way);
  run.clean = true;
  run.start();
  run.expect_success();
  run.feed("\n*process complete\n");
  ASSERT_EQ(run.screen.ends.back().troubles.size(), 1u);
  EXPECT_EQ(run.screen.ends.back().troubles[0].file, in_the_way);
  EXPECT_EQ(run.screen.ends.back().troubles[0].text, why);
  EXPECT_EQ(run.log(), title + " \r\n *process complete \r\n \r\nINFO: \"" + in_the_way + "\" " +
                           why + "\r\n");
  EXPECT_FALSE(file_exists(run.app.path("config.xml")));
  EXPECT_FALSE(file_exists(script));
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
