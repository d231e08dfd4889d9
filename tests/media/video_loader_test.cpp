// A video opened and looked through in slices.
#include "media/video_loader.h"

#include "media/streams.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using media_test::pictures_by_ffmpeg;
using media_test::same;
using media_test::stream;

#ifndef _WIN32  // FFmpeg's program, which tells what is right, is this machine's
TEST(VideoLoader, GivesTheFirstPictureAndKnowsAllAfterTheLastSlice) {
  video_loader loader;
  const auto first = loader.open(stream("closed.m2v"));
  ASSERT_TRUE(first) << first.error;
  EXPECT_TRUE(same(*first, pictures_by_ffmpeg(stream("closed.m2v"), 352, 240).front()));
  EXPECT_TRUE(loader.scanning());
  for (int slices = 0; loader.scanning() && slices < 10'000; ++slices)
    loader.scan();
  EXPECT_FALSE(loader.scanning());
  EXPECT_FALSE(loader.takes_long());
  EXPECT_EQ(loader.part(), 1);
  EXPECT_EQ(loader.video()->pictures(), 70);
  EXPECT_FALSE(loader.unread());
  loader.scan();  // nothing more to do
  EXPECT_EQ(loader.video()->pictures(), 70);
}
#endif

TEST(VideoLoader, FileThatCannotBeShownLeavesNoVideo) {
  const testing_support::temporary_folder folder;
  video_loader loader;
  ASSERT_TRUE(loader.open(stream("closed.m2v")));
  const auto missing = loader.open(folder.path("missing.m2v"));
  EXPECT_FALSE(missing);
  EXPECT_FALSE(missing.error.empty());
  EXPECT_EQ(loader.video(), nullptr);
  EXPECT_FALSE(loader.scanning());
  EXPECT_FALSE(loader.open(folder.add("text.m2v", "no video at all")));
  loader.scan();
  EXPECT_EQ(loader.video(), nullptr);
}

TEST(VideoLoader, ClosesInTheMiddleAndOpensAnother) {
  video_loader loader;
  ASSERT_TRUE(loader.open(stream("long.m2v")));
  loader.close();
  EXPECT_EQ(loader.video(), nullptr);
  EXPECT_FALSE(loader.scanning());
  ASSERT_TRUE(loader.open(stream("pal.m2v")));
  while (loader.scanning())
    loader.scan();
  EXPECT_EQ(loader.video()->pictures(), 40);
}

}  // namespace
}  // namespace corvane
