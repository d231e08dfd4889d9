// The window of "make menus..." with a real pointer and real keys: the page as it will be, its
// texts edited in the picture, and menus that are made with the real tools.
#include "formats/numbers.h"
#include "menus/maker/menu_memory.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/files/program_folder.h"
#include "project/disc_of.h"
#include "project/menu_rows.h"
#include "project/title_commands.h"
#include "ui/command_bars.h"
#include "ui/main_window.h"
#include "ui/maker/maker_picture.h"
#include "ui/maker/maker_window.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>
#include <wx/checkbox.h>
#include <wx/checklst.h>
#include <wx/dataview.h>
#include <wx/menuitem.h>
#include <wx/notebook.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

namespace corvane::testing_support {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class MenuMakerWindow : public window_test {
 protected:
  static constexpr const char* maker = "menumaker";

  /// Titles with real video, of which the first has three chapters.
  project project_of_titles(int titles) {
    project p = project_with_menus(titles);
    for (int i = 0; i < titles; ++i)
      fs::copy_file(real_video(),
                    path_of(folder_.path(std::string(1, static_cast<char>('a' + i)) + ".m2v")),
                    fs::copy_options::overwrite_existing);
    p.chapters[0] = "00:00:00.00,00:00:01.00,00:00:02.00";
    p.menulist.clear();
    p.moremenuoptions.clear();
    p.menubuttons.clear();
    return p;
  }
  void open(const project& p) {
    load(p);
    open_again();
  }
  void open_again() {
    press("ctrl+shift+e");
    ASSERT_TRUE(window_comes(maker));
    ASSERT_TRUE(wait_until([] { return picture().shown_page().IsOk() && picture().HasFocus(); }));
  }
  void TearDown() override {
    if (ask_ui([] { return wxWindow::FindWindowByName(maker) != nullptr; }))
      close(maker);
    EXPECT_TRUE(window_goes(maker));
    window_test::TearDown();
  }

  const project& shown() const { return window_->shown_project(); }

  // Only for use in the main thread.
  static maker_picture& picture() { return *dynamic_cast<maker_picture*>(control("page", maker)); }
  static const menus_draft& draft() { return dynamic_cast<maker_window*>(control(maker))->draft(); }

