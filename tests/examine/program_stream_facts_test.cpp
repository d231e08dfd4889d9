// What is told of program streams made for it. Each is read in slices of several sizes, which must
// make no difference.
#include "examine/program_stream_facts.h"

#include "examine/made_audio.h"
#include "examine/made_packs.h"
#include "examine/made_video.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace corvane {
namespace {

using examine_test::ac3_frame;
using examine_test::facts_in_slices;
using examine_test::mpeg_frame;
using examine_test::pack_maker;
using examine_test::video_maker;
using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pointwise;
using testing::SizeIs;
using namespace std::string_literals;

constexpr std::uint8_t video_0 = first_video_stream, sound_0 = first_sound_stream;
constexpr std::uint64_t second = clocks_a_second;
constexpr stream_time stamp_second = stamps_a_second;

program_stream_facts stream_facts_of(const std::string& stream) {
  const program_stream_facts whole =
      facts_in_slices(stream, std::max<std::size_t>(1, stream.size()));
  for (const std::size_t slice : {1u, 3u, 13u, 64u, 2047u, 4099u})
    EXPECT_TRUE(facts_in_slices(stream, slice) == whole) << "slices of " << slice;
  EXPECT_TRUE(whole.whole);
  EXPECT_EQ(whole.bytes, stream.size());
  return whole;
}

program_stream_facts stream_facts_of(const pack_maker& maker) {
  return stream_facts_of(maker.bytes);
}

/// Small enough for a pack.
std::string group() {
  examine_test::made_sequence quarter;
  quarter.width = 352;
  quarter.height = 288;
  return video_maker(quarter).whole_group("IBBPBBPBBPBB").bytes;
}

/// Sectors as on a disc, half a second of PAL video and some sound in each unit of four packs.
pack_maker disc_stream(int units, int vob = 1) {
  pack_maker made;
  for (int unit = 0; unit < units; ++unit) {
    const std::uint64_t at = static_cast<std::uint64_t>(unit) * 12;
    const auto stamp = [at](int pictures) { return (at + static_cast<unsigned>(pictures)) * 3600; };
    const auto clock = [at](int tenths) {
      return at * 1'080'000 + static_cast<unsigned>(tenths) * 2'700'000;
    };
    made.pack(clock(0)).system_header().navigation(vob, 1 + unit / 2).fill();
    made.pack(clock(1)).packet(video_0, group(), stamp(5), stamp(4)).fill();
    made.pack(clock(2)).ac3(ac3_frame() + ac3_frame(), stamp(5)).fill();
    made.pack(clock(3)).packet(sound_0 + 1, mpeg_frame(), stamp(5)).fill();
  }
  return made;
}

TEST(ProgramStreamFacts, NothingHasNone) {
  const program_stream_facts facts = stream_facts_of(""s);
  program_stream_facts none;
  none.whole = true;
  EXPECT_TRUE(facts == none);
}

TEST(ProgramStreamFacts, ADiscsStreamIsWholeAndEven) {
  const auto facts = stream_facts_of(disc_stream(5));
  EXPECT_TRUE(facts.mpeg2);
  EXPECT_EQ(facts.packs, 20u);
  EXPECT_EQ(facts.packs_of_the_other, 0u);
  EXPECT_EQ(facts.uneven_packs.count, 0u);
  EXPECT_EQ(facts.lowest_mux_rate, 10'080'000u);
  EXPECT_EQ(facts.highest_mux_rate, 10'080'000u);
  EXPECT_GT(facts.padding_bytes, 5u * 2048);
  EXPECT_EQ(facts.loose.count, 0u);
  EXPECT_EQ(facts.clock_breaks.count, 0u);
  EXPECT_FALSE(facts.cut);
  EXPECT_FALSE(facts.end_code);
  EXPECT_EQ(facts.first_clock, 0u);
  EXPECT_EQ(facts.last_clock, 4 * 12 * second / 25 + 3 * second / 10);
  EXPECT_EQ(facts.clock_length, *facts.last_clock);
}

TEST(ProgramStreamFacts, NavPacksAndTheirCells) {
  pack_maker made = disc_stream(2, 1);
  const std::uint64_t long_unit = made.here();
  made.bytes += disc_stream(1, 2).bytes;
  made.bytes += disc_stream(1).bytes.substr(2048);
  made.bytes += disc_stream(1, 2).bytes;
  const auto facts = stream_facts_of(made);
  EXPECT_EQ(facts.nav_packs, 4u);
  EXPECT_TRUE(facts.begins_with_nav_pack);
  EXPECT_EQ(facts.largest_nav_distance, 7u * 2048);
  EXPECT_EQ(facts.largest_nav_distance_at, long_unit);
  EXPECT_THAT(facts.cells.kept, ElementsAre(cell_begin{0, 1, 1}, cell_begin{long_unit, 2, 1}));
}

TEST(ProgramStreamFacts, TheLastUnitCountsForTheLargestDistance) {
  pack_maker made = disc_stream(1);
  made.bytes += disc_stream(1).bytes.substr(2048);
  EXPECT_EQ(stream_facts_of(made).largest_nav_distance, 7u * 2048);
}

TEST(ProgramStreamFacts, AStreamWithoutNavPacks) {
  pack_maker made;
  made.pack(0).system_header().fill();
  made.pack(second / 10).packet(video_0, group(), 3600).fill();
  const auto facts = stream_facts_of(made);
  EXPECT_EQ(facts.nav_packs, 0u);
  EXPECT_FALSE(facts.begins_with_nav_pack);
  EXPECT_EQ(facts.largest_nav_distance, 0u);
}

TEST(ProgramStreamFacts, ANavPackFurtherOnDoesNotBeginTheStream) {
  pack_maker made;
  made.pack(0).packet(video_0, group(), 3600).fill();
  made.pack(second / 10).navigation().fill();
  const auto facts = stream_facts_of(made);
  EXPECT_EQ(facts.nav_packs, 1u);
  EXPECT_FALSE(facts.begins_with_nav_pack);
  EXPECT_EQ(facts.first_nav_pack, 2048u);
}

/// The group whose first picture is shown behind so many others of it.
std::string group_with_pictures_before(int pictures) {
  std::string made = group();
  const std::size_t header = made.find("\0\0\1\0"s);
  made[header + 4] = static_cast<char>(pictures >> 2);
  made[header + 5] = static_cast<char>((made[header + 5] & 0x3F) | (pictures & 3) << 6);
  return made;
}

/// Units of PAL video, each of one packet with this stamp; without a packet where there is none.
program_stream_facts units_with(const std::vector<std::optional<stream_time>>& stamps,
                                int before_second = 0) {
  pack_maker made;
  std::uint64_t clock = 0;
  int unit = 0;
  for (const auto& stamp : stamps) {
    made.pack(clock += second / 10).system_header().navigation().fill();
    if (++unit != 4 || stamp)
      made.pack(clock)
          .packet(video_0, group_with_pictures_before(unit == 2 ? before_second : 0), stamp)
          .fill();
  }
  return stream_facts_of(made);
}

TEST(ProgramStreamFacts, UnitsBeginWhenTheirFirstPictureIsShown) {
  const auto facts = stream_facts_of(disc_stream(5));
  EXPECT_EQ(facts.first_nav_pack, 0u);
  EXPECT_THAT(facts.unit_begins, Pointwise(DoubleNear(1e-9), {0.0, 0.48, 0.96, 1.44, 1.92}));
  EXPECT_NEAR(facts.shown_until, 1.92 + 0.04, 1e-9) << "the last stamp is that of an I picture";
}

TEST(ProgramStreamFacts, PicturesThatAreShownBeforeTheFirstOneOfAUnitCount) {
  EXPECT_THAT(units_with({9000, 54'000, 99'000}, 2).unit_begins,
              Pointwise(DoubleNear(1e-9), {0.0, 0.42, 1.0}));
}

TEST(ProgramStreamFacts, AGapBetweenUnitsCounts) {
  const auto facts = units_with({9000, 54'000, 954'000});
  EXPECT_THAT(facts.unit_begins, Pointwise(DoubleNear(1e-9), {0.0, 0.5, 10.5}));
  EXPECT_NEAR(facts.shown_until, 10.54, 1e-9);
}

TEST(ProgramStreamFacts, UnitsAreNotKnownWhereOneHasNoTimeOrTimesGoBack) {
  EXPECT_THAT(units_with({9000, 54'000, {}, 144'000}).unit_begins, IsEmpty());
  EXPECT_THAT(units_with({9000, 54'000, 99'000, {}, 189'000}).unit_begins, IsEmpty());
  EXPECT_THAT(units_with({9000, 54'000, 99'000, {}}).unit_begins, IsEmpty());
  EXPECT_THAT(units_with({9000, 54'000, 54'000}).unit_begins, IsEmpty());
  EXPECT_THAT(units_with({90'000, 135'000, 9000}).unit_begins, IsEmpty());
}

TEST(ProgramStreamFacts, StreamsInsideAreInOrderWithTheirFacts) {
  const auto facts = stream_facts_of(disc_stream(5));
  ASSERT_THAT(facts.streams, SizeIs(3));
  const inner_stream& video = facts.streams[0];
  EXPECT_EQ(video.kind, inner_kind::video);
  EXPECT_EQ(video.number, 0);
  EXPECT_EQ(video.first_packet, 2048u + 14);
  EXPECT_EQ(video.packets, 5u);
  EXPECT_EQ(video.stamps, 5u);
  EXPECT_EQ(video.payload_bytes, 5 * group().size());
  EXPECT_EQ(video.first, 5u * 3600);
  EXPECT_EQ(video.last, (4u * 12 + 5) * 3600);
  EXPECT_EQ(video.length, 4u * 12 * 3600);
  EXPECT_EQ(video.breaks.count, 0u);
  ASSERT_TRUE(video.video);
  EXPECT_TRUE(video.video->whole);
  EXPECT_EQ(video.video->pictures, 5u * 12);
  EXPECT_EQ(video.video->bytes, video.payload_bytes);

  EXPECT_EQ(facts.streams[1].kind, inner_kind::mpeg_audio);
  EXPECT_EQ(facts.streams[1].number, 1);
  ASSERT_TRUE(facts.streams[1].audio);
  EXPECT_EQ(facts.streams[1].audio->kind, audio_kind::mpeg_layer_2);
  EXPECT_EQ(facts.streams[1].audio->frames, 5u);

  const inner_stream& ac3 = facts.streams[2];
  EXPECT_EQ(ac3.kind, inner_kind::ac3);
  EXPECT_EQ(ac3.number, 0);
  EXPECT_EQ(ac3.payload_bytes, 10 * ac3_frame().size());
  ASSERT_TRUE(ac3.audio);
  EXPECT_EQ(ac3.audio->frames, 10u);
  EXPECT_EQ(ac3.audio->gap_count, 0u) << "the substream's header is no sound";

  EXPECT_NEAR(facts.seconds, (4 * 12 + 1) / 25.0, 1e-9);
  EXPECT_EQ(facts.video(), facts.streams.data());
  EXPECT_EQ(facts.find(inner_kind::ac3), &facts.streams[2]);
  EXPECT_EQ(facts.find(inner_kind::ac3, 1), nullptr);
  EXPECT_EQ(facts.count_of(inner_kind::mpeg_audio), 1);
}

TEST(ProgramStreamFacts, StreamsCanBeCountedAlone) {
  const std::string stream = disc_stream(5).bytes;
  auto examined = facts_in_slices(stream, 4096);
  const auto counted = facts_in_slices(stream, 4096, inner_streams::counted);
  EXPECT_NEAR(counted.seconds, 4 * 12 / 25.0, 1e-9);
  for (inner_stream& one : examined.streams) {
    EXPECT_TRUE(one.video || one.audio);
    one.video.reset();
    one.audio.reset();
  }
  examined.seconds = counted.seconds;
  examined.unit_begins.clear();
  examined.shown_until = 0;
  EXPECT_TRUE(counted == examined);
}

TEST(ProgramStreamFacts, KindsOfStreams) {
  pack_maker made;
  made.pack(0);
  made.subpicture("picture", 3600, 3);
  made.packet(private_stream_1, "\x8F\1\0\1dts"s);
  made.packet(private_stream_1, "\x05?"s);
  made.packet(private_stream_1, ""s);
  made.packet(0xBC, "map"s);
  made.packet(0xEF, "video"s);
  made.packet(0xDF, "sound"s);
  made.ac3("sound"s, {}, 7);
  const auto facts = stream_facts_of(made);
  std::vector<std::pair<inner_kind, int>> names;
  for (const inner_stream& one : facts.streams)
    names.emplace_back(one.kind, one.number);
  EXPECT_THAT(
      names,
      ElementsAre(std::pair(inner_kind::video, 15), std::pair(inner_kind::mpeg_audio, 31),
                  std::pair(inner_kind::ac3, 7), std::pair(inner_kind::dts, 7),
                  std::pair(inner_kind::subpicture, 3), std::pair(inner_kind::other_private, 5),
                  std::pair(inner_kind::other, 0xBC), std::pair(inner_kind::other, 0xBD)));
  EXPECT_EQ(facts.find(inner_kind::dts, 7)->payload_bytes, 3u);
  EXPECT_EQ(facts.find(inner_kind::subpicture, 3)->payload_bytes, 7u);
  EXPECT_EQ(facts.find(inner_kind::subpicture, 3)->first, 3600u);
  EXPECT_EQ(facts.seconds, 0);
}

TEST(ProgramStreamFacts, LpcmTellsItsFormat) {
  pack_maker made;
  made.pack(0).lpcm("samples", {48'000, 16, 2}, 0).lpcm("samples", {48'000, 16, 2});
  made.lpcm("samples", {96'000, 24, 1}).lpcm("samples", {96'000, 20, 8});
  const auto facts = stream_facts_of(made);
  ASSERT_THAT(facts.streams, SizeIs(1));
  EXPECT_EQ(facts.streams[0].kind, inner_kind::lpcm);
  EXPECT_EQ(facts.streams[0].lpcm, (lpcm_format{48'000, 16, 2}));
  EXPECT_EQ(facts.streams[0].lpcm_changes, 2u);
  EXPECT_EQ(facts.streams[0].payload_bytes, 4u * 7);
}

TEST(ProgramStreamFacts, MpegOneSystems) {
  pack_maker made(false);
  for (unsigned i = 0; i < 4; ++i) {
    made.pack(i * second / 5, 3528);
    made.packet(video_0, group(), stamp_second + i * 18'000, stamp_second + i * 18'000 - 3600);
    made.packet(sound_0, mpeg_frame());
  }
  made.end();
  const auto facts = stream_facts_of(made);
  EXPECT_FALSE(facts.mpeg2);
  EXPECT_EQ(facts.packs, 4u);
  EXPECT_EQ(facts.uneven_packs.count, 4u);
  EXPECT_EQ(facts.highest_mux_rate, 1'411'200u);
  EXPECT_EQ(facts.last_clock, 3 * second / 5);
  EXPECT_TRUE(facts.end_code);
  EXPECT_EQ(facts.middle_end_codes.count, 0u);
  EXPECT_EQ(facts.find(inner_kind::video)->length, 54'000u);
  EXPECT_EQ(facts.find(inner_kind::mpeg_audio)->audio->frames, 4u);
}

TEST(ProgramStreamFacts, PacksOfBothStandards) {
  pack_maker one(false);
  one.pack(0).packet(video_0, group());
  pack_maker two;
  two.pack(second / 2, 1000).packet(video_0, group());
  const auto facts = stream_facts_of(one.bytes + two.bytes);
  EXPECT_FALSE(facts.mpeg2);
  EXPECT_EQ(facts.packs_of_the_other, 1u);
  EXPECT_EQ(facts.lowest_mux_rate, 400'000u);
  EXPECT_EQ(facts.highest_mux_rate, 10'080'000u);
}

TEST(ProgramStreamFacts, PacksOffTheirSectors) {
  pack_maker made = disc_stream(1);
  const std::uint64_t longer = made.here();
  made.pack(second).packet(video_0, group()).fill().packet(video_0, "more"s).fill();
  const std::uint64_t shorter = made.here();
  made.pack(second).packet(video_0, "less"s);
  const std::uint64_t beside = made.here();
  made.pack(second).packet(video_0, std::string(2048 - 23, 'v'));
  ASSERT_EQ(made.here() - beside, 2048u);
  EXPECT_THAT(stream_facts_of(made).uneven_packs.kept, ElementsAre(longer, shorter, beside));
}

TEST(ProgramStreamFacts, AnEndCodeBehindTheLastSectorMakesNoPackLonger) {
  pack_maker made = disc_stream(1);
  made.end();
  const auto facts = stream_facts_of(made);
  EXPECT_TRUE(facts.end_code);
  EXPECT_EQ(facts.uneven_packs.count, 0u);
}

TEST(ProgramStreamFacts, JoinedStreamsHaveEndCodesInTheMiddle) {
  pack_maker made = disc_stream(4);
  const std::uint64_t end = made.here();
  made.end();
  const std::string joined = made.bytes + made.bytes;
  const auto facts = stream_facts_of(joined);
  EXPECT_THAT(facts.middle_end_codes.kept, ElementsAre(end));
  EXPECT_TRUE(facts.end_code);
  EXPECT_EQ(facts.uneven_packs.count, 16u) << "the second stream stands 4 bytes beside sectors";
  ASSERT_EQ(facts.clock_breaks.count, 1u);
  const std::uint64_t length = 3 * 12 * second / 25 + 3 * second / 10;
  EXPECT_EQ(facts.clock_breaks.kept[0], (time_break{end + 4, length, 0, length}));
  EXPECT_EQ(facts.clock_length, 2 * length);
  const inner_stream& video = *facts.video();
  const std::uint64_t picture = 3600;
  EXPECT_THAT(video.breaks.kept, ElementsAre(time_break{end + 4 + 2048 + 14, 40 * picture,
                                                        4 * picture, 36 * picture}));
  EXPECT_EQ(video.first, 5 * picture);
  EXPECT_EQ(video.last, 41 * picture);
  EXPECT_EQ(video.length, 72 * picture);
  EXPECT_EQ(facts.find(inner_kind::ac3)->breaks.count, 1u);
}

TEST(ProgramStreamFacts, ClockBreaksAreBackwardsOrOverASecond) {
  // A pack of 24 bytes takes 192 of these bits, 5184 of the clock.
  constexpr std::uint32_t million = 2500;
  const std::string video(24 - 14 - 9, 'v');
  pack_maker made;
  made.pack(second, million).packet(video_0, video);
  made.pack(2 * second, million).packet(video_0, video);
  made.pack(2 * second, million).packet(video_0, video);
  made.pack(3 * second + 5184, million).packet(video_0, video);
  const std::uint64_t jump = made.here();
  made.pack(4 * second + 10369, million).packet(video_0, video);
  const std::uint64_t back = made.here();
  made.pack(4 * second, million).packet(video_0, video);
  const auto facts = stream_facts_of(made);
  EXPECT_THAT(
      facts.clock_breaks.kept,
      ElementsAre(time_break{jump, 3 * second + 5184, 4 * second + 10369, 2 * second + 5184},
                  time_break{back, 4 * second + 10369, 4 * second, 2 * second + 5184}));
  EXPECT_EQ(facts.clock_length, 2 * second + 5184);
  EXPECT_EQ(facts.first_clock, second);
  EXPECT_EQ(facts.last_clock, 4 * second);
}

TEST(ProgramStreamFacts, BreaksAtANewVobAreMarked) {
  pack_maker made = disc_stream(4, 1);
  const std::uint64_t second_vob = made.here();
  made.bytes += disc_stream(4, 2).bytes;
  const std::uint64_t the_same = made.here();
  made.bytes += disc_stream(4, 2).bytes;
  const auto facts = stream_facts_of(made);
  ASSERT_EQ(facts.clock_breaks.count, 2u);
  EXPECT_EQ(facts.clock_breaks.kept[0].position, second_vob);
  EXPECT_TRUE(facts.clock_breaks.kept[0].new_vob);
  EXPECT_EQ(facts.clock_breaks.kept[1].position, the_same);
  EXPECT_FALSE(facts.clock_breaks.kept[1].new_vob);
  for (const inner_stream& one : facts.streams) {
    ASSERT_EQ(one.breaks.count, 2u);
    EXPECT_TRUE(one.breaks.kept[0].new_vob);
    EXPECT_FALSE(one.breaks.kept[1].new_vob);
  }
}

TEST(ProgramStreamFacts, TimesThatBeginAgainAtZeroAreNoBreak) {
  constexpr std::uint64_t stamps = std::uint64_t{1} << 33;
  pack_maker made;
  made.pack(stamps * 300 - second / 2).ac3(ac3_frame(), stamps - 18'000);
  made.pack(second / 4).ac3(ac3_frame(), 9'000);
  made.pack(second / 2).ac3(ac3_frame(), 27'000);
  const auto facts = stream_facts_of(made);
  EXPECT_EQ(facts.clock_breaks.count, 0u);
  EXPECT_EQ(facts.clock_length, second);
  const inner_stream& sound = *facts.find(inner_kind::ac3);
  EXPECT_EQ(sound.breaks.count, 0u);
  EXPECT_EQ(sound.first, stamps - 18'000);
  EXPECT_EQ(sound.last, 27'000u);
  EXPECT_EQ(sound.length, 45'000u);
}

TEST(ProgramStreamFacts, AGapInSoundIsABreak) {
  pack_maker made;
  made.pack(0).ac3(ac3_frame(), 1000).ac3(ac3_frame(), 1000 + inner_stream::longest_gap);
  const std::uint64_t gap = made.here();
  made.ac3(ac3_frame(), 1001 + 2 * inner_stream::longest_gap).ac3(ac3_frame());
  const auto facts = stream_facts_of(made);
  const inner_stream& sound = *facts.find(inner_kind::ac3);
  EXPECT_THAT(sound.breaks.kept, ElementsAre(time_break{gap, 64'000, 127'001, 63'000}));
  EXPECT_EQ(sound.length, 63'000u);
  EXPECT_EQ(sound.stamps, 3u);
  EXPECT_EQ(sound.packets, 4u);
}

TEST(ProgramStreamFacts, SubpicturesMayBeFarApart) {
  pack_maker made;
  made.pack(0).subpicture("one", 0, 0).subpicture("two", 60 * stamp_second, 0);
  const std::uint64_t back = made.here();
  made.subpicture("three", 50 * stamp_second, 0);
  const auto facts = stream_facts_of(made);
  const inner_stream& one = *facts.find(inner_kind::subpicture);
  ASSERT_EQ(one.breaks.count, 1u);
  EXPECT_EQ(one.breaks.kept[0].position, back);
}

TEST(ProgramStreamFacts, PicturesOutOfOrderAreNoBreak) {
  pack_maker made;
  made.pack(0);
  // As they are decoded: I2 B0 B1 P5 B3 B4, the others' times being those of decoding.
  const stream_time picture = 3600, begin = 10 * picture;
  made.packet(video_0, "I"s, begin + 2 * picture, begin - picture);
  made.packet(video_0, "B"s, begin).packet(video_0, "B"s, begin + picture);
  made.packet(video_0, "P"s, begin + 5 * picture, begin + 2 * picture);
  made.packet(video_0, "B"s, begin + 3 * picture).packet(video_0, "B"s, begin + 4 * picture);
  // A multiplexer that tells only when they are shown.
  for (const unsigned shown : {8u, 6u, 7u, 11u, 9u, 10u})
    made.packet(video_0, "?"s, begin + shown * picture);
  const auto facts = stream_facts_of(made);
  EXPECT_EQ(facts.video()->breaks.count, 0u);
  EXPECT_EQ(facts.video()->first, begin);
  EXPECT_EQ(facts.video()->last, begin + 11 * picture);
  EXPECT_EQ(facts.video()->length, 11 * picture);
}

TEST(ProgramStreamFacts, DecodingThatGoesBackIsABreak) {
  pack_maker made;
  made.pack(0).packet(video_0, "I"s, 10'000, 9'000);
  const std::uint64_t back = made.here();
  made.packet(video_0, "P"s, 12'000, 8'999);
  const auto facts = stream_facts_of(made);
  EXPECT_THAT(facts.video()->breaks.kept, ElementsAre(time_break{back, 9'000, 8'999, 0}));
}

TEST(ProgramStreamFacts, ALongGroupWithOneStampIsNoGapInVideo) {
  const std::string five_seconds = video_maker().whole_group("I" + std::string(124, 'P')).bytes;
  pack_maker made;
  for (unsigned i = 0; i < 3; ++i) {
    made.pack(i * 5 * second / 10).packet(video_0, five_seconds, (5 * i + 1) * stamp_second);
  }
  EXPECT_EQ(stream_facts_of(made).video()->breaks.count, 0u);
  const std::uint64_t gap = made.here() + 14;
  made.pack(2 * second).packet(video_0, five_seconds, 18 * stamp_second);
  const auto facts = stream_facts_of(made);
  EXPECT_THAT(
      facts.video()->breaks.kept,
      ElementsAre(time_break{gap, 11 * stamp_second, 18 * stamp_second, 10 * stamp_second}));
}

TEST(ProgramStreamFacts, GapsInCountedVideoAreTakenByTheClock) {
  pack_maker made;
  made.pack(0).packet(video_0, "v"s, 0);
  for (unsigned i = 1; i < 5; ++i)
    made.pack(i * second).packet(video_0, "v"s);
  made.pack(5 * second).packet(video_0, "v"s, 6 * stamp_second);
  const auto breaks = [&made] {
    return facts_in_slices(made.bytes, 100, inner_streams::counted).video()->breaks.count;
  };
  EXPECT_EQ(breaks(), 0u);
  made.pack(5 * second).packet(video_0, "v"s, 7 * stamp_second + 1);
  EXPECT_EQ(breaks(), 1u);
}

TEST(ProgramStreamFacts, BytesThatBelongToNoPacket) {
  pack_maker made;
  made.raw("RIFF");
  made.pack(0).packet(video_0, "video"s);
  const std::uint64_t zeros = made.here();
  made.raw(std::string(50, '\0'));
  made.pack(1).packet(video_0, "video"s);
  const std::uint64_t junk = made.here();
  made.raw("junk").packet(video_0, "lost"s);
  const std::uint64_t junk_end = made.here();
  made.pack(2).packet(video_0, "video"s);
  const std::uint64_t behind = made.here();
  made.raw("\xFF\0\0"s);
  const auto facts = stream_facts_of(made);
  EXPECT_THAT(facts.loose.kept, ElementsAre(loose_bytes{0, 4, false}, loose_bytes{zeros, 50, true},
                                            loose_bytes{junk, junk_end - junk, false},
                                            loose_bytes{behind, 3, false}));
  EXPECT_EQ(facts.loose_bytes_in_all, 4u + 50 + (junk_end - junk) + 3);
  EXPECT_EQ(facts.packs, 3u);
  EXPECT_EQ(facts.video()->packets, 3u);
  EXPECT_FALSE(facts.cut);
}

TEST(ProgramStreamFacts, WhatLooksLikeAPackHeaderInLooseBytesIsNone) {
  pack_maker made;
  made.pack(0).packet(video_0, "video"s).raw("junk");
  made.raw("\0\0\1\xBA\x44\0\0\0\0\0\0\0\0\0\0\0"s);
  made.raw("\0\0\1\xBA\x81"s);
  made.raw("\0\0\1\xBA\x21\0\1\0\0\0\0\0\0\0\0\0"s);
  made.raw("\0\0\0\1"s);
  made.pack(second).packet(video_0, "video"s);
  const auto facts = stream_facts_of(made);
  EXPECT_EQ(facts.packs, 2u);
  EXPECT_THAT(facts.loose.kept, ElementsAre(loose_bytes{28, 45, false}));
}

TEST(ProgramStreamFacts, BytesThatAreNoStreamAreLoose) {
  const auto video = stream_facts_of(group());
  EXPECT_EQ(video.packs, 0u);
  EXPECT_THAT(video.streams, IsEmpty());
  EXPECT_EQ(video.loose_bytes_in_all, group().size());
  pack_maker packets;
  packets.packet(video_0, group(), 3600);
  EXPECT_EQ(stream_facts_of(packets).loose_bytes_in_all, packets.here())
      << "packets without a pack";
}

TEST(ProgramStreamFacts, MoreThanAThousandBreaksAreCounted) {
  pack_maker made;
  for (unsigned i = 0; i < 1500; ++i)
    made.pack((i % 2) * 2 * second).ac3("s", (i % 2) * stamp_second).raw("!");
  const auto facts = facts_in_slices(made.bytes, 5000);
  EXPECT_EQ(facts.clock_breaks.count, 1499u);
  EXPECT_THAT(facts.clock_breaks.kept, SizeIs(1000));
  EXPECT_EQ(facts.find(inner_kind::ac3)->breaks.count, 1499u);
  EXPECT_THAT(facts.find(inner_kind::ac3)->breaks.kept, SizeIs(1000));
  EXPECT_EQ(facts.loose.count, 1500u);
  EXPECT_THAT(facts.loose.kept, SizeIs(1000));
  EXPECT_EQ(facts.loose_bytes_in_all, 1500u);
}

TEST(ProgramStreamFacts, AStreamCutAnywhere) {
  pack_maker made;
  made.pack(0).system_header().packet(video_0, "video"s, 3600).ac3("sound"s).end();
  // Where each packet ends.
  const std::vector<std::size_t> ends = {14, 32, 51, 69, 73};
  ASSERT_EQ(made.here(), ends.back());
  for (std::size_t size = 0; size <= ends.back(); ++size) {
    const auto facts = stream_facts_of(made.bytes.substr(0, size));
    const auto end = std::ranges::find_if(ends, [size](std::size_t e) { return e >= size; });
    if (size == 0 || *end == size) {
      EXPECT_FALSE(facts.cut) << size;
      EXPECT_EQ(facts.loose.count, 0u) << size;
      continue;
    }
    const std::size_t begin = end == ends.begin() ? 0 : *(end - 1);
    if (size - begin < (begin == 0 ? 4u : 3u)) {
      // Two zeros, or less than a start code at the beginning, may be anything.
      EXPECT_EQ(facts.loose_bytes_in_all, size - begin) << size;
      EXPECT_FALSE(facts.cut) << size;
      continue;
    }
    ASSERT_TRUE(facts.cut) << size;
    EXPECT_EQ(facts.cut->position, begin) << size;
    EXPECT_EQ(facts.cut->bytes_there, size - begin) << size;
    EXPECT_GT(facts.cut->bytes_missing, 0u) << size;
    EXPECT_LE(facts.cut->bytes_missing, *end - size) << size;
    if (size - begin >= 6 && begin > 0) {
      EXPECT_EQ(facts.cut->bytes_missing, *end - size) << size;
    }
  }
  const auto facts = stream_facts_of(made.bytes.substr(0, 51 - 2));
  ASSERT_NE(facts.video(), nullptr);
  EXPECT_EQ(facts.video()->payload_bytes, 3u) << "what is there of a cut packet counts";
  EXPECT_EQ(facts.video()->first, 3600u);
}

TEST(ProgramStreamFacts, AWrongLengthIsNoticed) {
  const std::string stream = disc_stream(4).bytes;
  const std::size_t length = 2048 + 14 + 4;
  ASSERT_EQ(stream.substr(length - 4, 4), "\0\0\1\xE0"s);
  for (const int wrong : {0, 3, 100, 2100, 40000}) {
    std::string damaged = stream;
    damaged[length] = static_cast<char>(wrong >> 8);
    damaged[length + 1] = static_cast<char>(wrong & 0xFF);
    const auto facts = stream_facts_of(damaged);
    EXPECT_TRUE(facts.loose.count > 0 || facts.cut) << wrong;
  }
}

TEST(ProgramStreamFacts, EveryByteIsAccountedForInDamagedStreams) {
  std::mt19937 random(7);
  const std::string stream = disc_stream(3).bytes;
  for (int round = 0; round < 200; ++round) {
    std::string damaged = stream;
    for (int i = 0; i < 5; ++i)
      damaged[random() % damaged.size()] = static_cast<char>(random());
    const auto whole = facts_in_slices(damaged, damaged.size());
    EXPECT_TRUE(facts_in_slices(damaged, 1 + random() % 5000) == whole) << round;
    std::uint64_t bytes = whole.loose_bytes_in_all + whole.padding_bytes;
    for (const inner_stream& one : whole.streams)
      bytes += one.payload_bytes;
    EXPECT_LE(bytes, damaged.size()) << round;
  }
}

TEST(ProgramStreamFacts, TheBeginningTellsWhatIsInside) {
  pack_maker made = disc_stream(3);
  for (int i = 0; i < 100; ++i)
    made.bytes += disc_stream(1).bytes;
  ASSERT_GT(made.here(), program_stream_head_bytes);
  const auto bytes = [&made](std::size_t size) {
    return std::span(reinterpret_cast<const std::uint8_t*>(made.bytes.data()), size);
  };
  const auto head = read_program_stream_head(bytes(made.here()));
  ASSERT_TRUE(head);
  EXPECT_FALSE(head->whole);
  EXPECT_EQ(head->bytes, program_stream_head_bytes);
  EXPECT_THAT(head->streams, SizeIs(3));
  EXPECT_EQ(head->video()->video->shape->height, 288);
  EXPECT_EQ(head->find(inner_kind::ac3)->audio->kind, audio_kind::ac3);
  // Cut off in a packet, which goes on behind the bytes.
  const auto part = read_program_stream_head(bytes(2048 + 500));
  ASSERT_TRUE(part);
  EXPECT_FALSE(part->cut);
  EXPECT_EQ(part->nav_packs, 1u);
  EXPECT_EQ(part->uneven_packs.count, 0u);
}

TEST(ProgramStreamFacts, TheBeginningOfOtherFilesIsNone) {
  const auto head = [](const std::string& bytes) {
    return read_program_stream_head(
        std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
  };
  EXPECT_FALSE(head(""));
  EXPECT_FALSE(head(group()));
  EXPECT_FALSE(head(ac3_frame() + ac3_frame() + ac3_frame()));
  pack_maker header;
  header.pack(0);
  EXPECT_FALSE(head(header.bytes)) << "with nothing behind it";
  EXPECT_FALSE(head(header.bytes + "nothing of a packet"));
  pack_maker late;
  late.raw("something else").pack(0).packet(video_0, "video"s);
  EXPECT_TRUE(head(late.bytes));
}

}  // namespace
}  // namespace corvane
