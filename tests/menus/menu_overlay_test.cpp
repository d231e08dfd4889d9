// The dots of buttons, as the editor draws them; held against gm's own in tests/disc.
#include "menus/menu_overlay.h"

#include <gtest/gtest.h>

#include <map>

namespace corvane {
namespace {

class made_bitmaps : public bitmap_reader {
 public:
  std::map<std::string, button_bitmap> all;
  const button_bitmap* read(const std::string& stored) override {
    const auto found = all.find(stored);
    return found == all.end() ? nullptr : &found->second;
  }
};

/// A line of an overlay: "#" for a dot, "." for none.
std::string line_of(const overlay_picture& p, int y, int x0, int count) {
  std::string text;
  for (int x = x0; x < x0 + count; ++x)
    text += p.rgba[static_cast<std::size_t>((y * p.width + x) * 4 + 3)] == 0 ? '.' : '#';
  return text;
}

overlay_picture drawn(const std::vector<std::string>& records, int thickness,
                      button_state state = button_state::highlighted) {
  made_bitmaps none;
  std::vector<overlay_button> buttons;
  for (const std::string& record : records)
    buttons.push_back(overlay_button_of(record, state));
  return overlay_of(buttons, thickness, 480, none);
}

TEST(MenuOverlay, UnderlineIsSolidAndRoundedAndEndsBeforeItsEdges) {
  const overlay_picture p = drawn({" 10/ 20/ 22/ 23/exit/yellow/white"}, 5);
  EXPECT_EQ(line_of(p, 19, 10, 13), ".............");
  EXPECT_EQ(line_of(p, 20, 10, 13), "..#######....");
  EXPECT_EQ(line_of(p, 21, 10, 13), "###########..");
  EXPECT_EQ(line_of(p, 22, 10, 13), "..#######....");
  EXPECT_EQ(line_of(p, 23, 10, 13), ".............");
}

TEST(MenuOverlay, FrameHasALineMoreThanItsThickness) {
  const overlay_picture p = drawn({" 100/ 100/ 200/ 160/exit/yellow/white"}, 2);
  EXPECT_EQ(line_of(p, 130, 100, 6), "###...");
  EXPECT_EQ(line_of(p, 130, 194, 6), "..###.");
  EXPECT_EQ(line_of(p, 100, 150, 1), "#");
  EXPECT_EQ(line_of(p, 102, 150, 1), "#");
  EXPECT_EQ(line_of(p, 103, 150, 1), ".");
}

TEST(MenuOverlay, FrameThickerThanItsButtonStaysSolid) {
  const overlay_picture p = drawn({" 100/ 100/ 140/ 120/exit/yellow/white"}, 12);
  EXPECT_EQ(line_of(p, 110, 100, 40), std::string(39, '#') + ".");
}

TEST(MenuOverlay, EachStateHasItsColour) {
  const std::vector<std::string> records = {" 0/ 0/ 100/ 3/exit/yellow/blue"};
  const auto colour = [](const overlay_picture& p) {
    const std::size_t at = (1 * 720 + 50) * 4;
    return std::vector<int>(p.rgba.begin() + at, p.rgba.begin() + at + 4);
  };
  EXPECT_EQ(colour(drawn(records, 1)), (std::vector<int>{255, 255, 0, 255}));
  EXPECT_EQ(colour(drawn(records, 1, button_state::selected)), (std::vector<int>{0, 0, 255, 255}));
}

TEST(MenuOverlay, LaterButtonClearsTheInsideOfWhatItCovers) {
  const overlay_picture p =
      drawn({" 100/ 100/ 300/ 102/exit/yellow/white", " 150/ 80/ 250/ 130/exit/cyan/white"}, 1);
  EXPECT_EQ(line_of(p, 101, 140, 20), "############........");
}

TEST(MenuOverlay, BitmapIsPastedAtItsCornerAndItsClearDotsClear) {
  made_bitmaps bitmaps;
  bitmaps.all["\\a.bmp"] = {2, 1, {9, 8, 7, 1, 1, 1}};
  std::vector<overlay_button> buttons = {
      overlay_button_of(" 100/ 100/ 200/ 103/exit/yellow/white", button_state::highlighted),
      overlay_button_of(" 110/ 101/ 112/ 102/exit/\\a.bmp/white", button_state::highlighted),
      overlay_button_of(" 10/ 10/ 12/ 12/exit/\\gone.bmp/white", button_state::highlighted)};
  const overlay_picture p = overlay_of(buttons, 1, 480, bitmaps);
  EXPECT_EQ(line_of(p, 101, 108, 6), "###.##");
  EXPECT_EQ(p.rgba[(101 * 720 + 110) * 4], 9);
  EXPECT_EQ(extent_of(buttons[1], bitmaps), (button_box{110, 101, 112, 102}));
  EXPECT_EQ(extent_of(buttons[2], bitmaps), (button_box{10, 10, 10, 10}));
}

TEST(MenuOverlay, HostileButtonsStayInThePicture) {
  made_bitmaps bitmaps;
  bitmaps.all["\\a.bmp"] = {2, 1, {9, 8, 7, 1, 1, 1}};
  std::vector<overlay_button> buttons;
  for (const char* record :
       {" -99999999999/ -5/ 99999999999/ 99999999/exit/yellow/white", "x/y/z/w", "",
        " 719/ 479/ 900/ 900/exit/\\a.bmp/white", " -1/ -1/ 5/ 5/exit/\\a.bmp/white",
        " 300/ 300/ 100/ 100/exit/yellow/white", " 5/ 5/ 9/ 9/exit/no colour/white"})
    buttons.push_back(overlay_button_of(record, button_state::highlighted));
  const overlay_picture p = overlay_of(buttons, 1, 480, bitmaps);
  EXPECT_EQ(p.rgba.size(), 720u * 480u * 4u);
  EXPECT_EQ(p.rgba[(479 * 720 + 719) * 4], 9);
}

}  // namespace
}  // namespace corvane
