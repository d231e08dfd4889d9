// The findings window by itself, with a real pointer and real keys.
#include "ui/disc/findings_window.h"

#include "ui/findings_fixture.h"
#include "ui/gtk_sight.h"
#include "ui/main_window.h"

#include <gmock/gmock.h>
#include <wx/dataview.h>
#include <wx/textctrl.h>

namespace corvane::testing_support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;
using part = finding_item::part_kind;
using whole = finding_item::whole_kind;

finding found(finding_severity severity, finding_item item, const std::string& what) {
  finding f;
  f.rule = "some-rule";
  f.severity = severity;
  f.item = item;
  f.found = what;
  f.wanted = "something else";
  f.consequence = "players refuse the disc";
  f.remedy = "encode " + what + " again";
  return f;
}

finding_list three() {
  finding cue = found(finding_severity::warning, {whole::title, 2, part::subtitle, 1}, "second");
  cue.seconds = 65;
  return {{found(finding_severity::note, {whole::menu, 1, part::button, 3}, "third"), cue,
           found(finding_severity::error, {whole::title, 1, part::video, 0}, "first")},
          files_read::whole};
}

class FindingsWindow : public findings_test {
 protected:
  void SetUp() override {
    findings_test::SetUp();
    on_ui([this] {
      findings_window::handlers on;
      on.go_to = [this](const finding& f) { gone_to_.push_back(f.found); };
      on.leads_somewhere = [this](const finding& f) { return f.found != leads_nowhere_; };
      on.check = [this] { ++checks_; };
      on.stop = [this] { ++stops_; };
      on.save = [this] { ++saves_; };
      on.closed = [this] { ++closed_; };
      shown_ = new findings_window(window_, on);
      shown_->show_findings(three());
      shown_->Show();
    });
    ASSERT_TRUE(window_comes(dialog));
    ASSERT_TRUE(is_active(dialog));
  }
  void TearDown() override {
    if (closed_ == 0)
      close(dialog);
    EXPECT_TRUE(window_goes(dialog));
    findings_test::TearDown();
  }
  void show(const finding_list& findings) {
    on_ui([&] { shown_->show_findings(findings); });
  }

  findings_window* shown_ = nullptr;
  std::vector<std::string> gone_to_;
  std::string leads_nowhere_;
  int checks_ = 0, stops_ = 0, saves_ = 0, closed_ = 0;
};

TEST_F(FindingsWindow, ListsThemWorstFirstWithPictureItemAndText) {
  EXPECT_THAT(shown_rows(), ElementsAre("error|title 1, video|first",
                                        "warning|title 2, subtitle 1, 00:01:05|second",
                                        "note|menu 1, button 3|third"));
  EXPECT_EQ(label_of("summary"), "1 error, 1 warning, 1 note");
  EXPECT_FALSE(is_shown("stop", dialog));
  screenshot("findings");
}

TEST_F(FindingsWindow, DetailsAreThoseOfTheSelectedFinding) {
  EXPECT_EQ(selected_row(), 0);
  EXPECT_EQ(details(),
            "First.\nMust be: something else.\nA viewer would see: players refuse the disc.\nWhat "
            "to do: encode first again.\nRule: some-rule");
  press("Down");
  EXPECT_TRUE(wait_until([] { return list().GetSelectedRow() == 1; }));
  EXPECT_THAT(details(), StartsWith("Second.\n"));
  click_at(middle_of_row(2));
  EXPECT_TRUE(wait_until([] { return list().GetSelectedRow() == 2; }));
  EXPECT_THAT(details(), StartsWith("Third.\n"));
}

TEST_F(FindingsWindow, EnterAndDoubleClickAndTheButtonGoToTheFinding) {
  press("Down");
  press("Return");
  EXPECT_TRUE(wait_until([this] { return gone_to_.size() == 1; }));
  double_click_at(middle_of_row(2));
  EXPECT_TRUE(wait_until([this] { return gone_to_.size() == 2; }));
  click_at(middle_of_row(0));
  click_button("go to");
  EXPECT_TRUE(wait_until([this] { return gone_to_.size() == 3; }));
  EXPECT_THAT(gone_to_, ElementsAre("second", "third", "first"));
}

TEST_F(FindingsWindow, FindingThatLeadsNowhereHasNoGoTo) {
  EXPECT_TRUE(is_enabled("goto"));
  on_ui([this] { leads_nowhere_ = "second"; });
  press("Down");
  EXPECT_TRUE(wait_until([] { return !control("goto", dialog)->IsEnabled(); }));
  press("Down");
  EXPECT_TRUE(wait_until([] { return control("goto", dialog)->IsEnabled(); }));
}

