// What plays sound, with SDL's driver that writes what is heard into a file, in the time that
// hearing it takes; and where nothing plays.
#include "media/sound_output.h"
#include "platform/files/files.h"
#include "support/environment_variable.h"
#include "support/temporary_folder.h"
#include "support/tone.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstring>
#include <memory>
#include <thread>
#include <vector>

namespace corvane {
namespace {

using testing_support::channel_of;
using testing_support::environment_variable;
using testing_support::first_loud;
using testing_support::frequency_of;
using testing_support::loudest;

/// One second for each of these tones, on both sides.
std::shared_ptr<const pcm_sound> tones(const std::vector<double>& hertz) {
  auto sound = std::make_shared<pcm_sound>();
  sound->samples.reserve(hertz.size() * sound_rate * sound_channels);
  for (const double tone : hertz)
    for (int i = 0; i < sound_rate; ++i) {
      const auto sample =
          static_cast<std::int16_t>(10'000 * std::sin(2 * std::acos(-1.0) * tone * i / sound_rate));
      sound->samples.insert(sound->samples.end(), {sample, sample});
    }
  return sound;
}

class SoundOutput : public testing::Test {
 protected:
  void SetUp() override {
    auto made = make_sound_output();
    ASSERT_TRUE(made) << made.error;
    output_ = std::move(*made);
  }

  static void wait(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
  }

  /// The left side of what was heard since the device was opened last.
  std::vector<std::int16_t> heard() const {
    const auto bytes = read_file(file_, 64 << 20);
    EXPECT_TRUE(bytes) << bytes.error;
    std::vector<std::int16_t> samples(bytes ? bytes->size() / 2 : 0);
    if (!samples.empty())
      std::memcpy(samples.data(), bytes->data(), 2 * samples.size());
    return channel_of(samples, 0);
  }

  testing_support::temporary_folder folder_;
  std::string file_ = folder_.path("heard.raw");
  environment_variable driver_{"SDL_AUDIODRIVER", "disk"};
  environment_variable to_{"SDL_DISKAUDIOFILE", file_};
  std::unique_ptr<sound_output> output_;
};

TEST_F(SoundOutput, PlaysFromTheFrameThatIsWanted) {
  ASSERT_EQ(output_->open(), std::nullopt);
  output_->play(tones({440, 880}), 0);
  wait(400);
  output_->stop();
  const std::vector<std::int16_t> begin = heard();
  EXPECT_NEAR(frequency_of(begin), 440, 1);
  EXPECT_GT(begin.size(), 10'000u);
  EXPECT_LT(begin.size(), 40'000u);
  ASSERT_EQ(output_->open(), std::nullopt);
  output_->play(tones({440, 880}), 48'000);
  wait(400);
  output_->stop();
  EXPECT_NEAR(frequency_of(heard()), 880, 2);
}

TEST_F(SoundOutput, IsSilentBeforeAndBehindTheSound) {
  ASSERT_EQ(output_->open(), std::nullopt);
  wait(200);
  output_->play(tones({440}), 48'000 - 4'800);
  wait(500);
  output_->stop();
  const std::vector<std::int16_t> all = heard();
  const std::size_t begin = first_loud(all);
  ASSERT_LT(begin + 10'000, all.size());
  EXPECT_EQ(loudest(std::span(all).subspan(begin + 4'800)), 0);
  EXPECT_GT(loudest(std::span(all).subspan(begin + 4'500, 300)), 9'000);
}

TEST_F(SoundOutput, IsSilentWhereThereIsNothingMore) {
  ASSERT_EQ(output_->open(), std::nullopt);
  output_->play(tones({440}), 1'000'000);
  wait(200);
  output_->stop();
  EXPECT_EQ(loudest(heard()), 0);
}

TEST_F(SoundOutput, PlaysAnotherInstead) {
  ASSERT_EQ(output_->open(), std::nullopt);
  output_->play(tones({440}), 0);
  wait(300);
  output_->play(tones({880}), 0);
  wait(300);
  output_->stop();
  const std::vector<std::int16_t> all = heard();
  ASSERT_GT(all.size(), 16'000u);
  EXPECT_NEAR(frequency_of(std::span(all).first(6'000)), 440, 1);
  EXPECT_NEAR(frequency_of(std::span(all).last(6'000)), 880, 2);
}

TEST_F(SoundOutput, IsNotHeardWhenItIsStopped) {
  ASSERT_EQ(output_->open(), std::nullopt);
  output_->play(tones({440}), 0);
  wait(200);
  output_->stop();
  const std::size_t then = heard().size();
  wait(200);
  EXPECT_EQ(heard().size(), then);
  output_->play(tones({440}), 0);
  wait(200);
  EXPECT_EQ(heard().size(), then);
}

TEST_F(SoundOutput, IsNotHeardWhenItHasGone) {
  ASSERT_EQ(output_->open(), std::nullopt);
  output_->play(tones({440}), 0);
  wait(200);
  output_.reset();
  const std::size_t then = heard().size();
  wait(200);
  EXPECT_EQ(heard().size(), then);
}

TEST(NoSoundOutput, IsToldWhereNothingPlaysSound) {
  const environment_variable driver("SDL_AUDIODRIVER", "nonsense");
  const auto made = make_sound_output();
  EXPECT_FALSE(made);
  EXPECT_EQ(made.error, no_sound_here);
}

TEST(NoSoundOutput, IsToldWhereTheDeviceCannotBeOpened) {
  const environment_variable driver("SDL_AUDIODRIVER", "disk");
  const environment_variable to("SDL_DISKAUDIOFILE", "/no/such/folder/heard.raw");
  const auto made = make_sound_output();
  ASSERT_TRUE(made) << made.error;
  EXPECT_EQ((*made)->open(), failure(no_sound_here));
  (*made)->play(tones({440}), 0);
  (*made)->stop();
}

}  // namespace
}  // namespace corvane
