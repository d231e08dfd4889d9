// How the menu editor's picture shows a menu: each button in its own look, what is wrong with
// them, the ways of the arrow keys, shapes and sizes.
#include "platform/files/files.h"
#include "ui/gtk_sight.h"
#include "ui/menu_editor_fixture.h"

#include <gmock/gmock.h>
#include <wx/choice.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>

namespace corvane::testing_support {
namespace {

const char* const yellow_box = " 100/ 100/ 300/ 160/jump title 1 chapter  2/yellow/white";
const char* const cyan_box = " 400/ 100/ 600/ 160/exit/cyan/magenta";
const char* const white_line = " 100/ 300/ 300/ 303/jump menu 1/white/orange";

const wxColour yellow(255, 255, 0), white(255, 255, 255), cyan(0, 255, 255), magenta(255, 0, 255);

/// The test's video, as one that is shown in 16:9.
std::string widened(const std::string& bytes) {
  std::string wide = bytes;
  const std::string sequence("\0\0\1\xb3", 4);
  for (auto at = wide.find(sequence); at != std::string::npos; at = wide.find(sequence, at + 1))
    wide[at + 7] = static_cast<char>((wide[at + 7] & 0x0f) | 0x30);
  return wide;
}

class MenuViews : public menu_editor_test {
 protected:
  void open_with(const std::vector<std::string>& records) {
    add_menu(real_video(), records);
    open();
  }
  static wxRect picture_on_screen() {
    return ask_ui([] { return control("MediaPlayer1")->GetScreenRect(); });
  }
  /// Whether the screen has a colour there, waited for.
  static bool becomes(wxPoint at, const wxColour& colour) {
    return wait_until([&] {
      const wxColour seen = colour_at(at);
      const auto apart = [](unsigned a, unsigned b) { return std::abs(int(a) - int(b)); };
      return apart(seen.Red(), colour.Red()) <= 6 && apart(seen.Green(), colour.Green()) <= 6 &&
             apart(seen.Blue(), colour.Blue()) <= 6;
    });
  }
  static wxColour seen_at(wxPoint at) {
    return ask_ui([at] { return colour_at(at); });
  }
  static int zoom() {
    return ask_ui([] { return dynamic_cast<wxChoice*>(control("zoom"))->GetSelection(); });
  }
  static wxPoint scrolled() {
    return ask_ui([] {
      const wxWindow* picture = control("MediaPlayer1");
      return wxPoint(picture->GetScrollPos(wxHORIZONTAL), picture->GetScrollPos(wxVERTICAL));
    });
  }
  static void maximize() {
    on_ui([] { dynamic_cast<wxTopLevelWindow*>(control("tsmenu"))->Maximize(); });
    EXPECT_TRUE(wait_until(
        [] { return dynamic_cast<wxTopLevelWindow*>(control("tsmenu"))->GetSize().x > 1200; }));
    // The picture takes its new place in more than one step.
    for (wxRect before, now = picture_on_screen(); before != now; now = picture_on_screen()) {
      before = now;
      std::this_thread::sleep_for(std::chrono::milliseconds(300));
    }
  }
  static bool is_red(const wxColour& c) {
    return c.Red() > 120 && c.Red() > c.Green() + 70 && c.Red() > c.Blue() + 70;
  }
};

TEST_F(MenuViews, EveryButtonIsShownInItsOwnLook) {
  open_with({yellow_box, cyan_box, white_line});
  EXPECT_TRUE(becomes(on_picture(200, 100), yellow));
  EXPECT_TRUE(becomes(on_picture(500, 100), cyan));
  EXPECT_TRUE(becomes(on_picture(200, 301), white));
  screenshot("menu-views-looks");
}

TEST_F(MenuViews, PressedShowsTheSelectLooks) {
  open_with({yellow_box, cyan_box, white_line});
  EXPECT_TRUE(becomes(on_picture(500, 100), cyan));
  press("alt+r");
  EXPECT_TRUE(becomes(on_picture(500, 100), magenta));
  EXPECT_TRUE(becomes(on_picture(200, 100), white));
  screenshot("menu-views-pressed");
  click_control("showpressed");
  EXPECT_TRUE(becomes(on_picture(500, 100), cyan));
}

TEST_F(MenuViews, DraggedButtonTakesItsLookAlong) {
  open_with({yellow_box, cyan_box});
  const wxColour before = seen_at(on_picture(160, 250));
  drag(on_picture(200, 130), on_picture(200, 280));
  EXPECT_TRUE(becomes(on_picture(160, 250), yellow));
  EXPECT_NE(before, yellow);
  EXPECT_FALSE(seen_at(on_picture(160, 100)) == yellow);
}

TEST_F(MenuViews, ThicknessOfTheMenuIsThatOfEveryFrame) {
  open_with({yellow_box, cyan_box});
  choose(1);
  click_control("thickness");
  press("End");
  EXPECT_TRUE(becomes(on_picture(500, 104), cyan));
  EXPECT_TRUE(becomes(on_picture(200, 104), yellow));
}

TEST_F(MenuViews, OverlapIsMarkedAsItArises) {
  open_with({yellow_box, cyan_box});
  const wxPoint both = on_picture(450, 140);
  EXPECT_FALSE(is_red(seen_at(both)));
  drag(on_picture(280, 145), on_picture(480, 155));
  EXPECT_TRUE(wait_until([&] { return is_red(colour_at(both)); }));
  screenshot("menu-views-overlap");
  drag(on_picture(480, 155), on_picture(280, 145));
  EXPECT_TRUE(wait_until([&] { return !is_red(colour_at(both)); }));
}

TEST_F(MenuViews, ButtonThatNoKeyReachesIsMarkedWithoutBeingAsked) {
  open_with({" 50/ 200/ 150/ 240/exit/yellow/white", " 350/ 350/ 450/ 390/exit/yellow/white",
             " 200/ 300/ 300/ 340/exit/yellow/white", " 100/ 350/ 200/ 390/exit/yellow/white"});
  const auto reds = [](wxPoint from) {
    int red = 0;
    for (int x = 0; x < 60; ++x)
      red += is_red(colour_at(from + wxPoint(x, 0))) ? 1 : 0;
    return red;
  };
  const wxPoint label = on_picture(205, 292), other_label = on_picture(105, 342);
  EXPECT_TRUE(becomes(on_picture(240, 300), yellow));
  EXPECT_GT(ask_ui([&] { return reds(label); }), 30);  // behind the label
  EXPECT_EQ(ask_ui([&] { return reds(other_label); }), 0);
  screenshot("menu-views-unreached");
}

TEST_F(MenuViews, WaysOfTheArrowKeysAreDrawnOnDemand) {
  open_with({yellow_box, cyan_box, white_line});
  choose(1);
  const wxPoint between = on_picture(350, 134);
  const auto light = [&] {
    const wxColour c = colour_at(between);
    return c.Blue() > 200 && c.Green() > 170 && c.Red() < 140;
  };
  EXPECT_FALSE(ask_ui([&] { return light(); }));
  pick("showways", 1);
  EXPECT_TRUE(wait_until(light));
  screenshot("menu-views-ways");
  pick("showways", 2);
  EXPECT_TRUE(wait_until(light));
  screenshot("menu-views-all-ways");
  pick("showways", 0);
  EXPECT_TRUE(wait_until([&] { return !light(); }));
}

TEST_F(MenuViews, SafeAreaIsShownOnDemand) {
  open_with({yellow_box});
  const auto greens = [&] {
    const wxRect place = control("MediaPlayer1")->GetScreenRect();
    int count = 0;
    for (int y = place.y + place.height / 4; y < place.y + place.height / 2; ++y)
      for (int dx = -2; dx <= 2; ++dx) {
        const wxColour c = colour_at(wxPoint(place.x + place.width / 20 + dx, y));
        count += c.Green() > 240 && c.Red() > 100 && c.Red() < 140 && c.Blue() < 140 ? 1 : 0;
      }
    return count;
  };
  const int before = ask_ui(greens);
  click_control("safearea");
  EXPECT_TRUE(wait_until([&] { return greens() > before + 30; }));
  screenshot("menu-views-safe-area");
}

TEST_F(MenuViews, WideMenuIsShownInItsShape) {
  const auto bytes = read_file(real_video(), 1u << 30);
  ASSERT_TRUE(bytes) << bytes.error;
  add_menu(folder_.add("wide.m2v", widened(*bytes)), {yellow_box, cyan_box});
  open();
  maximize();
  const auto shape = [] {
    const wxSize size = control("MediaPlayer1")->GetSize();
    return static_cast<double>(size.x) / size.y;
  };
  EXPECT_NEAR(ask_ui(shape), 16 / 9.0, 0.01);
  screenshot("menu-views-wide");
  drag(on_picture(200, 130), on_picture(260, 140));
  EXPECT_EQ(place(), "160 110 200 60");
  click_control("trueshape");
  EXPECT_TRUE(wait_until([&] { return std::abs(shape() - 1.5) < 0.01; }));
  drag(on_picture(260, 140), on_picture(200, 130));
  EXPECT_EQ(place(), "100 100 200 60");
}

TEST_F(MenuViews, PictureFillsTheWindow) {
  open_with({yellow_box});
  const wxSize before = picture_on_screen().GetSize();
  maximize();
  EXPECT_TRUE(wait_until([&] { return control("MediaPlayer1")->GetSize().x > before.x + 60; }));
  drag(on_picture(200, 130), on_picture(260, 140));
  EXPECT_EQ(place(), "160 110 200 60");
  screenshot("menu-views-filled");
}

TEST_F(MenuViews, KeysAndTheWheelZoomAndZeroFits) {
  open_with({yellow_box});
  const wxSize fits = picture_on_screen().GetSize();
  press("ctrl+plus");
  EXPECT_EQ(zoom(), 2);
  press("ctrl+plus");
  EXPECT_EQ(zoom(), 3);
  press("ctrl+minus");
  EXPECT_EQ(zoom(), 2);
  press("ctrl+0");
  EXPECT_EQ(zoom(), 0);
  EXPECT_EQ(picture_on_screen().GetSize(), fits);
  on_ui([] { wxWindow::FindWindowByName("tsmenu")->SetFocus(); });
  pick("zoom", 4);
  press("ctrl+plus");
  EXPECT_EQ(zoom(), 4);
  screenshot("menu-views-400");
  for (int i = 0; i < 4; ++i)
    press("ctrl+minus");
  EXPECT_EQ(zoom(), 0);
}

// At 200 % from its upper left corner, whose dots are then two pixels large each.
TEST_F(MenuViews, ZoomedPictureIsScrolledAndItsDotsAreCrisp) {
  open_with({" 4/ 20/ 104/ 80/exit/yellow/white", cyan_box});
  pick("zoom", 2);
  const wxRect place_of_picture = picture_on_screen();
  turn_wheel_at(place_of_picture.GetTopLeft() + wxPoint(300, 200), wheel::up, 20);
  on_ui([] {
    wxScrollWinEvent left(wxEVT_SCROLLWIN_TOP, 0, wxHORIZONTAL);
    control("MediaPlayer1")->ProcessWindowEvent(left);
  });
  const wxPoint corner = place_of_picture.GetTopLeft();
  // The frame's first line, dot 20 of the picture, is lines 40 and 41 of the screen's.
  EXPECT_TRUE(becomes(corner + wxPoint(120, 40), yellow));
  EXPECT_TRUE(becomes(corner + wxPoint(120, 41), yellow));
  EXPECT_TRUE(becomes(corner + wxPoint(120, 43), yellow));
  EXPECT_FALSE(seen_at(corner + wxPoint(120, 39)) == yellow);
  EXPECT_FALSE(seen_at(corner + wxPoint(120, 44)) == yellow);
  drag(corner + wxPoint(100, 100), corner + wxPoint(140, 120));
  EXPECT_EQ(place(), "24 30 100 60");
}

// At 400 % of a button at the left edge only what stands beside it is seen.
TEST_F(MenuViews, ZoomedPictureScrollsAlongWithADraggedButton) {
  open_with({" 4/ 20/ 104/ 80/exit/yellow/white"});
  choose(1);
  pick("zoom", 4);
  press("F6");
  press("Right");  // brings it into sight
  const wxPoint corner = scrolled();
  EXPECT_LE(corner.x, 4 * 4);
  EXPECT_LE(corner.y, 4 * 20);
  const wxRect picture = picture_on_screen();
  const wxPoint inside = picture.GetTopLeft() + wxPoint(200, 200);
  // The picture goes on scrolling when the button has come to its edge.
  const auto button_is_at = [](const char* place, int scroll) {
    return dynamic_cast<wxTextCtrl*>(control("leftpos"))->GetValue() == place &&
           control("MediaPlayer1")->GetScrollPos(wxHORIZONTAL) == scroll;
  };
  const int most = 4 * 720 - picture.width;
  drag_until(inside, picture.GetTopLeft() + wxPoint(picture.width + 20, 200),
             [&] { return button_is_at(" 619", most); });
  EXPECT_EQ(scrolled().x, most);
  EXPECT_EQ(scrolled().y, corner.y);
  EXPECT_TRUE(
      becomes(picture.GetTopLeft() + wxPoint(picture.width - 150, 4 * 20 - corner.y + 2), yellow));
  screenshot("menu-views-dragged-along");
  const wxPoint there = picture.GetTopLeft() + wxPoint(picture.width - 200, 200);
  drag_until(there, picture.GetTopLeft() + wxPoint(-20, 200),
             [&] { return button_is_at(" 0", 0); });
  EXPECT_EQ(scrolled(), wxPoint(0, corner.y));
}

TEST_F(MenuViews, ButtonThatKeysMoveOrPickStaysInSight) {
  open_with({" 4/ 20/ 104/ 80/exit/yellow/white", " 600/ 400/ 700/ 460/exit/cyan/magenta"});
  pick("zoom", 4);
  press("F6");
  press("Next");
  press("Next");
  const wxSize room = picture_on_screen().GetSize();
  const wxPoint of_second = scrolled();
  EXPECT_GE(of_second.x, 4 * 700 - room.x);
  EXPECT_LE(of_second.x, 4 * 600);
  EXPECT_GE(of_second.y, 4 * 460 - room.y);
  press("Prior");
  EXPECT_LE(scrolled().x, 4 * 4);
  EXPECT_LE(scrolled().y, 4 * 20);
  for (int i = 0; i < 20; ++i)
    press("ctrl+Right");
  EXPECT_EQ(place(), "204 20 100 60");
  EXPECT_GE(scrolled().x, 4 * 304 - room.x);
  press("ctrl+z");
  EXPECT_LE(scrolled().x, 4 * 4);
}

TEST_F(MenuViews, SpacePlaysAndADragStops) {
  open_with({yellow_box});
  const auto time = [] { return control("positiontime")->GetLabel(); };
  on_ui([] { control("MediaPlayer1")->SetFocus(); });
  press("space");
  EXPECT_TRUE(wait_until([&] { return !time().StartsWith("0:00:00.0"); }));
  drag(on_picture(200, 130), on_picture(260, 140));
  const wxString stopped = ask_ui(time);
  EXPECT_FALSE(wait_until([&] { return time() != stopped; }, 1));
  EXPECT_EQ(place(), "160 110 200 60");
  press("space");
  EXPECT_TRUE(wait_until([&] { return time() != stopped; }));
  press("space");
}

TEST_F(MenuViews, ThirtySixButtonsCanAllBeRead) {
  open_with(thirty_six_buttons("jump title 1 chapter 2/yellow/white",
                               "jump title 1 chapter 2/cyan/white"));
  maximize();
  choose(8);
  pick("showways", 2);
  // Somewhere about its upper edge, whose dots are no whole pixels at this size.
  const wxPoint edge = on_picture(70, 20);
  EXPECT_TRUE(wait_until([&] {
    for (int down = -1; down <= 2; ++down)
      if (colour_at(edge + wxPoint(0, down)) == yellow)
        return true;
    return false;
  }));
  screenshot("menu-views-36");
}

}  // namespace
}  // namespace corvane::testing_support
