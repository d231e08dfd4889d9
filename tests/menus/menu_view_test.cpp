// The picture and the overlay at any size, and the shapes of menus.
#include "menus/menu_view.h"

#include "menus/menu_geometry.h"

#include <gtest/gtest.h>

#include <array>

namespace corvane {
namespace {

using pixel = std::array<int, 3>;

overlay_picture clear_overlay(int lines = 480) {
  overlay_picture o{overlay_width, lines, {}};
  o.rgba.resize(static_cast<std::size_t>(overlay_width * lines) * 4);
  return o;
}

void set_dot(overlay_picture& o, int x, int y, const pixel& colour) {
  const auto at = static_cast<std::size_t>(y * o.width + x) * 4;
  for (std::size_t c = 0; c < 3; ++c)
    o.rgba[at + c] = static_cast<std::uint8_t>(colour[c]);
  o.rgba[at + 3] = 255;
}

pixel at(const std::vector<std::uint8_t>& bytes, int width, int x, int y) {
  const auto i = static_cast<std::size_t>(y * width + x) * 3;
  return {bytes[i], bytes[i + 1], bytes[i + 2]};
}

const pixel yellow{255, 255, 0}, white{255, 255, 255};

TEST(MenuView, AtItsOwnSizeThePictureIsShownByteByByte) {
  std::vector<std::uint8_t> video(720 * 480 * 3);
  for (std::size_t i = 0; i < video.size(); ++i)
    video[i] = static_cast<std::uint8_t>(i * 31 + i / 977);
  EXPECT_EQ(view_of({720, 480, video.data()}, clear_overlay(), {720, 480}, {0, 0, 720, 480}),
            video);
}

TEST(MenuView, PartIsThatOfTheWhole) {
  std::vector<std::uint8_t> video(720 * 480 * 3);
  for (std::size_t i = 0; i < video.size(); ++i)
    video[i] = static_cast<std::uint8_t>(i * 17 + i / 331);
  overlay_picture o = clear_overlay();
  for (int i = 0; i < 400; ++i)
    set_dot(o, i, i, yellow);
  for (const view_size& shown : {view_size{720, 480}, {500, 400}, {1013, 700}, {1440, 960}}) {
    const auto whole =
        view_of({720, 480, video.data()}, o, shown, {0, 0, shown.width, shown.height});
    const auto part = view_of({720, 480, video.data()}, o, shown, {101, 57, 60, 40});
    for (int y = 0; y < 40; ++y)
      for (int x = 0; x < 60; ++x)
        ASSERT_EQ(at(part, 60, x, y), at(whole, shown.width, x + 101, y + 57));
  }
}

TEST(MenuView, WholeNumbersKeepTheDotsEdges) {
  overlay_picture o = clear_overlay();
  set_dot(o, 100, 50, yellow);
  for (const int times : {1, 2, 3, 4}) {
    const view_size shown{720 * times, 480 * times};
    const view_part part{99 * times, 49 * times, 3 * times, 3 * times};
    const auto bytes = view_of({}, o, shown, part);
    for (int y = 0; y < part.height; ++y)
      for (int x = 0; x < part.width; ++x) {
        const bool inside = x / times == 1 && y / times == 1;
        EXPECT_EQ(at(bytes, part.width, x, y) == yellow, inside) << times << " " << x << " " << y;
      }
  }
}

// A frame's single line does not go because the picture is small.
TEST(MenuView, VideoIsSmoothedFromTheMiddlesOfItsPixels) {
  const std::vector<std::uint8_t> video = {0, 0, 0, 255, 255, 255};
  const auto bytes = view_of({2, 1, video.data()}, {}, {4, 1}, {0, 0, 4, 1});
  for (const auto& [x, grey] : {std::pair{0, 0}, {1, 64}, {2, 191}, {3, 255}})
    EXPECT_EQ(at(bytes, 4, x, 0)[0], grey) << x;
}

TEST(MenuView, PixelThatCutsADotTakesThatPartOfItsColour) {
  overlay_picture o = clear_overlay();
  for (int y = 0; y < 480; ++y)
    set_dot(o, 103, y, white);
  // Three dots are two pixels: half of this one belongs to each of its two.
  const auto bytes = view_of({}, o, {480, 480}, {67, 100, 3, 1});
  EXPECT_EQ(at(bytes, 3, 0, 0)[0], 52);
  EXPECT_EQ(at(bytes, 3, 1, 0)[0], 120);  // a third of the way from 52 to 255
  EXPECT_EQ(at(bytes, 3, 2, 0)[0], 120);
}

TEST(MenuView, SmallerPictureShowsEveryDotByItsPart) {
  overlay_picture o = clear_overlay();
  for (int x = 0; x < 720; ++x)
    set_dot(o, x, 101, white);
  const auto bytes = view_of({}, o, {360, 240}, {0, 48, 360, 5});
  EXPECT_EQ(at(bytes, 360, 10, 1)[0], 52);
  EXPECT_EQ(at(bytes, 360, 10, 2)[0], 154);  // half of the way from 52 to 255
  EXPECT_EQ(at(bytes, 360, 10, 3)[0], 52);
}

TEST(MenuView, WithoutAVideoTheButtonsStandOnGrey) {
  EXPECT_EQ(at(view_of({}, clear_overlay(), {720, 480}, {7, 7, 2, 2}), 2, 1, 1),
            (pixel{52, 56, 64}));
  EXPECT_TRUE(view_of({}, clear_overlay(), {720, 480}, {7, 7, 0, 2}).empty());
}

TEST(MenuShape, IsThatOfATelevisionAndNoSmallerThanTheDots) {
  EXPECT_EQ(full_view(480), (view_size{720, 480}));
  EXPECT_EQ(full_view(480, 16, 9), (view_size{853, 480}));
  EXPECT_EQ(full_view(576, 16, 9), (view_size{1024, 576}));
  EXPECT_EQ(full_view(480, 4, 3), (view_size{720, 540}));
  EXPECT_EQ(full_view(576, 4, 3), (view_size{768, 576}));
  EXPECT_EQ(full_view(480, 0, 0), (view_size{720, 480}));
}

TEST(MenuShape, FitsTheRoomInItsProportions) {
  EXPECT_EQ(fitted_view({853, 480}, {853, 1000}), (view_size{853, 480}));
  EXPECT_EQ(fitted_view({720, 480}, {1440, 1200}), (view_size{1440, 960}));
  EXPECT_EQ(fitted_view({720, 480}, {360, 1200}), (view_size{360, 240}));
  EXPECT_EQ(fitted_view({720, 480}, {9000, 9000}), (view_size{2880, 1920}));
  EXPECT_EQ(fitted_view({720, 480}, {0, 100}), (view_size{}));
  EXPECT_EQ(zoomed_view({853, 480}, 3), (view_size{2559, 1440}));
}

// What the pointer meets in a picture of any shape is what is drawn there.
TEST(MenuShape, MenuPixelsComeBackFromEveryShape) {
  for (const int lines : {480, 576})
    for (const auto& [width, height] : {std::pair{16, 9}, std::pair{4, 3}, std::pair{0, 0}})
      for (const int times : {1, 2, 3, 4}) {
        const view_size shown = zoomed_view(full_view(lines, width, height), times);
        const picture_scale scale{shown.width, shown.height, lines - 1};
        for (int x = 0; x <= largest_x; ++x) {
          const int y = x * (lines - 1) / largest_x;
          const menu_rectangle there = scale.to_picture({x, y, x, y});
          ASSERT_EQ(scale.to_menu(there.x0, there.y0), (menu_point{x, y}))
              << lines << " " << width << " " << times;
        }
      }
}

TEST(MenuScroll, BringsASpanIntoSightWithTheLeastScrolling) {
  const seen_span seen{100, 400};  // 100 to 500
  EXPECT_EQ(scrolled_to_show(seen, 100, 500, false), 100);
  EXPECT_EQ(scrolled_to_show(seen, 200, 260, true), 100);
  EXPECT_EQ(scrolled_to_show(seen, 480, 560, false), 160);
  EXPECT_EQ(scrolled_to_show(seen, 480, 560, true), 160);
  EXPECT_EQ(scrolled_to_show(seen, 40, 90, false), 40);
  EXPECT_EQ(scrolled_to_show(seen, -10, 30, true), -10);
}

TEST(MenuScroll, OfALongerSpanBringsTheWantedEndIntoSight) {
  const seen_span seen{100, 400};
  EXPECT_EQ(scrolled_to_show(seen, 200, 800, false), 200);
  EXPECT_EQ(scrolled_to_show(seen, 200, 800, true), 400);
  EXPECT_EQ(scrolled_to_show(seen, 0, 450, false), 0);
  EXPECT_EQ(scrolled_to_show(seen, 0, 450, true), 50);
}

TEST(MenuScroll, DragScrollsTheFasterTheFurtherOutItIsHeld) {
  const seen_span seen{0, 400};
  for (const int inside : {8, 200, 392})
    EXPECT_EQ(scroll_of_drag(seen, inside, 8, 40), 0) << inside;
  EXPECT_EQ(scroll_of_drag(seen, 395, 8, 40), 3);
  EXPECT_EQ(scroll_of_drag(seen, 420, 8, 40), 28);
  EXPECT_EQ(scroll_of_drag(seen, 900, 8, 40), 40);
  EXPECT_EQ(scroll_of_drag(seen, 5, 8, 40), -3);
  EXPECT_EQ(scroll_of_drag(seen, -900, 8, 40), -40);
}

}  // namespace
}  // namespace corvane
