// A user's way through titles and project files, with the real window.
#include "project/project_file.h"
#include "ui/gtk_sight.h"
#include "ui/main_window.h"
#include "ui/widgets/space_bar.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>
#include <wx/choice.h>
#include <wx/textctrl.h>

#include <cstdint>
#include <filesystem>

namespace corvane::testing_support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Titles : public window_test {
 protected:
  void SetUp() override {
    window_test::SetUp();
    for (const char* name : {"a.m2v", "a.ac3", "b.m2v", "b.ac3", "c.mp2"})
      file(name);
  }
  std::string path(const char* name) const { return folder_.path(name); }
  void add_two() {
    add_title(path("a.m2v"), path("a.ac3"));
    add_title(path("b.m2v"), path("b.ac3"));
  }
};

TEST_F(Titles, AddedThroughTheDialogsStandInTheList) {
  add_two();
  EXPECT_THAT(rows(), ElementsAre("title1:a.m2v/a.ac3", "title2:b.m2v/b.ac3"));
  EXPECT_EQ(label_of("Frame1"), "2 titles loaded");
  EXPECT_EQ(label_of("dvdsizetext"), "2 titles\n0 menus\n0.000 gig total");
  EXPECT_FALSE(ask_ui([] { return control("Comboregion")->IsEnabled(); }));
}

