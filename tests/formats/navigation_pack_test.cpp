// Navigation packs, made by hand.
#include "formats/navigation_pack.h"

#include "made_disc.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using namespace testing_support;

constexpr std::size_t pci = 0x2D, highlight_at = pci + 96, dsi = 0x407;

TEST(NavigationPack, TimesAndPlacesAreRead) {
  const auto pack = read_navigation_pack(made_navigation_pack().bytes);
  ASSERT_TRUE(pack) << pack.error;
  EXPECT_EQ(texts(pack->troubles), "");
  EXPECT_EQ(pack->sector, 40u);
  EXPECT_EQ(pack->begins, 90000u);
  EXPECT_EQ(pack->ends, 135000u);
  EXPECT_EQ(pack->elapsed, (playback_time{0, 0, 5, 12, 30, true}));
  EXPECT_EQ(pack->search_clock, 89000u);
  EXPECT_EQ(pack->search_sector, 40u);
  EXPECT_EQ(pack->unit_end, 29u);
  EXPECT_THAT(pack->reference_ends, ElementsAre(11, 15, 19));
  EXPECT_EQ(pack->vob, 1);
  EXPECT_EQ(pack->cell, 2);
  EXPECT_EQ(pack->vob_video_begins, 45000u);
  EXPECT_EQ(pack->vob_video_ends, 450000u);
  EXPECT_TRUE(pack->next.there);
  EXPECT_EQ(pack->next.distance, 30u);
  EXPECT_EQ(pack->previous.distance, 20u);
  EXPECT_EQ(pack->next_video.distance, 30u);
  EXPECT_FALSE(pack->previous_video.there);
  EXPECT_EQ(pack->audio[0], 4);
  EXPECT_EQ(pack->subpictures[0], 0x80000007u);
  EXPECT_EQ(pack->clock, 300u);
}

TEST(NavigationPack, HeadersAnglesPiecesAndPausesAreRead) {
  made_bytes made = made_navigation_pack();
  made.u8(0x25, 0x77);
  made.u32(pci + 60 + 4 * 8, 0x80000011);
  made.u16(dsi + 32, 0x6000);
  made.u32(dsi + 34, 99);
  made.u8(dsi + 52 + 127, 5);
  made.u32(dsi + 180 + 6 * 8, 0x12);
  const auto pack = read_navigation_pack(made.bytes);
  ASSERT_TRUE(pack) << pack.error;
  EXPECT_EQ(pack->headers[3], 0xBA);
  EXPECT_EQ(pack->headers.back(), 0x77);
  EXPECT_THAT(pack->angles, ElementsAre(0, 0, 0, 0, 0, 0, 0, 0, 0x80000011));
  EXPECT_EQ(pack->interleaving, 0x6000);
  EXPECT_EQ(pack->piece_end, 99u);
  EXPECT_EQ(pack->sound_gaps.back(), 5);
  EXPECT_THAT(pack->seamless_angles, ElementsAre(0, 0, 0, 0, 0, 0, 0, 0, 0x12));
}

TEST(NavigationPack, ButtonsAreRead) {
  const auto pack = read_navigation_pack(made_navigation_pack().bytes);
  ASSERT_TRUE(pack) << pack.error;
  const highlight_information& highlight = pack->highlight;
  EXPECT_EQ(highlight.status, 1);
  EXPECT_EQ(highlight.begins, 90000u);
  EXPECT_EQ(highlight.ends, 0xFFFFFFFFu);
  EXPECT_EQ(highlight.groups, 1);
  EXPECT_THAT(highlight.group_displays, ElementsAre(1, 0, 0));
  EXPECT_EQ(highlight.buttons_stated, 3);
  EXPECT_EQ(highlight.by_number, 3);
  EXPECT_EQ(highlight.forced_selection, 2);
  EXPECT_EQ(highlight.colours[0][0], 0x32100FF0u);
  EXPECT_EQ(highlight.colours[2][1], 0x32100FF5u);
  ASSERT_THAT(highlight.buttons, SizeIs(3));
  const menu_button first{2, 100, 52, 250, 79, true, 3, 2, 1, 1, {{0x30, 2, 0, 0, 0, 5, 0, 0}}},
      second{1, 700, 560, 719, 575, false, 1, 3, 2, 2, {}};
  EXPECT_EQ(highlight.buttons[0], first);
  EXPECT_EQ(highlight.buttons[0].command.text(), "JumpTT 5");
  EXPECT_EQ(highlight.buttons[1], second);
}

