// Picture n is the n-th that the ffmpeg program decodes, pixel for pixel: in order, backwards and
// at random, for every kind of stream.
#include "media/streams.h"
#include "media/video_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace corvane {
namespace {

using media_test::pictures_by_ffmpeg;
using media_test::same;

class ExactPictures : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    auto opened = video_file::open(media_test::stream(GetParam()));
    ASSERT_TRUE(opened) << opened.error;
    video = std::move(*opened);
    const auto scanned = video->scan(60'000);
    ASSERT_TRUE(scanned && scanned->finished) << scanned.error;
    expected = pictures_by_ffmpeg(media_test::stream(GetParam()), video->shape().width,
                                  video->shape().height);
    ASSERT_FALSE(expected.empty());
    ASSERT_EQ(video->pictures(), static_cast<std::int64_t>(expected.size()));
  }

  void expect_in_order(const std::vector<std::int64_t>& numbers) {
    for (const std::int64_t number : numbers) {
      const auto p = video->picture_number(number);
      ASSERT_TRUE(p) << number << ": " << p.error;
      ASSERT_TRUE(same(*p, expected.at(static_cast<std::size_t>(number)))) << "picture " << number;
    }
  }

  std::vector<std::int64_t> all() const {
    std::vector<std::int64_t> numbers(expected.size());
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
  }

  std::unique_ptr<video_file> video;
  std::vector<picture> expected;
};

TEST_P(ExactPictures, PlayingDecodesEachPictureOnce) {
  expect_in_order(all());
  EXPECT_EQ(video->decoded(), expected.size());
}

TEST_P(ExactPictures, Backwards) {
  std::vector<std::int64_t> numbers = all();
  std::reverse(numbers.begin(), numbers.end());
  numbers.resize(std::min<std::size_t>(numbers.size(), 120));
  expect_in_order(numbers);
}

TEST_P(ExactPictures, AtRandom) {
  std::vector<std::int64_t> numbers = all();
  std::shuffle(numbers.begin(), numbers.end(), std::mt19937(20));
  numbers.resize(std::min<std::size_t>(numbers.size(), 60));
  expect_in_order(numbers);
}

TEST_P(ExactPictures, FirstPictureNeedsNoIndex) {
  auto fresh = video_file::open(media_test::stream(GetParam()));
  ASSERT_TRUE(fresh) << fresh.error;
  const auto p = (*fresh)->first_picture();
  ASSERT_TRUE(p) << p.error;
  EXPECT_TRUE(same(*p, expected.front()));
}

INSTANTIATE_TEST_SUITE_P(
    Streams, ExactPictures,
    testing::Values("closed.m2v", "open.m2v", "pal.m2v", "intra.m2v", "long.m2v", "predicted.m2v",
                    "odd.m2v", "one.m1v", "still.m2v", "progressive.m2v", "no-b.m2v",
                    "interlaced.m2v", "open.vob", "one.mpg", "pal.mpg", "disc.vob"),
    [](const auto& stream) {
      std::string name = stream.param;
      std::replace_if(
          name.begin(), name.end(), [](char c) { return c == '.' || c == '-'; }, '_');
      return name;
    });

}  // namespace
}  // namespace corvane
