// What dvdauthor stumbles over in a ready title, with packs, clocks and time stamps made for it.
#include "examine/ready_rules.h"

#include "made_facts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvane {
namespace {

using namespace examine_test;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint64_t packs_of_file = 1000;

class ReadyRules : public ::testing::Test {
 protected:
  ReadyRules() {
    p.whole = true;
    p.nav_packs = 48;
    p.first_nav_pack = 0;
    add(inner_kind::video, 0);
    add(inner_kind::ac3, 0);
    add(inner_kind::subpicture, 2);
  }

  void add(inner_kind kind, int number) {
    inner_stream one;
    one.kind = kind;
    one.number = number;
    p.streams.push_back(one);
  }

  // A break of the clock after 10 s; times in seconds of the clock.
  void break_clock(double before, double after) {
    const auto clocks = [](double seconds) {
      return static_cast<std::uint64_t>(seconds * clocks_a_second);
    };
    p.clock_breaks.add({500 * 2048, clocks(before), clocks(after), 10 * clocks_a_second});
  }

  static time_break stamps_break(double elapsed, stream_time before, stream_time after) {
    return {600 * 2048, before, after, static_cast<std::uint64_t>(elapsed * stamps_a_second)};
  }

  std::vector<finding> findings() const {
    return ready_findings(p, size, {finding_item::whole_kind::title, 1}, "a.vob");
  }
  std::vector<std::string> found() const {
    std::vector<std::string> texts;
    for (const finding& f : findings())
      texts.push_back(f.rule + " at " + place_text(f));
    return texts;
  }

