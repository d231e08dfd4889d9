// What a press on the outline of a button takes hold of.
#include "ui/editor/outline_grip.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

const wxRect box(100, 100, 200, 80);
const wxRect line(100, 100, 100, 3);

outline_grip edges(bool left, bool top, bool right, bool bottom) {
  return {false, left, top, right, bottom};
}
const outline_grip whole{true};
const outline_grip nothing{};

TEST(OutlineGrip, InsideMovesTheButton) {
  EXPECT_EQ(grip_at(box, {200, 140}, true), whole);
  EXPECT_EQ(grip_at(box, {106, 106}, true), whole);
}

TEST(OutlineGrip, EdgesAndCornersSizeIt) {
  EXPECT_EQ(grip_at(box, {100, 140}, true), edges(true, false, false, false));
  EXPECT_EQ(grip_at(box, {299, 140}, true), edges(false, false, true, false));
  EXPECT_EQ(grip_at(box, {200, 100}, true), edges(false, true, false, false));
  EXPECT_EQ(grip_at(box, {200, 179}, true), edges(false, false, false, true));
  EXPECT_EQ(grip_at(box, {98, 97}, true), edges(true, true, false, false));
  EXPECT_EQ(grip_at(box, {301, 182}, true), edges(false, false, true, true));
}

TEST(OutlineGrip, FurtherOffNothingIsHeld) {
  EXPECT_EQ(grip_at(box, {92, 140}, true), nothing);
  EXPECT_EQ(grip_at(box, {200, 188}, true), nothing);
}

TEST(OutlineGrip, AnUnderlineThreePixelsHighCanBeMovedAndSized) {
  for (int y = 98; y <= 104; ++y)
    EXPECT_EQ(grip_at(line, {150, y}, true), whole) << y;
  EXPECT_EQ(grip_at(line, {150, 97}, true), edges(false, true, false, false));
  EXPECT_EQ(grip_at(line, {150, 106}, true), edges(false, false, false, true));
  EXPECT_EQ(grip_at(line, {199, 101}, true), edges(false, false, true, false));
}

TEST(OutlineGrip, ABitmapsOutlineOnlyMoves) {
  EXPECT_EQ(grip_at(box, {100, 140}, false), whole);
  EXPECT_EQ(grip_at(box, {98, 98}, false), whole);
  EXPECT_EQ(grip_at(box, {96, 140}, false), nothing);
}

TEST(OutlineGrip, OppositeEdgesAreNeverHeldTogether) {
  for (int width = 1; width < 40; ++width)
    for (int x = -10; x < width + 10; ++x) {
      const outline_grip grip = grip_at(wxRect(0, 0, width, 20), {x, 10}, true);
      EXPECT_FALSE(grip.left && grip.right) << width << " " << x;
    }
}

TEST(OutlineGrip, PointerShowsWhatADragWouldDo) {
  EXPECT_EQ(cursor_of(nothing), wxCURSOR_ARROW);
  EXPECT_EQ(cursor_of(whole), wxCURSOR_SIZING);
  EXPECT_EQ(cursor_of(edges(true, false, false, false)), wxCURSOR_SIZEWE);
  EXPECT_EQ(cursor_of(edges(false, false, false, true)), wxCURSOR_SIZENS);
  EXPECT_EQ(cursor_of(edges(true, true, false, false)), wxCURSOR_SIZENWSE);
  EXPECT_EQ(cursor_of(edges(true, false, false, true)), wxCURSOR_SIZENESW);
}

TEST(OutlineGrip, HandlesBetweenTheCornersNeedRoom) {
  EXPECT_EQ(handles_of(box).size(), 8u);
  EXPECT_EQ(handles_of(line).size(), 6u);
  EXPECT_EQ(handles_of(wxRect(0, 0, 10, 10)).size(), 4u);
}

}  // namespace
}  // namespace corvane
