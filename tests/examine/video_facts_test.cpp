// What is told of streams made for it. Each stream is read in slices of several sizes, which must
// make no difference.
#include "examine/video_facts.h"

#include "examine/made_video.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace corvane {
namespace {

using examine_test::made_picture;
using examine_test::made_sequence;
using examine_test::video_maker;
using namespace std::string_literals;
using kind = video_damage_kind;

video_facts video_facts_in_slices(const std::string& stream, std::size_t slice) {
  video_scanner scanner;
  const auto* const data = reinterpret_cast<const std::uint8_t*>(stream.data());
  for (std::size_t at = 0; at < stream.size(); at += slice)
    scanner.feed(data + at, std::min(slice, stream.size() - at));
  scanner.finish();
  return scanner.facts();
}

video_facts video_facts_of(const std::string& stream) {
  const video_facts whole = video_facts_in_slices(stream, std::max<std::size_t>(1, stream.size()));
  for (const std::size_t slice : {1u, 2u, 3u, 7u, 12u, 13u, 64u, 67u, 1000u, 4096u})
    EXPECT_TRUE(video_facts_in_slices(stream, slice) == whole) << "slices of " << slice;
  EXPECT_TRUE(whole.whole);
  EXPECT_EQ(whole.bytes, stream.size());
  return whole;
}

video_facts video_facts_of(const video_maker& maker) {
  return video_facts_of(maker.bytes);
}

std::vector<kind> kinds_of(const video_facts& facts) {
  std::vector<kind> kinds;
  for (const video_damage& one : facts.damage.kept)
    kinds.push_back(one.kind);
  return kinds;
}

made_sequence ntsc() {
  made_sequence s;
  s.height = 480;
  s.rate_code = 4;
  return s;
}

made_sequence mpeg1() {
  made_sequence s;
  s.mpeg2 = false;
  s.width = 352;
  s.height = 288;
  s.aspect_code = 8;
  return s;
}

made_picture sized(char letter, std::size_t size) {
  made_picture one;
  one.kind = letter;
  one.size = size;
  return one;
}

made_picture with_rows(std::vector<int> rows) {
  made_picture one;
  one.rows = std::move(rows);
  return one;
}

made_picture field(char letter, picture_extension::structure_kind structure) {
  made_picture one;
  one.kind = letter;
  one.structure = structure;
  return one;
}

// --- What the headers state

TEST(VideoFacts, StatesWhatAnMpeg2HeaderSays) {
  made_sequence s;
  s.aspect_code = 3;
  s.bit_rate_value = (5u << 18) + 22'500;
  s.vbv_value = (3u << 10) + 112;
  s.profile_and_level = 0x85;
  s.chroma_format = 2;
  s.low_delay = true;
  s.display_size = stored_size{540, 570};
  const video_facts facts = video_facts_of(video_maker(s).whole_group("I"));
  EXPECT_EQ(facts.kind, video_kind::elementary);
  ASSERT_TRUE(facts.shape);
  EXPECT_TRUE(facts.shape->mpeg2);
  EXPECT_EQ(facts.shape->width, 720);
  EXPECT_EQ(facts.shape->height, 576);
  EXPECT_EQ(facts.shape->aspect_code, 3);
  EXPECT_EQ(facts.shape->rate_numerator, 25);
  EXPECT_FALSE(facts.shape->progressive_sequence);
  EXPECT_EQ(facts.standard, video_standard::pal);
  EXPECT_EQ(facts.profile_and_level, 0x85);
  EXPECT_EQ(facts.chroma_format, 2);
  EXPECT_TRUE(facts.low_delay);
  EXPECT_EQ(facts.bit_rate, ((std::uint64_t{5} << 18) + 22'500) * 400);
  EXPECT_FALSE(facts.variable_bit_rate);
  EXPECT_EQ(facts.vbv_bytes, ((std::uint64_t{3} << 10) + 112) * 2048);
  EXPECT_EQ(facts.display_size, (stored_size{540, 570}));
}

TEST(VideoFacts, StatesWhatAnMpeg1HeaderSays) {
  made_sequence s = mpeg1();
  s.bit_rate_value = 0x3FFFF;
  s.vbv_value = 20;
  const video_facts facts = video_facts_of(video_maker(s).whole_group("IPP"));
  EXPECT_FALSE(facts.shape->mpeg2);
  EXPECT_EQ(facts.shape->width, 352);
  EXPECT_EQ(facts.standard, video_standard::pal);
  EXPECT_EQ(facts.profile_and_level, 0);
  EXPECT_EQ(facts.chroma_format, 1);
  EXPECT_EQ(facts.bit_rate, std::nullopt);
  EXPECT_TRUE(facts.variable_bit_rate);
  EXPECT_EQ(facts.vbv_bytes, 20u * 2048);
  EXPECT_EQ(facts.display_size, std::nullopt);
  EXPECT_EQ(facts.pictures, 3u);
  EXPECT_EQ(kinds_of(facts), std::vector<kind>{});
}

TEST(VideoFacts, StandardGoesByTheLines) {
  for (const auto& [height, standard] : {std::pair(576, video_standard::pal),
                                         {288, video_standard::pal},
                                         {480, video_standard::ntsc},
                                         {240, video_standard::ntsc},
                                         {720, video_standard::other}}) {
    made_sequence s;
    s.height = height;
    EXPECT_EQ(video_facts_of(video_maker(s).whole_group("I")).standard, standard) << height;
  }
}

TEST(VideoFacts, TheFirstDelayTellsOfAVariableRate) {
  made_picture first;
  first.vbv_delay = variable_vbv_delay;
  EXPECT_TRUE(video_facts_of(video_maker().sequence().group().picture(first)).variable_bit_rate);
  EXPECT_FALSE(video_facts_of(video_maker().whole_group("I").sequence().group().picture(first))
                   .variable_bit_rate);
}

// --- Pictures and their time

TEST(VideoFacts, CountsPicturesFieldsAndSeconds) {
  const video_facts facts =
      video_facts_of(video_maker().whole_group("IBBPBB").whole_group("IBBPBBP").end());
  EXPECT_EQ(facts.pictures, 13u);
  EXPECT_EQ(facts.intra_pictures, 2u);
  EXPECT_EQ(facts.fields, 26u);
  EXPECT_EQ(facts.repeated_fields, 0u);
  EXPECT_EQ(facts.field_pictures, 0u);
  EXPECT_DOUBLE_EQ(facts.seconds, 13 / 25.0);
  EXPECT_EQ(facts.damage.count, 0u);
  EXPECT_EQ(facts.stray_bytes.count, 0u);
}

TEST(VideoFacts, PulldownMakesEachSecondPictureLonger) {
  video_maker maker(ntsc());
  maker.sequence().group();
  for (int i = 0; i < 24; ++i) {
    made_picture one;
    one.kind = i == 0 ? 'I' : 'P';
    one.repeat_first_field = i % 2 == 0;
    one.top_field_first = i % 4 < 2;
    maker.picture(one);
  }
  const video_facts facts = video_facts_of(maker);
  EXPECT_EQ(facts.pictures, 24u);
  EXPECT_EQ(facts.fields, 60u);
  EXPECT_EQ(facts.repeated_fields, 12u);
  EXPECT_DOUBLE_EQ(facts.seconds, 30 * 1001.0 / 30000);
}

TEST(VideoFacts, AProgressiveSequenceRepeatsWholeFrames) {
  made_sequence s = ntsc();
  s.progressive = true;
  made_picture twice, thrice;
  twice.repeat_first_field = thrice.repeat_first_field = thrice.top_field_first = true;
  const video_facts facts =
      video_facts_of(video_maker(s).sequence().group().picture(twice).picture(thrice));
  EXPECT_EQ(facts.fields, 10u);
  EXPECT_EQ(facts.repeated_fields, 6u);
}

TEST(VideoFacts, TwoFieldsAreOnePicture) {
  video_maker maker;
  maker.sequence().group();
  maker.picture(field('I', picture_extension::top_field))
      .picture(field('P', picture_extension::bottom_field));
  maker.picture(field('P', picture_extension::bottom_field))
      .picture(field('P', picture_extension::top_field));
  maker.pictures("P");
  const video_facts facts = video_facts_of(maker);
  EXPECT_EQ(facts.pictures, 3u);
  EXPECT_EQ(facts.field_pictures, 2u);
  EXPECT_EQ(facts.intra_pictures, 1u);
  EXPECT_EQ(facts.fields, 6u);
  EXPECT_EQ(kinds_of(facts), std::vector<kind>{});
}

TEST(VideoFacts, PicturesBeforeTheFirstIntraDoNotCount) {
  const video_facts facts =
      video_facts_of(video_maker().sequence().pictures("PBB").whole_group("IP"));
  EXPECT_EQ(facts.pictures_before_intra, 3u);
  EXPECT_EQ(facts.pictures, 2u);
  EXPECT_DOUBLE_EQ(facts.seconds, 2 / 25.0);
  EXPECT_EQ(facts.longest_group->place.seconds, 0);
}

// --- Groups of pictures

TEST(VideoFacts, KnowsTheLongestGroup) {
  video_maker maker;
  maker.whole_group("IPPPP");
  const std::uint64_t begin = maker.here();
  maker.whole_group("I" + std::string(19, 'P')).whole_group("IPP");
  const video_facts facts = video_facts_of(maker);
  EXPECT_EQ(facts.groups, 3u);
  ASSERT_TRUE(facts.longest_group);
  EXPECT_EQ(*facts.longest_group, (video_group{{begin, 5 / 25.0}, 20, 40}));
  EXPECT_EQ(facts.groups_by_fields[10], 1u);
  EXPECT_EQ(facts.groups_by_fields[40], 1u);
  EXPECT_EQ(facts.groups_by_fields[6], 1u);
  EXPECT_EQ(facts.long_groups.kept, std::vector{*facts.longest_group});
}

TEST(VideoFacts, UnitsBeginWithEachIntraPicture) {
  const video_facts facts = video_facts_of(
      video_maker().whole_group("IBBPBB").pictures("IPP").whole_group("IBBP", false));
  EXPECT_EQ(facts.unit_begins, (std::vector<double>{0, 6 / 25.0, 9 / 25.0}));
}

TEST(VideoFacts, AGroupOfThirtyFieldsIsNotLong) {
  EXPECT_EQ(video_facts_of(video_maker().whole_group("I" + std::string(14, 'P'))).long_groups.count,
            0u);
  EXPECT_EQ(video_facts_of(video_maker().whole_group("I" + std::string(15, 'P'))).long_groups.count,
            1u);
}

TEST(VideoFacts, VeryLongGroupsShareANumber) {
  const video_facts facts =
      video_facts_of(video_maker(mpeg1()).whole_group("I" + std::string(99, 'P')));
  EXPECT_EQ(facts.groups_by_fields[100], 1u);
  EXPECT_EQ(facts.longest_group->fields, 200u);
}

TEST(VideoFacts, FindsGroupsWithoutASequenceHeader) {
  video_maker maker;
  maker.whole_group("IPP");
  const std::uint64_t second = maker.here();
  maker.group().pictures("IPP").whole_group("IPP").group().pictures("I");
  const video_facts facts = video_facts_of(maker);
  EXPECT_EQ(facts.groups, 4u);
  EXPECT_EQ(facts.groups_without_sequence_header.count, 2u);
  EXPECT_EQ(facts.groups_without_sequence_header.kept[0], (video_place{second, 3 / 25.0}));
  EXPECT_EQ(facts.groups_without_sequence_header.kept[1].seconds, 9 / 25.0);
}

TEST(VideoFacts, FindsIntraPicturesWithoutAGroupHeader) {
  video_maker maker;
  maker.whole_group("IPP");
  const std::uint64_t alone = maker.here();
  maker.pictures("IP");
  maker.sequence();
  const std::uint64_t behind_sequence = maker.here();
  maker.pictures("IP");
  const video_facts facts = video_facts_of(maker);
  EXPECT_EQ(facts.intra_without_group_header.kept,
            (std::vector<video_place>{{alone, 3 / 25.0}, {behind_sequence, 5 / 25.0}}));
  EXPECT_EQ(facts.groups, 2u);
  EXPECT_EQ(facts.longest_group->pictures, 5u);
  EXPECT_EQ(facts.intra_pictures, 3u);
}

TEST(VideoFacts, HidesTheLeadingPicturesOfAnOpenFirstGroup) {
  const video_facts facts =
      video_facts_of(video_maker().whole_group("IBBPBB", false).whole_group("IBBPBB", false));
  EXPECT_TRUE(facts.first_group_open);
  EXPECT_EQ(facts.pictures, 12u);
  EXPECT_EQ(facts.hidden_pictures, 2u);
  EXPECT_EQ(facts.open_groups, 2u);
  EXPECT_EQ(facts.fields, 20u);
  EXPECT_EQ(facts.longest_group->fields, 12u);
}

TEST(VideoFacts, AClosedFirstGroupHidesNothing) {
  const video_facts facts = video_facts_of(
      video_maker().whole_group("IBBPBB").whole_group("IBBP", false).whole_group("IPBB", false));
  EXPECT_FALSE(facts.first_group_open);
  EXPECT_EQ(facts.hidden_pictures, 0u);
  EXPECT_EQ(facts.open_groups, 1u);
}

TEST(VideoFacts, FindsBrokenLinks) {
  video_maker maker;
  maker.whole_group("IP").sequence();
  const std::uint64_t broken = maker.here();
  maker.group(false, true).pictures("IBBP");
  EXPECT_EQ(video_facts_of(maker).broken_links.kept,
            (std::vector<video_place>{{broken, 2 / 25.0}}));
}

// --- Bit rate

TEST(VideoFacts, PeakIsTheHighestSecondWhereverItBegins) {
  video_maker maker;
  maker.sequence().group();
  std::uint64_t begin = 0, loud = 0;
  for (int i = 0; i < 100; ++i) {
    if (i == 37)
      begin = maker.here();
    const std::size_t size = i >= 37 && i < 62 ? 60'000 : 10'000;
    loud += i >= 37 && i < 62 ? size : 0;
    maker.picture(sized(i == 0 ? 'I' : 'P', size));
  }
  const video_facts facts = video_facts_in_slices(maker.bytes, 65536);
  EXPECT_DOUBLE_EQ(facts.peak_rate, 8.0 * static_cast<double>(loud));
  EXPECT_EQ(facts.peak_place, (video_place{begin, 37 / 25.0}));
  EXPECT_DOUBLE_EQ(facts.average_rate, 8.0 * static_cast<double>(maker.bytes.size()) / 4);
  EXPECT_EQ(facts.picture_bytes, maker.bytes.size());
}

TEST(VideoFacts, NeedOfABufferGrowsWhileMoreComesThanIsRead) {
  video_maker maker;
  maker.sequence().group();
  constexpr int pictures = 50, loud = 20, late = 17;
  constexpr std::size_t size = 60'000;
  std::uint64_t first_late = 0;
  for (int i = 0; i < pictures; ++i) {
    if (i == late)
      first_late = maker.here();
    maker.picture(sized(i == 0 ? 'I' : 'P', i < loud ? size : 10'000));
  }
  const video_facts facts = video_facts_in_slices(maker.bytes, 65536);
  const missing_bits& most = facts.need_of_video.of_full;
  EXPECT_EQ(most.byte, first_late) << "the first one for which a player's buffer is too small";
  EXPECT_DOUBLE_EQ(most.seconds, late / 25.0);
  EXPECT_NEAR(most.bits, loud * size * 8 - (loud - 1) * 9.8e6 / 25, 1000);
  EXPECT_DOUBLE_EQ(facts.need_of_video.of_empty.bits, most.bits);
  ASSERT_EQ(facts.needs_in_packs.size(), read_ahead::steps);
  EXPECT_GT(facts.needs_in_packs[50].of_full.bits, facts.needs_in_packs[0].of_full.bits);
}

TEST(VideoFacts, AQuietBeginningFillsTheBufferOnlySoFar) {
  video_maker maker;
  maker.sequence().group();
  for (int i = 0; i < 50; ++i)
    maker.picture(sized(i == 0 ? 'I' : 'P', 10'000));
  maker.picture(sized('P', 250'000));
  const buffer_need need = video_facts_in_slices(maker.bytes, 65536).need_of_video;
  EXPECT_DOUBLE_EQ(need.of_full.bits, 8 * 250'000);
  EXPECT_LT(need.of_empty.bits, 100'000) << "a buffer that is never full has more then";
}

TEST(VideoFacts, ASecondOfNtscIsThirtyPictures) {
  video_maker maker(ntsc());
  maker.sequence().group();
  const std::uint64_t headers = maker.here();
  for (int i = 0; i < 45; ++i)
    maker.picture(sized('I', 30'000));
  const video_facts facts = video_facts_in_slices(maker.bytes, 65536);
  EXPECT_DOUBLE_EQ(facts.peak_rate,
                   8 * static_cast<double>(30 * 30'000 + headers) / (30 * 1001.0 / 30000));
}

TEST(VideoFacts, AStreamShorterThanASecondCountsAsLastingOne) {
  const video_facts facts =
      video_facts_of(video_maker().sequence().group().picture(sized('I', 90'000)));
  EXPECT_DOUBLE_EQ(facts.peak_rate, 8 * static_cast<double>(facts.bytes));
  EXPECT_DOUBLE_EQ(facts.average_rate, 25 * 8 * static_cast<double>(facts.bytes));
}

TEST(VideoFacts, KnowsTheLargestPicture) {
  video_maker maker;
  maker.whole_group("IPP");
  const std::uint64_t begin = maker.here();
  maker.picture(sized('P', 5000)).picture(sized('P', 4999));
  const video_facts facts = video_facts_of(maker);
  EXPECT_EQ(facts.largest_picture, 5000u);
  EXPECT_EQ(facts.largest_picture_place, (video_place{begin, 3 / 25.0}));
}

// --- Changes and end codes

TEST(VideoFacts, FindsChangesOfEachKind) {
  video_maker maker;
  maker.whole_group("IP");
  made_sequence s;
  s.aspect_code = 3;
  std::vector<std::uint64_t> places;
  const auto go_on = [&] {
    places.push_back(maker.here());
    maker.sequence(s).group().pictures("IP");
  };
  go_on();
  s.width = 352;
  go_on();
  s.height = 480;
  s.rate_code = 4;
  go_on();
  s.mpeg2 = false;
  s.aspect_code = 12;
  s.height = 240;
  go_on();
  const video_facts facts = video_facts_of(maker);
  ASSERT_EQ(facts.aspect_changes.count, 1u);
  EXPECT_EQ(facts.aspect_changes.kept[0].place, (video_place{places[0], 2 / 25.0}));
  EXPECT_EQ(facts.aspect_changes.kept[0].before.aspect_code, 2);
  EXPECT_EQ(facts.aspect_changes.kept[0].after.aspect_code, 3);
  ASSERT_EQ(facts.size_changes.count, 3u);
  EXPECT_EQ(facts.size_changes.kept[0].place, (video_place{places[1], 4 / 25.0}));
  EXPECT_EQ(facts.size_changes.kept[0].after.width, 352);
  ASSERT_EQ(facts.rate_changes.count, 1u);
  EXPECT_EQ(facts.rate_changes.kept[0].place, (video_place{places[2], 6 / 25.0}));
  ASSERT_EQ(facts.standard_changes.count, 1u);
  EXPECT_EQ(facts.standard_changes.kept[0].place.byte, places[2]);
  ASSERT_EQ(facts.coding_changes.count, 1u);
  EXPECT_EQ(facts.coding_changes.kept[0].place,
            (video_place{places[3], 6 / 25.0 + 2 * 1001.0 / 30000}));
  EXPECT_DOUBLE_EQ(facts.seconds, 6 / 25.0 + 4 * 1001.0 / 30000);
  EXPECT_EQ(facts.shape->width, 720);
}

TEST(VideoFacts, AnEndCodeAtTheEnd) {
  EXPECT_FALSE(video_facts_of(video_maker().whole_group("IP")).end_code);
  const video_facts facts = video_facts_of(video_maker().whole_group("IP").end());
  EXPECT_TRUE(facts.end_code);
  EXPECT_EQ(facts.middle_end_codes.count, 0u);
  EXPECT_EQ(facts.stray_bytes.count, 0u);
  EXPECT_EQ(facts.picture_bytes, facts.bytes - 4);
  EXPECT_TRUE(
      video_facts_of(video_maker().whole_group("IP").end().raw(std::string(500, '\0'))).end_code);
}

TEST(VideoFacts, FindsEndCodesInTheMiddle) {
  video_maker maker;
  maker.whole_group("IPP");
  const std::uint64_t first = maker.here();
  maker.end().whole_group("IP").end();
  const std::uint64_t without = maker.here();
  maker.group().pictures("IP").end();
  const video_facts facts = video_facts_of(maker);
  EXPECT_EQ(facts.middle_end_codes.count, 2u);
  EXPECT_EQ(facts.middle_end_codes.kept[0], (video_place{first, 3 / 25.0}));
  EXPECT_EQ(facts.missing_sequence_headers.kept, (std::vector<video_place>{{without, 5 / 25.0}}));
  EXPECT_TRUE(facts.end_code);
  EXPECT_EQ(facts.pictures, 7u);
  EXPECT_EQ(facts.damage.count, 0u);
  EXPECT_EQ(facts.stray_bytes.count, 0u);
}

// --- Bytes where none belong

TEST(VideoFacts, FindsBytesBeforeTheFirstHeader) {
  for (const std::size_t size : {1u, 5u, 11u, 12u, 100u, 5000u}) {
    const video_facts facts =
        video_facts_of(video_maker().raw(std::string(size, 'x')).whole_group("IP"));
    EXPECT_EQ(facts.stray_bytes.kept, (std::vector<video_bytes>{{{0, 0}, size}})) << size;
    EXPECT_EQ(facts.stray_bytes_in_all, size);
    EXPECT_EQ(facts.kind, video_kind::elementary);
    const video_facts zeros =
        video_facts_of(video_maker().raw(std::string(size, '\0')).whole_group("IP"));
    EXPECT_EQ(zeros.stray_bytes.count, 0u) << size;
  }
}

TEST(VideoFacts, AHeaderBeforeTheFirstSequenceHeaderIsStray) {
  const std::uint64_t size = video_maker().group().here();
  const video_facts facts = video_facts_of(video_maker().group().sequence().pictures("IP"));
  EXPECT_EQ(facts.stray_bytes.kept, (std::vector<video_bytes>{{{0, 0}, size}}));
  EXPECT_EQ(facts.picture_bytes, facts.bytes - size);
}

TEST(VideoFacts, FindsBytesBehindAnEndCode) {
  for (const std::size_t size : {1u, 7u, 8u, 9u, 100u, 5000u}) {
    for (const std::string& more : {""s, video_maker().whole_group("IP").bytes}) {
      const std::string begin = video_maker().whole_group("IP").end().bytes;
      const std::string junk = std::string(size - 1, '\0') + "x";
      const video_facts facts = video_facts_of(begin + junk + more);
      EXPECT_EQ(facts.stray_bytes.kept,
                (std::vector<video_bytes>{{{begin.size(), 2 / 25.0}, size}}))
          << size;
      EXPECT_EQ(video_facts_of(begin + std::string(size, '\0') + more).stray_bytes.count, 0u)
          << size;
      EXPECT_EQ(facts.end_code, more.empty());
    }
  }
}

TEST(VideoFacts, ASecondEndCodeIsStray) {
  const video_facts facts = video_facts_of(video_maker().whole_group("IP").end().end());
  EXPECT_TRUE(facts.end_code);
  EXPECT_EQ(facts.stray_bytes_in_all, 4u);
}

TEST(VideoFacts, AProgramStreamIsPackets) {
  const std::string pack = "\0\0\1\xBA\x44\0\4\0\4\1\0\0\3\xF8"s;
  const std::string packet = "\0\0\1\xE0\0\0\x81\0\0"s;
  const std::string video = video_maker().whole_group("IPP").bytes;
  EXPECT_EQ(video_facts_of(pack + packet + video).kind, video_kind::packets);
  EXPECT_EQ(video_facts_of(packet + video).kind, video_kind::packets);
  EXPECT_EQ(video_facts_of("\0\0\1\x05 the rest of a picture"s + pack + packet + video).kind,
            video_kind::packets);
}

TEST(VideoFacts, FindsSystemCodesInTheMiddle) {
  video_maker maker;
  maker.whole_group("IP");
  const std::uint64_t begin = maker.here();
  maker.raw("\0\0\1\xE0\0\0\x81\0\0"s).whole_group("IP");
  const video_facts facts = video_facts_of(maker);
  EXPECT_EQ(facts.kind, video_kind::elementary);
  ASSERT_EQ(facts.system_codes.count, 1u);
  EXPECT_EQ(facts.system_codes.kept[0].byte, begin);
  EXPECT_EQ(facts.pictures, 4u);
}

TEST(VideoFacts, WhatIsNoVideoHasNoFacts) {
  for (const std::string& bytes :
       {""s, "text"s, std::string(3000, '\0'), "\0\0\1"s, "\0\0\1\xB3"s, "\0\0\1\xB8\0\0\0\0\0"s,
        "\0\0\1\xB3\x2D\x02\x40\x00\xFF\xFF\xE0\0"s}) {
    const video_facts facts = video_facts_of(bytes);
    EXPECT_EQ(facts.kind, video_kind::none);
    EXPECT_FALSE(facts.shape);
    EXPECT_EQ(facts.pictures, 0u);
    EXPECT_EQ(facts.damage.count, 0u);
  }
}

// --- Damage

TEST(VideoFacts, FindsABadSequenceHeader) {
  video_maker maker;
  maker.whole_group("IP");
  const std::uint64_t begin = maker.here();
  maker.raw("\0\0\1\xB3\x2D\x02\x40\x20\xFF\xFF\xE0\0"s).group().pictures("IP");
  const video_facts facts = video_facts_of(maker);
  EXPECT_EQ(facts.damage.kept,
            (std::vector<video_damage>{{kind::bad_sequence_header, {begin, 2 / 25.0}}}));
  EXPECT_EQ(facts.groups_without_sequence_header.count, 1u);
  EXPECT_EQ(facts.pictures, 4u);
}

TEST(VideoFacts, FindsABadPictureHeader) {
  video_maker maker;
  maker.whole_group("IP");
  const std::uint64_t begin = maker.here();
  maker.pictures("DP");
  const video_facts facts = video_facts_of(maker);
  EXPECT_EQ(facts.damage.kept,
            (std::vector<video_damage>{{kind::bad_picture_header, {begin, 2 / 25.0}}}));
  EXPECT_EQ(facts.pictures, 3u);
}

TEST(VideoFacts, FindsAPictureWithoutItsExtension) {
  made_picture bare;
  bare.extension = false;
  EXPECT_EQ(kinds_of(video_facts_of(video_maker().whole_group("I").picture(bare))),
            std::vector{kind::no_picture_extension});
  EXPECT_EQ(video_facts_of(video_maker(mpeg1()).sequence().group().picture(bare)).damage.count, 0u);
}

TEST(VideoFacts, FindsPicturesWithoutSlices) {
  video_maker maker;
  maker.whole_group("I");
  const std::uint64_t begin = maker.here();
  maker.picture(with_rows({})).pictures("P").picture(with_rows({})).end();
  const video_facts facts = video_facts_of(maker);
  EXPECT_EQ(kinds_of(facts),
            (std::vector{kind::picture_without_slices, kind::picture_without_slices}));
  EXPECT_EQ(facts.damage.kept[0].place, (video_place{begin, 1 / 25.0}));
  EXPECT_EQ(facts.pictures, 2u);
}

std::vector<kind> damage_of_rows(std::vector<int> rows, bool mpeg2 = true) {
  made_sequence s = mpeg1();
  s.mpeg2 = mpeg2;
  s.height = 64;
  return kinds_of(
      video_facts_of(video_maker(s).sequence().group().picture(with_rows(std::move(rows))).end()));
}

TEST(VideoFacts, FindsMissingRows) {
  using kinds = std::vector<kind>;
  EXPECT_EQ(damage_of_rows({1, 2, 3, 4}), kinds{});
  EXPECT_EQ(damage_of_rows({1, 1, 2, 3, 3, 4, 4}), kinds{});
  EXPECT_EQ(damage_of_rows({2, 3, 4}), kinds{kind::missing_rows});
  EXPECT_EQ(damage_of_rows({1, 3, 4}), kinds{kind::missing_rows});
  EXPECT_EQ(damage_of_rows({1, 2, 3}), kinds{kind::missing_rows});
  EXPECT_EQ(damage_of_rows({1, 4}), kinds{kind::missing_rows});
  EXPECT_EQ(damage_of_rows({1, 3, 2, 4}), (kinds{kind::missing_rows, kind::rows_out_of_order}));
  EXPECT_EQ(damage_of_rows({1, 2, 3, 4, 5}), kinds{kind::rows_out_of_order});
  EXPECT_EQ(damage_of_rows({1, 2, 3, 4, 90}), kinds{kind::rows_out_of_order});
  EXPECT_EQ(damage_of_rows({1, 2, 3, 4, 1}), kinds{kind::rows_out_of_order});
}

TEST(VideoFacts, ASliceOfMpeg1MayHoldManyRows) {
  using kinds = std::vector<kind>;
  EXPECT_EQ(damage_of_rows({1}, false), kinds{});
  EXPECT_EQ(damage_of_rows({1, 3}, false), kinds{});
  EXPECT_EQ(damage_of_rows({1, 2, 3, 4}, false), kinds{});
  EXPECT_EQ(damage_of_rows({2}, false), kinds{kind::missing_rows});
  EXPECT_EQ(damage_of_rows({1, 3, 2}, false), kinds{kind::rows_out_of_order});
  EXPECT_EQ(damage_of_rows({1, 5}, false), kinds{kind::rows_out_of_order});
}

TEST(VideoFacts, RowsOfOddHeights) {
  // 40 lines: 3 rows, but interlaced ones come in pairs; 2 a field. Above 2800 lines nothing is
  // known.
  made_sequence s;
  s.height = 40;
  const auto damage = [&](const made_picture& one) {
    return video_facts_of(video_maker(s).sequence().group().picture(one).end()).damage.count;
  };
  EXPECT_EQ(damage(with_rows({1, 2, 3, 4})), 0u);
  EXPECT_EQ(damage(with_rows({1, 2, 3})), 1u);
  s.progressive = true;
  EXPECT_EQ(damage(with_rows({1, 2, 3})), 0u);
  s.height = 2816;
  EXPECT_EQ(damage(with_rows({5, 1})), 0u);
}

TEST(VideoFacts, PlaceOfMissingRows) {
  video_maker maker;
  maker.whole_group("IP");
  maker.picture(with_rows({1, 2}));
  const std::uint64_t end = maker.here();
  maker.pictures("P");
  const video_facts facts = video_facts_of(maker);
  EXPECT_EQ(facts.damage.kept, (std::vector<video_damage>{{kind::missing_rows, {end, 2 / 25.0}}}));
}

TEST(VideoFacts, FindsSlicesWithoutAPictureOncePerPlace) {
  video_maker maker;
  maker.whole_group("IP").sequence().group();
  const std::uint64_t begin = maker.here();
  maker.raw("\0\0\1\1abc\0\0\1\2abc\0\0\1\3abc"s).pictures("P");
  const video_facts facts = video_facts_of(maker);
  EXPECT_EQ(facts.damage.kept,
            (std::vector<video_damage>{{kind::slices_without_picture, {begin, 2 / 25.0}}}));
  EXPECT_EQ(facts.pictures, 3u);
}

TEST(VideoFacts, FindsALoneField) {
  video_maker maker;
  maker.whole_group("I");
  const std::uint64_t begin = maker.here();
  maker.picture(field('P', picture_extension::top_field)).pictures("P");
  const video_facts facts = video_facts_of(maker);
  EXPECT_EQ(facts.damage.kept, (std::vector<video_damage>{{kind::lone_field, {begin, 1 / 25.0}}}));
  EXPECT_EQ(facts.pictures, 3u);
}

TEST(VideoFacts, FindsAGroupThatBeginsWithoutAnIntraPicture) {
  EXPECT_EQ(kinds_of(video_facts_of(video_maker().whole_group("IP").whole_group("PP"))),
            std::vector{kind::group_without_intra});
  EXPECT_EQ(kinds_of(video_facts_of(video_maker().whole_group("PP").whole_group("IP"))),
            std::vector{kind::group_without_intra});
}

TEST(VideoFacts, FindsReservedAndErrorCodes) {
  video_maker maker;
  maker.whole_group("I").raw("\0\0\1\xB4\0\0\1\xB0\0\0\1\xB1\0\0\1\xB6"s).pictures("P");
  maker.raw("\0\0\1\xB2user data"s).pictures("P");
  EXPECT_EQ(kinds_of(video_facts_of(maker)), std::vector<kind>(4, kind::reserved_code));
}

TEST(VideoFacts, FindsAStreamThatEndsWithinAPicture) {
  const std::string whole = video_maker().whole_group("IPP").bytes;
  const std::size_t last = video_maker().whole_group("IP").bytes.size();
  EXPECT_EQ(video_facts_of(whole).damage.count, 0u);
  for (const std::size_t size : {last + 4, last + 8, last + 30, whole.size() - 10}) {
    const video_facts facts = video_facts_of(whole.substr(0, size));
    EXPECT_EQ(facts.damage.kept, (std::vector<video_damage>{{kind::cut_at_end, {last, 2 / 25.0}}}))
        << size;
  }
  EXPECT_EQ(kinds_of(video_facts_of(whole + video_maker().sequence().group().bytes)),
            std::vector{kind::cut_at_end});
}

// --- All together

TEST(VideoFacts, ListsAreCountedWholeAndKeptInPart) {
  video_maker maker(mpeg1());
  maker.sequence();
  for (int i = 0; i < 3000; ++i)
    maker.group().pictures("I").end();
  const video_facts facts = video_facts_in_slices(maker.bytes, 4096);
  EXPECT_EQ(facts.groups_without_sequence_header.count, 2999u);
  EXPECT_EQ(facts.groups_without_sequence_header.kept.size(), 1000u);
  EXPECT_EQ(facts.middle_end_codes.count, 2999u);
  EXPECT_EQ(facts.middle_end_codes.kept.size(), 1000u);
}

TEST(VideoFacts, TheHeadTellsWhatTheWholeStates) {
  video_maker maker;
  maker.raw("junk").whole_group("IP");
  maker.picture(sized('P', 100'000)).whole_group("IP");
  const auto* const data = reinterpret_cast<const std::uint8_t*>(maker.bytes.data());
  const video_facts whole = video_facts_of(maker);
  const video_facts head = read_video_head({data, maker.bytes.size()});
  EXPECT_FALSE(head.whole);
  EXPECT_EQ(head.bytes, 65536u);
  EXPECT_EQ(head.kind, whole.kind);
  EXPECT_EQ(head.shape, whole.shape);
  EXPECT_EQ(head.bit_rate, whole.bit_rate);
  EXPECT_EQ(head.profile_and_level, 0x48);
  EXPECT_EQ(head.stray_bytes, whole.stray_bytes);
  EXPECT_EQ(head.damage.count, 0u);
  EXPECT_EQ(head.fields, 4u);
}

TEST(VideoFacts, TheHeadNeedsNoPicture) {
  const std::string bytes = video_maker().sequence().group().bytes;
  const video_facts head =
      read_video_head({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  ASSERT_TRUE(head.shape);
  EXPECT_EQ(head.standard, video_standard::pal);
  EXPECT_TRUE(head.shape->mpeg2);
  EXPECT_EQ(read_video_head({}).kind, video_kind::none);
}

}  // namespace
}  // namespace corvane
