// "check project..." and the line under the titles, with a real pointer and real keys.
#include "platform/files/files.h"
#include "ui/findings_fixture.h"
#include "ui/gtk_sight.h"
#include "ui/main_window.h"
#include "ui/widgets/wx_text.h"

#include <gmock/gmock.h>
#include <wx/dataview.h>
#include <wx/listbox.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <filesystem>

namespace corvane::testing_support {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class ProjectCheck : public findings_test {
 protected:
  void TearDown() override {
    if (ask_ui([] { return wxWindow::FindWindowByName(dialog) != nullptr; })) {
      close(dialog);
      EXPECT_TRUE(window_goes(dialog));
    }
    findings_test::TearDown();
  }

  static void check() {
    press("ctrl+k");
    ASSERT_TRUE(window_comes(dialog));
    EXPECT_TRUE(wait_until([] {
      const auto summary = utf8_of(control("summary", dialog)->GetLabel());
      return summary.find("Only the beginnings") == std::string::npos;
    }));
  }
  static bool line_is_shown(bool shown) {
    return wait_until([shown] { return is_seen("findingstext") == shown; });
  }
  static std::string line() { return label_of("findingstext"); }
};

TEST_F(ProjectCheck, PalVideoInAnNtscProjectIsAnErrorOfItsTitle) {
  project p = one_title(real_video(), real_audio());
  add_title_to(p, real_pal_video(), real_audio());
  load(p);
  check();
  EXPECT_THAT(shown_rows(), Contains(AllOf(StartsWith("error|title 2"), HasSubstr("PAL"))));
  EXPECT_THAT(shown_rows(), Not(Contains(StartsWith("error|title 1"))));
  screenshot("check-pal");
}

TEST_F(ProjectCheck, CommandThatLeadsElsewhereSinceATitleMovedIsToldUntilItMovesBack) {
  project p = project_with_menus(2);
  p.menubuttons[0] =
      " 0/ 0/ 100/ 53/jump title 1/black/black| 0/ 60/ 100/ 113/jump title "
      "2/black/black";
  load(p);
  check();
  const std::string moved =
      "the command \"jump title 1\" led to \"a.m2v\", it leads to \"b.m2v\" now";
  EXPECT_FALSE(wait_until([&] { return lists(moved); }, 0.3));
  click_row(0, "main");
  press("alt+Down");
  EXPECT_TRUE(wait_until([&] { return lists(moved); }));
  EXPECT_THAT(shown_rows(), Contains("warning|menu 1, button 1|" + moved));
  press("alt+Up");
  EXPECT_TRUE(wait_until([&] { return !lists(moved); }));
}

TEST_F(ProjectCheck, ProjectThatIsInOrderHasNoErrorAndNoLine) {
  load(one_title(real_video(), real_audio()));
  check();
  EXPECT_THAT(shown_rows(), Not(Contains(StartsWith("error"))));
  EXPECT_TRUE(line_is_shown(false));
}

TEST_F(ProjectCheck, SizeAndRoomAreHeldAgainstTheFolderOfTheLastRun) {
  const std::string huge = file("huge.m2v");
  std::filesystem::resize_file(path_of(huge), std::uintmax_t{1} << 40);
  load(one_title(real_video(), real_audio()));
  click_tool("author dvd");
  answer_file("enter a folder name to create the dvd", folder_.path("disc"));
  answer_message("Process complete.  Please review the log for more information (recommended).",
                 "Cancel");
  load(one_title(huge, real_audio()));
  ASSERT_TRUE(line_is_shown(true));
  press("alt+s");
  ASSERT_TRUE(window_comes(dialog));
  EXPECT_THAT(shown_rows(),
              Contains(AllOf(StartsWith("error|disc"), HasSubstr("the disc has at least 1,1"))));
  EXPECT_THAT(shown_rows(), Contains(AllOf(StartsWith("error|disc"),
                                           HasSubstr("the disk of the output folder has"))));
}

TEST_F(ProjectCheck, LineUnderTheTitlesComesAndGoesWithWhatIsWrong) {
  const int height = ask_ui([] { return control("List1", "main")->GetSize().y; });
  EXPECT_TRUE(line_is_shown(false));
  load(one_title(real_pal_video(), real_audio()));
  EXPECT_TRUE(line_is_shown(true));
  EXPECT_THAT(line(), AllOf(StartsWith("1 error"), HasSubstr(": title 1"), HasSubstr("PAL")));
  EXPECT_LT(ask_ui([] { return control("List1", "main")->GetSize().y; }), height);
  screenshot("check-line");
  click_row(0, "main");
  click_tool("remove title");
  EXPECT_TRUE(line_is_shown(false));
  EXPECT_TRUE(wait_until([=] { return control("List1", "main")->GetSize().y == height; }));
}

TEST_F(ProjectCheck, LineComesWhenAWrongFileWasAddedAndItsQuestionsAreAnswered) {
  load(one_title(real_video(), real_audio()));
  click_tool("add title");
  answer_file("select video stream", real_pal_video());
  ASSERT_TRUE(wait_until([] { return look_at_dialog().has_value(); }));
  EXPECT_FALSE(wait_until([] { return is_seen("findingstext"); }, 0.5));
  answer_file("select audio stream", real_audio());
  EXPECT_TRUE(line_is_shown(true));
  EXPECT_THAT(line(), AllOf(HasSubstr(": title 2"), HasSubstr("PAL")));
}

TEST_F(ProjectCheck, LineComesWhenAWrongFileIsDropped) {
  on_ui([this] {
    window_->CallAfter([this] { window_->drop({real_pal_video(), real_audio()}); });
  });
  EXPECT_TRUE(line_is_shown(true));
  EXPECT_THAT(line(), AllOf(HasSubstr(": title 1"), HasSubstr("PAL")));
}

TEST_F(ProjectCheck, WhatARunRefusesIsAnErrorOfTheDisc) {
  project p = one_title(real_video(), real_audio());
  p.customxml =
      "<?xml version=\"1.0\"?>\r\n<dvdauthor dest=\"" + folder_.path("disc") +
      "\">\r\n<titleset><titles><pgc><vob file=\"" + folder_.path("disc/title1.mpg") +
      "\"/><post note=\"a&#10;*process complete\"/></pgc></titles></titleset></dvdauthor>";
  load(p);
  ASSERT_TRUE(line_is_shown(true));
  check();
  EXPECT_THAT(shown_rows(), Contains(AllOf(StartsWith("error|disc|The hand-edited XML cannot be"),
                                           HasSubstr("contains a control character"))));
}

TEST_F(ProjectCheck, LineOpensTheFindingsByPointerAndByKeys) {
  load(one_title(real_pal_video(), real_audio()));
  ASSERT_TRUE(line_is_shown(true));
  click_control("findingstext", "main");
  EXPECT_TRUE(window_comes(dialog));
  EXPECT_THAT(shown_rows(), Contains(AllOf(StartsWith("error|title 1"), HasSubstr("PAL"))));
  press("Escape");
  EXPECT_TRUE(window_goes(dialog));
  press("alt+s");
  EXPECT_TRUE(window_comes(dialog));
}

TEST_F(ProjectCheck, SmallestWindowHasRoomForTheLine) {
  load(one_title(real_pal_video(), real_audio()));
  ASSERT_TRUE(line_is_shown(true));
  on_ui([this] { window_->SetClientSize(window_->GetMinClientSize()); });
  EXPECT_TRUE(wait_until([this] {
    const wxRect inside = window_->GetScreenRect();
    return inside.Contains(control("dvdsizetext", "main")->GetScreenRect()) &&
           inside.Contains(control("showfindings", "main")->GetScreenRect()) &&
           control("List1", "main")->GetSize().y >= 110;
  }));
  screenshot("check-line-small");
}

TEST_F(ProjectCheck, FileThatWasReplacedIsReadAgain) {
  const std::string video = file("film.m2v");
  load(one_title(video, real_audio()));
  check();
  ASSERT_THAT(shown_rows(), Contains(StartsWith("error|title 1")));
  std::filesystem::copy_file(real_video(), path_of(video),
                             std::filesystem::copy_options::overwrite_existing);
  click_button("check again");
  EXPECT_TRUE(wait_until([] { return !lists("error"); }));
  EXPECT_TRUE(line_is_shown(false));
}

TEST_F(ProjectCheck, WhatIsRepairedGoesFromTheListWithoutAnotherCheck) {
  project p = one_title(real_pal_video(), real_audio());
  add_title_to(p, file("film.m2v"), real_audio());
  load(p);
  check();
  ASSERT_THAT(shown_rows(), Contains(StartsWith("error|title 1")));
  ASSERT_THAT(shown_rows(), Contains(StartsWith("error|title 2")));
  on_ui([this] { window_->CallAfter([this] { window_->select_title(1); }); });
  EXPECT_TRUE(wait_until([this] { return window_->shown_project().selected == 1; }));
  click_tool("remove title");
  EXPECT_TRUE(wait_until([] { return !lists("title 2"); }));
  EXPECT_THAT(shown_rows(), Contains(StartsWith("error|title 1")));
  EXPECT_THAT(label_of("summary"), Not(HasSubstr("Only the beginnings")));
}

TEST_F(ProjectCheck, FindingLeadsToItsTitleInTheMainWindow) {
  project p = one_title(real_video(), real_audio());
  add_title_to(p, real_pal_video(), real_audio());
  load(p);
  check();
  const auto rows = shown_rows();
  const auto row = std::find_if(rows.begin(), rows.end(), [](const std::string& text) {
    return text.starts_with("error|title 2") && text.find("PAL") != std::string::npos;
  });
  ASSERT_NE(row, rows.end());
  double_click_at(middle_of_row(static_cast<int>(row - rows.begin())));
  EXPECT_TRUE(wait_until([this] { return window_->shown_project().selected == 1; }));
  EXPECT_EQ(selection(), 1);
  EXPECT_TRUE(is_active("main"));
}

TEST_F(ProjectCheck, EditorThatAFindingLeadsToComesBackToTheFindings) {
  project p = one_title(real_video(), real_audio());
  p.chapters = {"00:00:00.00,00:10:00.00"};
  load(p);
  check();
  ASSERT_THAT(shown_rows(), ElementsAre(HasSubstr("|title 1, chapter 2")));
  press("Return");
  ASSERT_TRUE(window_comes("chapter"));
  EXPECT_FALSE(is_enabled("goto"));
  EXPECT_FALSE(is_enabled("check"));
  on_ui([] {
    auto* times = dynamic_cast<wxTextCtrl*>(control("RichTextBox1", "chapter"));
    times->SetValue("00:00:00.00\n00:00:01.00\n");
  });
  press("ctrl+Return");
  EXPECT_TRUE(window_goes("chapter"));
  EXPECT_TRUE(is_active(dialog));
  EXPECT_TRUE(wait_until([] { return list().GetItemCount() == 0; })) << "it is repaired";
  EXPECT_TRUE(is_enabled("check"));
}

TEST_F(ProjectCheck, SavesTheFindingsAsText) {
  load(one_title(real_pal_video(), real_audio()));
  check();
  click_button("save as text...");
  answer_file("save the findings", folder_.path("found.txt"));
  EXPECT_TRUE(wait_until([this] { return file_exists(folder_.path("found.txt")); }));
  EXPECT_THAT(folder_.read("found.txt"), StartsWith("error: title 1"));
}

TEST_F(ProjectCheck, EmptyProjectIsToldToBeSo) {
  press("ctrl+k");
  EXPECT_EQ(
      answer_message("Please add a title first: there is nothing to check yet.", "OK").picture,
      "warning");
}

TEST_F(ProjectCheck, HandEditedXmlThatCannotBeReadIsToldToBeSo) {
  project p = one_title(real_video(), real_audio());
  p.customxml = "<dvdauthor\r\n";
  load(p);
  EXPECT_TRUE(line_is_shown(true));
  EXPECT_THAT(line(), StartsWith("1 error: disc: The hand-edited XML cannot be authored: "));
  press("ctrl+k");
  ASSERT_TRUE(wait_until([] { return look_at_dialog().has_value(); }));
  EXPECT_THAT(top_dialog()->text, StartsWith("The hand-edited XML cannot be checked: "));
  press("Return");
  EXPECT_TRUE(no_dialog());
}

TEST_F(ProjectCheck, MainWindowClosesWithTheFindingsOpen) {
  load(one_title(real_pal_video(), real_audio()));
  check();
  close("main");
  EXPECT_TRUE(wait_until([] { return wxTopLevelWindows.empty(); }));
}

}  // namespace
}  // namespace corvane::testing_support