  static std::string line(const std::string& name) {
    return ask_ui(
        [&] { return utf8_of(dynamic_cast<wxStaticText*>(control(name, maker))->GetLabelText()); });
  }
  static bool line_becomes(const std::string& name, const std::string& wanted) {
    if (eventually([&] { return line(name) == wanted; }))
      return true;
    EXPECT_EQ(line(name), wanted);
    return false;
  }
  static std::string notes() {
    return ask_ui(
        [] { return utf8_of(dynamic_cast<wxTextCtrl*>(control("notes", maker))->GetValue()); });
  }
  static std::string text_of(int item) {
    return ask_ui([&] { return draft().text_of(item); });
  }
  static bool text_becomes(int item, const std::string& wanted) {
    return wait_until([&] { return draft().text_of(item) == wanted; });
  }
  static wxPoint middle_of(int item) {
    return ask_ui([&] {
      const wxRect r = picture().on_window(draft().text_place(item));
      return picture().ClientToScreen(r.GetPosition() + wxPoint(r.width / 2, r.height / 2));
    });
  }
  static bool edits() {
    return wait_until([] {
      return picture().is_editing() && wxWindow::FindFocus() != nullptr &&
             wxWindow::FindFocus()->GetName() == "pagetext";
    });
  }
  static bool edits_no_more() {
    return wait_until([] { return !picture().is_editing() && picture().HasFocus(); });
  }
  /// The colour of a dot of the disc's picture.
  static wxColour dot(int x, int y) {
    return ask_ui([&] {
      const wxImage& page = picture().shown_page();
      return wxColour(page.GetRed(x, y), page.GetGreen(x, y), page.GetBlue(x, y));
    });
  }
  static void show_page_of_choices(std::size_t page) {
    on_ui([&] { dynamic_cast<wxNotebook*>(control("makerchoices", maker))->SetSelection(page); });
  }
  static void choose(const std::string& name, int entry) { choose_entry(name, entry, maker); }
  static void make_and_wait(const std::string& outcome) {
    press("alt+k");
    EXPECT_TRUE(eventually([&] { return line("said") == outcome; }, 120)) << line("said");
  }
  static void close_window() {
    click_control("close", maker);
    EXPECT_TRUE(window_goes(maker));
  }
};

TEST_F(MenuMakerWindow, ShowsThePagesAsTheyWillBe) {
  open(project_of_titles(2));
  EXPECT_EQ(line("pagewords"), "menu 1 of 2: Titles");
  EXPECT_EQ(line("said"), "2 menus: 1 page of titles, 1 page of chapters");
  EXPECT_EQ(line("selectedentry"), "button 1: a, leads to menu 2: a");
  EXPECT_EQ(ask_ui([] { return picture().shown_page().GetSize(); }), wxSize(720, 480));
  screenshot("menu-maker");
  press("Page_Down");
  EXPECT_TRUE(line_becomes("pagewords", "menu 2 of 2: a"));
  EXPECT_EQ(line("selectedentry"), "button 1: Chapter 1, leads to title 1, chapter 1");
  press("Page_Down");
  press("Page_Up");
  EXPECT_TRUE(line_becomes("pagewords", "menu 1 of 2: Titles"));
  click_control("nextpage", maker);
  EXPECT_TRUE(line_becomes("pagewords", "menu 2 of 2: a"));
  EXPECT_FALSE(ask_ui([] { return control("nextpage", maker)->IsEnabled(); }));
}

TEST_F(MenuMakerWindow, SelectedButtonHasItsLook) {
  open(project_of_titles(2));
  const page_box first = ask_ui([] { return draft().place(1); });
  const page_box second = ask_ui([] { return draft().place(2); });
  const wxColour highlighted = dot(first.left, first.top + first.height / 2);
  EXPECT_NE(highlighted, dot(second.left, second.top + second.height / 2));
  press("Down");
  EXPECT_TRUE(
      eventually([&] { return dot(second.left, second.top + second.height / 2) == highlighted; }));
  EXPECT_NE(dot(first.left, first.top + first.height / 2), highlighted);
  click_control("showpressed", maker);
  EXPECT_TRUE(
      eventually([&] { return dot(second.left, second.top + second.height / 2) != highlighted; }));
}

TEST_F(MenuMakerWindow, TextsAreEditedInThePictureByKeys) {
  open(project_of_titles(2));
  press("F2");
  ASSERT_TRUE(edits());
  type_text("The long journey");
  screenshot("menu-maker-edit");
  press("Tab");
  EXPECT_TRUE(text_becomes(1, "The long journey"));
  ASSERT_TRUE(edits()) << "the next one";
  type_text("Home again");
  press("Return");
  EXPECT_TRUE(text_becomes(2, "Home again"));
  EXPECT_TRUE(edits_no_more());
  press("Home");
  press("Return");
  ASSERT_TRUE(edits());
  type_text("Our films");
  press("Return");
  EXPECT_TRUE(text_becomes(0, "Our films"));
  EXPECT_TRUE(line_becomes("pagewords", "menu 1 of 2: Our films"));
  press("F2");
  ASSERT_TRUE(edits());
  type_text("no");
  press("Escape");
  EXPECT_TRUE(edits_no_more());
  EXPECT_EQ(text_of(0), "Our films");
  press("F2");
  ASSERT_TRUE(edits());
  press("ctrl+a");
  press("Delete");
  press("Return");
  EXPECT_TRUE(text_becomes(0, "Titles")) << "what it says by itself";
  close(maker);
  answer_message("Close without making the menus?  The texts that you have typed are lost.", "No");
  close(maker);
  answer_message("Close without making the menus?  The texts that you have typed are lost.", "Yes");
  EXPECT_TRUE(window_goes(maker));
}

TEST_F(MenuMakerWindow, TextsAreEditedInThePictureByThePointer) {
  open(project_of_titles(2));
  click_at(middle_of(2));
  EXPECT_TRUE(line_becomes("selectedentry", "button 2: b, leads to title 2"));
  EXPECT_FALSE(ask_ui([] { return picture().is_editing(); }));
  std::this_thread::sleep_for(std::chrono::milliseconds(600));
  click_at(middle_of(2));
  ASSERT_TRUE(edits());
  type_text("Second");
  click_at(middle_of(1));
  EXPECT_TRUE(text_becomes(2, "Second")) << "what is typed counts";
  EXPECT_TRUE(wait_until([] { return draft().selected() == 1; }));
  click_at(middle_of(2));
  std::this_thread::sleep_for(std::chrono::milliseconds(600));
  double_click_at(middle_of(1));
  EXPECT_TRUE(edits());
  press("Escape");
  EXPECT_TRUE(edits_no_more());
  close(maker);
  answer_message("Close without making the menus?  The texts that you have typed are lost.", "Yes");
  EXPECT_TRUE(window_goes(maker));
}

TEST_F(MenuMakerWindow, DesignLayoutAndBackgroundChangeThePageAtOnce) {
  const std::string photo = folder_.path("photo.png");
  ASSERT_EQ(std::system(("gm convert -size 900x500 xc:red '" + photo + "'").c_str()), 0);
  open(project_of_titles(2));
  show_page_of_choices(1);
  screenshot("menu-maker-look");
  const wxColour before = dot(3, 3);
  on_ui([] { control("designs", maker)->SetFocus(); });
  press("Down");
  EXPECT_TRUE(wait_until([] { return draft().design() > 0; }));
  choose("background", 2);
  EXPECT_TRUE(line_becomes("said", "Please choose the picture behind the menus."));
  EXPECT_FALSE(ask_ui([] { return control("make", maker)->IsEnabled(); }));
  click_control("choosepicture", maker);
  answer_file("picture behind the menus", photo);
  EXPECT_TRUE(line_becomes("said", "2 menus: 1 page of titles, 1 page of chapters"));
  EXPECT_TRUE(eventually([] { return dot(3, 3) == wxColour(255, 0, 0); }));
  EXPECT_NE(before, wxColour(255, 0, 0));
  screenshot("menu-maker-picture");
  choose("arrangement", 2);
  EXPECT_TRUE(wait_until([] { return draft().look().arrangement == menu_arrangement::grid; }));
  choose("shape", 1);
  EXPECT_TRUE(wait_until([] { return draft().shown().page.is_wide; }));
  choose("background", 1);
  EXPECT_TRUE(eventually([] { return dot(3, 3) != wxColour(255, 0, 0); }));
  show_page_of_choices(2);
  const int size = ask_ui([] { return draft().look().entry.style.size; });
  on_ui([] { control("lettersize", maker)->SetFocus(); });
  press("Up");
  EXPECT_TRUE(wait_until([&] { return draft().look().entry.style.size == size + 1; }));
  screenshot("menu-maker-letters");
}

TEST_F(MenuMakerWindow, VideoBehindTheMenusIsShownBehindTheirTexts) {
  open(project_of_titles(2));
  show_page_of_choices(1);
  choose("background", 3);
  EXPECT_TRUE(line_becomes("said", "Please choose the video that plays behind the menus."));
  EXPECT_TRUE(eventually([] { return dot(700, 240) == wxColour(0, 0, 0); }));
  click_control("choosefilm", maker);
  answer_file("video behind the menus", real_video());
  EXPECT_TRUE(line_becomes("said", "2 menus: 1 page of titles, 1 page of chapters"));
  EXPECT_TRUE(eventually([] { return dot(700, 240) != wxColour(0, 0, 0); }));
  screenshot("menu-maker-film");
}

TEST_F(MenuMakerWindow, MenusAreMadeOverAFilmWithItsSound) {
  const std::string film = folder_.path("waves.mp4");
  ASSERT_EQ(std::system(("ffmpeg -v error -nostdin -y -f lavfi -i testsrc=size=640x360:rate=25:"
                         "duration=2 -f lavfi -i sine=440:duration=2 -c:v mpeg4 -c:a aac '" +
                         film + "'")
                            .c_str()),
            0);
  open(project_of_titles(2));
  show_page_of_choices(1);
  choose("background", 3);
  click_control("choosefilm", maker);
  answer_file("video behind the menus", film);
  EXPECT_TRUE(line_becomes("said", "2 menus: 1 page of titles, 1 page of chapters"));
  make_and_wait("2 menus made.");
  close_window();
  ASSERT_THAT(shown().menulist, SizeIs(2));
  for (const std::string& row : shown().menulist) {
    const menu_streams made = parse_menu_row(row);
    EXPECT_TRUE(file_exists(native_from_stored(made.video)));
    EXPECT_TRUE(file_exists(native_from_stored(made.audio)));
  }
  for (const std::string& options : shown().moremenuoptions)
    EXPECT_TRUE(parse_menu_options(options).loop);
  press("ctrl+z");
  EXPECT_TRUE(eventually([this] { return shown().menulist.empty(); }));
}

TEST_F(MenuMakerWindow, ThumbnailsShowTheFilmsAndTheWindowLivesMeanwhile) {
  open(project_of_titles(2));
  show_page_of_choices(1);
  choose("arrangement", 2);
  const auto middle_of_film = [] {
    return ask_ui([] {
      for (const page_shape& shape : draft().shown().page.shapes)
        if (const auto* const film = std::get_if<page_thumbnail>(&shape))
          return wxPoint(film->box.left + film->box.width / 2,
                         film->box.top + film->box.height / 2);
      return wxPoint(0, 0);
    });
  };
  EXPECT_TRUE(wait_until([] { return draft().look().arrangement == menu_arrangement::grid; }));
  const wxPoint place = middle_of_film();
  EXPECT_TRUE(eventually([&] { return dot(place.x, place.y) != wxColour(40, 40, 40); }));
  screenshot("menu-maker-grid");
}

TEST_F(MenuMakerWindow, ChaptersTicksAndPlayAllGoByKeys) {
  open(project_of_titles(2));
  on_ui([] { control("chaptermenus", maker)->SetFocus(); });
  press("space");
  EXPECT_TRUE(line_becomes("said", "1 menu: 1 page of titles"));
  press("space");
  EXPECT_TRUE(line_becomes("said", "2 menus: 1 page of titles, 1 page of chapters"));
  press("alt+p");
  EXPECT_TRUE(eventually([] { return notes().find("\"Play all\" lets each title") == 0; }))
      << notes();
  EXPECT_TRUE(wait_until([] { return draft().items() == 4; }));
}

TEST_F(MenuMakerWindow, MenusAreMadeAndMadeAgainWithTheUsersTexts) {
  open(project_of_titles(2));
  press("F2");
  ASSERT_TRUE(edits());
  type_text("The long journey");
  press("Return");
  EXPECT_TRUE(text_becomes(1, "The long journey"));
  show_page_of_choices(1);
  on_ui([] { control("designs", maker)->SetFocus(); });
  press("Down");
  const std::string design =
      ask_ui([] { return draft().designs()[draft().design()].design->name; });
  make_and_wait("2 menus made.");
  screenshot("menu-maker-made");
  close_window();
  EXPECT_THAT(shown().menulist, SizeIs(2));
  EXPECT_THAT(button_records(shown(), 1), SizeIs(2));
  EXPECT_TRUE(file_exists(native_from_stored(parse_menu_row(shown().menulist[0]).video)));
  EXPECT_EQ(ask_ui([this] { return utf8_of(window_->bars().item("undo")->GetItemLabelText()); }),
            "undo make menus");
  // With another title.
  open_again();
  EXPECT_EQ(text_of(1), "The long journey");
  EXPECT_EQ(ask_ui([] { return draft().designs()[draft().design()].design->name; }), design);
  EXPECT_EQ(ask_ui([] { return draft().own_menus(); }), 0);
  close_window();
  press("ctrl+z");
  EXPECT_TRUE(eventually([this] { return shown().menulist.empty(); }));
}

TEST_F(MenuMakerWindow, StoppedItLeavesNothing) {
  project p = project_of_titles(3);
  for (std::string& chapters : p.chapters)
    chapters = "00:00:00.00,00:00:01.00,00:00:02.00";
  open(p);
  replace_tool("mpeg2enc", "sleep 60\n");
  const std::vector<std::string> before = files_here();
  click_control("make", maker);
  ASSERT_TRUE(wait_until([] { return is_seen("stop", maker); }));
  EXPECT_TRUE(wait_until([] { return control("stop", maker)->HasFocus(); }));
  EXPECT_FALSE(ask_ui([] { return control("makerchoices", maker)->IsEnabled(); }));
  EXPECT_FALSE(ask_ui([] { return is_seen("said", maker) || is_seen("mark", maker); }));
  EXPECT_TRUE(eventually([] { return line("step").ends_with(" left"); })) << line("step");
  EXPECT_THAT(line("step"), StartsWith("making the background of menu 1 of 4, "));
  screenshot("menu-maker-runs");
  press("Escape");
  answer_message("Stop making the menus?  The project stays as it is.", "Yes");
  EXPECT_TRUE(window_goes(maker));
  EXPECT_EQ(files_here(), before);
  EXPECT_THAT(shown().menulist, IsEmpty());
}

TEST_F(MenuMakerWindow, JumpTableWithMenusIsAskedAboutOnceAndUndone) {
  project p = project_of_titles(1);
  p.menulist = {folder_.stored("second.m2v") + "/"};
  p.moremenuoptions = {new_menu_options};
  p.menubuttons = {""};
  open(p);
  EXPECT_TRUE(ask_ui([] { return control("ownmenus", maker)->IsShown(); }));
  click_control("jumptable", maker);
  EXPECT_TRUE(
      eventually([] { return notes().find("are erased, and all are made") != std::string::npos; }));
  click_control("make", maker);
  const std::string question = "The jump table can change only without menus.";
  answer_message_with(question, "Cancel");
  EXPECT_TRUE(no_dialog());
  EXPECT_FALSE(shown().jumptable);
  click_control("make", maker);
  answer_message_with(question, "Yes");
  EXPECT_TRUE(line_becomes("said", "2 menus made."));
  close_window();
  EXPECT_TRUE(shown().jumptable);
  EXPECT_THAT(shown().menulist, SizeIs(2));
  press("ctrl+z");
  EXPECT_TRUE(eventually([this] { return !shown().jumptable; }));
  EXPECT_EQ(shown().menulist, p.menulist);
}

TEST_F(MenuMakerWindow, PlayAllLetsTitlesRunOnAndIsUndoneWithTheMenus) {
  const project p = project_of_titles(2);
  open(p);
  press("alt+p");
  EXPECT_TRUE(wait_until([] { return draft().items() == 4; }));
  make_and_wait("2 menus made.");
  close_window();
  ASSERT_THAT(shown().postinfo, SizeIs(2));
  EXPECT_THAT(shown().postinfo[0], StartsWith("jump title 2 "));
  EXPECT_THAT(shown().postinfo[1], StartsWith("call menu "));
  press("ctrl+z");
  EXPECT_TRUE(eventually([this] { return shown().menulist.empty(); }));
  EXPECT_EQ(shown().postinfo, p.postinfo);
}

TEST_F(MenuMakerWindow, TheDiscBeginsWithTheMenusWhereThatIsMarked) {
  project p = project_of_titles(2);
  open(p);
  EXPECT_FALSE(is_seen("begins", maker)) << "it does";
  close_window();
  p.firstplay = "jump title 2";
  open(p);
  EXPECT_TRUE(is_seen("begins", maker));
  EXPECT_THAT(notes(), StartsWith("The disc begins with \"jump title 2\""));
  screenshot("menu-maker-begins");
  press("alt+d");
  EXPECT_TRUE(eventually([] { return notes() == "Nothing is left out or shortened."; }));
  make_and_wait("2 menus made.");
  close_window();
  EXPECT_EQ(shown().firstplay, "<default>");
  press("ctrl+z");
  EXPECT_TRUE(eventually([this] { return shown().firstplay == "jump title 2"; }));
  EXPECT_THAT(shown().menulist, IsEmpty());
}

TEST_F(MenuMakerWindow, WithoutWhatDrawsItIsToldAndNothingOpens) {
  load(project_of_titles(1));
  const auto missing = [] {
    return result<std::unique_ptr<page_drawer>>::fail(
        "a file of the program is missing, \"corvane-letters.so\"");
  };
  on_ui([&] { window_->CallAfter([this, missing] { open_menu_maker_with(*window_, missing); }); });
  answer_message(
      "The menus cannot be drawn: a file of the program is missing, \"corvane-letters.so\".  "
      "Installing Corvane again brings back what is missing.",
      "OK");
  EXPECT_TRUE(no_dialog());
  EXPECT_THAT(shown().menulist, IsEmpty());
}

TEST_F(MenuMakerWindow, MissingToolIsToldAndNothingChanges) {
  open(project_of_titles(1));
  replace_tool("mpeg2enc", "echo '**ERROR: out of luck' >&2\nexit 1\n");
  const std::vector<std::string> before = files_here();
  click_control("make", maker);
  EXPECT_TRUE(eventually([] { return line("said").starts_with("No menus were made: "); }));
  EXPECT_EQ(files_here(), before);
  EXPECT_THAT(shown().menulist, IsEmpty());
}

}  // namespace
}  // namespace corvane::testing_support