  program_stream_facts p;
  std::uint64_t size = packs_of_file * 2048;
};

TEST_F(ReadyRules, CleanStreamHasNoFinding) {
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(ReadyRules, AClockThatBeginsAgainIsAWarning) {
  break_clock(10, 0);
  ASSERT_THAT(found(), ElementsAre("ready-clock at title 1, 00:00:10"));
  EXPECT_EQ(findings()[0].severity, finding_severity::warning);
}

TEST_F(ReadyRules, AClockThatGoesBackElsewhereIsRefused) {
  break_clock(10, 0.001);
  ASSERT_THAT(found(), ElementsAre("ready-clock-jump at title 1, 00:00:10"));
  EXPECT_EQ(findings()[0].severity, finding_severity::error);
  EXPECT_EQ(findings()[0].found, "the clock of the stream goes back here by 10 s");
  EXPECT_EQ(findings()[0].byte, 500u * 2048);
}

TEST_F(ReadyRules, AClockThatGoesBackByLessThanDvdauthorSeesIsNotRefused) {
  p.clock_breaks.add({0, 600 * 300 + 20, 600 * 300 + 10, 0});
  EXPECT_THAT(found(), ElementsAre("ready-clock at title 1, 00:00:00"));
}

TEST_F(ReadyRules, AClockThatGoesForwardStays) {
  break_clock(10, 12.5);
  ASSERT_THAT(found(), ElementsAre("ready-clock-jump at title 1, 00:00:10"));
  EXPECT_EQ(findings()[0].found, "the clock of the stream goes forward here by 2.5 s");
}

TEST_F(ReadyRules, BothKindsOfBreaksAreTold) {
  break_clock(10, 0);
  break_clock(5, 4);
  EXPECT_THAT(found(), ElementsAre("ready-clock-jump at title 1, 00:00:10",
                                   "ready-clock at title 1, 00:00:10"));
}

TEST_F(ReadyRules, TimeStampsThatBreakAreNamedByStream) {
  p.streams[0].breaks.add(stamps_break(12, 900'000, 1'080'000));
  p.streams[1].breaks.add(stamps_break(13, 900'000, 810'000));
  p.streams[1].breaks.add(stamps_break(14, 900'000, 810'000));
  p.streams[2].breaks.add(stamps_break(15, 900'000, 810'000));
  ASSERT_THAT(found(), ElementsAre("ready-times at title 1, video, 00:00:12",
                                   "ready-times at title 1, audio 1, 00:00:13",
                                   "ready-times at title 1, subtitle 3, 00:00:15"));
  EXPECT_EQ(findings()[0].found, "its times go forward here by 2 s");
  EXPECT_EQ(findings()[1].found, "its times go back here by 1 s; in all there are 2 breaks");
}

TEST_F(ReadyRules, TimeStampsThatBreakWithTheClockAreToldWithIt) {
  break_clock(10, 0);
  p.streams[0].breaks.add(stamps_break(9.5, 900'000, 0));
  p.streams[1].breaks.add(stamps_break(9, 900'000, 0));
  EXPECT_THAT(found(), ElementsAre("ready-clock at title 1, 00:00:10"));
  p.streams[1].breaks.add(stamps_break(20, 900'000, 0));
  EXPECT_THAT(found(), ElementsAre("ready-clock at title 1, 00:00:10",
                                   "ready-times at title 1, audio 1, 00:00:20"));
}

TEST_F(ReadyRules, TimesThatGoFurtherThanPicturesAndSoundTellOfShortGaps) {
  p.streams[0].video = ntsc_video();
  p.streams[0].length = static_cast<stream_time>(24.4 * stamps_a_second);
  p.streams[1].audio = sound(audio_kind::ac3);
  p.streams[1].length = static_cast<stream_time>(24.3 * stamps_a_second);
  EXPECT_THAT(found(), IsEmpty());
  p.streams[0].length += stamps_a_second / 10;
  p.streams[1].length += stamps_a_second / 5;
  ASSERT_THAT(found(),
              ElementsAre("ready-times at title 1, video", "ready-times at title 1, audio 1"));
  EXPECT_EQ(findings()[1].found, "its times cover 24.5 s, but there are only 24 s of it");
}

TEST_F(ReadyRules, BytesThatBelongToNoPack) {
  p.loose.add({3 * 2048, 100, false});
  p.uneven_packs.add(2 * 2048);
  size += 100;
  ASSERT_THAT(found(), ElementsAre("ready-bytes at title 1"));
  EXPECT_EQ(findings()[0].found, "100 bytes belong to no pack");
  EXPECT_EQ(findings()[0].byte, 3u * 2048);
}

TEST_F(ReadyRules, WhatStandsBeforeTheFirstNavPackIsLeftOut) {
  p.loose.add({0, 2048, false});
  p.first_nav_pack = 2048;
  ASSERT_THAT(found(), ElementsAre("ready-beginning at title 1, 00:00:00"));
  EXPECT_EQ(findings()[0].severity, finding_severity::warning);
  EXPECT_EQ(findings()[0].found, "2048 bytes stand before the first NAV pack");
}

TEST_F(ReadyRules, PacksThatFillNoSector) {
  p.uneven_packs.add(4 * 2048);
  p.uneven_packs.add(4 * 2048 + 1024);
  ASSERT_THAT(found(), ElementsAre("ready-packs at title 1"));
  EXPECT_EQ(findings()[0].byte, 4u * 2048);
}

TEST_F(ReadyRules, AFileThatEndsWithinAPack) {
  size += 700;
  p.uneven_packs.add(packs_of_file * 2048);
  ASSERT_THAT(found(), ElementsAre("ready-cut at title 1"));
  EXPECT_EQ(findings()[0].found, "the file ends with 700 bytes that are no whole pack");
  EXPECT_EQ(findings()[0].severity, finding_severity::error);
}

TEST_F(ReadyRules, AnEndCodeInTheMiddle) {
  p.middle_end_codes.add(5000);
  ASSERT_THAT(found(), ElementsAre("ready-end-code at title 1"));
  EXPECT_EQ(findings()[0].severity, finding_severity::warning);
}

TEST_F(ReadyRules, OfAStreamWithoutNavPacksNoPackIsJudged) {
  p.nav_packs = 0;
  p.first_nav_pack.reset();
  p.uneven_packs.add(0);
  size += 1;
  EXPECT_THAT(found(), ElementsAre("ready-without-nav-packs at title 1"));
}

TEST_F(ReadyRules, SoundsStandInTheOrderOfADisc) {
  p.streams.clear();
  add(inner_kind::mpeg_audio, 0);
  add(inner_kind::mpeg_audio, 9);
  add(inner_kind::ac3, 1);
  add(inner_kind::ac3, 0);
  add(inner_kind::dts, 0);
  add(inner_kind::lpcm, 0);
  std::vector<std::string> order;
  for (const inner_stream* const one : sounds_inside(p))
    order.push_back(std::to_string(one->number) + "/" +
                    std::to_string(static_cast<int>(one->kind)));
  const auto text = [](int number, inner_kind kind) {
    return std::to_string(number) + "/" + std::to_string(static_cast<int>(kind));
  };
  EXPECT_THAT(order, ElementsAre(text(0, inner_kind::ac3), text(0, inner_kind::mpeg_audio),
                                 text(0, inner_kind::lpcm), text(0, inner_kind::dts),
                                 text(1, inner_kind::ac3)));
}

}  // namespace
}  // namespace corvane
