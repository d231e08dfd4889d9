// What a run has found, in the findings window: behind the run's outcome, and by its item.
#include "ui/findings_fixture.h"
#include "ui/gtk_sight.h"
#include "ui/main_window.h"
#include "ui/widgets/wx_text.h"

#include <gmock/gmock.h>
#include <wx/dialog.h>

namespace corvane::testing_support {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr const char* success_text =
    "Process complete.  Please review the log for more information (recommended).";
constexpr const char* failure_text = "There was an error.  Please review the log.";
constexpr const char* item_caption = "what the last run found...";

class RunFindings : public findings_test {
 protected:
  void TearDown() override {
    if (ask_ui([] { return wxWindow::FindWindowByName(dialog) != nullptr; })) {
      close(dialog);
      EXPECT_TRUE(window_goes(dialog));
    }
    findings_test::TearDown();
  }

  void author(const char* outcome) {
    add_title(real_video(), real_audio());
    click_tool("author dvd");
    answer_file("enter a folder name to create the dvd", folder_.path("disc"));
    answer_message(outcome, "Cancel");
  }
  static std::string caption() {
    return ask_ui([] { return utf8_of(dynamic_cast<wxDialog*>(control(dialog))->GetTitle()); });
  }
};

TEST_F(RunFindings, ErrorsAreShownOnceTheOutcomeWasRead) {
  replace_tool("dvdauthor",
               "echo 'STAT: Processing /x/title1.mpg...'\n"
               "echo 'WARN: attempt to update tv format from ntsc to pal; skipping'\n");
  author(failure_text);
  ASSERT_TRUE(window_comes(dialog));
  EXPECT_EQ(caption(), "findings of the last run");
  EXPECT_THAT(shown_rows(), testing::ElementsAre("error|title 1, video|its video is PAL, but the "
                                                 "disc is declared NTSC"));
  EXPECT_THAT(details(), HasSubstr("What to do: Encode it in the video standard of the project"));
  EXPECT_TRUE(is_enabled("goto"));
  screenshot("run-findings");
  press("Escape");
  EXPECT_TRUE(window_goes(dialog));
  click_menu("disc", item_caption);
  ASSERT_TRUE(window_comes(dialog));
  EXPECT_THAT(shown_rows(), Contains(StartsWith("error|title 1, video|")));
  // The project's own come back with the next check.
  press("ctrl+k");
  EXPECT_TRUE(wait_until([] { return !lists("error"); }));
  EXPECT_EQ(caption(), "findings");
}

TEST_F(RunFindings, OfAGoodDiscNothingComesUp) {
  author(success_text);
  EXPECT_FALSE(wait_until([] { return wxWindow::FindWindowByName(dialog) != nullptr; }, 0.3));
  click_menu("disc", item_caption);
  ASSERT_TRUE(window_comes(dialog));
  EXPECT_THAT(shown_rows(), Not(Contains(StartsWith("error"))));
  EXPECT_THAT(shown_rows(), Not(Contains(StartsWith("warning"))));
}

}  // namespace
}  // namespace corvane::testing_support