TEST_F(FindingsWindow, CopiesTheSelectedFindingOrAll) {
  press("Down");
  press("ctrl+c");
  EXPECT_EQ(clipboard(), text_of(three().findings()[1]) + "\n");
  click_button("copy all");
  EXPECT_EQ(clipboard(), three().text());
}

TEST_F(FindingsWindow, TextMarkedInTheDetailsIsCopiedByItself) {
  on_ui([] {
    auto* text = dynamic_cast<wxTextCtrl*>(control("details", dialog));
    text->SetFocus();
    text->SetSelection(0, 5);
  });
  press("ctrl+c");
  EXPECT_EQ(clipboard(), "First");
}

TEST_F(FindingsWindow, WorksByTheKeysOfItsButtons) {
  press("alt+g");
  EXPECT_TRUE(wait_until([this] { return gone_to_.size() == 1; }));
  press("alt+s");
  EXPECT_TRUE(wait_until([this] { return saves_ == 1; }));
  press("alt+k");
  EXPECT_TRUE(wait_until([this] { return checks_ == 1; }));
  press("ctrl+k");
  EXPECT_TRUE(wait_until([this] { return checks_ == 2; }));
  press("Escape");
  EXPECT_TRUE(wait_until([this] { return closed_ == 1; }));
}

TEST_F(FindingsWindow, NothingFoundIsSaidInASentence) {
  show({{}, files_read::whole});
  EXPECT_EQ(label_of("summary"), "Nothing was found that would spoil this disc.");
  EXPECT_THAT(shown_rows(), IsEmpty());
  EXPECT_EQ(details(), "");
  for (const char* name : {"goto", "copy", "save"})
    EXPECT_FALSE(is_enabled(name)) << name;
  EXPECT_TRUE(is_enabled("check"));
  screenshot("findings-none");
}

TEST_F(FindingsWindow, NextFindingIsSelectedWhenTheSelectedOneIsRepaired) {
  press("Down");
  EXPECT_TRUE(wait_until([] { return list().GetSelectedRow() == 1; }));
  show({{three().findings()[0], three().findings()[2]}, files_read::whole});
  EXPECT_THAT(shown_rows(), SizeIs(2));
  EXPECT_EQ(selected_row(), 1);
  EXPECT_THAT(details(), StartsWith("Third.\n"));
}

TEST_F(FindingsWindow, CheckThatIsOnShowsItsFileAndCanBeStopped) {
  on_ui([this] { shown_->show_progress(check_progress{0.4, "/films/movie.m2v"}); });
  EXPECT_TRUE(is_shown("stop", dialog));
  EXPECT_TRUE(is_shown("progress", dialog));
  EXPECT_EQ(label_of("file"), "reading movie.m2v");
  EXPECT_FALSE(is_enabled("check"));
  screenshot("findings-progress");
  click_button("stop");
  EXPECT_TRUE(wait_until([this] { return stops_ == 1; }));
  on_ui([this] { shown_->show_progress(std::nullopt); });
  EXPECT_FALSE(is_shown("stop", dialog));
  EXPECT_TRUE(is_enabled("check"));
}

TEST_F(FindingsWindow, CommandsAreOffWhileAnEditorHasTheProject) {
  on_ui([this] { shown_->let_commands(false); });
  for (const char* name : {"goto", "save", "check"})
    EXPECT_FALSE(is_enabled(name)) << name;
  EXPECT_TRUE(is_enabled("copy"));
  on_ui([this] { shown_->let_commands(true); });
  for (const char* name : {"goto", "save", "check"})
    EXPECT_TRUE(is_enabled(name)) << name;
}

TEST_F(FindingsWindow, ControlsHaveTheirNamesForAccessibilityToolsToo) {
  on_ui([] {
    for (const char* name : {"findingslist", "details", "summary", "goto", "copy", "save", "check",
                             "stop", "progress", "file"})
      EXPECT_EQ(accessible_name(*control(name, dialog)), name);
  });
}

TEST_F(FindingsWindow, StandsBesideTheMainWindow) {
  const wxRect main = ask_ui([this] { return window_->GetScreenRect(); });
  const wxRect beside = ask_ui([this] { return shown_->GetScreenRect(); });
  EXPECT_LT(main.Intersect(beside).width, main.width / 2) << "most of the list is seen";
}

}  // namespace
}  // namespace corvane::testing_support
