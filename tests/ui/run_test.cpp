// Authoring from the window: the log window, its progress, stopping, and the outcome.
#include "ui/findings_fixture.h"
#include "ui/main_window.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>
#include <wx/frame.h>
#include <wx/gauge.h>
#include <wx/statusbr.h>
#include <wx/textctrl.h>

#include <atomic>
#include <csignal>
#include <set>
#include <thread>

namespace corvane::testing_support {
namespace {

constexpr const char* success_text =
    "Process complete.  Please review the log for more information (recommended).";
constexpr const char* failure_text = "There was an error.  Please review the log.";
constexpr const char* stop_text = "Stop authoring?  The disc will not be complete.";

bool log_is_shown() {
  const wxWindow* log = wxWindow::FindWindowByName("log");
  return log != nullptr && log->IsShown();
}

class Runs : public window_test {
 protected:
  /// A tool that tells its process number and then takes its time, as does a program it starts.
  void slow_mplex() {
    replace_tool("mplex", "sleep 300 & echo $! > '" + folder_.path("pid-of-child") + "'\n" +
                              "echo $$ > '" + folder_.path("pid") + "'\nwait\n");
  }
  bool slow_mplex_runs() {
    return wait_until([this] { return file_size(folder_.path("pid")).value_or(0) > 0; });
  }
  /// Whether both processes of slow_mplex are gone, waited for.
  bool slow_mplex_is_gone() {
    const int child = std::stoi(folder_.read("pid-of-child"));
    const int tool = std::stoi(folder_.read("pid"));
    return wait_until([=] { return kill(child, 0) != 0 && kill(tool, 0) != 0; });
  }

  void start_authoring() {
    click_tool("author dvd");
    answer_file("enter a folder name to create the dvd", folder_.path("disc"));
  }

