// What the menu editor shows in its picture, and the bitmaps of buttons.
#include "media/video_file.h"
#include "ui/editor/menu_picture_area.h"
#include "ui/gtk_sight.h"
#include "ui/menu_editor_fixture.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>

namespace corvane::testing_support {
namespace {

const char* const box1 = " 100/ 100/ 300/ 160/exit/yellow/white";

class MenuPictures : public menu_editor_test {
 protected:
  void use_bitmap(const std::string& file) {
    click_control("bmphighlight");
    answer_file("select a 4 bit bitmap image", file);
  }
  void open_with_button(const std::string& video) {
    add_menu(video, {box1});
    open();
    choose(1);
    click_control("Check2");
  }
};

bool near(const wxColour& a, const wxColour& b) {
  const auto apart = [](unsigned x, unsigned y) { return std::abs(int(x) - int(y)); };
  return apart(a.Red(), b.Red()) <= 6 && apart(a.Green(), b.Green()) <= 6 &&
         apart(a.Blue(), b.Blue()) <= 6;
}

/// How many of a few places of the picture show what the video's picture has there; only for use in
/// the main thread.
int agreeing(const picture& wanted, wxPoint at) {
  int agree = 0;
  for (const wxPoint p : {wxPoint(40, 40), wxPoint(360, 60), wxPoint(600, 240), wxPoint(90, 330),
                          wxPoint(500, 470), wxPoint(700, 20), wxPoint(330, 200)}) {
    const auto pixel = static_cast<std::size_t>(p.y) * static_cast<std::size_t>(wanted.width) * 3 +
                       static_cast<std::size_t>(p.x) * 3;
    const wxColour colour(wanted.rgb[pixel], wanted.rgb[pixel + 1], wanted.rgb[pixel + 2]);
    agree += near(colour, colour_at(at + p)) ? 1 : 0;
  }
  return agree;
}

TEST_F(MenuPictures, VideoIsShownPixelByPixel) {
  add_menu(real_video());
  open();
  const wxRect place = ask_ui([] { return control("MediaPlayer1")->GetScreenRect(); });
  EXPECT_EQ(place.GetSize(), wxSize(720, 480));
  const auto video = video_file::open(real_video());
  ASSERT_TRUE(video);
  const auto first = (*video)->first_picture();
  ASSERT_TRUE(first);
  EXPECT_EQ(ask_ui([&] { return agreeing(*first, place.GetTopLeft()); }), 7);
  screenshot("menu-editor-new");
}

TEST_F(MenuPictures, PositionSliderChoosesAnotherPicture) {
  add_menu(real_video());
  open();
  EXPECT_EQ(text_of("positiontime"), "0:00:00.0 of 0:00:03.0");
  click_control("position");
  press("End");
  ASSERT_TRUE(
      wait_until([] { return control("positiontime")->GetLabel().StartsWith("0:00:02.9"); }));
  const auto video = video_file::open(real_video());
  ASSERT_TRUE(video);
  while (!(*video)->scan(100)->finished) {
  }
  const auto last = (*video)->picture_number((*video)->pictures() - 1);
  ASSERT_TRUE(last);
  const wxRect place = ask_ui([] { return control("MediaPlayer1")->GetScreenRect(); });
  EXPECT_TRUE(wait_until([&] { return agreeing(*last, place.GetTopLeft()) == 7; }));
}

TEST_F(MenuPictures, PalVideoInAnNtscProjectIsWarnedOf) {
  add_menu(real_pal_video());
  start();
  const seen_dialog seen = answer_message(
      "selected menu appears to not be NTSC (720x480), but continuing anyway.", "OK");
  EXPECT_EQ(seen.picture, "warning");
  EXPECT_TRUE(no_dialog());
  EXPECT_EQ(ask_ui([] { return control("MediaPlayer1")->GetSize(); }), wxSize(720, 576));
  EXPECT_TRUE(is_open());
}

TEST_F(MenuPictures, NtscVideoInAPalProjectIsWarnedOf) {
  p_.globalregion = "PAL";
  add_menu(real_video());
  start();
  const seen_dialog seen =
      answer_message("selected menu appears to not be PAL (720x576), but continuing anyway.", "OK");
  EXPECT_EQ(seen.picture, "warning");
  EXPECT_TRUE(is_open());
}

TEST_F(MenuPictures, PalMenuReachesDownTo575) {
  p_.globalregion = "PAL";
  add_menu(real_pal_video(), {box1});
  open();
  EXPECT_TRUE(no_dialog());
  choose(1);
  drag(on_picture(200, 130), on_picture(200, 570));
  EXPECT_EQ(place(), "100 515 200 60");
  screenshot("menu-editor-pal");
}

TEST_F(MenuPictures, MissingVideoIsToldAndTheButtonsCanStillBePlaced) {
  add_menu(folder_.path("gone.m2v"), {box1});
  start();
  const seen_dialog seen = answer_message(
      "It appears you do not have a mpeg2 directshow filter installed.  Please install one to "
      "accurately use the menu editor.",
      "OK");
  EXPECT_EQ(seen.picture, "warning");
  EXPECT_TRUE(no_dialog());
  choose(1);
  drag(on_picture(200, 130), on_picture(260, 140));
  EXPECT_EQ(place(), "160 110 200 60");
  screenshot("menu-editor-missing");
}

TEST_F(MenuPictures, FileThatIsNoVideoIsToldToo) {
  add_menu(folder_.add("text.m2v", "no video at all"));
  start();
  answer_message(
      "It appears you do not have a mpeg2 directshow filter installed.  Please install one to "
      "accurately use the menu editor.",
      "OK");
  EXPECT_TRUE(is_open());
}

TEST_F(MenuPictures, OutlineIsSeenAroundTheSelectedButton) {
  add_menu(real_video(), {box1});
  open();
  choose(1);
  const wxPoint corner = on_picture(100, 100);
  EXPECT_TRUE(wait_until([&] {
    const wxPoint edge = corner + wxPoint(40, -1);
    return near(colour_at(edge), *wxWHITE) && near(colour_at(edge + wxPoint(0, -1)), *wxBLACK) &&
           near(colour_at(edge + wxPoint(0, 1)), wxColour(255, 255, 0));
  }));
  screenshot("menu-editor-box");
}

TEST_F(MenuPictures, BitmapBecomesTheButtonWithItsSize) {
  open_with_button(real_video());
  const std::string file = folder_.add("on.bmp", bmp(120, 40, 4));
  use_bitmap(file);
  EXPECT_EQ(place(), "100 100 120 40");
  EXPECT_FALSE(is_enabled("Slider1"));
  EXPECT_FALSE(is_enabled("Slider2"));
  EXPECT_FALSE(is_enabled("widthpos"));
  EXPECT_FALSE(is_enabled("heightpos"));
  EXPECT_FALSE(is_shown("Colorhighlight"));
  EXPECT_FALSE(is_shown("ColorSelect"));
  EXPECT_FALSE(is_shown("thickness"));
  EXPECT_TRUE(is_shown("Image1"));
  EXPECT_TRUE(is_shown("Image2"));
  EXPECT_TRUE(is_shown("removebmp"));
  const wxPoint middle = on_picture(160, 120);
  EXPECT_TRUE(wait_until([middle] { return near(colour_at(middle), wxColour(0x20, 0x60, 0xe0)); }));
  screenshot("menu-editor-bitmap");

  click_control("removebmp");
  EXPECT_TRUE(is_shown("Colorhighlight"));
  EXPECT_TRUE(is_shown("thickness"));
  EXPECT_FALSE(is_shown("Image1"));
  EXPECT_EQ(text_of("Colorhighlight"), "black");
  EXPECT_EQ(place(), "100 100 120 40");
}

TEST_F(MenuPictures, TransparentColourOfABitmapLetsTheVideoThrough) {
  open_with_button(real_video());
  const wxPoint middle = on_picture(160, 120);
  const wxColour video = ask_ui([middle] { return colour_at(middle); });
  use_bitmap(folder_.add("clear.bmp", bmp(120, 40, 4, 0x010101)));
  EXPECT_TRUE(wait_until([] { return control("Image1")->IsShownOnScreen(); }));
  EXPECT_TRUE(wait_until([&] { return near(colour_at(middle), video); }));
}

TEST_F(MenuPictures, SelectBitmapIsChangedAlone) {
  open_with_button(real_video());
  use_bitmap(folder_.add("on.bmp", bmp(120, 40, 4)));
  click_control("bmpselect");
  answer_file("select a 4 bit bitmap image", folder_.add("other.bmp", bmp(121, 40, 4)));
  EXPECT_EQ(
      answer_message("the select image must be the same size as the highlight image", "OK").picture,
      "none");
  click_control("bmpselect");
  answer_file("select a 4 bit bitmap image", folder_.add("pressed.bmp", bmp(120, 40, 1)));
  EXPECT_TRUE(no_dialog());
  accept();
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("tsmenu") == nullptr; }));
  EXPECT_EQ(stored(), " 100/ 100/ 220/ 140/exit/" + folder_.stored("on.bmp") + "/" +
                          folder_.stored("pressed.bmp"));
}

