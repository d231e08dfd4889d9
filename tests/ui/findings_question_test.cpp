// The question whether to author although something was found, with a real pointer and real keys.
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/subtitle_rows.h"
#include "ui/findings_fixture.h"
#include "ui/gtk_sight.h"
#include "ui/main_window.h"

#include <gmock/gmock.h>
#include <wx/dataview.h>
#include <wx/textctrl.h>

#include <filesystem>

namespace corvane::testing_support {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

constexpr const char* question = findings_question_name;

class FindingsQuestion : public findings_test {
 protected:
  void TearDown() override {
    if (ask_ui([] { return wxWindow::FindWindowByName(dialog) != nullptr; })) {
      close(dialog);
      EXPECT_TRUE(window_goes(dialog));
    }
    findings_test::TearDown();
  }

  /// More titles with an error than a message box could hold.
  void ask_about_twelve() {
    project p;
    for (int title = 1; title <= 12; ++title)
      add_title_to(p, real_pal_video(), real_audio());
    load(p);
    author();
    ASSERT_TRUE(window_comes(question));
    ASSERT_TRUE(is_active(question));
  }
  void author() {
    press("F5");
    answer_file("enter a folder name to create the dvd", folder_.path("disc"));
  }
  bool anything_was_written() const { return file_exists(folder_.path("program/process.bat")); }
  void expect_nothing_came_of_it() {
    EXPECT_TRUE(window_goes(question));
    EXPECT_TRUE(wait_until([this] { return window_->may_command(); }));
    EXPECT_FALSE(anything_was_written());
  }
};

TEST_F(FindingsQuestion, ShowsAllErrorsAtOnceWithWhatFollowsAndWhatToDo) {
  ask_about_twelve();
  EXPECT_EQ(label_of("question"), "The disc would be wrong, or the run would fail. Author anyway?");
  EXPECT_EQ(label_of("counts"), "12 errors");
  EXPECT_THAT(shown_rows(question), SizeIs(12));
  EXPECT_THAT(
      shown_rows(question),
      Contains("error|title 12, video|the video is PAL (720x576, 25 pictures a second) in a "
               "project of NTSC"));
  EXPECT_THAT(details(question),
              AllOf(StartsWith("The video is PAL"), HasSubstr("\nA viewer would see: "),
                    HasSubstr("\nWhat to do: ")));
  screenshot("findings-question");
  press("End");
  EXPECT_TRUE(wait_until([] { return list(question).GetSelectedRow() == 11; }));
  press("Return");
  expect_nothing_came_of_it();
}

TEST_F(FindingsQuestion, GoesToTheRowsWhereTheirXmlCannotBeRead) {
  project p;
  add_title_to(p, real_video(), real_audio());
  add_title_to(p, real_pal_video(), real_audio());
  p.customxml = "<dvdauthor dest=\"/x\">\n<x>";
  load(p);
  press("F5");
  ASSERT_TRUE(window_comes(question));
  press("alt+g");
  EXPECT_TRUE(window_goes(question));
  EXPECT_TRUE(wait_until([this] { return window_->may_command(); }));
  EXPECT_EQ(selection(), 1);
  EXPECT_FALSE(ask_ui([] { return wxWindow::FindWindowByName(dialog) != nullptr; }));
}

TEST_F(FindingsQuestion, GoesToAMissingFontWithTheListThatNamesIt) {
  project p;
  add_title_to(p, real_video(), real_audio());
  subtitle_settings settings = default_subtitle_settings("NTSC");
  settings[subtitle_field::font_file] = "No such font.ttf";
  p.subtitledata = {
      stored_from_native(folder_.add("a.srt", "1\n00:00:00,200 --> 00:00:00,900\nfirst\n\n"))};
  p.subtitleoptions = {subtitle_options_text({subtitle_settings_text(settings)})};
  load(p);
  author();
  ASSERT_TRUE(window_comes(question));
  press("alt+g");
  EXPECT_TRUE(window_goes(question));
  ASSERT_TRUE(window_comes(dialog));
  EXPECT_THAT(shown_rows(dialog), Contains(AllOf(StartsWith("warning|title 1, subtitle 1|"),
                                                 HasSubstr("No such font"))));
  ASSERT_TRUE(window_comes("Subtitles"));
  close("Subtitles");
  EXPECT_TRUE(window_goes("Subtitles"));
}

TEST_F(FindingsQuestion, EscapeAndItsButtonCancel) {
  ask_about_twelve();
  press("Escape");
  expect_nothing_came_of_it();
  author();
  ASSERT_TRUE(window_comes(question));
  click_button("cancel");
  expect_nothing_came_of_it();
}

TEST_F(FindingsQuestion, AuthorsByItsKeyAlone) {
  replace_tool("mplex", "exit 1\n");
  ask_about_twelve();
  press("alt+a");
  answer_message("There was an error.  Please review the log.", "Cancel");
  EXPECT_TRUE(anything_was_written());
  EXPECT_TRUE(window_comes(dialog)) << "what the run has found";
}

TEST_F(FindingsQuestion, GoesToTheSelectedFindingInsteadOfARun) {
  ask_about_twelve();
  press("Down");
  EXPECT_TRUE(wait_until([] { return list(question).GetSelectedRow() == 1; }));
  press("alt+g");
  expect_nothing_came_of_it();
  EXPECT_EQ(selection(), 1);
  EXPECT_TRUE(window_comes(dialog)) << "the others stand there";
  EXPECT_THAT(shown_rows(), SizeIs(12));
  EXPECT_EQ(selected_row(), 1);
}

TEST_F(FindingsQuestion, LeavesOnlyTheWayToThePlaceWhereNothingCanBeAuthored) {
  project p = one_title(real_pal_video(), real_audio());
  p.firstplay = "jump title 7";
  p.delay = {"soon"};
  load(p);
  press("F5");
  ASSERT_TRUE(window_comes(question));
  EXPECT_EQ(
      label_of("question"),
      "Title 1 has the A/V delay \"soon\", which is not a number of milliseconds.  Please set "
      "the\ndelay again.");
  EXPECT_EQ(label_of("counts"), "3 errors");
  EXPECT_FALSE(find_label("author anyway", label_place::button));
  EXPECT_TRUE(is_enabled("goto", question));
  screenshot("findings-refusal");
  press("Return");
  expect_nothing_came_of_it();
}

TEST_F(FindingsQuestion, DoubleClickOpensTheEditorOfTheFinding) {
  project p = one_title(real_video(), real_audio());
  p.chapters = {"00:00:00.00,00:00:09.00"};
  load(p);
  author();
  ASSERT_TRUE(window_comes(question));
  EXPECT_EQ(label_of("question"), "The disc may not be what is wanted. Author anyway?");
  EXPECT_THAT(shown_rows(question), Contains(StartsWith("warning|title 1, chapter 2, 00:00:09|")));
  double_click_at(middle_of_row(0, question));
  EXPECT_TRUE(window_goes(question));
  ASSERT_TRUE(window_comes("chapter"));
  EXPECT_FALSE(anything_was_written());
  close("chapter");
  EXPECT_TRUE(window_goes("chapter"));
  EXPECT_TRUE(is_active(dialog));
}

// So large that it would be read for longer than the look that is skipped.
TEST_F(FindingsQuestion, LookThatIsSkippedIsSaidInTheLog) {
  replace_tool("mplex", "exit 1\n");
  const std::string large = folder_.path("large.m2v");
  std::filesystem::copy_file(real_video(), path_of(large));
  std::filesystem::resize_file(path_of(large), std::uintmax_t{60} << 30);
  add_title(large, real_audio());
  author();
  ASSERT_TRUE(wait_until([] { return find_label("Skip", label_place::button).has_value(); }));
  screenshot("skip");
  click_button("Skip");
  ASSERT_TRUE(window_comes(question));
  EXPECT_THAT(shown_rows(question), Contains(StartsWith("error|disc|")));
  EXPECT_FALSE(is_enabled("goto", question)) << "the disc as a whole has no place";
  click_button("author anyway");
  answer_message("There was an error.  Please review the log.", "Cancel");
  EXPECT_THAT(folder_.read("program/CorvaneLOG.txt"),
              HasSubstr("INFO: the files of the project were not examined before this run."));
  EXPECT_TRUE(window_comes(dialog)) << "what the run has found";
}

}  // namespace
}  // namespace corvane::testing_support
