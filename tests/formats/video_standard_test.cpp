// The video standard of a stream.
#include "formats/video_standard.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using namespace std::string_literals;

TEST(VideoStandard, IsTheHeightOfTheFirstSequenceHeader) {
  const std::string pal = "\0\0\1\xB3\x2D\x02\x40"s, ntsc = "\0\0\1\xB3\x2D\x01\xE0"s;
  EXPECT_EQ(video_standard_of(pal), "PAL");
  EXPECT_EQ(video_standard_of(ntsc), "NTSC");
  EXPECT_EQ(video_standard_of("\0\0\1\xB3\x16\x01\x20"s), "PAL");
  EXPECT_EQ(video_standard_of("\0\0\1\xB3\x16\x00\xF0"s), "NTSC");
  EXPECT_EQ(video_standard_of("xx\0\0\1\xB8\0\0"s + ntsc + "...." + pal), "NTSC");
  EXPECT_EQ(video_standard_of(std::string(60'000, '\0') + pal), "PAL");
  EXPECT_EQ(video_standard_of("\0\0\1\xB3\x2D\x02\x41"s + pal), "");
}

TEST(VideoStandard, OfACutHeaderIsNotKnown) {
  for (const std::string& whole : {"\0\0\1\xB3\x2D\x02\x40"s, "\0\0\1\xB3\x2D\x01\xE0"s,
                                   "\0\0\1\xB3\x16\x01\x20"s, "\0\0\1\xB3\x16\x00\xF0"s})
    for (std::size_t size = 0; size < whole.size(); ++size)
      EXPECT_EQ(video_standard_of(whole.substr(0, size)), "") << size;
}

}  // namespace
}  // namespace corvane
