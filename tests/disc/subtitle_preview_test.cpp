// The preview of text subtitles, drawn by the real spumux.
#include "text_studio.h"

namespace corvane::disc {
namespace {

using state = subtitle_preview::state;

constexpr const char* two_cues =
    "1\n00:00:01,000 --> 00:00:02,500\nA first line\n\n"
    "2\n01:50:00,500 --> 01:50:03,000\nThe second one\nhas two\n\n";

TEST(SubtitlePreview, NothingIsDrawnBeforeItIsWanted) {
  text_studio studio;
  EXPECT_EQ(studio.preview().poll(), state::idle);
}

TEST(SubtitlePreview, ACueHasItsTimesAndTextInTheBottomThird) {
  text_studio studio;
  const drawn_cue cue = studio.drawn(two_cues);
  EXPECT_EQ(cue.number, 1);
  EXPECT_NEAR(cue.begin, 1, 0.02);
  EXPECT_NEAR(cue.end, 2.5, 0.04);
  EXPECT_EQ(cue.width, 720);
  EXPECT_EQ(cue.height, 480);
  const seen_area area = seen(cue);
  EXPECT_GE(area.y0, 320);
  EXPECT_LT(area.x0, 360);
  EXPECT_GT(area.x1, 360);
}

TEST(SubtitlePreview, ALateCueIsThereAtOnce) {
  text_studio studio;
  const auto begin = std::chrono::steady_clock::now();
  const drawn_cue cue =
      studio.drawn(text_studio::request(studio.folder().add("a.srt", two_cues), 2));
  EXPECT_NEAR(cue.begin, 6600.5, 0.02);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
}

TEST(SubtitlePreview, ANumberPastTheLastCueIsAReason) {
  text_studio studio;
  EXPECT_EQ(studio.refused(text_studio::request(studio.folder().add("a.srt", two_cues), 3)),
            "\"a.srt\" cannot be shown: it has 2 subtitles, no number 3.");
}

}  // namespace
}  // namespace corvane::disc