TEST_F(Titles, TheirRoomIsShownAgainstBothDiscs) {
  const auto space = [] { return dynamic_cast<space_bar*>(control("spacepicture")); };
  EXPECT_EQ(label_of("spacetext"), "4.37 gig free on a DVD-5, 7.95 on a DVD-9");
  std::filesystem::resize_file(path("a.m2v"), std::uintmax_t{5'000'000'000});
  add_title(path("a.m2v"), path("a.ac3"));
  EXPECT_EQ(label_of("spacetext"), "0.28 gig too much for a DVD-5, 3.30 free on a DVD-9");
  on_ui([&space] {
    ASSERT_NE(space(), nullptr);
    EXPECT_EQ(space()->used(), 5'000'000'001u);
    const int width = space()->GetClientSize().x;
    EXPECT_EQ(space()->place_of(8'543'666'176), width);
    EXPECT_NEAR(space()->place_of(4'700'372'992), width * 0.55, 1 + width * 0.001);
  });
  press("ctrl+z");
  EXPECT_TRUE(wait_until([&space] { return space()->used() == 0; }));
  EXPECT_EQ(label_of("spacetext"), "4.37 gig free on a DVD-5, 7.95 on a DVD-9");
}

TEST_F(Titles, CancellingTheAudioDialogAddsNothing) {
  click_tool("add title");
  answer_file("select video stream", path("a.m2v"));
  cancel_dialog("select audio stream");
  EXPECT_TRUE(no_dialog());
  EXPECT_THAT(rows(), IsEmpty());
}

TEST_F(Titles, FileDialogOffersUpperCaseNamesAndBothFilters) {
  press("ctrl+t");
  ASSERT_TRUE(wait_until([] { return look_at_dialog().has_value(); }));
  on_ui([] {
    EXPECT_TRUE(filter_offers("movie.m2v"));
    EXPECT_TRUE(filter_offers("MOVIE.M2V"));
    EXPECT_TRUE(filter_offers("movie.mpv"));
    EXPECT_FALSE(filter_offers("movie.vob"));
  });
  cancel_dialog("select video stream");
}

TEST_F(Titles, StreamWithoutNavigationPacketsIsRefusedWithAMessage) {
  const std::string plain = folder_.add("plain.VOB", "no packets");
  click_menu("file", "add new title...");
  answer_file("select video stream", plain);
  const seen_dialog seen =
      answer_message("NAV packets are not detected in plain.VOB.  Please demultiplex.", "OK");
  EXPECT_EQ(seen.picture, "error");
  EXPECT_EQ(seen.title, "Corvane");
  EXPECT_THAT(rows(), IsEmpty());
}

TEST_F(Titles, MoveWithTheButtonsAndWithTheKeys) {
  add_two();
  click_row(0);
  ASSERT_EQ(selection(), 0);
  click_control("titledown");
  EXPECT_THAT(rows(), ElementsAre("title1:b.m2v/b.ac3", "title2:a.m2v/a.ac3"));
  EXPECT_EQ(selection(), 1);
  click_control("titleup");
  EXPECT_THAT(rows(), ElementsAre("title1:a.m2v/a.ac3", "title2:b.m2v/b.ac3"));
  EXPECT_EQ(selection(), 0);
  press("alt+Down");
  EXPECT_THAT(rows(), ElementsAre("title1:b.m2v/b.ac3", "title2:a.m2v/a.ac3"));
  press("alt+Up");
  EXPECT_THAT(rows(), ElementsAre("title1:a.m2v/a.ac3", "title2:b.m2v/b.ac3"));
}

TEST_F(Titles, RemovedByTheButtonAndByTheDeleteKey) {
  add_two();
  add_title(path("a.m2v"), path("c.mp2"));
  click_row(1);
  click_tool("remove title");
  EXPECT_TRUE(wait_until([] { return true; }));
  EXPECT_THAT(rows(), ElementsAre("title1:a.m2v/a.ac3", "title2:a.m2v/c.mp2"));
  click_row(0);
  press("Delete");
  EXPECT_THAT(rows(), ElementsAre("title1:a.m2v/c.mp2"));
  EXPECT_EQ(label_of("Frame1"), "1 titles loaded");
}

TEST_F(Titles, RemovingTheLastTitleFreesTheRegion) {
  add_title(path("a.m2v"), path("a.ac3"));
  click_row(0);
  press("Delete");
  EXPECT_THAT(rows(), IsEmpty());
  EXPECT_TRUE(ask_ui([] { return control("Comboregion")->IsEnabled(); }));
}

TEST_F(Titles, RemovingWithoutASelectionAsksForOne) {
  click_tool("remove title");
  EXPECT_EQ(answer_message("Please select a title first to remove.", "OK").picture, "warning");
}

TEST_F(Titles, InsertKeyOnTheListAddsATitle) {
  click_control("List1");
  press("Insert");
  cancel_dialog("select video stream");
}

TEST_F(Titles, AudioStreamIsAddedFromTheDropDown) {
  add_title(path("a.m2v"), path("a.ac3"));
  click_row(0);
  click_tool_arrow("extras");
  click_menu_item("add additional audio track");
  answer_file("select audio stream", path("c.mp2"));
  EXPECT_TRUE(no_dialog());
  EXPECT_THAT(rows(), ElementsAre("title1:a.m2v/a.ac3/c.mp2"));
}

TEST_F(Titles, ButtonExtrasOpensItsDropDown) {
  click_tool("extras");
  click_menu_item("edit A/V delay");
  answer_message("Please select a title to adjust delays.", "OK");
}

TEST_F(Titles, DelayIsAskedForAndKept) {
  add_title(path("a.m2v"), path("a.ac3"));
  click_row(0);
  const auto delay_is = [this](const char* delay) {
    return wait_until(
        [&] { return window_->shown_project().delay == std::vector{std::string(delay)}; });
  };
  click_menu("extras", "edit A/V delay");
  answer_input("A/V sync delay", "-120 ms");
  EXPECT_TRUE(delay_is("-120"));
  press("ctrl+d");
  ASSERT_TRUE(wait_until([] { return look_at_dialog().has_value(); }));
  press("ctrl+a");
  type_text("1,5");
  press("Return");
  EXPECT_EQ(answer_message("\"1,5\" was taken as 1 ms.  A delay is a number of milliseconds with a "
                           "point before its fraction, such as 200, -40 or 12.5.",
                           "OK")
                .picture,
            "info");
  EXPECT_TRUE(delay_is("1"));
  press("ctrl+d");
  answer_input("A/V sync delay", "0");
  EXPECT_TRUE(delay_is("0"));
  press("ctrl+d");
  cancel_dialog("A/V sync delay");
  EXPECT_THAT(window_->shown_project().delay, ElementsAre("0"));
}

TEST_F(Titles, TheRegionThatIsShownCanBeChosenAgainForThePreference) {
  project p;
  p.globalregion = "PAL";
  load(p);
  ASSERT_TRUE(wait_until([] { return control("globalregion")->GetLabel() == "PAL"; }));
  const auto preferences = [this] { return folder_.read("config/corvane/preferences"); };
  EXPECT_THAT(preferences(), testing::HasSubstr("dvdregion = NTSC"));
  click_control("Comboregion");
  press("Escape");
  EXPECT_THAT(preferences(), testing::HasSubstr("dvdregion = NTSC")) << "nothing was chosen";
  click_control("Comboregion");
  press("Return");
  EXPECT_TRUE(wait_until([&] {
    return preferences().find("dvdregion = PAL") != std::string::npos;
  })) << preferences();
}

TEST_F(Titles, RegionIsChosenShownAndRemembered) {
  click_control("Comboregion");
  press("Down");
  press("Return");
  EXPECT_TRUE(wait_until([] { return control("globalregion")->GetLabel() == "PAL"; }));
  EXPECT_NE(folder_.read("config/corvane/preferences").find("dvdregion = PAL"), std::string::npos)
      << folder_.read("config/corvane/preferences");
}

TEST_F(Titles, StatisticsTurnRedAboveWhatADiscHolds) {
  const auto colour = [] {
    return ask_ui([] { return control("dvdsizetext")->GetForegroundColour(); });
  };
  std::filesystem::resize_file(path("a.m2v"), 4'700'000'000 - 1);  // takes no room on the disk
  add_title(path("a.m2v"), path("a.ac3"));
  EXPECT_EQ(label_of("dvdsizetext"), "1 titles\n0 menus\n4.377 gig total");
  EXPECT_NE(colour(), *wxRED);
  add_title(path("b.m2v"), path("b.ac3"));
  EXPECT_EQ(colour(), *wxRED);
  click_row(1);
  press("Delete");
  EXPECT_NE(colour(), *wxRED);
}

TEST_F(Titles, ProjectIsSavedAndLoadedAgain) {
  add_two();
  press("ctrl+shift+s");
  answer_file("save corvane project", path("disc"));
  EXPECT_TRUE(no_dialog());
  EXPECT_EQ(folder_.read("disc.cvp").substr(0, 27), "Corvane 0.997 - 1/2/2005\r\n\\");

  click_row(0);
  press("Delete");
  press("ctrl+o");
  EXPECT_EQ(answer_message("overwrite currect project?", "OK").picture, "info");
  answer_file("load corvane project", path("disc.cvp"));
  EXPECT_TRUE(no_dialog());
  EXPECT_THAT(rows(), ElementsAre("title1:a.m2v/a.ac3", "title2:b.m2v/b.ac3"));
}

TEST_F(Titles, SavingOverAFileAsksAndEnterKeepsIt) {
  folder_.add("disc.cvp", "old");
  add_title(path("a.m2v"), path("a.ac3"));
  press("ctrl+shift+s");
  answer_file("save corvane project", path("disc.cvp"));
  ASSERT_TRUE(wait_until([] {
    const auto seen = look_at_dialog();
    return seen && seen->text == "File exists.  Overwrite?";
  }));
  press("Return");
  EXPECT_TRUE(no_dialog());
  EXPECT_EQ(folder_.read("disc.cvp"), "old");
  press("ctrl+shift+s");
  answer_file("save corvane project", path("disc.cvp"));
  EXPECT_EQ(answer_message("File exists.  Overwrite?", "Yes").picture, "warning");
  EXPECT_NE(folder_.read("disc.cvp"), "old");
}

TEST_F(Titles, MissingFileOfAProjectIsNamed) {
  add_title(path("a.m2v"), path("a.ac3"));
  press("ctrl+shift+s");
  answer_file("save corvane project", path("disc.cvp"));
  EXPECT_TRUE(no_dialog());
  std::filesystem::remove(path("a.ac3"));
  on_ui([this] { window_->CallAfter([this] { window_->load(path("disc.cvp")); }); });
  leave_missing_files();
  EXPECT_EQ(answer_message(path("a.ac3") + " appears to be missing", "OK").picture, "error");
  EXPECT_THAT(rows(), IsEmpty());
  EXPECT_EQ(label_of("Frame1"), "0 titles loaded");
}

TEST_F(Titles, DroppedStreamsBecomeATitle) {
  on_ui([this] { window_->CallAfter([this] { window_->drop({path("a.m2v"), path("a.ac3")}); }); });
  EXPECT_TRUE(wait_until([this] { return !window_->shown_project().List1.empty(); }));
  EXPECT_THAT(rows(), ElementsAre("title1:a.m2v/a.ac3"));
}

TEST_F(Titles, ClosingAnUnchangedProjectDoesNotAsk) {
  on_ui([this] { window_->Close(); });
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("main") == nullptr; }));
}

TEST_F(Titles, ClosingAChangedProjectAsksAndCancelKeepsTheWindow) {
  add_title(path("a.m2v"), path("a.ac3"));
  press("alt+F4");
  const seen_dialog seen = answer_message("Do you want to save project?", "Cancel");
  EXPECT_EQ(seen.picture, "warning");
  EXPECT_THAT(seen.buttons, testing::UnorderedElementsAre("Yes", "No", "Cancel"));
  EXPECT_THAT(rows(), ElementsAre("title1:a.m2v/a.ac3"));
  press("ctrl+q");
  answer_message("Do you want to save project?", "No");
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("main") == nullptr; }));
}

TEST_F(Titles, ClosingWithYesSavesFirst) {
  add_title(path("a.m2v"), path("a.ac3"));
  press("ctrl+q");
  answer_message("Do you want to save project?", "Yes");
  answer_file("save corvane project", path("last.cvp"));
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("main") == nullptr; }));
  EXPECT_TRUE(file_exists(path("last.cvp")));
}

