// Cleaning a title's subtitles from the finding about them, with a real pointer and real keys.
#include "platform/files/paths.h"
#include "ui/findings_fixture.h"
#include "ui/gtk_sight.h"
#include "ui/main_window.h"
#include "ui/subtitles/clean_subtitles_window.h"
#include "ui/widgets/wx_text.h"

#include <gmock/gmock.h>
#include <wx/dataview.h>
#include <wx/textctrl.h>

namespace corvane::testing_support {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr const char* window = "cleansubtitles";
constexpr const char* marked =
    "1\n00:00:00,200 --> 00:00:00,900\n{\\an8}Up there,\nbehind the <old> mill\n\n"
    "2\n00:00:01,000 --> 00:00:01,400\nplain\n\n"
    "3\n00:00:01,500 --> 00:00:01,900\nTom &amp; Jerry\n\n";
constexpr const char* cleaned =
    "1\n00:00:00,200 --> 00:00:00,900\nUp there,\nbehind the \xE2\x80\xB9old\xE2\x80\xBA mill\n\n"
    "2\n00:00:01,000 --> 00:00:01,400\nplain\n\n"
    "3\n00:00:01,500 --> 00:00:01,900\nTom & Jerry\n\n";

class CleanSubtitles : public findings_test {
 protected:
  void SetUp() override {
    findings_test::SetUp();
    project p = one_title(real_video(), real_audio());
    p.subtitledata = {stored_from_native(folder_.add("film.srt", marked))};
    load(p);
    press("ctrl+k");
    ASSERT_TRUE(window_comes(dialog));
    ASSERT_TRUE(wait_until([] { return lists("the cue \"{\\an8}Up there"); }));
    before_ = window_->shown_project().subtitledata[0];
    options_ = window_->shown_project().subtitleoptions[0];
  }
  void TearDown() override {
    if (ask_ui([] { return wxWindow::FindWindowByName(dialog) != nullptr; })) {
      close(dialog);
      EXPECT_TRUE(window_goes(dialog));
    }
    findings_test::TearDown();
  }

  /// Selects the finding whose text begins so.
  static void select(const std::string& text) {
    const std::vector<std::string> rows = shown_rows();
    for (std::size_t row = 0; row < rows.size(); ++row)
      if (rows[row].find("|" + text) != std::string::npos) {
        click_at(middle_of_row(static_cast<int>(row)));
        EXPECT_TRUE(wait_until([row] { return list().GetSelectedRow() == static_cast<int>(row); }));
        return;
      }
    ADD_FAILURE() << text << " is not among the findings";
  }
  void open() {
    select("the cue \"{\\an8}Up there");
    click_button("clean...");
    ASSERT_TRUE(window_comes(window));
    ASSERT_TRUE(is_active(window));
  }
  static std::string value(const char* name) {
    return ask_ui(
        [name] { return utf8_of(dynamic_cast<wxTextCtrl*>(control(name, window))->GetValue()); });
  }
  static bool value_becomes(const char* name, const std::string& text) {
    return wait_until([&] {
      return utf8_of(dynamic_cast<wxTextCtrl*>(control(name, window))->GetValue()) == text;
    });
  }
  static std::vector<std::string> cues() {
    return ask_ui([] {
      const auto& list = *dynamic_cast<wxDataViewListCtrl*>(control("cues", window));
      std::vector<std::string> all;
      for (int row = 0; row < list.GetItemCount(); ++row) {
        const auto at = static_cast<unsigned>(row);
        all.push_back(utf8_of(list.GetTextValue(at, 0) + "|" + list.GetTextValue(at, 1) + "|" +
                              list.GetTextValue(at, 2)));
      }
      return all;
    });
  }
  std::string files() {
    return ask_ui([this] { return window_->shown_project().subtitledata[0]; });
  }
  std::string options() {
    return ask_ui([this] { return window_->shown_project().subtitleoptions[0]; });
  }