TEST(NavigationPack, GroupsHaveTheirButtonsInPartsOfTheTable) {
  made_bytes pack = made_navigation_pack();
  pack.u16(highlight_at + 14, 0x2000);
  const std::size_t buttons = highlight_at + 46;
  for (std::size_t i = 0; i < 3 * 18; ++i)
    pack.u8(buttons + 18 * 18 + i, pack.bytes[buttons + i]);
  pack.u8(buttons + 18 * 18, 0xC0);
  const auto read = read_navigation_pack(pack.bytes);
  ASSERT_TRUE(read);
  ASSERT_THAT(read->highlight.buttons, SizeIs(6));
  EXPECT_EQ(read->highlight.buttons[3].colours, 3);
  EXPECT_EQ(read->highlight.buttons[3].command, read->highlight.buttons[0].command);
  EXPECT_EQ(texts(read->troubles), "");
}

TEST(NavigationPack, UnitWithoutAHighlightHasNoButtons) {
  made_bytes pack = made_navigation_pack();
  pack.u16(highlight_at, 0);
  const auto read = read_navigation_pack(pack.bytes);
  ASSERT_TRUE(read);
  EXPECT_THAT(read->highlight.buttons, IsEmpty());
  EXPECT_EQ(texts(read->troubles), "");
}

TEST(NavigationPack, WhatCannotBeIsTold) {
  const struct {
    std::size_t at;
    unsigned value;
    const char* text;
  } damages[] = {{pci + 13, 9, "PCI at byte 57 has a unit that ends before it begins"},
                 {pci + 26, 0x0A, "PCI at byte 69 has a time that is none"},
                 {dsi + 30, 0x60, "DSI at byte 1059 has a time that is none"},
                 {dsi + 7, 41, "DSI at byte 1035 says that this is sector 41, PCI 40"},
                 {highlight_at + 14, 0, "HLI at byte 155 has buttons but no group of them"},
                 {highlight_at + 17, 37, "HLI at byte 158 states 37 buttons; there can be 36"},
                 {highlight_at + 46 + 2, 90, "HLI at byte 187 has a button 1 that ends before"},
                 {highlight_at + 46 + 6, 4, "a button 1 that leads to button 4 of 3"},
                 {highlight_at + 64 + 9, 0, "a button 2 that leads to button 0 of 3"}};
  for (const auto& d : damages) {
    made_bytes pack = made_navigation_pack();
    pack.u8(d.at, d.value);
    const auto read = read_navigation_pack(pack.bytes);
    ASSERT_TRUE(read);
    EXPECT_THAT(texts(read->troubles), HasSubstr(d.text)) << d.at;
  }
}

TEST(NavigationPack, OtherPacksAreNone) {
  const made_bytes whole = made_navigation_pack();
  for (const std::size_t at : {0x03U, 0x26U, 0x2CU, 0x400U, 0x405U, 0x406U}) {
    made_bytes pack = whole;
    pack.u8(at, 0x77);
    EXPECT_FALSE(is_navigation_pack(pack.bytes)) << at;
    EXPECT_EQ(read_navigation_pack(pack.bytes).error, "not a navigation pack");
  }
  for (const std::size_t size : {0U, 1U, 0x27U, 0x401U, 2047U})
    EXPECT_FALSE(read_navigation_pack(std::span(whole.bytes).first(size))) << size;
}

}  // namespace
}  // namespace corvane
