#include "tools/drawn_cue.h"

#include "support/bytes.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace corvane {
namespace {

using testing_support::bytes;
using dot = std::array<int, 4>;

const std::vector<disc_colour> black_and_white = {{16, 128, 128}, {235, 128, 128}};
constexpr dot nothing = {0, 0, 0, 0}, black = {0, 0, 0, 255}, white = {255, 255, 255, 255};

/// A unit of 4 x 2 dots at (2, 4). The even line has a dot of each code from 0 to 3, the odd one is
/// of code 2 to its end. Codes 1 and 2 are seen, in the palette's entries 1 and 0.
std::string small_unit() {
  return bytes({0, 38, 0, 8}) +              // its size, and where the commands are
         bytes({0x45, 0x67}) +               // at 4: the even line
         bytes({0x00, 0x02}) +               // at 6: the odd one
         bytes({0, 0, 0, 32}) +              // at 8: commands of time 0; the next are at 32
         bytes({1, 3, 0x00, 0x10}) +         // show; colours of codes 3, 2 and 1, 0
         bytes({4, 0x0F, 0xF0}) +            // opacities likewise
         bytes({5, 0, 0x20, 5, 0, 0x40, 5})  // from (2, 4) to (5, 5)
         + bytes({6, 0, 4, 0, 6, 0xFF}) +    // where the lines are
         bytes({0, 90, 0, 32, 2, 0xFF});     // at 32: later, hide
}

/// The same with one byte changed.
std::string small_unit_but(std::size_t at, int value) {
  std::string unit = small_unit();
  unit.at(at) = static_cast<char>(value);
  return unit;
}

dot dot_at(const drawn_cue& cue, int x, int y) {
  const auto at = (static_cast<std::size_t>(y) * static_cast<std::size_t>(cue.width) +
                   static_cast<std::size_t>(x)) *
                  4;
  return {cue.rgba[at], cue.rgba[at + 1], cue.rgba[at + 2], cue.rgba[at + 3]};
}

TEST(DrawnCue, HasTheUnitsDotsInThePalettesColoursAndNothingElse) {
  drawn_cue cue;
  ASSERT_EQ(paint_unit(small_unit(), black_and_white, cue), std::nullopt);
  ASSERT_EQ(cue.rgba.size(), std::size_t{720} * 480 * 4);
  EXPECT_EQ(dot_at(cue, 2, 4), nothing);
  EXPECT_EQ(dot_at(cue, 3, 4), white);
  EXPECT_EQ(dot_at(cue, 4, 4), black);
  EXPECT_EQ(dot_at(cue, 5, 4), nothing);
  for (int x = 2; x <= 5; ++x)
    EXPECT_EQ(dot_at(cue, x, 5), black) << x;
  int seen = 0;
  for (std::size_t i = 3; i < cue.rgba.size(); i += 4)
    seen += cue.rgba[i] != 0 ? 1 : 0;
  EXPECT_EQ(seen, 6);
}

TEST(DrawnCue, OpacityGoesFrom0To15AndAColourThatIsNotThereIsNotSeen) {
  drawn_cue cue;
  ASSERT_EQ(paint_unit(small_unit_but(18, 0x80), black_and_white, cue), std::nullopt);
  EXPECT_EQ(dot_at(cue, 3, 4), (dot{255, 255, 255, 8 * 17}));
  ASSERT_EQ(paint_unit(small_unit(), {{16, 128, 128}}, cue), std::nullopt);
  EXPECT_EQ(dot_at(cue, 3, 4), nothing);
}

TEST(DrawnCue, OfAUnitThatIsCutOffAnywhereIsAReason) {
  for (std::size_t size = 0; size + 1 < small_unit().size(); ++size) {
    drawn_cue cue;
    EXPECT_NE(paint_unit(small_unit().substr(0, size), black_and_white, cue), std::nullopt) << size;
  }
}

TEST(DrawnCue, OfCommandsThatAreUnknownOrLeadBackIsAReason) {
  drawn_cue cue;
  EXPECT_EQ(paint_unit(small_unit_but(12, 7), black_and_white, cue),
            "its subpicture cannot be read");
  EXPECT_EQ(paint_unit(small_unit_but(35, 8), black_and_white, cue),
            "its subpicture cannot be read");
  EXPECT_EQ(paint_unit(small_unit_but(21, 0x60), black_and_white, cue),
            "its subpicture cannot be read");  // its left edge is right of its right one
}

TEST(DrawnCue, OfAPictureLargerThanTheFrameOrWhoseLinesEndTooSoonIsAReason) {
  drawn_cue cue;
  EXPECT_EQ(paint_unit(small_unit_but(22, 0xF5), black_and_white, cue), std::nullopt);
  EXPECT_EQ(paint_unit(small_unit_but(24, 0x4F), black_and_white, cue),
            "its subpicture does not fit into the picture");
  EXPECT_EQ(paint_unit(small_unit_but(30, 38), black_and_white, cue), "its subpicture is cut off");
}

}  // namespace
}  // namespace corvane