  std::string status() const {
    return ask_ui([this] { return utf8_of(window_->GetStatusBar()->GetStatusText()); });
  }
  static bool commands_enabled() {
    return ask_ui([] { return control("List1")->IsEnabled() && control("Toolbar1")->IsEnabled(); });
  }
};

/// What the log window shows while a run is on, noted at every change.
struct watched {
  std::set<std::string> captions;
  std::set<int> progress;
  std::string longest;
};

watched watch_until_message() {
  watched seen;
  wait_until(
      [&] {
        const auto* log = dynamic_cast<wxFrame*>(wxWindow::FindWindowByName("log"));
        if (log != nullptr && log->IsShown()) {
          seen.captions.insert(utf8_of(log->GetTitle()));
          seen.progress.insert(dynamic_cast<wxGauge*>(control("ProgressBar1"))->GetValue());
          const std::string text = utf8_of(dynamic_cast<wxTextCtrl*>(control("Text1"))->GetValue());
          if (text.size() > seen.longest.size())
            seen.longest = text;
        }
        return log != nullptr && !log->IsShown();
      },
      60);
  return seen;
}

TEST_F(Runs, WithoutTitlesAuthoringIsRefused) {
  press("F5");
  EXPECT_EQ(answer_message("please add more titles", "OK").picture, "warning");
  EXPECT_TRUE(commands_enabled());
}

TEST_F(Runs, WrongMaterialIsToldBeforeAnythingIsWritten) {
  add_title(real_pal_video(), real_audio());
  start_authoring();
  answer_findings({"error|title 1, video|the video is PAL (720x576, 25 pictures a second) in a "
                   "project of NTSC"},
                  "cancel");
  EXPECT_FALSE(file_exists(folder_.path("program/process.bat")));
  EXPECT_FALSE(log_is_shown());
  EXPECT_TRUE(commands_enabled());
}

TEST_F(Runs, TwoTitlesBecomeADisc) {
  // The real tool, held back a little: it is done before the first look at its output else.
  replace_tool("mplex", "sleep 0.5\nexec mplex \"$@\"\n");
  add_title(real_video(), real_audio());
  add_title(real_video(), real_audio());
  click_menu("file", "create iso after authoring");
  start_authoring();
  const watched seen = watch_until_message();
  const seen_dialog told = answer_message(success_text, "Cancel");
  EXPECT_EQ(told.picture, "info");
  EXPECT_THAT(told.buttons, testing::UnorderedElementsAre("OK", "Cancel"));
  EXPECT_TRUE(file_exists(folder_.path("disc/VIDEO_TS/VTS_01_1.VOB")));
  EXPECT_TRUE(file_exists(folder_.path("disc.iso")));
  EXPECT_FALSE(file_exists(folder_.path("disc/title1.mpg")));
  EXPECT_THAT(seen.captions, testing::Contains(testing::StartsWith("Corvane log - *")));
  EXPECT_THAT(seen.longest, testing::HasSubstr("INFO: [mplex]"));
  EXPECT_TRUE(commands_enabled());
  EXPECT_TRUE(ask_ui([] { return is_seen("lastdisc"); }));
  EXPECT_THAT(label_of("lastdisc"),
              testing::AllOf(testing::StartsWith("Ready: " + folder_.path("disc") + ", 0.0"),
                             testing::EndsWith(" GB, image " + folder_.path("disc.iso"))));
  EXPECT_THAT(folder_.read("program/CorvaneLOG.txt"),
              testing::AllOf(testing::StartsWith("Corvane 0.997 - 1/2/2005\r\n"),
                             testing::HasSubstr("*multiplexing title: 1....."),
                             testing::HasSubstr("*process complete")));
}

TEST_F(Runs, DiscThatWasAuthoredIsVerifiedAgainstItsProject) {
  add_title(real_video(), real_audio());
  start_authoring();
  watch_until_message();
  answer_message(success_text, "Cancel");
  click_menu("disc", "verify disc...");
  answer_file("choose the VIDEO_TS.IFO or the image of a disc",
              folder_.path("disc/VIDEO_TS/VIDEO_TS.IFO"));
  answer_message(
      "Is this the disc of the project that is open?\n\nYes: it is held against what the project "
      "asks for.\nNo: only what a disc must be by itself is looked at.",
      "Yes");
  ASSERT_TRUE(window_comes("disc"));
  EXPECT_EQ(ask_ui([] { return utf8_of(control("summary", "disc")->GetLabel()); }),
            "Nothing was found that would spoil this disc.");
  const std::string text = ask_ui(
      [] { return utf8_of(dynamic_cast<wxTextCtrl*>(control("text", "disc"))->GetValue()); });
  EXPECT_THAT(text, testing::AllOf(testing::HasSubstr("asked for"), testing::HasSubstr("title 1")));
  screenshot("verify-disc");
  click_button("save as text...");
  answer_file("save what was found", folder_.path("found.txt"));
  EXPECT_TRUE(wait_until([this] { return file_exists(folder_.path("found.txt")); }));
  EXPECT_EQ(folder_.read("found.txt"), text);
  press("Escape");
  EXPECT_TRUE(window_goes("disc"));
  EXPECT_TRUE(commands_enabled());
}

TEST_F(Runs, DiscInTheFolderIsReplacedWhenTheUserAgrees) {
  folder_.add("disc/VIDEO_TS/VTS_09_1.VOB");
  folder_.add("disc/kept.txt");
  add_title(real_video(), real_audio());
  start_authoring();
  const std::string question = "The folder \"" + folder_.path("disc") +
                               "\" already holds a DVD.  Replace it?\n\nThis will be removed:\n" +
                               folder_.path("disc/VIDEO_TS");
  answer_message(question, "Yes");
  answer_message(success_text, "Cancel");
  EXPECT_FALSE(file_exists(folder_.path("disc/VIDEO_TS/VTS_09_1.VOB")));
  EXPECT_TRUE(file_exists(folder_.path("disc/VIDEO_TS/VTS_01_1.VOB")));
  EXPECT_TRUE(file_exists(folder_.path("disc/kept.txt")));
}

TEST_F(Runs, EarlierDiscThatCameBackIsTold) {
  folder_.add("disc/VIDEO_TS/VTS_09_1.VOB", "earlier");
  replace_tool("dvdauthor", "echo 'ERR:  no luck' >&2\nexit 1\n");
  add_title(real_video(), real_audio());
  start_authoring();
  answer_message("The folder \"" + folder_.path("disc") +
                     "\" already holds a DVD.  Replace it?\n\nThis will be removed:\n" +
                     folder_.path("disc/VIDEO_TS"),
                 "Yes");
  answer_message(failure_text, "Cancel");
  EXPECT_EQ(answer_message("The earlier DVD, which the run was to replace, is in its place again: "
                           "\"" +
                               folder_.path("disc") + "\".",
                           "OK")
                .picture,
            "info");
  EXPECT_EQ(folder_.read("disc/VIDEO_TS/VTS_09_1.VOB"), "earlier");
  EXPECT_EQ(status(), "The run failed: the earlier DVD is in its place again.");
  ASSERT_TRUE(window_comes("findings"));
  screenshot("run-restored");
  close("findings");
  EXPECT_TRUE(window_goes("findings"));
  EXPECT_EQ(status(), "The run failed: the earlier DVD is in its place again.");
  press("ctrl+k");
  EXPECT_TRUE(window_comes("findings"));
  EXPECT_EQ(status(), "");
  close("findings");
  EXPECT_TRUE(window_goes("findings"));
}

TEST_F(Runs, WhatBecameOfTheDiscOfAStoppedRunStandsInTheStatusBar) {
  folder_.add("disc/VIDEO_TS/VTS_09_1.VOB", "earlier");
  slow_mplex();
  add_title(real_video(), real_audio());
  start_authoring();
  answer_message("The folder \"" + folder_.path("disc") +
                     "\" already holds a DVD.  Replace it?\n\nThis will be removed:\n" +
                     folder_.path("disc/VIDEO_TS"),
                 "Yes");
  ASSERT_TRUE(slow_mplex_runs());
  EXPECT_EQ(status(), "");
  click_control("stop");
  answer_message(stop_text, "Yes");
  EXPECT_TRUE(wait_until([] { return !log_is_shown(); }));
  EXPECT_THAT(status(),
              testing::AllOf(testing::StartsWith("The run was stopped: "),
                             testing::EndsWith("the earlier DVD is in its place again.")));
  EXPECT_TRUE(no_dialog());
}

TEST_F(Runs, CommandsRestWhileARunIsOn) {
  slow_mplex();
  add_title(real_video(), real_audio());
  start_authoring();
  ASSERT_TRUE(slow_mplex_runs());
  EXPECT_TRUE(ask_ui(log_is_shown));
  EXPECT_FALSE(commands_enabled());
  EXPECT_TRUE(ask_ui([] { return control("stop")->IsEnabled(); }));
  EXPECT_TRUE(wait_until([] {
    return dynamic_cast<wxFrame*>(control("log"))->GetTitle() ==
           "Corvane log - *multiplexing title: 1..... ";
  }));
  screenshot("run");
  on_ui([this] { window_->drop({folder_.path("x.m2v")}); });
  EXPECT_FALSE(top_dialog().has_value());
  on_ui([] { control("log")->Close(); });
  EXPECT_TRUE(ask_ui(log_is_shown));

  click_control("stop");
  answer_message(stop_text, "Yes");
  EXPECT_TRUE(slow_mplex_is_gone());
  EXPECT_TRUE(wait_until([] { return !log_is_shown(); }));
  EXPECT_TRUE(commands_enabled());
}

TEST_F(Runs, CaptionNamesAStepThatManyLinesFollowAtOnce) {
  replace_tool("mplex", "seq -f 'INFO: line %g' 40\nexec sleep 300\n");
  add_title(real_video(), real_audio());
  start_authoring();
  EXPECT_TRUE(wait_until([] {
    const wxWindow* text = wxWindow::FindWindowByName("Text1");
    return text != nullptr &&
           utf8_of(dynamic_cast<const wxTextCtrl*>(text)->GetValue()).ends_with("line 40 \n ");
  }));
  EXPECT_EQ(ask_ui([] { return utf8_of(dynamic_cast<wxFrame*>(control("log"))->GetTitle()); }),
            "Corvane log - *multiplexing title: 1..... ");
  click_control("stop");
  answer_message(stop_text, "Yes");
  EXPECT_TRUE(wait_until([] { return !log_is_shown(); }));
}

TEST_F(Runs, StopAsksAndNoGoesOn) {
  replace_tool("mplex", "sleep 2\n");
  add_title(real_video(), real_audio());
  start_authoring();
  ASSERT_TRUE(wait_until(log_is_shown));
  click_control("stop");
  EXPECT_EQ(answer_message(stop_text, "No").picture, "warning");
  EXPECT_TRUE(ask_ui(log_is_shown));
  // mplex made nothing of the title, so dvdauthor ends with an error.
  EXPECT_EQ(answer_message(failure_text, "Cancel").picture, "error");
  EXPECT_FALSE(ask_ui(log_is_shown));
}

TEST_F(Runs, ClosingDuringARunAsksAndLeavesNoProcess) {
  slow_mplex();
  add_title(real_video(), real_audio());
  start_authoring();
  ASSERT_TRUE(slow_mplex_runs());
  on_ui([this] { window_->CallAfter([this] { window_->Close(); }); });
  answer_message(stop_text, "No");
  EXPECT_TRUE(ask_ui(log_is_shown));
  on_ui([this] { window_->CallAfter([this] { window_->Close(); }); });
  answer_message(stop_text, "Yes");
  answer_message("Do you want to save project?", "No");
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("main") == nullptr; }));
  EXPECT_TRUE(slow_mplex_is_gone());
}

TEST_F(Runs, ToolThatFailsIsToldAsAnError) {
  replace_tool("dvdauthor", "echo 'ERR:  no luck' >&2\nexit 1\n");
  add_title(real_video(), real_audio());
  start_authoring();
  answer_message(failure_text, "Cancel");
  EXPECT_THAT(folder_.read("program/CorvaneLOG.txt"), testing::HasSubstr(" ERR:  no luck"));
}

TEST_F(Runs, ProgressBarFollowsThePercentages) {
  replace_tool("mplex",
               "i=0; while [ $i -lt 10 ]; do i=$((i+1)); "
               "echo \"STAT: fixing ($i/10, ${i}0.5%)\"; sleep 0.3; done\n");
  add_title(real_video(), real_audio());
  start_authoring();
  const watched seen = watch_until_message();
  answer_message(failure_text, "Cancel");
  EXPECT_GE(seen.progress.size(), 4u);
  EXPECT_THAT(seen.progress, testing::Contains(505));  // tenths of a percent
  EXPECT_THAT(seen.longest, testing::HasSubstr("STAT: fixing (9/10, 90.5%)"));
}

}  // namespace
}  // namespace corvane::testing_support
