// The player's arithmetic, by a clock that the tests turn.
#include "media/playback.h"

#include "media/streams.h"
#include "media/video_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace corvane {
namespace {

/// Pictures of one frame rate, in groups of one size.
class even_pictures : public picture_times {
 public:
  even_pictures(double rate, std::int64_t count, std::int64_t group)
      : rate_(rate), count_(count), group_(group) {}

  std::int64_t pictures() const override { return count_; }
  double length() const override { return time_of(count_); }
  double time_of(std::int64_t number) const override { return static_cast<double>(number) / rate_; }
  std::int64_t number_at(double seconds) const override {
    const auto number = static_cast<std::int64_t>(std::floor(seconds * rate_ + 1e-6));
    return std::clamp<std::int64_t>(number, 0, std::max<std::int64_t>(count_ - 1, 0));
  }
  std::int64_t gops() const override { return (count_ + group_ - 1) / group_; }
  std::int64_t begin_of_gop(std::int64_t gop) const override { return gop * group_; }

 private:
  double rate_;
  std::int64_t count_, group_;
};

constexpr double ntsc = 30000.0 / 1001;

TEST(Playback, StandsAtTheFirstPicture) {
  const even_pictures video(25, 100, 10);
  const playback p(video);
  EXPECT_EQ(p.number(), 0);
  EXPECT_EQ(p.position(), 0);
  EXPECT_FALSE(p.playing());
}

TEST(Playback, PlaysByTheClock) {
  const even_pictures video(ntsc, 300, 15);
  playback p(video);
  p.play(1000);
  EXPECT_TRUE(p.playing());
  p.tick(1000 + 0.02);
  EXPECT_EQ(p.number(), 0);
  p.tick(1000 + 0.04);
  EXPECT_EQ(p.number(), 1);
  p.tick(1000 + 5);
  EXPECT_EQ(p.number(), 149);
}

TEST(Playback, PicturesThatComeLateAreLeftOutAndNothingDrifts) {
  const even_pictures video(25, 100'000, 10);
  playback p(video);
  p.play(0);
  double now = 0;
  for (int i = 0; i < 1000; ++i) {
    now += 0.0907;  // a decoder that takes more than two pictures' time
    p.tick(now);
    ASSERT_EQ(p.number(), video.number_at(now)) << now;
  }
}

TEST(Playback, PauseStaysAndPlayGoesOnFromThere) {
  const even_pictures video(25, 100, 10);
  playback p(video);
  p.play(0);
  p.tick(1);
  p.pause();
  p.tick(2);
  EXPECT_EQ(p.number(), 25);
  EXPECT_FALSE(p.playing());
  p.play(60);
  EXPECT_EQ(p.number(), 25);
  p.tick(60.5);
  EXPECT_EQ(p.number(), 37);
}

TEST(Playback, StopsBehindTheLastPictureAndPlaysFromTheBeginningThen) {
  const even_pictures video(25, 100, 10);
  playback p(video);
  p.play(0);
  p.tick(3.97);
  EXPECT_EQ(p.number(), 99);
  EXPECT_TRUE(p.playing());
  p.tick(4);
  EXPECT_EQ(p.number(), 99);
  EXPECT_FALSE(p.playing());
  p.play(10);
  EXPECT_EQ(p.number(), 0);
  EXPECT_TRUE(p.playing());
}

TEST(Playback, SeekingWhilePlayingPlaysOnFromThere) {
  const even_pictures video(25, 100, 10);
  playback p(video);
  p.play(0);
  p.tick(3);
  p.seek(1, 3);
  EXPECT_EQ(p.number(), 25);
  EXPECT_TRUE(p.playing());
  p.tick(3.5);
  EXPECT_EQ(p.number(), 37);
}

TEST(Playback, StepsByPicturePauseAndStayWithinTheVideo) {
  const even_pictures video(25, 3, 10);
  playback p(video);
  p.play(0);
  p.step(1);
  EXPECT_FALSE(p.playing());
  EXPECT_EQ(p.number(), 1);
  p.step(1);
  p.step(1);
  EXPECT_EQ(p.number(), 2);
  p.step(-1);
  EXPECT_EQ(p.number(), 1);
  p.step(-5);
  EXPECT_EQ(p.number(), 0);
}

TEST(Playback, StepsByGroup) {
  const even_pictures video(25, 35, 10);
  playback p(video);
  p.step(14);
  p.previous_gop();
  EXPECT_EQ(p.number(), 10);
  p.previous_gop();
  EXPECT_EQ(p.number(), 0);
  p.previous_gop();
  EXPECT_EQ(p.number(), 0);
  p.next_gop();
  EXPECT_EQ(p.number(), 10);
  p.next_gop();
  p.next_gop();
  EXPECT_EQ(p.number(), 30);
  p.step(2);
  p.next_gop();
  EXPECT_EQ(p.number(), 32);  // the last group
}

TEST(Playback, TimeRoundedToHundredthsLeadsBackToItsPicture) {
  for (const double rate : {24000.0 / 1001, 24.0, 25.0, ntsc, 30.0, 50.0, 60000.0 / 1001, 60.0}) {
    const even_pictures video(rate, 200'000, 15);
    playback p(video);
    for (std::int64_t number = 0; number < 200'000; number += 7) {
      p.seek(std::round(video.time_of(number) * 100) / 100, 0);
      ASSERT_EQ(p.number(), number) << rate;
    }
  }
}

TEST(Playback, SeekingOutsideOfTheVideoShowsItsFirstOrLastPicture) {
  const even_pictures video(25, 100, 10);
  playback p(video);
  p.seek(100, 0);
  EXPECT_EQ(p.number(), 99);
  p.seek(-1, 0);
  EXPECT_EQ(p.number(), 0);
  p.go_to(1'000'000, 0);
  EXPECT_EQ(p.number(), 99);
}

TEST(Playback, ChapterLandsOnTheNearestGroupAndHalfWayOnTheEarlierOne) {
  const even_pictures video(25, 35, 10);  // groups at 0, 0.4, 0.8 and 1.2 s
  const playback p(video);
  EXPECT_EQ(p.landing_of(0), 0);
  EXPECT_EQ(p.landing_of(0.19), 0);
  EXPECT_EQ(p.landing_of(0.2), 0);
  EXPECT_EQ(p.landing_of(0.21), 10);
  EXPECT_EQ(p.landing_of(0.4), 10);
  EXPECT_EQ(p.landing_of(0.6), 10);
  EXPECT_EQ(p.landing_of(0.61), 20);
  EXPECT_EQ(p.landing_of(1.39), 30);  // no group follows
}

/// Two groups in each unit, as a stream may have that is ready for a disc.
class pictures_in_units : public even_pictures {
 public:
  using even_pictures::even_pictures;
  std::int64_t units() const override { return (gops() + 1) / 2; }
  std::int64_t begin_of_unit(std::int64_t unit) const override { return begin_of_gop(2 * unit); }
};

TEST(Playback, ChapterLandsOnTheNearestUnitWhereGroupsShareOne) {
  const pictures_in_units video(25, 45, 10);  // units at 0, 0.8 and 1.6 s
  playback p(video);
  EXPECT_EQ(p.landing_of(0.39), 0);
  EXPECT_EQ(p.landing_of(0.4), 0);
  EXPECT_EQ(p.landing_of(0.41), 20);
  EXPECT_EQ(p.landing_of(1.21), 40);
  EXPECT_EQ(p.landing_of(1.79), 40);
  p.next_gop();
  EXPECT_EQ(p.number(), 10);
}

TEST(Playback, LandingIsThatOfTheTimeAsItIsStored) {
  const even_pictures video(ntsc, 48, 16);
  const playback p(video);
  // Picture 8 is half way, at 0.2669; but the chapter says 0.27.
  EXPECT_EQ(p.landing_of(video.time_of(8)), 16);
  EXPECT_EQ(p.landing_of(0.26), 0);
}

TEST(Playback, VideoOfOnePictureOrNoneIsHeld) {
  for (const std::int64_t count : {0, 1}) {
    const even_pictures video(25, count, 10);
    playback p(video);
    p.play(0);
    p.tick(1);
    EXPECT_FALSE(p.playing());
    p.step(1);
    p.next_gop();
    p.previous_gop();
    p.seek(3, 0);
    EXPECT_EQ(p.number(), 0);
    EXPECT_EQ(p.landing(), 0);
  }
}

std::vector<std::int64_t> group_begins(const char* name) {
  auto video = video_file::open(media_test::stream(name));
  EXPECT_TRUE(video && (*video)->scan(60'000)) << video.error;
  std::vector<std::int64_t> begins;
  for (std::int64_t gop = 0; video && gop < (*video)->gops(); ++gop)
    begins.push_back((*video)->begin_of_gop(gop));
  return begins;
}

TEST(Playback, OpenGroupBeginsWithTheFirstOfItsPicturesOnTheScreen) {
  // Its I picture is shown after the two B pictures that stand behind it.
  EXPECT_EQ(group_begins("open.m2v"), (std::vector<std::int64_t>{0, 13, 28, 43, 58}));
  auto video = video_file::open(media_test::stream("open.m2v"));
  ASSERT_TRUE(video && (*video)->scan(60'000));
  EXPECT_EQ((*video)->first_of_gop(1), 15);
  playback p(**video);
  p.step(14);
  EXPECT_EQ(p.gop_of(p.number()), 1);
  p.previous_gop();
  EXPECT_EQ(p.number(), 13);
}

TEST(Playback, ClosedGroupBeginsWithItsIPicture) {
  auto video = video_file::open(media_test::stream("closed.m2v"));
  ASSERT_TRUE(video && (*video)->scan(60'000));
  for (std::int64_t gop = 0; gop < (*video)->gops(); ++gop)
    EXPECT_EQ((*video)->begin_of_gop(gop), (*video)->first_of_gop(gop));
  EXPECT_EQ((*video)->begin_of_gop(1000), (*video)->begin_of_gop((*video)->gops() - 1));
}

}  // namespace
}  // namespace corvane