TEST_F(Titles, LogWindowIsShownClearedAndNotClosed) {
  press("ctrl+l");
  ASSERT_TRUE(wait_until([] {
    const wxWindow* log = wxWindow::FindWindowByName("log");
    return log != nullptr && log->IsShownOnScreen();
  }));
  press("alt+F4");
  on_ui([] { control("log")->Close(); });
  EXPECT_TRUE(ask_ui([] { return control("log")->IsShownOnScreen(); }));
  EXPECT_FALSE(ask_ui([] { return control("stop")->IsEnabled(); }));
  EXPECT_EQ(ask_ui([] { return utf8_of(dynamic_cast<wxTextCtrl*>(control("Text1"))->GetValue()); }),
            "Corvane 0.997 - 1/2/2005\n");
}

TEST_F(Titles, EnterKeepsTheTitlesWhenAnotherProjectWouldReplaceThem) {
  add_two();
  press("ctrl+o");
  ASSERT_TRUE(wait_until(
      [] { return look_at_dialog() && look_at_dialog()->text == "overwrite currect project?"; }));
  press("Return");
  EXPECT_TRUE(no_dialog());
  EXPECT_EQ(rows().size(), 2u);
}

TEST_F(Titles, EnterKeepsHandEditedXml) {
  project p = project_with_menus(1);
  p.customxml = "<dvdauthor>\r\n</dvdauthor>\r\n";
  load(p);
  click_row(0);
  click_tool("remove title");
  ASSERT_TRUE(wait_until([] {
    return look_at_dialog() &&
           look_at_dialog()->text ==
               "You have edited the XML manually, do you want to discard these changes?";
  }));
  press("Return");
  EXPECT_TRUE(no_dialog());
  EXPECT_EQ(rows().size(), 1u);
  EXPECT_FALSE(ask_ui([this] { return window_->shown_project().customxml.empty(); }));
}

TEST_F(Titles, WheelOverTheRegionThatWasNotClickedChangesNothing) {
  const auto region = [] {
    return ask_ui([] { return dynamic_cast<wxChoice*>(control("Comboregion"))->GetSelection(); });
  };
  for (const wheel way : {wheel::down, wheel::up, wheel::down})
    turn_wheel_over("Comboregion", way);
  on_ui([] { control("Comboregion")->SetFocus(); });
  turn_wheel_over("Comboregion", wheel::down);
  EXPECT_EQ(region(), 0);
  EXPECT_EQ(ask_ui([this] { return window_->shown_project().globalregion; }), "NTSC");
  EXPECT_EQ(label_of("globalregion"), "NTSC");
  click_control("Comboregion");  // its list; then it was clicked
  press("Escape");
  turn_wheel_over("Comboregion", wheel::down);
  EXPECT_TRUE(wait_until([this] { return window_->shown_project().globalregion == "PAL"; }));
}

}  // namespace
}  // namespace corvane::testing_support
