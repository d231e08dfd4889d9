#include "apps/corvane-author/report.h"

#include "apps/corvane-author/console_listener.h"
#include "apps/corvane-author/console_prompts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>
#include <vector>

namespace corvane {
namespace {

int twenty_columns() {
  return 20;
}

/// A report into temporary files.
class Report : public testing::Test {
 protected:
  ~Report() override {
    std::fclose(out_);
    std::fclose(err_);
  }
  static std::string text_of_stream(std::FILE* file) {
    std::string text;
    std::array<char, 4096> buffer{};
    std::rewind(file);
    for (std::size_t n = 0; (n = std::fread(buffer.data(), 1, buffer.size(), file)) > 0;)
      text.append(buffer.data(), n);
    return text;
  }
  std::string out() const { return text_of_stream(out_); }
  std::string err() const { return text_of_stream(err_); }

  std::FILE* const out_ = std::tmpfile();
  std::FILE* const err_ = std::tmpfile();
  report piped_{out_, err_, false, twenty_columns};
  report terminal_{out_, err_, true, twenty_columns};
};

TEST_F(Report, ToAFileEachStepIsALineAndPercentagesAreLeftOut) {
  piped_.step("one");
  piped_.percent(1);
  piped_.percent(99.5);
  piped_.step("two");
  piped_.line("log: x");
  EXPECT_EQ(out(), "one\ntwo\nlog: x\n");
  EXPECT_EQ(err(), "");
}

TEST_F(Report, OnATerminalStepsShareALine) {
  terminal_.step("a long step");
  terminal_.percent(7.9);
  terminal_.percent(7.1);
  terminal_.step("two");
  terminal_.line("log: x");
  EXPECT_EQ(out(), "\ra long step\ra long step  7 %\rtwo" + std::string(13, ' ') + "\nlog: x\n");
}

TEST_F(Report, TheLineIsCutToTheWidthAndTheNumberStays) {
  terminal_.step("0123456789abcdefghijklmnop");
  terminal_.percent(100);
  EXPECT_EQ(out(), "\r0123456789abcdefghi\r0123456789ab  100 %");
}

int seventy_columns() {
  return 70;
}

TEST_F(Report, WholeRunStandsBehindTheStepAsFarAsThereIsRoom) {
  report wide(out_, err_, true, seventy_columns);
  console_listener listener(wide);
  listener.whole({3, 1, 5, "", 100});  // before there is a step
  listener.step({4, 5, "authoring title(s)", "*authoring title(s)....."});
  listener.whole({41.7, 2, 5, "authoring title(s)", 41});
  EXPECT_EQ(out(),
            "\rauthoring title(s)\rauthoring title(s)  |  41 % of all, step 2 of 5, about 40 "
            "s left");
}

TEST_F(Report, WholeRunOnANarrowTerminalIsItsPercentageOrNothing) {
  console_listener listener(terminal_);
  listener.step({1, 2, "two", "*two"});
  listener.whole({41.7, 2, 5, "two", 41});
  listener.step({2, 2, "0123456789", "*0123456789"});
  listener.progress({50, true});
  EXPECT_EQ(out(), "\rtwo\rtwo  |  41 % of all\r0123456789  |  41 %\r0123456789  50 %   ");
}

TEST_F(Report, WholeRunIsLeftOutOfAFile) {
  console_listener listener(piped_);
  listener.step({1, 2, "two", "*two"});
  listener.whole({41.7, 2, 5, "two", 41});
  EXPECT_EQ(out(), "two\n");
}

TEST_F(Report, MessagesGoBelowTheProgressLineUnderTheProgramsName) {
  terminal_.step("one");
  terminal_.message("first\r\nsecond");
  terminal_.step("two");
  EXPECT_EQ(out(), "\rone\n\rtwo");
  EXPECT_EQ(err(), "corvane-author: first\nsecond\n");
}

TEST_F(Report, NothingSteersTheTerminal) {
  piped_.message(
      "a\x1b[2Jb\rc\td\x7f\xC2\x9B"
      "e");
  piped_.step("x\x1b]0;y\a");
  EXPECT_EQ(err(), "corvane-author: a?[2Jb?c?d??e\n");
  piped_.step("\xE2\x1b[2J");  // not the rest of a character that was begun
  EXPECT_EQ(out(), "x?]0;y?\n\xE2?[2J\n");
}

TEST_F(Report, WidthsCountWhatATerminalShows) {
  EXPECT_EQ(width_of("Müller"), 6);
  EXPECT_EQ(width_of("字幕"), 4);
  EXPECT_EQ(cut_to_width("Müller", 2), "Mü");
  EXPECT_EQ(cut_to_width("字幕", 3), "字");
  EXPECT_EQ(cut_to_width("abc", 0), "");
  EXPECT_EQ(cut_to_width("abc", -5), "");
  EXPECT_EQ(cut_to_width("\xE5", 5), "\xE5");
}

TEST_F(Report, QuestionsGetTheAnswerThatLosesNothing) {
  console_prompts ask(piped_, "/dvd/out", false);
  message_box box;
  box.text = "Overwrite?";
  EXPECT_EQ(ask.message(box), answer::ok);
  box.choice = buttons::ok_cancel;
  EXPECT_EQ(ask.message(box), answer::cancel);
  box.choice = buttons::yes_no;
  EXPECT_EQ(ask.message(box), answer::no);
  box.choice = buttons::yes_no_cancel;
  EXPECT_EQ(ask.message(box), answer::cancel);
  EXPECT_EQ(ask.open_file({}), "");
  EXPECT_EQ(ask.input({}), "");
  EXPECT_EQ(ask.save_file({}), "/dvd/out");
  EXPECT_EQ(out(), "");
  EXPECT_EQ(err(),
            "corvane-author: Overwrite?\ncorvane-author: Overwrite?\n"
            "corvane-author: Overwrite?  (answered: no)\n"
            "corvane-author: Overwrite?  (answered: cancel)\n");
}

TEST_F(Report, AGoodEndIsToldOnStandardOutputAndABadOneOnStandardError) {
  console_prompts ask(piped_, "/dvd/out", false);
  ask.message({"Process complete.", icon::information, buttons::ok_cancel});
  ask.message({"There was an error.", icon::critical, buttons::ok_cancel});
  EXPECT_EQ(out(), "Process complete.\n");
  EXPECT_EQ(err(), "corvane-author: There was an error.\n");
}

TEST_F(Report, PercentageThatMayBeOfTheStepBeforeIsNotShown) {
  console_listener listener(terminal_);
  listener.step({1, 2, "one", "*one"});
  listener.step({2, 2, "two", "*two"});
  listener.progress({99, false});
  listener.progress({3, true});
  EXPECT_EQ(out(), "\rone\rtwo\rtwo  3 %");
}

TEST_F(Report, ErrorsOfARunAreSaidWhenAskedForWithHowManyMoreThereWere) {
  console_listener listener(piped_);
  listener.finished({run_outcome::failed, {"ERR:  a", "ERR:  b"}, 5, {}});
  EXPECT_EQ(err(), "");
  listener.say_errors();
  EXPECT_EQ(err(),
            "corvane-author: ERR:  a\ncorvane-author: ERR:  b\ncorvane-author: ... and 3 more\n");
}

TEST_F(Report, ErrorsOfARunThatAreFindingsAreSaidOnceInTheirFullForm) {
  console_listener listener(piped_);
  run_end end{
      run_outcome::failed,
      {"ERR:  title 1: there is no picture; rule: disc-picture", "ERR:  no luck", "ERR:  a"},
      4,
      {}};
  finding first, second, third;
  first.found = "there is no picture";
  second.found = "dvdauthor says \"ERR:  no luck\"";
  third.found = "another one, of which the line is not at hand";
  end.findings = std::vector<finding>{first, second, third};
  listener.finished(end);
  listener.say_errors();
  EXPECT_EQ(err(), "corvane-author: ERR:  a\n");
  EXPECT_EQ(out(), "");
  listener.say_findings();
  EXPECT_THAT(out(), testing::HasSubstr("error: disc: there is no picture.\n"));
}

TEST_F(Report, WarningsThatSayTheSameHideNoError) {
  console_listener listener(piped_);
  run_end end{run_outcome::failed, {"ERR:  no luck"}, 1, {}};
  finding warning;
  warning.severity = finding_severity::warning;
  warning.found = "no luck";
  end.findings = std::vector<finding>{warning};
  listener.finished(end);
  listener.say_errors();
  EXPECT_EQ(err(), "corvane-author: ERR:  no luck\n");
}

TEST_F(Report, WhatTheCleanUpCouldNotDoIsSaidUnlessTheRunnerHas) {
  console_listener listener(piped_);
  const run_trouble removed{"/h/config.xml", "could not be removed by the clean-up: why"};
  listener.finished({run_outcome::success, {}, 0, {removed}});
  const std::string said =
      "corvane-author: \"/h/config.xml\" could not be removed by the clean-up: why\n";
  EXPECT_EQ(err(), said);
  listener.finished(
      {run_outcome::success, {}, 0, {{"/h/CorvaneLOG.txt", "could not be written: why"}, removed}});
  EXPECT_EQ(err(), said) << "and nothing more";
}

}  // namespace
}  // namespace corvane
