// The sound of files, decoded: those of make_sounds.sh, whose tones are known.
#include "media/source_probe.h"
#include "media/source_reader.h"
#include "media/sources.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "support/temporary_folder.h"
#include "support/tone.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <random>
#include <stop_token>
#include <string>
#include <vector>

namespace corvane {
namespace {

using media_test::source;
using testing_support::channel_of;
using testing_support::first_loud;
using testing_support::frequency_of;
using testing_support::loudest;
using testing_support::temporary_folder;

std::string sound_file(const std::string& name) {
  return join_path(CORVANE_MEDIA_SOUNDS, name);
}

std::string bytes_of(const std::string& path) {
  const auto bytes = read_file(path, 64 << 20);
  EXPECT_TRUE(bytes) << bytes.error;
  return bytes ? *bytes : std::string("x");
}

/// A failure of the test, and silence, when there is none.
pcm_sound sound_of(const std::string& name, double most_seconds = longest_source_sound) {
  auto sound = source_sound(sound_file(name), most_seconds);
  EXPECT_TRUE(sound) << name << ": " << sound.error;
  return sound ? std::move(*sound) : pcm_sound();
}

/// One channel from one time to another.
std::vector<std::int16_t> part(const pcm_sound& sound, std::size_t channel, double from,
                               double to) {
  const auto frame = [&sound](double seconds) {
    return std::min(static_cast<std::size_t>(seconds * sound_rate), sound.frames());
  };
  return channel_of(
      std::span(sound.samples)
          .subspan(frame(from) * sound_channels, (frame(to) - frame(from)) * sound_channels),
      channel);
}

double hertz(const pcm_sound& sound, std::size_t channel, double from = 0.5, double to = 1.5) {
  return frequency_of(part(sound, channel, from, to));
}

/// How loud a tone is in a decoded one of 0.3: 9830, whatever it was coded with.
int loudness(const pcm_sound& sound, std::size_t channel) {
  return loudest(part(sound, channel, 0.5, 1.5));
}

TEST(SourceSound, OfEveryKindHasItsLengthAndItsTonesAtItsSides) {
  for (const std::string name :
       {"ffmpeg.ac3", "ffmpeg.mp2", "twolame.mp2", "mp2enc.mp2", "plain.wav", "deep.wav", "cd.wav",
        "film.dts", "lame.mp3", "flac.flac", "vorbis.ogg", "opus.opus", "aac.m4a", "lpcm.vob"}) {
    const pcm_sound sound = sound_of(name);
    EXPECT_NEAR(sound.seconds(), 2, 0.06) << name;
    EXPECT_NEAR(hertz(sound, 0), 440, 0.5) << name;
    EXPECT_NEAR(hertz(sound, 1), 660, 0.5) << name;
    EXPECT_NEAR(loudness(sound, 0), 9830, 600) << name;
    EXPECT_NEAR(loudness(sound, 1), 9830, 600) << name;
    EXPECT_FALSE(sound.cut) << name;
  }
}

TEST(SourceSound, WithoutLossIsWhatItWas) {
  for (const std::string name : {"plain.wav", "flac.flac"}) {
    const pcm_sound sound = sound_of(name);
    ASSERT_EQ(sound.frames(), 96'000u) << name;
    for (std::size_t i = 0; i < sound.frames(); i += 997) {
      const double t = static_cast<double>(i) / 48'000, turn = 2 * std::acos(-1.0);
      EXPECT_NEAR(sound.samples[2 * i], 0.3 * 32768 * std::sin(turn * 440 * t), 1) << name << i;
      EXPECT_NEAR(sound.samples[2 * i + 1], 0.3 * 32768 * std::sin(turn * 660 * t), 1) << name;
    }
  }
}

TEST(SourceSound, OfSixChannelsIsMixedIntoTwo) {
  const pcm_sound sound = sound_of("six.ac3");
  EXPECT_NEAR(hertz(sound, 0), 440, 0.5);
  EXPECT_NEAR(hertz(sound, 1), 660, 0.5);
  EXPECT_GT(loudness(sound, 0), 3000);
}

TEST(SourceSound, OfOneChannelIsOnBothSides) {
  const pcm_sound sound = sound_of("one.ac3");
  EXPECT_NEAR(hertz(sound, 0), 440, 0.5);
  EXPECT_EQ(part(sound, 0, 0, 2), part(sound, 1, 0, 2));
}

TEST(SourceSound, OfAMultiplexIsItsFirst) {
  const pcm_sound sound = sound_of("two.vob");
  EXPECT_NEAR(sound.seconds(), 2, 0.06);
  EXPECT_NEAR(hertz(sound, 0), 440, 0.5);
}

TEST(SourceSound, BeginsWithThePicture) {
  const pcm_sound late = sound_of("late.vob");
  EXPECT_NEAR(late.seconds(), 2.5, 0.06);
  EXPECT_NEAR(static_cast<double>(first_loud(part(late, 0, 0, 2))) / sound_rate, 0.5, 0.05);
  EXPECT_NEAR(hertz(late, 0, 1, 2), 440, 0.5);
  const pcm_sound early = sound_of("early.vob");
  EXPECT_NEAR(early.seconds(), 1.5, 0.06);
  EXPECT_LT(first_loud(part(early, 0, 0, 1)), 200u);
}

TEST(SourceSound, IsCutWhereItIsLongEnough) {
  const pcm_sound half = sound_of("ffmpeg.ac3", 0.5);
  EXPECT_EQ(half.frames(), 24'000u);
  EXPECT_TRUE(half.cut);
  EXPECT_NEAR(hertz(half, 0, 0.1, 0.5), 440, 0.5);
  const pcm_sound whole = sound_of("plain.wav", 2);
  EXPECT_EQ(whole.frames(), 96'000u);
  EXPECT_FALSE(whole.cut);
  EXPECT_FALSE(sound_of("ffmpeg.ac3", 2.5).cut);
}

TEST(SourceSound, IsNeverLongerThanFiveMinutes) {
  for (const double most : {longest_source_sound, 1e9}) {
    const pcm_sound sound = sound_of("long.ac3", most);
    EXPECT_EQ(sound.frames(), std::size_t{300} * 48'000);
    EXPECT_TRUE(sound.cut);
    EXPECT_NEAR(hertz(sound, 0, 299, 300), 440, 0.5);
    EXPECT_LT(sound.samples.capacity(), std::size_t{301} * 48'000 * 2);
  }
}

// A player goes on, too.
TEST(SourceSound, GoesOnBehindAnotherKind) {
  const pcm_sound sound = sound_of("joined.mp2");
  EXPECT_NEAR(sound.seconds(), 4, 0.12);
  EXPECT_NEAR(hertz(sound, 1, 0.5, 1.5), 660, 0.5);
  EXPECT_GT(loudest(part(sound, 1, 2.5, 3.5)), 3000);
}

TEST(SourceSound, OfAFileThatEndsInTheMiddleIsWhatIsThere) {
  const pcm_sound sound = sound_of("half.ac3");
  EXPECT_NEAR(sound.seconds(), 1, 0.06);
  EXPECT_NEAR(hertz(sound, 0, 0.2, 0.8), 440, 0.5);
}

TEST(SourceSound, GoesOnBehindDamage) {
  const pcm_sound sound = sound_of("hole.ac3");
  EXPECT_GT(sound.seconds(), 1.2);
  EXPECT_NEAR(hertz(sound, 0, 0.2, 0.6), 440, 0.5);
  EXPECT_NEAR(hertz(sound, 0, sound.seconds() - 0.4, sound.seconds() - 0.1), 440, 0.5);
}

TEST(SourceSound, IsRefusedWhereThereIsNone) {
  const temporary_folder folder;
  EXPECT_EQ(source_sound(sound_file("silent.m2v")).error, "it has no sound");
  EXPECT_EQ(source_sound(source("still.png")).error, "it has no sound");
  EXPECT_EQ(source_sound(folder.path("missing.ac3")).error, "the file does not exist");
  EXPECT_EQ(source_sound(folder.add("empty.ac3", "")).error, "the file is empty");
  EXPECT_EQ(source_sound(folder.add("text.ac3", "Not a sound.\n")).error,
            "it is not a file with video or sound");
}

TEST(SourceSound, IsRefusedWhereNothingCanBeDecoded) {
  const temporary_folder folder;
  const std::string whole = bytes_of(sound_file("flac.flac"));
  const std::size_t body = whole.find("\xFF\xF8");
  ASSERT_NE(body, std::string::npos);
  EXPECT_EQ(
      source_sound(folder.add("head.flac", whole.substr(0, body) + std::string(5000, 0))).error,
      "no sound of it can be decoded");
}

TEST(SourceSound, EndsWhenItIsAskedTo) {
  std::stop_source stop;
  stop.request_stop();
  EXPECT_EQ(source_sound(sound_file("long.ac3"), longest_source_sound, stop.get_token()).error,
            "it was stopped");
}

/// Silence, or one short file again and again, for ever.
class endless_bytes : public source_bytes {
 public:
  explicit endless_bytes(std::string piece) : piece_(std::move(piece)) {}

  std::int64_t size() const override { return std::int64_t{1} << 40; }
  std::optional<std::size_t> read(std::int64_t position, std::uint8_t* to,
                                  std::size_t count) override {
    for (std::size_t i = 0; i < count; ++i)
      to[i] = static_cast<std::uint8_t>(
          piece_[(static_cast<std::size_t>(position) + i) % piece_.size()]);
    total_ += count;
    return count;
  }
  std::size_t total() const { return total_; }

 private:
  std::string piece_;
  std::size_t total_ = 0;
};

TEST(EndlessSound, EndsWithWhatIsWanted) {
  const auto reader = make_source_reader();
  ASSERT_TRUE(reader) << reader.error;
  for (const std::string name : {"ffmpeg.ac3", "ffmpeg.mp2", "two.vob"}) {
    endless_bytes bytes(bytes_of(sound_file(name)));
    const auto sound = (*reader)->sound(bytes, source_limits(), 5);
    ASSERT_TRUE(sound) << name << ": " << sound.error;
    EXPECT_EQ(sound->frames(), std::size_t{5} * 48'000) << name;
    EXPECT_TRUE(sound->cut) << name;
    EXPECT_LT(bytes.total(), std::size_t{64} << 20) << name;
  }
}

// What was decoded by then is heard.
TEST(EndlessSound, EndsWhenItsBytesAreSpent) {
  const auto reader = make_source_reader();
  ASSERT_TRUE(reader) << reader.error;
  endless_bytes bytes(bytes_of(sound_file("ffmpeg.ac3")));
  const auto sound =
      (*reader)->sound(bytes, {std::int64_t{1} << 20, std::chrono::minutes(1)}, 1000);
  ASSERT_TRUE(sound) << sound.error;
  EXPECT_TRUE(sound->cut);
  EXPECT_GT(sound->seconds(), 10);
  EXPECT_LT(bytes.total(), std::size_t{2} << 20);
}

TEST(DamagedSound, OfEveryKindEndsWellWithWrongBytes) {
  const temporary_folder folder;
  std::mt19937 random(13);
  int heard = 0;
  for (const std::string name : {"ffmpeg.ac3", "ffmpeg.mp2", "deep.wav", "film.dts", "lame.mp3",
                                 "flac.flac", "vorbis.ogg", "opus.opus", "aac.m4a", "lpcm.vob"}) {
    const std::string whole = bytes_of(sound_file(name));
    for (int i = 0; i < 10; ++i) {
      std::string damaged = whole;
      for (int hit = 0; hit < 12; ++hit)
        damaged[random() % std::min<std::size_t>(whole.size(), hit % 2 == 0 ? 600 : 60'000)] =
            static_cast<char>(random());
      const auto sound = source_sound(folder.add("damaged", damaged));
      EXPECT_NE(sound.value.has_value(), !sound.error.empty());
      heard += sound ? 1 : 0;
    }
  }
  EXPECT_GT(heard, 50);
}

}  // namespace
}  // namespace corvane
