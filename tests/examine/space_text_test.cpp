// The words for the room that is left on discs.
#include "examine/space_text.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(SpaceText, SaysWhatIsFreeOnBothDiscs) {
  EXPECT_EQ(space_text(0), "4.37 gig free on a DVD-5, 7.95 on a DVD-9");
  EXPECT_EQ(space_text(std::uint64_t{1} << 30), "3.37 gig free on a DVD-5, 6.95 on a DVD-9");
  EXPECT_EQ(space_text(4'700'372'992), "0.00 gig free on a DVD-5, 3.57 on a DVD-9");
}

TEST(SpaceText, SaysWhatIsTooMuchForTheSmallerDisc) {
  EXPECT_EQ(space_text(4'700'372'993), "0.01 gig too much for a DVD-5, 3.57 free on a DVD-9");
  EXPECT_EQ(space_text(8'543'666'176), "3.58 gig too much for a DVD-5, 0.00 free on a DVD-9");
}

TEST(SpaceText, SaysWhatIsTooMuchForAnyDisc) {
  EXPECT_EQ(space_text(8'543'666'177), "0.01 gig too much for a DVD-9, the largest disc");
  EXPECT_EQ(space_text(18'543'666'176), "9.32 gig too much for a DVD-9, the largest disc");
}

}  // namespace
}  // namespace corvane
