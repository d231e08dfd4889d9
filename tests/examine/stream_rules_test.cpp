// What a disc allows of one stream of video or sound: clean facts, and each way to spoil them.
#include "examine/stream_rules.h"

#include "made_facts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace corvane {
namespace {

using namespace examine_test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const finding_item video_item{finding_item::whole_kind::title, 2, finding_item::part_kind::video};
const finding_item audio_item{finding_item::whole_kind::title, 2, finding_item::part_kind::audio,
                              1};

std::vector<std::string> rules_of(const std::vector<finding>& findings) {
  std::vector<std::string> rules;
  for (const finding& f : findings)
    rules.push_back(f.rule);
  return rules;
}

std::vector<finding> found_in(const video_facts& video,
                              video_standard standard = video_standard::ntsc) {
  return video_findings(video, standard, video_item, "a.m2v", false);
}

std::vector<std::string> rules_in(const video_facts& video,
                                  video_standard standard = video_standard::ntsc) {
  return rules_of(found_in(video, standard));
}

// The facts of clean NTSC video after `spoil`.
std::vector<std::string> spoilt(const std::function<void(video_facts&)>& spoil) {
  video_facts video = ntsc_video();
  spoil(video);
  return rules_in(video);
}

constexpr video_place at_12_seconds{5000, 12};

TEST(VideoRules, CleanVideoOfBothStandardsHasNoFinding) {
  EXPECT_THAT(found_in(ntsc_video()), IsEmpty());
  EXPECT_THAT(found_in(pal_video(), video_standard::pal), IsEmpty());
}

TEST(VideoRules, PulledDownAndWideVideoHasNoFinding) {
  EXPECT_THAT(spoilt([](video_facts& v) {
                v.repeated_fields = 288;
                v.shape->aspect_code = 3;
                v.shape->aspect_width = 16;
                v.shape->aspect_height = 9;
              }),
              IsEmpty());
}

TEST(VideoRules, PalVideoInAnNtscProject) {
  const auto findings = found_in(pal_video());
  ASSERT_THAT(rules_of(findings), ElementsAre("video-standard"));
  EXPECT_EQ(findings[0].severity, finding_severity::error);
  EXPECT_EQ(findings[0].found,
            "the video is PAL (720x576, 25 pictures a second) in a project of NTSC");
  EXPECT_EQ(findings[0].wanted, "NTSC");
  EXPECT_EQ(findings[0].item, video_item);
  EXPECT_EQ(findings[0].file, "a.m2v");
}

TEST(VideoRules, NoVideo) {
  EXPECT_THAT(rules_in(video_facts{}), ElementsAre("video-none"));
}

TEST(VideoRules, PacketsInsteadOfAnElementaryStream) {
  EXPECT_THAT(spoilt([](video_facts& v) { v.kind = video_kind::packets; }),
              ElementsAre("video-packets"));
}

TEST(VideoRules, SizesThatADiscDoesNotAllow) {
  for (const auto& [width, height] : {std::pair(640, 480), {1280, 720}, {1920, 1080}, {720, 240}})
    EXPECT_THAT(spoilt([&](video_facts& v) {
                  v.shape->width = width;
                  v.shape->height = height;
                }),
                ElementsAre("video-size"))
        << width;
}

TEST(VideoRules, AllSizesOfADisc) {
  for (const auto& [width, height] : {std::pair(720, 480), {704, 480}, {352, 480}, {352, 240}})
    EXPECT_THAT(spoilt([&](video_facts& v) {
                  v.shape->width = width;
                  v.shape->height = height;
                }),
                IsEmpty())
        << width;
}

TEST(VideoRules, Mpeg1IsAllowedInItsSmallSizeOnly) {
  const auto mpeg1 = [](int width, int height) {
    return spoilt([&](video_facts& v) {
      v.shape = video_shape{width, height, 30000, 1001, 12, 4, 3, false, false};
      v.peak_rate = 1.5e6;
      v.vbv_bytes = 40'960;
      v.profile_and_level = 0;
    });
  };
  EXPECT_THAT(mpeg1(352, 240), IsEmpty());
  EXPECT_THAT(mpeg1(720, 480), ElementsAre("video-size"));
}

TEST(VideoRules, FilmRateWithoutPulldown) {
  EXPECT_THAT(spoilt([](video_facts& v) { v.shape->rate_numerator = 24000; }),
              ElementsAre("video-rate"));
}

TEST(VideoRules, ProportionsThatNoDiscHas) {
  EXPECT_THAT(spoilt([](video_facts& v) { v.shape->aspect_code = 4; }),
              ElementsAre("video-aspect"));
  EXPECT_THAT(spoilt([](video_facts& v) { v.shape->aspect_code = 1; }),
              ElementsAre("video-aspect-square"));
  EXPECT_THAT(spoilt([](video_facts& v) {
                v.shape->aspect_code = 3;
                v.shape->width = 352;
              }),
              ElementsAre("video-aspect-narrow"));
}

TEST(VideoRules, OtherChromaThan420) {
  EXPECT_THAT(spoilt([](video_facts& v) { v.chroma_format = 2; }), ElementsAre("video-chroma"));
}

TEST(VideoRules, ProfilesBeyondMainAtMainLevel) {
  EXPECT_THAT(spoilt([](video_facts& v) { v.profile_and_level = 0x44; }),
              ElementsAre("video-profile"));
  EXPECT_THAT(spoilt([](video_facts& v) { v.profile_and_level = 0x58; }), IsEmpty());
}

TEST(VideoRules, LowDelay) {
  EXPECT_THAT(spoilt([](video_facts& v) { v.low_delay = true; }), ElementsAre("video-low-delay"));
}

TEST(VideoRules, PeakRateWithinAndBeyondWhatTheBufferEvensOut) {
  video_facts video = ntsc_video();
  video.peak_place = at_12_seconds;
  video.peak_rate = 9.8e6;
  EXPECT_THAT(rules_in(video), IsEmpty());
  video.peak_rate = 10.5e6;
  EXPECT_THAT(rules_in(video), ElementsAre("video-high-rate"));
  video.need_of_video.of_full = {read_ahead::buffer, 5000, 12};
  EXPECT_THAT(rules_in(video), ElementsAre("video-high-rate"));
  video.need_of_video.of_full.bits += 8;
  const auto findings = found_in(video);
  ASSERT_THAT(rules_of(findings), ElementsAre("video-peak-rate"));
  EXPECT_EQ(findings[0].found,
            "up to here the pictures need more than 9.8 Mb/s for longer than a buffer evens out; "
            "the highest second has 10.5 Mb/s");
  EXPECT_EQ(findings[0].wanted, "at most 9.8 Mb/s");
  EXPECT_EQ(findings[0].seconds, 12);
  EXPECT_EQ(findings[0].byte, 5000);
}

TEST(VideoRules, PeakRateIsNotJudgedByABeginning) {
  EXPECT_THAT(spoilt([](video_facts& v) {
                v.whole = false;
                v.peak_rate = 20e6;
              }),
              IsEmpty());
}

TEST(VideoRules, BufferLargerThanPlayersHave) {
  EXPECT_THAT(spoilt([](video_facts& v) { v.vbv_bytes = 229'377; }), ElementsAre("video-buffer"));
}

TEST(VideoRules, GroupsOfMoreFieldsThanTheStandardAllows) {
  const auto with_group_of = [](video_facts video, std::uint64_t fields) {
    video.groups_by_fields[fields] = 2;
    video.longest_group = video_group{at_12_seconds, fields / 2, fields};
    return found_in(video, video.standard);
  };
  EXPECT_THAT(with_group_of(ntsc_video(), 36), IsEmpty());
  EXPECT_THAT(rules_of(with_group_of(pal_video(), 32)), ElementsAre("gop-length"));
  const auto findings = with_group_of(ntsc_video(), 38);
  ASSERT_THAT(rules_of(findings), ElementsAre("gop-length"));
  EXPECT_EQ(findings[0].found, "2 groups are too long; the longest, here, has 38 fields");
  EXPECT_EQ(place_text(findings[0]), "title 2, video, 00:00:12");
}

TEST(VideoRules, GroupsWithoutASequenceHeader) {
  EXPECT_THAT(spoilt([](video_facts& v) { v.groups_without_sequence_header.add(at_12_seconds); }),
              ElementsAre("gop-sequence-header"));
}

TEST(VideoRules, OpenFirstGroup) {
  EXPECT_THAT(spoilt([](video_facts& v) {
                v.first_group_open = true;
                v.hidden_pictures = 2;
              }),
              ElementsAre("first-gop-open"));
}

TEST(VideoRules, ChangesInTheMiddle) {
  const video_shape before = *ntsc_video().shape;
  video_shape after = before;
  after.width = 352;
  const video_change change{at_12_seconds, before, after};
  for (auto list : {&video_facts::size_changes, &video_facts::rate_changes,
                    &video_facts::standard_changes, &video_facts::coding_changes})
    EXPECT_THAT(spoilt([&](video_facts& v) { (v.*list).add(change); }),
                ElementsAre("video-changes"));
  EXPECT_THAT(spoilt([&](video_facts& v) { v.aspect_changes.add(change); }),
              ElementsAre("video-aspect-changes"));
}

TEST(VideoRules, EndCodeInTheMiddleIsAnErrorUnlessInPackets) {
  video_facts video = ntsc_video();
  video.middle_end_codes.add(at_12_seconds);
  const auto findings = found_in(video);
  ASSERT_THAT(rules_of(findings), ElementsAre("video-end-code"));
  EXPECT_EQ(findings[0].severity, finding_severity::error);
  EXPECT_EQ(findings[0].seconds, 12);
  EXPECT_THAT(video_findings(video, video_standard::ntsc, video_item, "a.vob", true), IsEmpty());
}

TEST(VideoRules, StrayBytes) {
  EXPECT_THAT(spoilt([](video_facts& v) {
                v.stray_bytes.add({at_12_seconds, 7});
                v.stray_bytes_in_all = 7;
              }),
              ElementsAre("video-stray-bytes"));
}

TEST(VideoRules, HeadersOfPacketsInTheStream) {
  video_facts video = ntsc_video();
  video.system_codes.add(at_12_seconds);
  video.system_codes.add({9000, 20});
  const auto findings = found_in(video);
  ASSERT_THAT(rules_of(findings), ElementsAre("video-packet-codes"));
  EXPECT_EQ(findings[0].found, "2 headers of packets stand in the stream, the first one here");
  EXPECT_EQ(findings[0].seconds, 12);
}

TEST(VideoRules, PicturesBeforeTheFirstIPicture) {
  video_facts video = ntsc_video();
  video.pictures_before_intra = 3;
  EXPECT_THAT(rules_in(video), ElementsAre("video-beginning"));
  video.damage.add({video_damage_kind::group_without_intra, {}});
  EXPECT_THAT(rules_in(video), ElementsAre("video-damage")) << "which says it, too";
}

TEST(VideoRules, DamageIsToldOnceWithItsFirstPlaceAndCount) {
  video_facts video = ntsc_video();
  video.damage.add({video_damage_kind::missing_rows, at_12_seconds});
  video.damage.add({video_damage_kind::lone_field, {9000, 20}});
  const auto findings = found_in(video);
  ASSERT_THAT(rules_of(findings), ElementsAre("video-damage"));
  EXPECT_EQ(findings[0].found, "a picture of which rows are missing; in all 2 places are damaged");
  EXPECT_EQ(findings[0].seconds, 12);
}

TEST(VideoRules, EndWithinAPictureIsANote) {
  video_facts video = ntsc_video();
  video.damage.add({video_damage_kind::cut_at_end, at_12_seconds});
  const auto findings = found_in(video);
  ASSERT_THAT(rules_of(findings), ElementsAre("video-cut"));
  EXPECT_EQ(findings[0].severity, finding_severity::note);
}

/// NTSC video of pictures of this size, as its scanner tells of it.
video_facts even_video(double rate, int pictures, double first_bytes = 0) {
  video_facts v = ntsc_video();
  read_ahead reading;
  reading.begin(true);
  const double lasts = 1001.0 / 30000;
  for (int i = 0; i < pictures; ++i)
    reading.add(
        {static_cast<std::uint64_t>(i), i * lasts,
         static_cast<std::uint64_t>(i == 0 && first_bytes > 0 ? first_bytes : rate / 8 * lasts),
         lasts, i % 15 == 0});
  v.peak_rate = rate;
  v.need_of_video = reading.of_video();
  v.needs_in_packs = reading.in_packs();
  return v;
}

std::vector<std::string> rules_for(const video_facts& v, const sounds_of_title& sounds) {
  return rules_of(multiplexing_findings(v, sounds, video_item, "a.m2v"));
}

// What mplex 2.1.0 was seen to do with such streams: the first of two rates it takes, the second
// one not.
TEST(VideoRules, AConstantRateThatIsALittleTooHighIsAnErrorWhereItLasts) {
  constexpr int minute = 1798, ten_minutes = 10 * minute;
  EXPECT_THAT(rules_in(even_video(10.4e6, 60)), ElementsAre("video-high-rate"));
  EXPECT_THAT(rules_in(even_video(10.4e6, minute)), ElementsAre("video-peak-rate"));
  EXPECT_THAT(rules_in(even_video(9.8e6, ten_minutes)), IsEmpty());
  EXPECT_THAT(rules_for(even_video(9.7e6, ten_minutes), {1, 192e3, 0}), IsEmpty());
  EXPECT_THAT(rules_for(even_video(9.78e6, ten_minutes), {1, 192e3, 0}), ElementsAre("total-rate"));
  EXPECT_THAT(rules_for(even_video(9.4e6, ten_minutes), {1, 448e3, 0}), IsEmpty());
  EXPECT_THAT(rules_for(even_video(9.6e6, minute), {1, 448e3, 0}), ElementsAre("total-rate"));
  EXPECT_THAT(rules_for(even_video(8.1e6, ten_minutes), {4, 4 * 448e3, 0}), IsEmpty());
  EXPECT_THAT(rules_for(even_video(8.3e6, minute), {4, 4 * 448e3, 0}), ElementsAre("total-rate"));
}

TEST(VideoRules, ABeginningThatIsNotReadInTimeIsAnError) {
  EXPECT_THAT(rules_for(even_video(2e6, 300, 121'000), {1, 192e3, 0}), IsEmpty());
  const auto findings =
      multiplexing_findings(even_video(2e6, 300, 128'000), {1, 192e3, 0}, video_item, "a.m2v");
  ASSERT_THAT(rules_of(findings), ElementsAre("video-large-beginning"));
  EXPECT_EQ(findings[0].found,
            "the pictures up to here have more bits than can be read before this one is decoded");
  // The picture begins later than the sound, and so can be read for longer.
  EXPECT_THAT(rules_for(even_video(2e6, 300, 128'000), {1, 192e3, 0.1}), IsEmpty());
}

TEST(VideoRules, TotalRateOfPictureAndSound) {
  video_facts video = ntsc_video();
  video.peak_rate = 11.5e6;
  EXPECT_THAT(total_rate_findings(video, 192'000, video_item, "a.m2v"), IsEmpty());
  const auto findings = total_rate_findings(video, 8 * 192'000, video_item, "a.m2v");
  ASSERT_THAT(rules_of(findings), ElementsAre("total-rate"));
  EXPECT_EQ(findings[0].found, "the second that begins here has 13.04 Mb/s, 1.54 Mb/s of it sound");
}

inner_stream lpcm_inside(const lpcm_format& format) {
  inner_stream one;
  one.kind = inner_kind::lpcm;
  one.lpcm = format;
  one.stamps = 1000;
  one.length = 24 * stamps_a_second;
  return one;
}

std::vector<finding> found_in(const inner_stream& stream, std::optional<double> picture = {}) {
  return packet_sound_findings(stream, audio_item, "a.vob", picture);
}

TEST(AudioRules, LpcmOfADiscHasNoFinding) {
  for (const lpcm_format& format : {lpcm_format{48'000, 16, 2}, lpcm_format{48'000, 20, 6},
                                    lpcm_format{96'000, 24, 2}, lpcm_format{48'000, 16, 8}})
    EXPECT_THAT(found_in(lpcm_inside(format), 24.5), IsEmpty()) << lpcm_text(format);
}

TEST(AudioRules, LpcmOfOtherRatesSizesAndTooManyBits) {
  EXPECT_THAT(rules_of(found_in(lpcm_inside({44'100, 16, 2}))), ElementsAre("audio-sample-rate"));
  EXPECT_THAT(rules_of(found_in(lpcm_inside({48'000, 0, 2}))), ElementsAre("audio-samples"));
  const auto loud = found_in(lpcm_inside({96'000, 24, 6}));
  ASSERT_THAT(rules_of(loud), ElementsAre("audio-bit-rate"));
  EXPECT_EQ(loud[0].found, "the sound is LPCM of 96 kHz, 24 bits, 6 channels: 13.82 Mb/s");
  inner_stream changes = lpcm_inside({48'000, 16, 2});
  changes.lpcm_changes = 1;
  EXPECT_THAT(rules_of(found_in(changes)), ElementsAre("audio-changes"));
}

TEST(AudioRules, LpcmIsComparedWithTheLengthOfItsPicture) {
  const auto found = found_in(lpcm_inside({48'000, 16, 2}), 30);
  ASSERT_THAT(rules_of(found), ElementsAre("audio-short"));
  EXPECT_EQ(found[0].seconds, 24);
  EXPECT_THAT(rules_of(found_in(lpcm_inside({48'000, 16, 2}), 20)), ElementsAre("audio-long"));
}

TEST(AudioRules, DtsInsideAReadyTitleIsForSomePlayers) {
  inner_stream dts;
  dts.kind = inner_kind::dts;
  EXPECT_THAT(rules_of(found_in(dts)), ElementsAre("audio-optional-kind"));
}

std::vector<finding> found_in(const audio_facts& audio, std::optional<double> picture = {},
                              bool packed = false) {
  return audio_findings(audio, audio_item, "a.ac3", packed, picture);
}

std::vector<std::string> spoilt(audio_kind kind, const std::function<void(audio_facts&)>& spoil) {
  audio_facts audio = sound(kind);
  spoil(audio);
  return rules_of(found_in(audio));
}

TEST(AudioRules, CleanSoundHasNoFinding) {
  EXPECT_THAT(found_in(sound(audio_kind::ac3), 24.5), IsEmpty());
  EXPECT_THAT(found_in(sound(audio_kind::mpeg_layer_2), 23.5), IsEmpty());
}

TEST(AudioRules, KindsThatADiscDoesNotHold) {
  for (const audio_kind kind : {audio_kind::mpeg_layer_3, audio_kind::mpeg_layer_1,
                                audio_kind::eac3, audio_kind::wav, audio_kind::unknown})
    EXPECT_THAT(rules_of(found_in(sound(kind))), ElementsAre("audio-kind"));
}

TEST(AudioRules, LayerThreeIsNamedAsSuch) {
  const auto findings = found_in(sound(audio_kind::mpeg_layer_3));
  ASSERT_EQ(findings.size(), 1u);
  EXPECT_THAT(findings[0].found, HasSubstr("layer III"));
}

TEST(AudioRules, DtsIsAWarning) {
  const auto findings = found_in(sound(audio_kind::dts));
  ASSERT_THAT(rules_of(findings), ElementsAre("audio-optional-kind"));
  EXPECT_EQ(findings[0].severity, finding_severity::warning);
}

TEST(AudioRules, SampleRatesOtherThan48Kilohertz) {
  for (const int rate : {44'100, 32'000}) {
    audio_facts audio = sound(audio_kind::ac3);
    audio.first->sample_rate = rate;
    ASSERT_THAT(rules_of(found_in(audio)), ElementsAre("audio-sample-rate"));
  }
}

TEST(AudioRules, BitRatesUpToTheLimitOfEachKind) {
  const auto with_rate = [](audio_kind kind, int rate) {
    return spoilt(kind, [&](audio_facts& a) { a.highest_bit_rate = rate; });
  };
  EXPECT_THAT(with_rate(audio_kind::ac3, 448'000), IsEmpty());
  EXPECT_THAT(with_rate(audio_kind::ac3, 640'000), ElementsAre("audio-bit-rate"));
  EXPECT_THAT(with_rate(audio_kind::mpeg_layer_2, 384'000), IsEmpty());
  EXPECT_THAT(with_rate(audio_kind::mpeg_layer_2, 448'000), ElementsAre("audio-bit-rate"));
}

TEST(AudioRules, VaryingRate) {
  EXPECT_THAT(spoilt(audio_kind::ac3, [](audio_facts& a) { a.bit_rate_varies = true; }),
              ElementsAre("audio-rate-varies"));
}

TEST(AudioRules, ChangeInTheMiddle) {
  audio_facts audio = sound(audio_kind::ac3);
  audio_frame other = *audio.first;
  other.sample_rate = 44'100;
  audio.change = audio_change{100, 12 * audio_clock, other};
  const auto findings = found_in(audio);
  ASSERT_THAT(rules_of(findings), ElementsAre("audio-changes"));
  EXPECT_EQ(findings[0].found, "AC-3, 48 kHz, 2 channels becomes AC-3, 44.1 kHz, 2 channels");
  EXPECT_EQ(findings[0].seconds, 12);
}

audio_facts with_gap(audio_kind kind, std::uint64_t position, audio_time before) {
  audio_facts audio = sound(kind);
  const audio_gap gap{position, 1, before, audio_gap::other};
  audio.gaps = {gap};
  audio.gap_count = 1;
  audio.gap_bytes = 1;
  audio.bytes += 1;
  if (position != 0 && position + 1 != audio.bytes)
    audio.first_inner_gap = gap;
  return audio;
}

TEST(AudioRules, StrayByteInTheMiddleTellsHowMuchSoundIsLost) {
  const auto findings = found_in(with_gap(audio_kind::mpeg_layer_2, 288'000, 12 * audio_clock));
  ASSERT_THAT(rules_of(findings), ElementsAre("audio-gap"));
  EXPECT_EQ(findings[0].found, "1 byte between frames; 12 s of sound would be lost");
  EXPECT_EQ(findings[0].byte, 288'000);
  EXPECT_EQ(findings[0].seconds, 12);
}

TEST(AudioRules, BytesBeforeTheFirstFrame) {
  EXPECT_THAT(rules_of(found_in(with_gap(audio_kind::mpeg_layer_2, 0, 0))),
              ElementsAre("audio-leading-bytes"));
}

TEST(AudioRules, BytesBehindTheLastFrameFailWithAc3Only) {
  const std::uint64_t end = sound(audio_kind::ac3).bytes;
  EXPECT_THAT(rules_of(found_in(with_gap(audio_kind::ac3, end, 24 * audio_clock))),
              ElementsAre("audio-gap"));
  const std::uint64_t mpeg_end = sound(audio_kind::mpeg_layer_2).bytes;
  EXPECT_THAT(rules_of(found_in(with_gap(audio_kind::mpeg_layer_2, mpeg_end, 24 * audio_clock))),
              ElementsAre("audio-trailing-bytes"));
}

TEST(AudioRules, GapsInPacketsDoNoHarm) {
  EXPECT_THAT(found_in(with_gap(audio_kind::ac3, 0, 0), {}, true), IsEmpty());
}

TEST(AudioRules, CutLastFrameIsANote) {
  EXPECT_THAT(spoilt(audio_kind::ac3,
                     [](audio_facts& a) {
                       a.cut = cut_audio_frame{1, 2, 3};
                     }),
              ElementsAre("audio-cut"));
}

TEST(AudioRules, WrongChecksums) {
  EXPECT_THAT(spoilt(audio_kind::ac3,
                     [](audio_facts& a) {
                       a.damaged_frames = 3;
                       a.first_damaged = damaged_audio_frame{768, audio_clock};
                     }),
              ElementsAre("audio-damage"));
}

TEST(AudioRules, SoundMuchShorterOrLongerThanThePicture) {
  const auto shorter = found_in(sound(audio_kind::ac3), 25.5);
  ASSERT_THAT(rules_of(shorter), ElementsAre("audio-short"));
  EXPECT_EQ(shorter[0].found, "the sound is 24 s long, the picture 25.5 s");
  EXPECT_EQ(shorter[0].seconds, 24);
  EXPECT_THAT(rules_of(found_in(sound(audio_kind::ac3), 22.5)), ElementsAre("audio-long"));
}

}  // namespace
}  // namespace corvane
