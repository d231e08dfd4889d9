// What navigation packs say of the units around them and of the packs of their streams: right ones
// have nothing, each wrong one is told once for its cell.
#include "examine/unit_checks.h"

#include "examine/made_packs.h"
#include "examine/pack_headers.h"
#include "examine/stream_addresses.h"
#include "formats/program_stream.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace corvane {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

constexpr std::uint32_t unit_sectors = 10, unit_clocks = 45'000, no_such = 0x3FFFFFFF;

/// Units of ten sectors and half a second each in two cells of VOB 1: those of cell 1 are 0 to 5,
/// of cell 2 are 6 and 7.
constexpr std::uint32_t first_cell = 6, all_units = 8;

vob_addresses made_addresses() {
  vob_addresses made;
  made.vobs = 1;
  made.cells = {{1, 1, 0, 59}, {1, 2, 60, 79}};
  for (std::uint32_t i = 0; i < all_units; ++i)
    made.units.push_back(i * unit_sectors);
  return made;
}

/// A pointer to a unit so many sectors away, with pictures.
std::uint32_t pointer_to(std::uint32_t distance) {
  return 0x80000000U | distance;
}

void point_in_cell(navigation_pack& p, std::uint32_t before, std::uint32_t behind) {
  const unit_search none;
  p.next = p.next_video = behind > 0 ? unit_search{unit_sectors, true} : none;
  p.previous = p.previous_video = before > 0 ? unit_search{unit_sectors, true} : none;
  for (std::uint32_t step = 1; step <= 19; ++step) {
    p.forward[19 - step] = step <= behind ? pointer_to(step * unit_sectors) : no_such;
    p.backward[step - 1] = step <= before ? pointer_to(step * unit_sectors) : no_such;
  }
}

navigation_pack made_unit(std::uint32_t index) {
  navigation_pack p;
  const std::uint32_t first = index < first_cell ? 0 : first_cell;
  const std::uint32_t units = first == 0 ? first_cell : all_units - first_cell;
  p.headers = {0, 0, 1, 0xBA, 0x44, 0, 4, 0, 4, 1, 1, 0x89, 0xC3, 0xF8, 0, 0, 1, 0xBB, 0, 0x12};
  p.clock = std::uint64_t{index} * 1000 * 300 + 7;
  p.search_clock = index * 1000;
  p.sector = p.search_sector = index * unit_sectors;
  p.unit_end = unit_sectors - 1;
  p.begins = 9000 + index * unit_clocks;
  p.ends = p.begins + unit_clocks;
  p.reference_ends = {3, 5, 6};
  p.vob = 1;
  p.cell = first == 0 ? 1 : 2;
  const std::uint32_t fields = (index - first) * 25;
  p.elapsed = {0, 0, static_cast<int>(fields / 50), static_cast<int>(fields % 50 / 2), 25, true};
  p.search_elapsed = p.elapsed;
  p.vob_video_begins = 9000;
  p.vob_video_ends = 9000 + all_units * unit_clocks;
  p.subpictures[0] = 0x7FFFFFFF;
  point_in_cell(p, index - first, units - 1 - (index - first));
  return p;
}

std::vector<navigation_pack> made_units() {
  std::vector<navigation_pack> units;
  for (std::uint32_t i = 0; i < all_units; ++i)
    units.push_back(made_unit(i));
  return units;
}

/// The same with two buttons.
std::vector<navigation_pack> made_menu() {
  std::vector<navigation_pack> units = made_units();
  for (navigation_pack& p : units) {
    p.highlight.status = 1;
    p.highlight.begins = 9000;
    p.highlight.ends = p.highlight.selection_ends = 0xFFFFFFFF;
    p.highlight.groups = 1;
    p.highlight.buttons_stated = p.highlight.by_number = 2;
    p.highlight.buttons = {{1, 100, 100, 200, 150, false, 2, 2, 2, 2, {}},
                           {1, 100, 200, 200, 250, false, 1, 1, 1, 1, {}}};
  }
  return units;
}

/// "sector 20: ..." of each trouble; what is harmless has "(sector 20) ...".
std::vector<std::string> told(const std::vector<navigation_pack>& units) {
  unit_checks checks(made_addresses());
  for (const navigation_pack& p : units)
    checks.add(p, p.sector);
  std::vector<std::string> lines;
  for (const unit_trouble& one : checks.judge()) {
    const std::string place = "sector " + std::to_string(one.sector);
    lines.push_back((one.harmless ? "(" + place + ") " : place + ": ") + one.what);
  }
  return lines;
}

