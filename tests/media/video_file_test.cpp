// Video files as their users see them: sizes, times, costs, progress.
#include "media/video_file.h"

#include "media/streams.h"
#include "media/tiny_stream.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace corvane {
namespace {

using media_test::shown_grey;
using media_test::stream;
using media_test::tiny_picture;
using media_test::tiny_stream;
using testing_support::temporary_folder;

std::unique_ptr<video_file> scanned(const std::string& path) {
  auto video = video_file::open(path);
  EXPECT_TRUE(video) << video.error;
  if (!video)
    return nullptr;
  const auto progress = (*video)->scan(60'000);
  EXPECT_TRUE(progress && progress->finished) << progress.error;
  return std::move(*video);
}

// Brightness of a pixel.
int grey_at(const result<picture>& p, int x, int y) {
  EXPECT_TRUE(p) << p.error;
  if (!p)
    return -1;
  const auto at = static_cast<std::size_t>(3 * (y * p->width + x));
  EXPECT_EQ(p->rgb.at(at), p->rgb.at(at + 1));
  return p->rgb.at(at);
}

void expect_grey(const result<picture>& p, int grey) {
  EXPECT_NEAR(grey_at(p, 1, 1), shown_grey(grey), 1);
  if (p) {
    EXPECT_NEAR(grey_at(p, p->width - 1, p->height - 1), shown_grey(grey), 1);
  }
}

TEST(VideoFile, TellsItsShapeFromItsHead) {
  auto pal = video_file::open(stream("pal.m2v"));
  ASSERT_TRUE(pal) << pal.error;
  EXPECT_EQ((*pal)->shape().width, 720);
  EXPECT_EQ((*pal)->shape().height, 576);
  EXPECT_EQ((*pal)->shape().aspect_width, 16);
  EXPECT_DOUBLE_EQ((*pal)->frame_rate(), 25);
  auto still = video_file::open(stream("still.m2v"));
  ASSERT_TRUE(still) << still.error;
  EXPECT_EQ((*still)->shape().height, 480);
  EXPECT_DOUBLE_EQ((*still)->frame_rate(), 30000.0 / 1001);
}

TEST(VideoFile, LengthAndTimesAreThoseOfTheFrameRate) {
  const auto video = scanned(stream("pal.m2v"));
  ASSERT_EQ(video->pictures(), 40);
  EXPECT_DOUBLE_EQ(video->length(), 1.6);
  EXPECT_DOUBLE_EQ(video->time_of(10), 0.4);
}

TEST(VideoFile, APositionIsExactlyThePictureOnTheScreenThen) {
  const auto video = scanned(stream("closed.m2v"));
  for (std::int64_t n = 0; n < video->pictures(); ++n) {
    EXPECT_EQ(video->number_at(static_cast<double>(n) / video->frame_rate()), n);
    EXPECT_EQ(video->number_at(video->time_of(n)), n);
    EXPECT_EQ(video->number_at((static_cast<double>(n) + 0.99) / video->frame_rate()), n);
  }
}

TEST(VideoFile, PositionsOutsideAreTheFirstAndTheLastPicture) {
  const auto video = scanned(stream("closed.m2v"));
  const std::int64_t last = video->pictures() - 1;
  for (const double before : {-1.0, -1e300, -std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(video->number_at(before), 0);
  for (const double after : {video->length(), 1e300, std::numeric_limits<double>::infinity()})
    EXPECT_EQ(video->number_at(after), last);
  EXPECT_TRUE(video->picture_at(-1));
  EXPECT_TRUE(video->picture_at(1e9));
}

TEST(VideoFile, APictureThatIsNotThereIsAFailure) {
  const auto video = scanned(stream("closed.m2v"));
  for (const std::int64_t n :
       {std::int64_t{-1}, video->pictures(), std::numeric_limits<std::int64_t>::max()})
    EXPECT_EQ(video->picture_number(n).error, "there is no such picture");
}

// Film for NTSC: 24 pictures a second in 30 frames, every second one a field longer.
TEST(VideoFile, RepeatedFieldsCountInTimes) {
  const temporary_folder folder;
  tiny_stream tiny;
  for (int i = 0; i < 48; ++i) {
    if (i % 12 == 0)
      tiny.sequence(4).group();
    tiny_picture p;
    p.kind = i % 12 == 0 ? picture_kind::intra : picture_kind::predicted;
    p.grey = 20 + i;
    p.top_field_first = i % 4 < 2;
    p.repeat_first_field = i % 2 == 0;
    tiny.add(p);
  }
  const auto video = scanned(folder.add("a.m2v", tiny.bytes));
  EXPECT_DOUBLE_EQ(video->frame_rate(), 30000.0 / 1001);
  EXPECT_NEAR(video->length(), 48 * 1001.0 / 24000, 1e-9);
  for (std::int64_t n = 0; n < video->pictures(); ++n) {
    EXPECT_NEAR(video->time_of(n), static_cast<double>(n) * 1001 / 24000, 0.017);
    EXPECT_EQ(video->number_at(video->time_of(n)), n);
    expect_grey(video->picture_at(video->time_of(n)), static_cast<int>(20 + n));
  }
}

TEST(VideoFile, ScansInSlicesAndTellsHowFarItIs) {
  const temporary_folder folder;
  tiny_stream tiny;
  for (int i = 0; i < 30'000; ++i)
    tiny.sequence().group().add('I', 100);
  auto video = video_file::open(folder.add("a.m2v", tiny.bytes));
  ASSERT_TRUE(video) << video.error;
  std::uint64_t done = 0;
  std::int64_t pictures = 0;
  int slices = 0;
  for (bool finished = false; !finished; ++slices) {
    const auto progress = (*video)->scan(0);
    ASSERT_TRUE(progress) << progress.error;
    ASSERT_EQ(progress->total, tiny.bytes.size());
    ASSERT_TRUE(progress->done > done || progress->finished);
    ASSERT_GE((*video)->pictures(), pictures);
    done = progress->done;
    pictures = (*video)->pictures();
    finished = progress->finished;
  }
  EXPECT_GT(slices, 3);
  EXPECT_EQ(done, tiny.bytes.size());
  EXPECT_EQ(pictures, 30'000);
  EXPECT_TRUE((*video)->scan(0)->finished);
}

TEST(VideoFile, PicturesScannedSoFarCanBeSeenAlready) {
  const temporary_folder folder;
  tiny_stream tiny;
  for (int i = 0; i < 20'000; ++i)
    tiny.sequence().group().add('I', 20 + i % 200);
  auto video = video_file::open(folder.add("a.m2v", tiny.bytes));
  ASSERT_TRUE(video) << video.error;
  ASSERT_FALSE((*video)->scan(0)->finished);
  const std::int64_t last = (*video)->pictures() - 1;
  ASSERT_GT(last, 100);
  expect_grey((*video)->picture_number(last), static_cast<int>(20 + last % 200));
}

// What one picture costs: after it, what the same one costs again and the next one.
TEST(VideoFile, APictureCostsAtMostOneGroup) {
  const auto video = scanned(stream("closed.m2v"));
  for (std::int64_t n = video->pictures() - 1; n >= 0; n -= 7) {
    const std::uint64_t before = video->decoded();
    ASSERT_TRUE(video->picture_number(n));
    EXPECT_LE(video->decoded() - before, 15u);
    const std::uint64_t after = video->decoded();
    ASSERT_TRUE(video->picture_number(n));
    EXPECT_EQ(video->decoded(), after);
  }
}

TEST(VideoFile, ALeadingPictureOfAnOpenGroupCostsTheReferencesBeforeItToo) {
  const auto video = scanned(stream("open.m2v"));
  for (std::int64_t gop = 1; gop < video->gops(); ++gop) {
    const std::int64_t leading = video->first_of_gop(gop) - 1;
    ASSERT_TRUE(video->picture_number(0));
    const std::uint64_t before = video->decoded();
    ASSERT_TRUE(video->picture_number(leading));
    EXPECT_LE(video->decoded() - before, 5u + 3u);
  }
}

TEST(VideoFile, TheWayBackWithinAGroupDecodesNothingTwice) {
  const auto video = scanned(stream("closed.m2v"));
  const std::int64_t first = video->first_of_gop(1), last = video->first_of_gop(2) - 1;
  const std::uint64_t before = video->decoded();
  for (std::int64_t n = last; n >= first; --n)
    ASSERT_TRUE(video->picture_number(n));
  EXPECT_EQ(video->decoded() - before, static_cast<std::uint64_t>(last - first + 1));
}

TEST(VideoFile, StepsByGroups) {
  const auto video = scanned(stream("pal.m2v"));
  EXPECT_EQ(video->gops(), 4);
  EXPECT_EQ(video->first_of_gop(0), 0);
  EXPECT_EQ(video->gop_of(0), 0);
  for (std::int64_t gop = 1; gop < video->gops(); ++gop) {
    EXPECT_EQ(video->gop_of(video->first_of_gop(gop)), gop);
    EXPECT_EQ(video->gop_of(video->first_of_gop(gop) - 1), gop - 1);
  }
  EXPECT_EQ(video->gop_of(-5), 0);
  EXPECT_EQ(video->gop_of(1'000'000), 3);
  EXPECT_EQ(video->first_of_gop(1'000'000), video->first_of_gop(3));
  EXPECT_EQ(video->first_of_gop(-1), 0);
}

#ifndef _WIN32  // FFmpeg's program, which tells what is right, is this machine's
TEST(VideoFile, FieldPicturesMakeOnePictureOfAlternatingRows) {
  using kind = picture_extension::structure_kind;
  const temporary_folder folder;
  tiny_stream tiny(true, 64, 64);
  for (int i = 0; i < 12; ++i) {
    if (i % 4 == 0)
      tiny.sequence().group();
    const kind first = i % 3 == 0 ? kind::bottom_field : kind::top_field;
    const kind second = i % 3 == 0 ? kind::top_field : kind::bottom_field;
    const picture_kind type = i % 4 == 0 ? picture_kind::intra : picture_kind::predicted;
    tiny.add({type, first == kind::top_field ? 40 + i : 200 + i, i % 4, first});
    tiny.add({i % 2 == 0 && i % 4 == 0 ? picture_kind::intra : picture_kind::predicted,
              second == kind::top_field ? 40 + i : 200 + i, i % 4, second});
  }
  const std::string path = folder.add("a.m2v", tiny.bytes);
  const auto video = scanned(path);
  ASSERT_EQ(video->pictures(), 12);
  const auto expected = media_test::pictures_by_ffmpeg(path, 64, 64);
  ASSERT_EQ(expected.size(), 12u);
  for (const int n : {0, 1, 11, 5, 4, 8, 7, 2, 10, 3, 6, 9}) {
    const auto p = video->picture_number(n);
    EXPECT_NEAR(grey_at(p, 20, 20), shown_grey(40 + n), 1) << n;
    EXPECT_NEAR(grey_at(p, 20, 21), shown_grey(200 + n), 1) << n;
    EXPECT_TRUE(media_test::same(*p, expected[static_cast<std::size_t>(n)])) << n;
  }
}
#endif

TEST(VideoFile, PicturesOfChangingSizeComeInTheirOwn) {
  const temporary_folder folder;
  tiny_stream tiny;
  for (int part = 0; part < 6; ++part) {
    tiny.resize(part % 2 == 0 ? 32 : 96, part % 3 == 0 ? 32 : 64).sequence().group();
    tiny.add('I', 30 + 10 * part).add('P', 33 + 10 * part).add('B', 36 + 10 * part);
  }
  const auto video = scanned(folder.add("a.m2v", tiny.bytes));
  ASSERT_EQ(video->pictures(), 18);
  for (const int n : {0, 1, 2, 3, 4, 5, 6, 17, 8, 11, 2, 9, 14, 5}) {
    const int part = n / 3;
    const int greys[] = {30, 36, 33};
    const auto p = video->picture_number(n);
    ASSERT_TRUE(p) << n << p.error;
    EXPECT_EQ(p->width, part % 2 == 0 ? 32 : 96);
    EXPECT_EQ(p->height, part % 3 == 0 ? 32 : 64);
    expect_grey(p, greys[n % 3] + 10 * part);
  }
}

TEST(VideoFile, AGroupWithoutASequenceHeaderIsDecodedAfterAnyOther) {
  const temporary_folder folder;
  tiny_stream tiny;
  tiny.sequence();
  for (int i = 0; i < 5; ++i)
    tiny.group().add('I', 40 + i).add('P', 140 + i);
  tiny.resize(64, 32).sequence();
  for (int i = 5; i < 10; ++i)
    tiny.group().add('I', 40 + i).add('P', 140 + i);
  const auto video = scanned(folder.add("a.m2v", tiny.bytes));
  for (const int n : {19, 2, 18, 5, 13, 0, 15}) {
    const auto p = video->picture_number(n);
    ASSERT_TRUE(p) << p.error;
    EXPECT_EQ(p->width, n < 10 ? 32 : 64);
    expect_grey(p, (n % 2 == 0 ? 40 : 140) + n / 2);
  }
}

/// The first packet of those that a unit of a disc begins with.
std::string navigation_packet() {
  constexpr std::size_t length = 0x03D4;
  return std::string("\0\0\1\xBF\x03\xD4", 6) + std::string(length, '\0');
}

TEST(VideoFile, UnitsOfAReadyStreamBeginBehindItsNavigationPackets) {
  std::vector<std::string> groups;
  for (int i = 0; i < 5; ++i) {
    tiny_stream group;
    group.sequence().group(true).add('I', 40 + i).add('P', 140 + i);
    groups.push_back(group.bytes);
  }
  // In front of every other one, and twice: one of them begins a unit without video.
  std::string file;
  for (std::size_t i = 0; i < groups.size(); ++i)
    file += media_test::in_packets(groups[i], 100) +
            (i % 2 == 1 ? navigation_packet() + navigation_packet() : "");
  const temporary_folder folder;
  const auto video = scanned(folder.add("a.vob", file));
  ASSERT_TRUE(video);
  EXPECT_EQ(video->gops(), 5);
  ASSERT_EQ(video->units(), 2);
  EXPECT_EQ(video->begin_of_unit(0), 4);
  EXPECT_EQ(video->begin_of_unit(1), 8);
  EXPECT_EQ(video->begin_of_unit(99), 8);
}

TEST(VideoFile, UnitsOfAnyOtherStreamAreItsGroups) {
  for (const char* const name : {"open.m2v", "open.vob"}) {
    const auto video = scanned(stream(name));
    ASSERT_TRUE(video);
    ASSERT_EQ(video->units(), video->gops()) << name;
    for (std::int64_t gop = 0; gop < video->gops(); ++gop)
      EXPECT_EQ(video->begin_of_unit(gop), video->begin_of_gop(gop)) << name;
  }
}

}  // namespace
}  // namespace corvane
