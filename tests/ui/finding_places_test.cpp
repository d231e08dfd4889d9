// What findings lead to: the editors as they open on them.
#include "ui/disc/finding_places.h"

#include "platform/files/paths.h"
#include "ui/findings_fixture.h"
#include "ui/main_window.h"
#include "ui/widgets/wx_text.h"

#include <gmock/gmock.h>
#include <wx/listbox.h>
#include <wx/spinctrl.h>
#include <wx/textctrl.h>

namespace corvane::testing_support {
namespace {

using testing::StartsWith;
using place = finding_target::place;

class FindingPlaces : public findings_test {
 protected:
  void open_at(const finding_target& target) {
    on_ui([this, target] { window_->CallAfter([=, this] { open_place(*window_, target); }); });
  }
};

TEST_F(FindingPlaces, ChapterIsItsLineInTheChapterDialog) {
  project p = one_title(real_video(), real_audio());
  p.chapters = {"00:00:00.00,00:00:01.00,00:00:02.00"};
  load(p);
  open_at({place::chapters, 1, 0, 2, std::nullopt});
  ASSERT_TRUE(window_comes("chapter"));
  EXPECT_EQ(
      ask_ui([] {
        return utf8_of(
            dynamic_cast<wxTextCtrl*>(control("RichTextBox1", "chapter"))->GetStringSelection());
      }),
      "00:00:01.00");
  EXPECT_EQ(window_->shown_project().selected, 0);
  close("chapter");
  EXPECT_TRUE(window_goes("chapter"));
}

TEST_F(FindingPlaces, LanguagesAreTheirDialog) {
  load(one_title(real_video(), real_audio()));
  open_at({place::languages, 0, 0, 0, std::nullopt});
  ASSERT_TRUE(window_comes("language"));
  close("language");
  EXPECT_TRUE(window_goes("language"));
}

TEST_F(FindingPlaces, ButtonIsChosenInTheMenuEditor) {
  project p = project_with_menus(1);
  p.menubuttons[0] += "| |" + std::string(" 0/ 100/ 100/ 103/exit/red/red");
  load(p);
  open_at({place::menu, 0, 1, 3, std::nullopt});
  ASSERT_TRUE(window_comes("tsmenu"));
  EXPECT_EQ(label_of("button"), "4") << "the third record is blank and no button";
  close("tsmenu");
  EXPECT_TRUE(window_goes("tsmenu"));
}

TEST_F(FindingPlaces, SubtitleIsItsFileWithTheCueInThePreview) {
  project p = one_title(real_video(), real_audio());
  const std::string cues =
      "1\n00:00:00,200 --> 00:00:00,900\nfirst\n\n"
      "2\n00:00:01,000 --> 00:00:01,500\nsecond\n\n"
      "3\n00:00:02,000 --> 00:00:02,500\nthird\n\n";
  const std::string row = folder_.add("b.srt", cues);
  p.subtitledata = {stored_from_native(folder_.add("a.srt", cues)) + "/" + stored_from_native(row)};
  p.subtitleoptions[0] += p.subtitleoptions[0];
  load(p);
  open_at({place::subtitles, 1, 0, 2, 1.0});
  ASSERT_TRUE(window_comes("Subtitles"));
  EXPECT_EQ(ask_ui([] {
              return dynamic_cast<wxListBox*>(control("list1", "Subtitles"))->GetSelection();
            }),
            1);
  EXPECT_TRUE(wait_until([] {
    return dynamic_cast<wxSpinCtrl*>(control("cuenumber", "Subtitles"))->GetValue() == 2;
  }));
  EXPECT_THAT(label_of("cuetime"), StartsWith("0:00:01.0"));
  close("Subtitles");
  EXPECT_TRUE(window_goes("Subtitles"));
}

TEST_F(FindingPlaces, TimeAfterTheLastCueIsThatCue) {
  project p = one_title(real_video(), real_audio());
  p.subtitledata = {
      stored_from_native(folder_.add("a.srt",
                                     "1\n00:00:00,200 --> 00:00:00,900\nfirst\n\n"
                                     "2\n00:00:01,000 --> 00:00:01,500\nsecond\n\n"))};
  load(p);
  open_at({place::subtitles, 1, 0, 1, 3000.0});
  ASSERT_TRUE(window_comes("Subtitles"));
  EXPECT_TRUE(wait_until([] {
    return dynamic_cast<wxSpinCtrl*>(control("cuenumber", "Subtitles"))->GetValue() == 2;
  }));
  close("Subtitles");
  EXPECT_TRUE(window_goes("Subtitles"));
}

TEST_F(FindingPlaces, CommandsAreThoseOfTheNavigationDialog) {
  project p = one_title(real_video(), real_audio());
  add_title_to(p, real_video(), real_audio());
  load(p);
  open_at({place::title_command, 2, 0, 0, std::nullopt});
  ASSERT_TRUE(window_comes("navcommands"));
  EXPECT_EQ(ask_ui([] {
              return dynamic_cast<wxListBox*>(control("List1", "navcommands"))->GetSelection();
            }),
            1);
  EXPECT_TRUE(wait_until([] { return control("Combo1", "navcommands")->HasFocus(); }));
  close("navcommands");
  EXPECT_TRUE(window_goes("navcommands"));
  open_at({place::first_play, 0, 0, 0, std::nullopt});
  ASSERT_TRUE(window_comes("navcommands"));
  EXPECT_TRUE(wait_until([] { return control("firstplay", "navcommands")->HasFocus(); }));
  close("navcommands");
  EXPECT_TRUE(window_goes("navcommands"));
}

TEST_F(FindingPlaces, WhatIsGoneMeanwhileOpensNothing) {
  load(one_title(real_video(), real_audio()));
  open_at({place::menu, 0, 7, 1, std::nullopt});
  open_at({place::title, 9, 0, 0, std::nullopt});
  on_ui([] {});
  EXPECT_FALSE(top_dialog());
  EXPECT_FALSE(ask_ui([] { return wxWindow::FindWindowByName("tsmenu") != nullptr; }));
  EXPECT_EQ(window_->shown_project().selected, -1);
}

}  // namespace
}  // namespace corvane::testing_support