using change = std::function<void(navigation_pack&)>;

/// What is told when unit `index` is changed.
std::vector<std::string> told_of(std::size_t index, const change& make,
                                 std::vector<navigation_pack> units = made_units()) {
  make(units[index]);
  return told(units);
}

struct wrong_value {
  std::size_t index;
  change make;
  const char* text;
};

void expect_each(const std::vector<wrong_value>& wrong, const std::vector<navigation_pack>& units) {
  for (const wrong_value& one : wrong)
    EXPECT_THAT(told_of(one.index, one.make, units), ElementsAre(StartsWith(one.text))) << one.text;
}

TEST(UnitChecks, RightUnitsHaveNothing) {
  EXPECT_THAT(told(made_units()), IsEmpty());
  EXPECT_THAT(told(made_menu()), IsEmpty());
}

TEST(UnitChecks, SearchLeadsToUnitsOfItsCellAndFartherByLargerSteps) {
  expect_each(
      {{0, [](auto& p) { p.forward[17] = pointer_to(21); },
        "sector 0: search by 1 s forward leads to sector 21, where no unit of its cell begins"},
       {0, [](auto& p) { p.forward[0] = pointer_to(60); },
        "(sector 0) search by 120 s forward leads to sector 60, where no unit of its cell"},
       {0, [](auto& p) { p.forward[16] = pointer_to(10); },
        "sector 0: search by 1.5 s forward leads less far than by a smaller step"},
       {0, [](auto& p) { p.forward[18] = 10; },
        "(sector 0) search by 0.5 s forward leads to pictures, and says that there are none"},
       {3, [](auto& p) { p.backward[0] = pointer_to(11); },
        "sector 30: search by 0.5 s back leads to sector 19, where no unit of its cell begins"},
       {3, [](auto& p) { p.backward[18] = pointer_to(31); },
        "sector 30: search by 120 s back leads out of the VOBs"},
       {3, [](auto& p) { p.backward[2] = pointer_to(10); },
        "sector 30: search by 1.5 s back leads less far than by a smaller step"}},
      made_units());
}

TEST(UnitChecks, SearchInOneUnitAndWithAnyMarksForNoUnitIsRight) {
  EXPECT_THAT(told_of(0, [](auto& p) { p.forward[18] = pointer_to(0); }), IsEmpty());
  for (const std::uint32_t none : {0x7FFFFFFFU, 0xBFFFFFFFU, 0xFFFFFFFFU})
    EXPECT_THAT(told_of(0, [none](auto& p) { p.forward[0] = none; }), IsEmpty()) << none;
}

TEST(UnitChecks, NeighboursAreThoseOfTheCell) {
  expect_each(
      {{1, [](auto& p) { p.next.distance = 20; },
        "sector 10: the next unit of its cell is said to be 20 sectors away; it is at sector 20"},
       {1, [](auto& p) { p.next = {}; },
        "sector 10: the next unit of its cell is said to be nowhere; it is at sector 20"},
       {5,
        [](auto& p) {
          p.next = {20, true};
        },
        "sector 50: the next unit of its cell is said to be 20 sectors away; there is none"},
       {1, [](auto& p) { p.previous.distance = 11; },
        "sector 10: the previous unit of its cell is said to be 11 sectors away; it is at sector "},
       {1, [](auto& p) { p.next_video.distance = 20; },
        "sector 10: the next unit with pictures is said to be 20 sectors away; it is at sector 20"},
       {5,
        [](auto& p) {
          p.next_video = {15, true};
        },
        "sector 50: the next unit with pictures is said to be 15 sectors away; there is none"},
       {1, [](auto& p) { p.previous_video = {}; },
        "sector 10: the previous unit with pictures is said to be nowhere; it is at sector 0"}},
      made_units());
  EXPECT_THAT(told_of(5,
                      [](auto& p) {
                        p.next = {10, true};
                      }),
              IsEmpty())
      << "some go on in the next cell";
}

TEST(UnitChecks, UnitsWithoutPicturesArePassed) {
  auto units = made_units();
  units[2].reference_ends = {};
  units[1].next_video.distance = units[3].previous_video.distance = 20;
  EXPECT_THAT(told(units), IsEmpty());
  units[0].next_video.distance = 20;
  EXPECT_THAT(told(units), ElementsAre(StartsWith("sector 0: the next unit with pictures")));
}

