// The picture of a video at a time, without a window around it.
#include "ui/editor/video_backdrop.h"

#include "ui/window_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace corvane::testing_support {
namespace {

bool same(const wxImage& a, const wxImage& b) {
  return a.GetSize() == b.GetSize() &&
         std::equal(a.GetData(), a.GetData() + 3 * a.GetWidth() * a.GetHeight(), b.GetData());
}

// Who searches shows the picture once nothing is left to search: a slice that finds it at once must
// count, too.
TEST(VideoBackdrop, TellsOfEverySliceThatItLookedThrough) {
  video_backdrop backdrop(real_video());
  const wxImage first = backdrop.at(2.9);
  EXPECT_TRUE(backdrop.search(2.9));
  while (backdrop.search(2.9)) {
  }
  EXPECT_FALSE(same(backdrop.at(2.9), first));
  EXPECT_FALSE(backdrop.search(0.1));  // on the way there
}

TEST(VideoBackdrop, OfAFileThatIsNoVideoIsNone) {
  video_backdrop backdrop(__FILE__);
  EXPECT_FALSE(backdrop.search(2.9));
  EXPECT_FALSE(backdrop.at(0.5).IsOk());
}

}  // namespace
}  // namespace corvane::testing_support