  std::string before_, options_;
};

TEST_F(CleanSubtitles, ShowsTheCuesThatChangeSideBySide) {
  open();
  EXPECT_THAT(cues(),
              ElementsAre("00:00:00.20|{\\an8}Up there, / behind the <old> mill|Up there, / behind "
                          "the \xE2\x80\xB9old\xE2\x80\xBA mill",
                          "00:00:01.50|Tom &amp; Jerry|Tom & Jerry"));
  EXPECT_EQ(value("before"), "{\\an8}Up there,\nbehind the <old> mill");
  EXPECT_EQ(value("after"), "Up there,\nbehind the \xE2\x80\xB9old\xE2\x80\xBA mill");
  EXPECT_EQ(value("why"),
            "\"{\\an8}\" would be shown as letters; \"<\" and \">\" would hide what is between "
            "them");
  EXPECT_EQ(value("place"), folder_.path("film.cleaned.srt"));
  EXPECT_EQ(ask_ui([] { return utf8_of(control("summary", window)->GetLabel()); }),
            "2 cues of \"film.srt\" hold what would be shown wrongly on the disc.");
  screenshot("clean-subtitles");
  close(window);
  EXPECT_TRUE(window_goes(window));
}

TEST_F(CleanSubtitles, CopyIsWrittenAndUsedAndTheFindingsGo) {
  open();
  click_button("save and use the copy");
  EXPECT_TRUE(window_goes(window));
  EXPECT_EQ(folder_.read("film.cleaned.srt"), cleaned);
  EXPECT_EQ(folder_.read("film.srt"), marked);
  EXPECT_EQ(files(), folder_.stored("film.cleaned.srt"));
  EXPECT_THAT(options(), HasSubstr(",UTF-8|"));
  EXPECT_TRUE(wait_until([] { return !lists("the cue \"{\\an8}Up there"); }));
  EXPECT_THAT(shown_rows(), Not(Contains(HasSubstr("would be left out"))));
  EXPECT_TRUE(is_active(dialog)) << "the next finding is repaired there";
}

TEST_F(CleanSubtitles, UndoTakesItBackInOneStep) {
  open();
  click_button("save and use the copy");
  EXPECT_TRUE(window_goes(window));
  close(dialog);
  EXPECT_TRUE(window_goes(dialog));
  press("ctrl+z");
  EXPECT_TRUE(wait_until([this] { return window_->shown_project().subtitledata[0] == before_; }));
  EXPECT_EQ(options(), options_);
  EXPECT_EQ(folder_.read("film.cleaned.srt"), cleaned);
}

TEST_F(CleanSubtitles, WorksByKeysAlone) {
  select("the cue \"Tom");
  press("alt+l");
  ASSERT_TRUE(window_comes(window));
  ASSERT_TRUE(is_active(window));
  press("Down");
  EXPECT_TRUE(value_becomes("after", "Tom & Jerry"));
  EXPECT_EQ(value("before"), "Tom &amp; Jerry");
  press("alt+u");
  EXPECT_TRUE(window_goes(window));
  EXPECT_EQ(files(), folder_.stored("film.cleaned.srt"));
}

TEST_F(CleanSubtitles, EscapeChangesNothing) {
  open();
  press("Escape");
  EXPECT_TRUE(window_goes(window));
  EXPECT_EQ(files(), before_);
  EXPECT_EQ(options(), options_);
  EXPECT_FALSE(file_exists(folder_.path("film.cleaned.srt")));
}

TEST_F(CleanSubtitles, PlaceCanBeChosenAndNothingIsOverwrittenUnasked) {
  folder_.add("mine.srt", "mine");
  open();
  click_button("choose place...");
  answer_file("save the cleaned subtitles", folder_.path("mine.srt"));
  EXPECT_TRUE(value_becomes("place", folder_.path("mine.srt")));
  click_button("save and use the copy");
  answer_message("File exists.  Overwrite?", "No");
  EXPECT_EQ(folder_.read("mine.srt"), "mine");
  EXPECT_EQ(files(), before_);
  click_button("save and use the copy");
  answer_message("File exists.  Overwrite?", "Yes");
  EXPECT_TRUE(window_goes(window));
  EXPECT_EQ(folder_.read("mine.srt"), cleaned);
  EXPECT_EQ(files(), folder_.stored("mine.srt"));
}

TEST_F(CleanSubtitles, OtherFindingsCannotBeCleaned) {
  folder_.add("film.srt", std::string(marked) + "4\n00:00:01,950 --> 00:00:01,950\nshort\n\n");
  press("ctrl+k");
  ASSERT_TRUE(wait_until([] { return lists("the cue \"short\" begins at"); }));
  select("the cue \"short\"");
  EXPECT_FALSE(is_enabled("clean"));
  select("the cue \"Tom");
  EXPECT_TRUE(is_enabled("clean"));
}

TEST_F(CleanSubtitles, ControlsHaveTheirNamesForAccessibilityToolsToo) {
  open();
  on_ui([] {
    for (const char* name :
         {"summary", "cues", "before", "after", "why", "place", "chooseplace", "usecopy", "cancel"})
      EXPECT_EQ(accessible_name(*control(name, window)), name);
  });
  close(window);
  EXPECT_TRUE(window_goes(window));
}

}  // namespace
}  // namespace corvane::testing_support