TEST_F(MenuPictures, BitmapsThatDoNotFitAreRefused) {
  open_with_button(real_video());
  use_bitmap(folder_.add("deep.bmp", bmp(120, 40, 8)));
  EXPECT_EQ(
      answer_message("Color depth is not 4BPP or less, please reduce the number of colors.", "OK")
          .picture,
      "warning");
  use_bitmap(folder_.add("large.bmp", bmp(700, 40, 4)));
  EXPECT_EQ(answer_message("image is larger than 700x300.", "OK").picture, "none");
  EXPECT_EQ(place(), "100 100 200 60");
  EXPECT_EQ(text_of("Colorhighlight"), "yellow");
  use_bitmap(folder_.add("most.bmp", bmp(699, 299, 4)));
  EXPECT_TRUE(no_dialog());
  EXPECT_EQ(place(), "20 100 699 299");
}

TEST_F(MenuPictures, CancelledBitmapDialogChangesNothing) {
  open_with_button(real_video());
  click_control("bmphighlight");
  cancel_dialog("select a 4 bit bitmap image");
  EXPECT_TRUE(no_dialog());
  EXPECT_EQ(text_of("Colorhighlight"), "yellow");
  EXPECT_EQ(place(), "100 100 200 60");
}

TEST_F(MenuPictures, ClosingInTheMiddleOfAScanIsClean) {
  const std::string large = folder_.path("large.m2v");
  std::filesystem::copy_file(real_video(), large);
  std::filesystem::resize_file(large, 400'000'000'000);  // takes no room on the disk, but time
  add_menu(large, {box1});
  start();
  EXPECT_TRUE(wait_until([] { return control("videoprogress")->IsShownOnScreen(); }));
  screenshot("menu-editor-scan");
  choose(1);
  EXPECT_EQ(place(), "100 100 200 60");  // it works meanwhile
  EXPECT_FALSE(is_enabled("position"));
  close();
  EXPECT_EQ(closed_, 1);
}

}  // namespace
}  // namespace corvane::testing_support