TEST(UnitChecks, AUnitIsWhatItSaysOfItself) {
  expect_each(
      {{2, [](auto& p) { p.vob = 2; },
        "sector 20: it says that it is of VOB 2, cell 1; it lies in VOB 1, cell 1"},
       {2, [](auto& p) { p.cell = 7; },
        "sector 20: it says that it is of VOB 1, cell 7; it lies in VOB 1, cell 1"},
       {2, [](auto& p) { p.headers[6] = 0; }, "sector 20: the headers of its pack are none"},
       {2, [](auto& p) { p.search_clock = 2001; },
        "(sector 20) the clock is not that of its pack: 2001"},
       {2, [](auto& p) { p.search_elapsed.frames = 5; },
        "(sector 20) its two times since the beginning of the cell are not the same"},
       {2,
        [](auto& p) {
          p.reference_ends = {6, 5, 7};
        },
        "sector 20: the ends of its first pictures do not rise, or lie behind it: 5 of 9 sectors"},
       {2, [](auto& p) { p.reference_ends[2] = 10; }, "sector 20: the ends of its first pictures"},
       {2, [](auto& p) { p.sequence_ends = p.ends + 1; },
        "sector 20: its pictures end at a time that is not in it"}},
      made_units());
  EXPECT_THAT(told_of(2, [](auto& p) { p.headers[17] = 0xBC; }),
              Contains("sector 20: the headers of its pack are none"));
  EXPECT_THAT(told_of(2, [](auto& p) { p.reference_ends = {3, 5, 0}; }), IsEmpty());
  EXPECT_THAT(told_of(2, [](auto& p) { p.sequence_ends = p.ends; }),
              ElementsAre("(sector 20) it says that the pictures end in it; its VOB goes on"));
  EXPECT_THAT(told_of(7, [](auto& p) { p.sequence_ends = p.ends; }), IsEmpty());
}

