// What the scanner says of audio streams, whole and damaged.
#include "examine/audio_facts.h"

#include "made_audio.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace corvane {

// In the failure messages of the tests.
void PrintTo(const audio_gap& gap, std::ostream* out) {
  *out << gap.size << " bytes at " << gap.position << ", " << seconds_of(gap.before)
       << " s, content " << static_cast<int>(gap.content);
}

namespace {

using namespace examine_test;
using testing::ElementsAre;

// 1 s of 48 kHz, in samples, as the scanner counts time.
constexpr audio_time samples(std::uint64_t count) {
  return count * (audio_clock / 48000);
}

std::optional<audio_facts> head_of(const std::string& bytes, bool whole) {
  return read_audio_head({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()},
                         whole);
}

TEST(AudioFacts, OfAWholeAc3Stream) {
  const std::string stream = times(125, ac3_frame({.mode = 7, .low_frequency = true}));
  const audio_facts facts = audio_facts_of(stream);
  EXPECT_EQ(facts.kind, audio_kind::ac3);
  ASSERT_TRUE(facts.first);
  EXPECT_EQ(facts.first->sample_rate, 48000);
  EXPECT_EQ(facts.first->channels, 6);
  EXPECT_TRUE(facts.first->low_frequency);
  EXPECT_EQ(facts.first->bit_rate, 192000);
  EXPECT_EQ(facts.highest_bit_rate, 192000);
  EXPECT_FALSE(facts.bit_rate_varies);
  EXPECT_EQ(facts.bytes, stream.size());
  EXPECT_EQ(facts.frame_bytes, stream.size());
  EXPECT_EQ(facts.frames, 125u);
  EXPECT_EQ(facts.samples, 125u * 1536);
  EXPECT_EQ(facts.length, 4 * audio_clock);
  EXPECT_EQ(seconds_of(facts.length), 4);
  EXPECT_EQ(facts.gap_count, 0u);
  EXPECT_FALSE(facts.cut || facts.change || facts.first_inner_gap || facts.first_damaged);
}

TEST(AudioFacts, OfEachLayerOfMpegAudio) {
  const audio_kind kinds[] = {audio_kind::mpeg_layer_1, audio_kind::mpeg_layer_2,
                              audio_kind::mpeg_layer_3};
  for (int layer = 1; layer <= 3; ++layer) {
    const audio_facts facts = audio_facts_of(times(50, mpeg_frame({.layer = layer, .mode = 3})));
    EXPECT_EQ(facts.kind, kinds[layer - 1]);
    EXPECT_EQ(facts.frames, 50u);
    EXPECT_EQ(facts.first->channels, 1);
    EXPECT_EQ(facts.length, samples(50 * (layer == 1 ? 384 : 1152)));
    EXPECT_EQ(facts.gap_count, 0u);
  }
}

TEST(AudioFacts, LengthsOfAllRatesAreExact) {
  // 3 s of each, in frames of 1152 and 1536 samples: 125/3, 37.5 and 20.83 frames are none.
  std::string stream = times(1250, mpeg_frame({.rate_code = 1}));      // 30 s
  stream += times(1225, mpeg_frame({.rate_code = 0}));                 // 32 s
  stream += times(250, mpeg_frame({.rate_code = 2}));                  // 9 s
  stream += times(1225, mpeg_frame({.mpeg2 = true, .rate_code = 0}));  // 64 s
  EXPECT_EQ(audio_facts_of(stream).length, (30 + 32 + 9 + 64) * audio_clock);
  EXPECT_EQ(audio_facts_of(times(1, ac3_frame({.rate_code = 1}))).length,
            audio_clock / 44100 * 1536);
}

TEST(AudioFacts, OneStrayByteIsAGapWithItsTime) {
  const std::string half = times(500, mpeg_frame());
  const audio_facts facts = audio_facts_of(half + "x" + half);
  const audio_gap stray{half.size(), 1, 12 * audio_clock, audio_gap::other};
  EXPECT_THAT(facts.gaps, ElementsAre(stray));
  EXPECT_EQ(facts.first_inner_gap, stray);
  EXPECT_EQ(facts.frames, 1000u);
  EXPECT_EQ(facts.length, 24 * audio_clock) << "what is behind the gap is sound, too";
}

TEST(AudioFacts, AByteInsideAFrameIsFoundAtItsEnd) {
  std::string stream = times(20, ac3_frame());
  stream.insert(5 * 768 + 300, 1, 'x');
  const audio_facts facts = audio_facts_of(stream);
  EXPECT_THAT(facts.gaps, ElementsAre(audio_gap{6 * 768, 1, samples(6 * 1536), audio_gap::other}));
  EXPECT_EQ(facts.frames, 20u);
  EXPECT_EQ(facts.damaged_frames, 1u);
  EXPECT_EQ(facts.first_damaged, (damaged_audio_frame{5 * 768, samples(5 * 1536)}));
}

TEST(AudioFacts, ALostByteCostsTheNextFrame) {
  std::string stream = times(20, mpeg_frame());
  stream.erase(5 * 576 + 300, 1);
  const audio_facts facts = audio_facts_of(stream);
  EXPECT_EQ(facts.frames, 19u);
  EXPECT_THAT(facts.gaps,
              ElementsAre(audio_gap{6 * 576, 575, samples(6 * 1152), audio_gap::other}));
}

TEST(AudioFacts, BytesBeforeAndBehindTheFramesAreNoInnerGaps) {
  const std::string sound = times(10, ac3_frame());
  const audio_facts facts = audio_facts_of(junk(100) + sound + junk(3000));
  EXPECT_THAT(facts.gaps, ElementsAre(audio_gap{0, 100, 0, audio_gap::other},
                                      audio_gap{100 + sound.size(), 3000, samples(10 * 1536),
                                                audio_gap::other}));
  EXPECT_EQ(facts.gap_bytes, 3100u);
  EXPECT_FALSE(facts.first_inner_gap);
}

TEST(AudioFacts, TheFirstInnerGapIsNotTheOneInFront) {
  const std::string sound = times(10, mpeg_frame());
  const audio_facts facts = audio_facts_of("!" + sound + "??" + sound + "..." + sound);
  ASSERT_EQ(facts.gaps.size(), 3u);
  EXPECT_EQ(facts.first_inner_gap, facts.gaps[1]);
}

TEST(AudioFacts, ZerosAreToldFromOtherBytes) {
  const std::string sound = times(10, mpeg_frame());
  EXPECT_EQ(audio_facts_of(sound + std::string(500, '\0'), 64).gaps.front().content,
            audio_gap::zeros);
  EXPECT_EQ(audio_facts_of(sound + std::string(500, '\0') + "x", 64).gaps.front().content,
            audio_gap::other);
}

TEST(AudioFacts, ASyncWordInTheSoundIsNoFrame) {
  // The sound of our frames is full of headers; one byte less leaves the scanner between them.
  for (const std::string& frame : {ac3_frame(), mpeg_frame()}) {
    std::string stream = times(30, frame);
    stream.erase(10 * frame.size() + 1, 1);
    const audio_facts facts = audio_facts_of(stream);
    EXPECT_EQ(facts.frames, 29u);
    ASSERT_EQ(facts.gap_count, 1u);
    EXPECT_EQ(facts.gaps[0].position, 10 * frame.size());
    EXPECT_EQ(facts.gaps[0].size, frame.size() - 1);
  }
}

TEST(AudioFacts, AHeaderBetweenTheFramesIsNoFrame) {
  const std::string sound = times(10, mpeg_frame());
  const std::string header = mpeg_frame({.bit_rate_index = 9}).substr(0, 4);
  const audio_facts facts = audio_facts_of(sound + header + junk(200) + sound);
  EXPECT_EQ(facts.frames, 20u);
  EXPECT_THAT(facts.gaps,
              ElementsAre(audio_gap{sound.size(), 204, samples(10 * 1152), audio_gap::other}));
}

TEST(AudioFacts, TwoHeadersInForeignBytesAreNoStream) {
  const std::string frame = mpeg_frame();
  const audio_facts facts = audio_facts_of(junk(1000) + frame + frame + junk(1000));
  EXPECT_EQ(facts.kind, audio_kind::unknown);
  EXPECT_FALSE(facts.first);
  EXPECT_THAT(facts.gaps, ElementsAre(audio_gap{0, 2000 + 2 * frame.size(), 0, audio_gap::other}));
}

TEST(AudioFacts, TwoHeadersWhereTheStreamBeginsAreOne) {
  const std::string frame = mpeg_frame();
  for (const std::string& front : {std::string(), id3v2_tag("x")}) {
    const audio_facts facts = audio_facts_of(front + frame + frame + "x" + times(3, frame));
    EXPECT_EQ(facts.frames, 5u);
  }
}

TEST(AudioFacts, AFewFramesAreAStreamWhenNothingElseIsThere) {
  EXPECT_EQ(audio_facts_of(ac3_frame()).frames, 1u);
  EXPECT_EQ(audio_facts_of(mpeg_frame() + mpeg_frame()).frames, 2u);
  const audio_facts cut = audio_facts_of(junk(50) + mpeg_frame() + mpeg_frame().substr(0, 50));
  EXPECT_EQ(cut.frames, 1u);
  EXPECT_TRUE(cut.cut);
  EXPECT_EQ(audio_facts_of("").frames, 0u);
  EXPECT_EQ(audio_facts_of("").gap_count, 0u);
}

TEST(AudioFacts, ACutFileSaysWhatIsMissing) {
  for (const std::string& frame : {ac3_frame(), mpeg_frame()}) {
    const std::string stream = times(10, frame);
    // From a whole header to its first byte.
    for (const std::size_t there :
         {frame.size() - 1, std::size_t{300}, std::size_t{8}, std::size_t{7}, std::size_t{4},
          std::size_t{2}, std::size_t{1}}) {
      const audio_facts facts = audio_facts_of(stream + frame.substr(0, there));
      EXPECT_EQ(facts.frames, 10u) << there;
      EXPECT_EQ(facts.gap_count, 0u) << there;
      EXPECT_EQ(facts.cut, (cut_audio_frame{stream.size(), there, frame.size() - there})) << there;
    }
  }
  EXPECT_FALSE(audio_facts_of(times(10, ac3_frame()) + "x").cut) << "this is no part of a frame";
}

TEST(AudioFacts, TwoFilesOfDifferentRateJoined) {
  const std::string one = times(50, ac3_frame()), other = times(50, ac3_frame({.rate_code = 1}));
  const audio_facts facts = audio_facts_of(one + other);
  EXPECT_EQ(facts.frames, 100u);
  EXPECT_EQ(facts.gap_count, 0u);
  EXPECT_EQ(facts.first->sample_rate, 48000);
  ASSERT_TRUE(facts.change);
  EXPECT_EQ(facts.change->position, one.size());
  EXPECT_EQ(facts.change->before, samples(50 * 1536));
  EXPECT_EQ(facts.change->to.sample_rate, 44100);
  EXPECT_EQ(facts.damaged_frames, 0u) << "of either size";
}

TEST(AudioFacts, AnotherNumberOfChannelsIsAChange) {
  const std::string one = times(5, ac3_frame());
  const audio_facts facts =
      audio_facts_of(one + ac3_frame({.mode = 7, .low_frequency = true}) + one);
  EXPECT_EQ(facts.frames, 11u);
  ASSERT_TRUE(facts.change);
  EXPECT_EQ(facts.change->position, one.size());
  EXPECT_EQ(facts.change->to.channels, 6);
}

TEST(AudioFacts, AnotherKindBehindJunk) {
  const std::string one = times(20, mpeg_frame()), other = times(20, ac3_frame());
  const audio_facts facts = audio_facts_of(one + junk(777) + other);
  EXPECT_EQ(facts.kind, audio_kind::mpeg_layer_2);
  EXPECT_EQ(facts.frames, 40u);
  EXPECT_EQ(facts.gap_bytes, 777u);
  ASSERT_TRUE(facts.change);
  EXPECT_EQ(facts.change->position, one.size() + 777);
  EXPECT_EQ(facts.change->to.kind, audio_kind::ac3);
}

TEST(AudioFacts, VaryingBitRate) {
  std::string stream;
  for (const int index : {5, 7, 9, 8, 6})
    stream += times(3, mpeg_frame({.layer = 3, .bit_rate_index = index, .padded = index % 2 == 0}));
  const audio_facts facts = audio_facts_of(stream);
  EXPECT_EQ(facts.frames, 15u);
  EXPECT_EQ(facts.first->bit_rate, 64000);
  EXPECT_EQ(facts.highest_bit_rate, 128000);
  EXPECT_TRUE(facts.bit_rate_varies);
  EXPECT_FALSE(facts.change);
}

TEST(AudioFacts, TagsAreNamed) {
  const std::string sound = times(10, mpeg_frame({.layer = 3}));
  const std::string front = id3v2_tag("TIT2 a title");
  const audio_facts facts = audio_facts_of(front + sound + id3v1_tag());
  EXPECT_EQ(facts.kind, audio_kind::mpeg_layer_3);
  EXPECT_EQ(facts.frames, 10u);
  EXPECT_THAT(facts.gaps, ElementsAre(audio_gap{0, front.size(), 0, audio_gap::id3v2},
                                      audio_gap{front.size() + sound.size(), 128,
                                                samples(10 * 1152), audio_gap::id3v1}));
}

TEST(AudioFacts, SoundInATagIsNoSound) {
  const std::string front = id3v2_tag(times(300, mpeg_frame()));
  const audio_facts facts = audio_facts_of(front + junk(5) + times(10, mpeg_frame()), 1000);
  EXPECT_EQ(facts.frames, 10u);
  EXPECT_THAT(facts.gaps, ElementsAre(audio_gap{0, front.size(), 0, audio_gap::id3v2},
                                      audio_gap{front.size(), 5, 0, audio_gap::other}));
}

TEST(AudioFacts, ATagBetweenTwoFilesIsAnInnerGap) {
  const std::string sound = times(10, mpeg_frame({.layer = 3}));
  const audio_facts facts = audio_facts_of(sound + id3v1_tag() + id3v2_tag("next") + sound);
  EXPECT_EQ(facts.frames, 20u);
  ASSERT_EQ(facts.gaps.size(), 2u);
  EXPECT_EQ(facts.first_inner_gap, facts.gaps[0]);
  EXPECT_EQ(facts.gaps[1].content, audio_gap::id3v2);
}

TEST(AudioFacts, ManyGapsAreCountedAndOnlyTheFirstKept) {
  const std::string two = times(2, mpeg_frame({.layer = 1, .bit_rate_index = 1}));
  const audio_facts facts = audio_facts_of(times(3, two) + times(3000, "xy" + two), 4096);
  EXPECT_EQ(facts.gap_count, 3000u);
  EXPECT_EQ(facts.gap_bytes, 6000u);
  EXPECT_EQ(facts.gaps.size(), audio_facts::most_gaps);
  EXPECT_EQ(facts.gaps.back().position, 6 * two.size() / 2 + 999 * (two.size() + 2));
}

TEST(AudioFacts, OtherFormatsAreNamedAndSearchedForNothing) {
  const std::string wav = "RIFF\x20\x30\x40\x01WAVEfmt " + junk(40) + times(20, ac3_frame());
  for (const std::size_t slice : {std::size_t{1}, std::size_t{65536}}) {
    const audio_facts facts = audio_facts_of(wav, slice);
    EXPECT_EQ(facts.kind, audio_kind::wav);
    EXPECT_FALSE(facts.first);
    EXPECT_EQ(facts.gap_bytes, wav.size());
  }
  EXPECT_EQ(audio_facts_of("\x7F\xFE\x80\x01" + junk(500)).kind, audio_kind::dts);
  EXPECT_EQ(audio_facts_of("\xFF\xF1\x4C\x80" + junk(500)).kind, audio_kind::aac);
  EXPECT_EQ(audio_facts_of(id3v2_tag("x") + "\xFF\xF1\x4C\x80" + junk(500)).kind, audio_kind::aac);
  EXPECT_EQ(audio_facts_of("\x77\x0B" + junk(500)).kind, audio_kind::ac3_swapped);
  EXPECT_EQ(audio_facts_of("\x77\x0B" + times(5, ac3_frame())).kind, audio_kind::ac3)
      << "two bytes say less than frames";
  EXPECT_EQ(audio_facts_of(junk(500)).kind, audio_kind::unknown);
}

TEST(AudioFacts, FramesOfEac3MayHaveAnySize) {
  std::string stream;
  for (int n = 0; n < 40; ++n)
    stream += eac3_frame(false, 60 + n * 37 % 100);
  const audio_facts facts = audio_facts_of(stream);
  EXPECT_EQ(facts.frames, 40u);
  EXPECT_EQ(facts.gap_count, 0u);
  EXPECT_EQ(facts.damaged_frames, 0u);
  EXPECT_TRUE(facts.bit_rate_varies);
}

TEST(AudioFacts, DependentFramesAddChannelsAndNoTime) {
  const audio_facts facts = audio_facts_of(times(25, eac3_frame() + eac3_frame(true)));
  EXPECT_EQ(facts.kind, audio_kind::eac3);
  EXPECT_EQ(facts.frames, 50u);
  EXPECT_EQ(facts.length, samples(25 * 1536));
  EXPECT_EQ(facts.damaged_frames, 0u);
  EXPECT_FALSE(facts.change) << "the added channels are no other ones";
  EXPECT_FALSE(facts.bit_rate_varies);
}

TEST(AudioFacts, ADamagedFrameIsFoundByItsChecksum) {
  std::string stream = times(20, ac3_frame());
  // The last two in the same place: one change must not hide the other.
  for (const std::size_t at : {7u * 768 + 400, 12u * 768 + 100, 13u * 768 + 100})
    stream[at] ^= 4;
  const audio_facts facts = audio_facts_of(stream);
  EXPECT_EQ(facts.frames, 20u);
  EXPECT_EQ(facts.gap_count, 0u);
  EXPECT_EQ(facts.damaged_frames, 3u);
  EXPECT_EQ(facts.first_damaged, (damaged_audio_frame{7 * 768, samples(7 * 1536)}));
}

TEST(AudioFacts, AreTheSameForAnySlices) {
  const std::string ac3 = times(7, ac3_frame()), mpeg = times(9, mpeg_frame());
  std::string hurt = times(3, ac3);
  hurt.erase(2000, 3);
  const std::string streams[] = {
      id3v2_tag(junk(3000)) + mpeg + "x" + mpeg + id3v1_tag(),
      junk(20) + hurt + times(2, std::string(900, '\0') + mpeg) + mpeg.substr(0, 100),
      ac3 + ac3_frame({.rate_code = 1}) + ac3 + mpeg + ac3 + ac3.substr(0, 5),
      "ID3" + mpeg + "TAG",
      ac3_frame(),
      "\xFF\xF1\x4C\x80" + junk(300),
  };
  for (const std::string& stream : streams) {
    const audio_facts expected = audio_facts_of(stream, stream.size());
    const std::uint64_t cut = expected.cut ? expected.cut->bytes_there : 0;
    EXPECT_EQ(expected.frame_bytes + expected.gap_bytes + cut, stream.size());
    for (const std::size_t slice :
         {1u, 2u, 3u, 7u, 100u, 575u, 577u, 769u, 2000u, 8191u, 8192u, 8193u})
      EXPECT_TRUE(audio_facts_of(stream, slice) == expected) << "slices of " << slice;
  }
}

// Any bytes changed, lost and doubled: each byte is in a frame, in a gap or in the cut frame.
TEST(AudioFacts, OfAnyBytesAreConsistent) {
  std::mt19937 random(11);
  const std::string whole = id3v2_tag("x") + times(6, ac3_frame()) +
                            times(6, mpeg_frame({.layer = 1})) + times(4, eac3_frame());
  for (int round = 0; round < 300; ++round) {
    std::string stream = whole;
    for (int n = 0; n < 4; ++n) {
      const std::size_t at = random() % stream.size();
      switch (random() % 4) {
        case 0:
          stream[at] = static_cast<char>(random());
          break;
        case 1:
          stream.erase(at, random() % 9);
          break;
        case 2:
          stream.insert(at, stream.substr(random() % stream.size(), random() % 2000));
          break;
        default:
          stream.resize(std::max<std::size_t>(at, 1000));
          break;
      }
    }
    const audio_facts facts = audio_facts_of(stream, stream.size());
    const std::uint64_t cut = facts.cut ? facts.cut->bytes_there : 0;
    ASSERT_EQ(facts.bytes, stream.size());
    ASSERT_EQ(facts.frame_bytes + facts.gap_bytes + cut, stream.size()) << "round " << round;
    ASSERT_TRUE(audio_facts_of(stream, 1 + random() % 1500) == facts) << "round " << round;
  }
}

TEST(AudioHead, TellsWhatAFileIs) {
  const std::string stream = times(500, ac3_frame({.rate_code = 1}));
  ASSERT_GT(stream.size(), audio_head_bytes);
  const auto facts = head_of(stream, true);
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->kind, audio_kind::ac3);
  EXPECT_EQ(facts->first->sample_rate, 44100);
  EXPECT_FALSE(facts->cut) << "the file goes on";
  EXPECT_EQ(facts->gap_count, 0u);
  EXPECT_EQ(facts->frames, audio_head_bytes / ac3_frame({.rate_code = 1}).size());
}

TEST(AudioHead, OfAShortFileIsAllOfIt) {
  const std::string stream = times(20, mpeg_frame()) + mpeg_frame().substr(0, 50);
  EXPECT_EQ(head_of(stream, true)->cut->bytes_there, 50u);
  EXPECT_FALSE(head_of(stream, false)->cut);
  EXPECT_EQ(head_of(stream, false)->frames, 20u);
}

TEST(AudioHead, OfALongTagIsTheTag) {
  const auto facts = head_of(id3v2_tag(junk(200'000)) + times(20, mpeg_frame()), false);
  ASSERT_TRUE(facts);
  EXPECT_FALSE(facts->first);
  EXPECT_THAT(facts->gaps, ElementsAre(audio_gap{0, audio_head_bytes, 0, audio_gap::id3v2}));
}

TEST(AudioHead, OfWhatIsNoSoundIsNothing) {
  EXPECT_FALSE(head_of(junk(100'000), false));
  EXPECT_FALSE(head_of("An ordinary text.\n", true));
  EXPECT_FALSE(head_of("", true));
  EXPECT_EQ(head_of("RIFF\x20\x30\x40\x01WAVEfmt ", false)->kind, audio_kind::wav);
}

}  // namespace
}  // namespace corvane
