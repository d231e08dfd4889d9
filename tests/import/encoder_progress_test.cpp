#include "import/encoder_progress.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using progress = std::optional<encoder_progress>;

TEST(EncoderProgress, IsThatOfTheLastLine) {
  EXPECT_EQ(encoder_progress_in(
                "frame=   60 fps= 40 q=2.0 size=     512kB time=00:00:02.00 bitrate=2097.2kbits/s "
                "speed=1.3x    \rframe=  120 fps=48.5 q=2.0 Lsize=    1024kB time=01:00:04.50 "
                "bitrate=2097.2kbits/s speed= 1.6x    \r"),
            (progress{{3604.5, 48.5, 1.6}}));
}

TEST(EncoderProgress, OfWhatIsOnlyCopiedHasNoPictures) {
  EXPECT_EQ(
      encoder_progress_in("size=    1024kB time=00:00:04.00 bitrate=2097.2kbits/s speed= 800x "),
      (progress{{4, std::nullopt, 800}}));
}

TEST(EncoderProgress, OfTheFirstMomentHasNoSpeed) {
  EXPECT_EQ(encoder_progress_in(
                "frame=    1 fps=0.0 q=0.0 size=N/A time=00:00:00.00 bitrate=N/A speed=N/A    "),
            (progress{{0, 0, std::nullopt}}));
}

TEST(EncoderProgress, WhatTellsNothingIsNone) {
  for (const char* const text :
       {"", "*importing speed=film.....",
        "time=00:00:04.00 bitrate=", "frame= 1 time=N/A speed=2x ",
        "frame=    1 fps=0.0 q=0.0 size=N/A time=-577014:32:22.77 bitrate=N/A speed=N/A "})
    EXPECT_FALSE(encoder_progress_in(text)) << text;
}

}  // namespace
}  // namespace corvane
