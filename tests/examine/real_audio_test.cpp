// Streams of several encoders, whole and then damaged: what the scanner says against ffprobe, and
// against what was done to them.
#include "examine/audio_facts.h"
#include "made_audio.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace corvane {
namespace {

using examine_test::audio_facts_of;

struct expected_stream {
  std::string name, codec;
  int rate = 0, channels = 0;
  std::uint64_t frames = 0;
};

std::ifstream opened(const std::string& name) {
  return std::ifstream(CORVANE_AUDIO_STREAMS "/" + name, std::ios::binary);
}

std::string bytes_of(const std::string& name) {
  std::ifstream file = opened(name);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<expected_stream> expected_streams() {
  std::vector<expected_stream> all;
  std::ifstream file = opened("expected");
  for (expected_stream one;
       file >> one.name >> one.codec >> one.rate >> one.channels >> one.frames;)
    all.push_back(one);
  return all;
}

bool changes_its_bit_rate(const expected_stream& stream) {
  return stream.name == "varying.mp3";
}

TEST(RealAudio, IsAsFfprobeSeesIt) {
  const std::map<std::string, audio_kind> kinds = {{"ac3", audio_kind::ac3},
                                                   {"eac3", audio_kind::eac3},
                                                   {"mp2", audio_kind::mpeg_layer_2},
                                                   {"mp3", audio_kind::mpeg_layer_3}};
  const std::vector<expected_stream> streams = expected_streams();
  EXPECT_EQ(streams.size(), 16u);
  for (const expected_stream& expected : streams) {
    SCOPED_TRACE(expected.name);
    const std::string bytes = bytes_of(expected.name);
    const audio_facts facts = audio_facts_of(bytes);
    EXPECT_EQ(facts.kind, kinds.at(expected.codec));
    ASSERT_TRUE(facts.first);
    EXPECT_EQ(facts.first->sample_rate, expected.rate);
    EXPECT_EQ(facts.first->channels, expected.channels);
    EXPECT_EQ(facts.frames, expected.frames);
    EXPECT_EQ(facts.length, expected.frames * static_cast<audio_time>(facts.first->samples) *
                                (audio_clock / static_cast<audio_time>(expected.rate)));
    EXPECT_EQ(facts.bit_rate_varies, changes_its_bit_rate(expected));
    EXPECT_EQ(facts.gap_count, 0u);
    EXPECT_EQ(facts.damaged_frames, 0u);
    EXPECT_FALSE(facts.cut || facts.change);
    EXPECT_TRUE(audio_facts_of(bytes, 1789) == facts);
    const auto head =
        read_audio_head({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, true);
    EXPECT_TRUE(head && head->first == facts.first && head->gap_count == 0);
  }
}

TEST(RealAudio, OtherFormatsAndTags) {
  EXPECT_EQ(audio_facts_of(bytes_of("sound.wav")).kind, audio_kind::wav);
  EXPECT_EQ(audio_facts_of(bytes_of("sound.dts")).kind, audio_kind::dts);
  EXPECT_EQ(audio_facts_of(bytes_of("sound.aac")).kind, audio_kind::aac);
  const audio_facts tagged = audio_facts_of(bytes_of("tagged.mp3"));
  ASSERT_EQ(tagged.gaps.size(), 2u);
  EXPECT_EQ(tagged.gaps[0].content, audio_gap::id3v2);
  EXPECT_EQ(tagged.gaps[1].content, audio_gap::id3v1);
  EXPECT_EQ(tagged.kind, audio_kind::mpeg_layer_3);
}

TEST(RealAudio, OneStrayByteInTheMiddle) {
  for (const char* const name : {"film.ac3", "film.mp2"}) {
    std::string bytes = bytes_of(name);
    const audio_facts before = audio_facts_of(bytes);
    ASSERT_EQ(seconds_of(before.length), 24);
    bytes.insert(bytes.size() / 2, 1, '?');
    const audio_facts facts = audio_facts_of(bytes);
    EXPECT_EQ(facts.frames, before.frames);
    ASSERT_TRUE(facts.first_inner_gap);
    EXPECT_EQ(seconds_of(facts.first_inner_gap->before), 12);
    EXPECT_EQ(facts.first_inner_gap->position, bytes.size() / 2);
    EXPECT_EQ(facts.gap_bytes, 1u);
    EXPECT_EQ(seconds_of(facts.length - facts.first_inner_gap->before), 12);
  }
}

// Wherever a byte comes in or gets lost, one gap is found there, and the sound goes on behind it.
TEST(RealAudio, AByteTooManyOrTooFewAnywhere) {
  std::mt19937 random(3);
  for (const expected_stream& expected : expected_streams()) {
    const std::string whole = bytes_of(expected.name);
    for (int round = 0; round < 20; ++round) {
      std::string bytes = whole;
      const std::size_t at = random() % (whole.size() * 9 / 10);
      if (round % 2 == 0)
        bytes.insert(at, 1, '\x5A');
      else
        bytes.erase(at, 1);
      SCOPED_TRACE(expected.name + (round % 2 == 0 ? " and one at " : " but the one at ") +
                   std::to_string(at));
      const audio_facts facts = audio_facts_of(bytes);
      ASSERT_EQ(facts.gaps.size(), 1u);
      const audio_gap gap = facts.gaps[0];
      EXPECT_GE(gap.position + gap.size + largest_audio_frame, at);
      EXPECT_LE(gap.position, at + largest_audio_frame);
      EXPECT_LE(facts.frames, expected.frames);
      // Where frames differ in length, one more is lost.
      EXPECT_GE(facts.frames + (changes_its_bit_rate(expected) ? 3 : 1), expected.frames);
      EXPECT_EQ(facts.kind, audio_facts_of(whole).kind);
      EXPECT_FALSE(facts.change);
    }
  }
}

TEST(RealAudio, ChangedBitsAreFoundByTheChecksum) {
  std::mt19937 random(4);
  for (const char* const name : {"film.ac3", "surround.ac3", "cd-rate.ac3", "plus.eac3"}) {
    const std::string whole = bytes_of(name);
    const std::size_t size = audio_facts_of(whole).first->size;
    for (int round = 0; round < 20; ++round) {
      std::string bytes = whole;
      // Not in a header, which are in front of the frames.
      const std::size_t at = size * 2 + 20 + random() % (size - 60);
      bytes[at] = static_cast<char>(bytes[at] ^ 1 << random() % 8);
      const audio_facts facts = audio_facts_of(bytes);
      EXPECT_EQ(facts.damaged_frames, 1u) << name << " at " << at;
      ASSERT_TRUE(facts.first_damaged);
      EXPECT_LE(facts.first_damaged->position, at);
      EXPECT_GT(facts.first_damaged->position + largest_audio_frame, at);
      EXPECT_EQ(facts.gap_count, 0u);
    }
  }
}

TEST(RealAudio, CutAndJoinedFiles) {
  const std::string one = bytes_of("film.ac3"), other = bytes_of("cd-rate.ac3");
  const audio_facts cut = audio_facts_of(std::string_view(one).substr(0, 100'001));
  EXPECT_EQ(cut.frames, 100'001 / 768u);
  EXPECT_EQ(cut.cut, (cut_audio_frame{130 * 768, 161, 607}));
  EXPECT_EQ(cut.gap_count, 0u);

  const audio_facts joined = audio_facts_of(one + other);
  EXPECT_EQ(joined.frames, 750u + 104);
  ASSERT_TRUE(joined.change);
  EXPECT_EQ(seconds_of(joined.change->before), 24);
  EXPECT_EQ(joined.change->to.sample_rate, 44100);
  EXPECT_EQ(joined.gap_count, 0u);

  // A cut film with another kind behind it: the cut frame takes some of that.
  const audio_facts mixed = audio_facts_of(one.substr(0, 100'001) + bytes_of("film.mp2"));
  EXPECT_EQ(mixed.gap_count, 1u);
  EXPECT_EQ(mixed.change->to.kind, audio_kind::mpeg_layer_2);
  EXPECT_GE(mixed.frames, 130u + 998);
}

TEST(RealAudio, JunkBetweenFramesIsNoSound) {
  std::mt19937 random(5);
  std::string noise(300'000, '\0');
  for (char& byte : noise)
    byte = static_cast<char>(random());
  for (const char* const name : {"surround.ac3", "low-rate.mp2", "half-rate.mp3"}) {
    const std::string whole = bytes_of(name);
    const audio_facts facts = audio_facts_of(whole + noise + whole);
    EXPECT_EQ(facts.frames, 2 * audio_facts_of(whole).frames) << name;
    EXPECT_EQ(facts.gap_count, 1u);
    EXPECT_EQ(facts.gap_bytes, noise.size());
  }
}

}  // namespace
}  // namespace corvane