TEST(UnitChecks, TimesGoOnFromUnitToUnit) {
  expect_each({{1, [](auto& p) { p.ends += 43; },
                "(sector 10) the next unit begins 0.0005 s before its end"},
               {5, [](auto& p) { p.ends += 180'000; },
                "(sector 50) the next cell begins 2 s before its end"},
               {4, [](auto& p) { p.elapsed.minutes = p.search_elapsed.minutes = 1; },
                "(sector 40) it says that its cell has played 62 s; it has played 2 s"}},
              made_units());
  EXPECT_THAT(told_of(1, [](auto& p) { p.ends += 4; }), IsEmpty()) << "they are rounded";
}

TEST(UnitChecks, AUnitEndsSomePicturesBeforeAnOpenGroup) {
  for (const unsigned picture : {3003U, 3600U}) {
    EXPECT_THAT(told_of(1, [=](auto& p) { p.ends -= picture; }), IsEmpty());
    EXPECT_THAT(told_of(5, [=](auto& p) { p.ends -= 2 * picture; }), IsEmpty());
    EXPECT_THAT(told_of(1, [=](auto& p) { p.ends -= picture / 2; }),
                ElementsAre(StartsWith("(sector 10) the next unit begins 0.0")));
    EXPECT_THAT(told_of(1, [=](auto& p) { p.ends += picture; }),
                ElementsAre(StartsWith("(sector 10) the next unit begins 0.0")));
  }
}

TEST(UnitChecks, WhatUnitsHaveInCommonTheyAllSay) {
  expect_each(
      {{0, [](auto& p) { p.vob_video_ends -= 1; },
        "(sector 0) what it says of the time of its VOB is unlike that of all other units"},
       {3, [](auto& p) { p.headers[10] = 5; },
        "(sector 30) what the headers of its pack declare is unlike"},
       {5, [](auto& p) { p.category = 0xC000; }, "(sector 50) its copy protection is unlike"},
       {1, [](auto& p) { p.prohibited = 1; }, "(sector 10) the keys that it locks is unlike"},
       {2, [](auto& p) { p.sound_gaps[3] = 1; },
        "(sector 20) what it says of pauses of the sound is unlike"},
       {7, [](auto& p) { p.vob_video_begins += 9; },
        "(sector 70) what it says of the time of its VOB is unlike"}},
      made_units());
  auto units = made_units();
  units.resize(2);
  units[1].vob_video_begins += 9;
  EXPECT_THAT(told(units), Contains(StartsWith("(sector 10) what it says of the time of its VOB")));
  units = made_units();
  units[0].prohibited = units[1].prohibited = 1;
  EXPECT_THAT(told(units), IsEmpty()) << "keys may be locked for a while";
}

TEST(UnitChecks, AVobsTimesAreThoseOfItsUnits) {
  auto units = made_units();
  for (navigation_pack& p : units)
    p.vob_video_ends += 90'000 * 60;
  EXPECT_THAT(told(units),
              ElementsAre(StartsWith("(sector 70) it does not end when its VOB does")));
}

TEST(UnitChecks, AnglesGoOnAtUnits) {
  expect_each({{1, [](auto& p) { p.angles[2] = 85; },
                "sector 10: another angle is said to go on where no unit begins"},
               {1, [](auto& p) { p.seamless_angles[8] = 0x80000001U; },
                "sector 10: another angle is said to go on where no unit begins"},
               {1, [](auto& p) { p.angles[0] = 0x80000000U | 20; },
                "sector 10: another angle is said to go on where no unit begins"},
               {1,
                [](auto& p) {
                  p.interleaving = 0x4000;
                  p.piece_end = 8;
                },
                "sector 10: its interleaved piece ends before it does"}},
              made_units());
  EXPECT_THAT(told_of(1,
                      [](auto& p) {
                        p.angles = {20, 0x80000000U | 10, 0x7FFFFFFF, 0xFFFFFFFF};
                        p.interleaving = 0x6000;
                        p.piece_end = 9;
                      }),
              IsEmpty());
}

TEST(UnitChecks, SubpicturesGoOnAtUnitsOfTheVob) {
  expect_each({{1, [](auto& p) { p.subpictures[0] = 0x7FFFFFAA; },
                "sector 10: subpicture stream 1 is said to go on where no unit of its VOB begins"},
               {1, [](auto& p) { p.subpictures[31] = 11; }, "sector 10: subpicture stream 32"},
               {1, [](auto& p) { p.subpictures[0] = 0x80000000U | 11; }, "sector 10: subpicture"}},
              made_units());
  EXPECT_THAT(told_of(1,
                      [](auto& p) {
                        p.subpictures[0] = 0x80000000U | 10;
                        p.subpictures[1] = 50;
                        p.subpictures[2] = 0x3FFFFFFF;
                      }),
              IsEmpty());
}

TEST(UnitChecks, ButtonsCanBeUsed) {
  const std::vector<wrong_value> wrong = {
      {1, [](auto& p) { p.highlight.selection_ends = 8999; },
       "sector 10: its buttons go before they come, or act when they are gone"},
      {1, [](auto& p) { p.highlight.buttons_stated = 0; },
       "sector 10: it shows buttons, and has none"},
      {1, [](auto& p) { p.highlight.by_number = 3; }, "sector 10: more of its buttons have"},
      {1, [](auto& p) { p.highlight.forced_selection = 3; }, "sector 10: it selects a button"},
      {1, [](auto& p) { p.highlight.forced_action = 3; }, "sector 10: it selects a button"},
      {1, [](auto& p) { p.highlight.begins = 0x55000000; },
       "sector 10: its buttons come up behind the end of its cell"},
      {1, [](auto& p) { p.highlight.buttons[1].x1 = 199; },
       "sector 10: its buttons are not those that the unit before shows from the same time on"},
      {2, [](auto& p) { p.highlight.buttons[1].command.bytes[7] = 1; },
       "sector 20: its buttons are not those that the unit before shows from the same time on"},
      {3, [](auto& p) { p.highlight.status = 0; },
       "(sector 30) it has no buttons; by the next unit they are there already"},
      {5, [](auto& p) { p.highlight.status = 0; },
       "(sector 50) it has no buttons; all other units of its cell have"}};
  for (const wrong_value& one : wrong)
    EXPECT_THAT(told_of(one.index, one.make, made_menu()), Contains(StartsWith(one.text)))
        << one.text;
  EXPECT_THAT(told_of(
                  0, [](auto& p) { p.highlight.buttons[1].x1 = 725; }, made_menu()),
              ElementsAre(StartsWith("sector 0: a button lies outside"),
                          StartsWith("sector 10: its buttons are not")));
  EXPECT_THAT(told_of(
                  1, [](auto& p) { p.highlight.begins = 8999; }, made_menu()),
              ElementsAre(StartsWith("(sector 10) its buttons come and go at other times")));
  EXPECT_THAT(told_of(
                  1, [](auto& p) { p.highlight.forced_selection = 63; }, made_menu()),
              IsEmpty());
  EXPECT_THAT(told_of(
                  1, [](auto& p) { p.highlight.status = 2; }, made_menu()),
              IsEmpty());
}

TEST(UnitChecks, OneKindOfTroubleIsToldOnceForACell) {
  auto units = made_units();
  for (navigation_pack& p : units)
    p.next_video = p.previous_video = {1000, true};
  EXPECT_THAT(told(units),
              ElementsAre(AllOf(StartsWith("sector 0: the next unit with pictures"),
                                HasSubstr(", and so in 5 other units of its cell")),
                          AllOf(StartsWith("sector 60"), HasSubstr(" in 1 other unit of"))));
}

/// Whether a unit with wrong headers is told that comes behind so many others.
bool is_told_behind(std::size_t others) {
  unit_checks checks({});
  navigation_pack p = made_unit(0);
  point_in_cell(p, 0, 0);
  for (std::size_t i = 0; i < others; ++i)
    checks.add(p, p.sector);
  p.vob = 2;
  p.headers = {};
  checks.add(p, p.sector);
  const auto troubles = checks.judge();
  return std::ranges::any_of(troubles, [](const unit_trouble& one) { return one.vob == 2; });
}

TEST(UnitChecks, NoMoreUnitsAreLookedAtThanAnyDiscHas) {
  EXPECT_TRUE(is_told_behind(unit_checks::most_units - 1));
  EXPECT_FALSE(is_told_behind(unit_checks::most_units));
}

TEST(UnitChecks, TroublesHaveTheirPlace) {
  auto units = made_units();
  units[7].next_video = {12, true};
  unit_checks checks(made_addresses());
  for (const navigation_pack& p : units)
    checks.add(p, p.sector);
  const auto troubles = checks.judge();
  ASSERT_THAT(troubles, SizeIs(1));
  EXPECT_EQ(troubles[0].vob, 1);
  EXPECT_EQ(troubles[0].cell, 2);
  EXPECT_EQ(troubles[0].clocks, unit_clocks);
}

// Addresses of streams, held against the packs.

constexpr std::uint8_t video_id = 0xE0, ac3_id = 0x80, mp2_id = 0xC0, no_id = 0;

/// Two units of six sectors: a navigation pack, two of video, AC-3, MP2, video.
std::vector<std::string> told_of_streams(const std::function<void(disc_vobs&)>& make) {
  disc_vobs vobs;
  vobs.titleset = 1;
  vobs.sectors = 12;
  const std::vector<std::uint8_t> packs = {private_stream_2, video_id, video_id,         ac3_id,
                                           mp2_id,           video_id, private_stream_2, video_id,
                                           video_id,         ac3_id,   mp2_id,           no_id};
  for (std::uint32_t i = 0; i < 2; ++i) {
    disc_unit unit;
    unit.sector = i * 6;
    unit.last_sector = i * 6 + 5;
    unit.begins = i * unit_clocks;
    unit.vob = unit.cell = 1;
    unit.audio = {3, 4};
    unit.reference_ends = {1, 2, 5};
    vobs.units.push_back(unit);
  }
  make(vobs);
  std::vector<std::string> lines;
  for (const unit_trouble& one : stream_address_troubles(vobs, packs)) {
    EXPECT_FALSE(one.harmless);
    EXPECT_EQ(one.titleset, 1);
    EXPECT_EQ(one.clocks, one.sector / 6 * unit_clocks);
    lines.push_back("sector " + std::to_string(one.sector) + ": " + one.what);
  }
  return lines;
}

TEST(StreamAddresses, RightOnesHaveNothing) {
  EXPECT_THAT(told_of_streams([](disc_vobs&) {}), IsEmpty());
  EXPECT_THAT(told_of_streams([](disc_vobs& v) {
                v.units[1].audio = {0x8003, 0x8002, 0};
              }),
              IsEmpty())
      << "before the unit";
  EXPECT_THAT(told_of_streams([](disc_vobs& v) {
                v.units[1].audio = {0x3FFF, 0xBFFF};
              }),
              IsEmpty())
      << "no more of it";
  EXPECT_THAT(told_of_streams([](disc_vobs& v) {
                v.units[1].audio = {5, 4};
              }),
              IsEmpty())
      << "a sector that could not be read";
}

TEST(StreamAddresses, SoundGoesOnAtAPackOfItsStream) {
  EXPECT_THAT(told_of_streams([](disc_vobs& v) { v.units[0].audio[0] = 2; }),
              ElementsAre("sector 0: sound stream 1 is said to go on at sector 2, which has no "
                          "sound"));
  EXPECT_THAT(told_of_streams([](disc_vobs& v) { v.units[1].audio[1] = 3; }),
              ElementsAre("sector 6: sound stream 2 is said to go on at sector 9, which has sound "
                          "of another stream"));
  EXPECT_THAT(told_of_streams([](disc_vobs& v) { v.units[1].audio[2] = 3; }),
              ElementsAre("sector 6: sound stream 3 is said to go on at sector 9, which has sound "
                          "of another stream"));
  EXPECT_THAT(told_of_streams([](disc_vobs& v) {
                v.units[0].audio[0] = 9;
                v.units[1].audio[0] = 0x8003;
              }),
              ElementsAre("sector 6: sound stream 1 is said to go on at sector 3, which an earlier "
                          "unit is behind already"));
  EXPECT_THAT(told_of_streams([](disc_vobs& v) { v.units[1].audio[7] = 60; }),
              ElementsAre("sector 6: sound stream 8 is said to go on outside the VOBs"));
  EXPECT_THAT(told_of_streams([](disc_vobs& v) { v.units[0].audio[0] = 0x8001; }),
              ElementsAre("sector 0: sound stream 1 is said to go on outside the VOBs"));
}

TEST(StreamAddresses, PicturesEndInPacksOfVideo) {
  EXPECT_THAT(told_of_streams([](disc_vobs& v) { v.units[1].reference_ends[1] = 3; }),
              ElementsAre("sector 6: a picture is said to end at sector 9, which has none"));
}

TEST(PackHeaders, TheStreamOfASectorIsThatOfItsFirstPacket) {
  using examine_test::pack_maker;
  const auto stream = [](const pack_maker& made) {
    const std::vector<std::uint8_t> bytes(made.bytes.begin(), made.bytes.end());
    return int{stream_of_sector(bytes)};
  };
  EXPECT_EQ(stream(pack_maker().pack(0).packet(video_id, "picture").fill()), video_id);
  EXPECT_EQ(stream(pack_maker().pack(0).packet(mp2_id, "sound", 900).fill()), mp2_id);
  EXPECT_EQ(stream(pack_maker().pack(0).ac3("sound", 900, 3).fill()), 0x83);
  EXPECT_EQ(stream(pack_maker().pack(0).subpicture("text", 900, 2).fill()), 0x22);
  EXPECT_EQ(stream(pack_maker().pack(0).system_header().packet(video_id, "picture").fill()),
            video_id);
  EXPECT_EQ(stream(pack_maker().pack(0).fill()), padding_stream);
  EXPECT_EQ(stream(pack_maker(false).pack(0).packet(video_id, "picture").fill()), 0) << "MPEG-1";
  EXPECT_EQ(stream(pack_maker().packet(video_id, "picture").fill()), 0) << "no pack";
  EXPECT_EQ(stream(pack_maker().pack(0).packet(video_id, "picture")), 0) << "too short";
}

TEST(PackHeaders, LengthsThatLeadOutOfASectorGiveNoStream) {
  std::vector<std::uint8_t> sector(disc_pack_size);
  const auto put = [&](std::size_t at, std::initializer_list<std::uint8_t> bytes) {
    std::copy(bytes.begin(), bytes.end(), sector.begin() + static_cast<std::ptrdiff_t>(at));
  };
  put(0, {0, 0, 1, 0xBA, 0x44});
  put(14, {0, 0, 1, 0xBB, 0xFF, 0xFF});
  EXPECT_EQ(stream_of_sector(sector), 0);
  put(18, {0x07, 0xE4});  // the next packet's header would begin in the last 7 bytes
  EXPECT_EQ(stream_of_sector(sector), 0);
  put(18, {0x07, 0xD3});
  put(14 + 6 + 0x07D3, {0, 0, 1, private_stream_1, 0, 0, 0, 0, 0xFF});
  EXPECT_EQ(stream_of_sector(sector), 0);
}

}  // namespace
}  // namespace corvane
