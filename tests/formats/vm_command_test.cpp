// Decoding of virtual machine commands: byte patterns as dvdauthor writes them for known sources
// (cross-checked with dvdunauthor), and patterns taken from the layout of the commands.
#include "formats/vm_command.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

struct pattern {
  vm_bytes bytes;
  const char* text;
};

void expect_all(const std::vector<pattern>& patterns) {
  for (const pattern& p : patterns)
    EXPECT_EQ(decoded(p.bytes), p.text) << hex(p.bytes);
}

TEST(VmCommand, JumpsBetweenTitlesAndOut) {
  expect_all({
      {{0x30, 0x01, 0, 0, 0, 0, 0, 0}, "Exit"},
      {{0x30, 0x02, 0, 0, 0, 0x05, 0, 0}, "JumpTT 5"},
      {{0x30, 0x03, 0, 0, 0, 0x01, 0, 0}, "JumpVTS_TT 1"},
      {{0x30, 0x05, 0, 0x02, 0, 0x01, 0, 0}, "JumpVTS_PTT 1:2"},
      {{0x30, 0x05, 0, 0x63, 0, 0x63, 0, 0}, "JumpVTS_PTT 99:99"},
  });
}

TEST(VmCommand, JumpsAndCallsToMenus) {
  expect_all({
      {{0x30, 0x06, 0, 0x01, 0x01, 0x83, 0, 0}, "JumpSS VTSM titleset 1, title 1, root menu"},
      {{0x30, 0x06, 0, 0, 0, 0x42, 0, 0}, "JumpSS VMGM title menu"},
      {{0x30, 0x06, 0, 0x03, 0, 0xc0, 0, 0}, "JumpSS VMGM PGC 3"},
      {{0x30, 0x06, 0, 0, 0, 0, 0, 0}, "JumpSS FP"},
      {{0x30, 0x08, 0, 0, 0x01, 0x87, 0, 0}, "CallSS VTSM chapter menu, resume at cell 1"},
      {{0x30, 0x08, 0, 0, 0, 0x83, 0, 0}, "CallSS VTSM root menu"},
      {{0x30, 0x08, 0, 0, 0x01, 0x42, 0, 0}, "CallSS VMGM title menu, resume at cell 1"},
  });
}

TEST(VmCommand, LinksWithinMenus) {
  expect_all({
      {{0x20, 0x04, 0, 0, 0, 0, 0, 0x01}, "LinkPGCN 1"},
      {{0x20, 0x01, 0, 0, 0, 0, 0, 0x0d}, "LinkTailPGC"},
      {{0x20, 0x01, 0, 0, 0, 0, 0x08, 0x01}, "LinkTopCell, button 2"},
      {{0x20, 0x01, 0, 0, 0, 0, 0, 0x10}, "RSM"},
      {{0x20, 0x05, 0, 0, 0, 0, 0, 0x03}, "LinkPTTN 3"},
      {{0x20, 0x06, 0, 0, 0, 0, 0, 0x04}, "LinkPGN 4"},
      {{0x20, 0x07, 0, 0, 0, 0, 0x04, 0x02}, "LinkCN 2, button 1"},
  });
}

TEST(VmCommand, ComparisonsBeforeLinks) {
  expect_all({
      {{0x20, 0xa4, 0, 0x01, 0, 0x02, 0, 0x02}, "if (g1 == 2) LinkPGCN 2"},
      {{0x20, 0xb4, 0, 0x0e, 0, 0x01, 0, 0x01}, "if (g14 != 1) LinkPGCN 1"},
      {{0x20, 0x44, 0, 0x01, 0, 0x02, 0, 0x07}, "if (g1 >= g2) LinkPGCN 7"},
      {{0x20, 0xf4, 0, 0x84, 0, 0x09, 0, 0x01}, "if (s4 < 9) LinkPGCN 1"},
      {{0x00, 0xa1, 0, 0x0e, 0, 0x01, 0, 0x05}, "if (g14 == 1) Goto 5"},
      {{0x30, 0x22, 0, 0, 0, 0x01, 0x03, 0x04}, "if (g3 == g4) JumpTT 1"},
  });
}

TEST(VmCommand, RegistersAreSet) {
  expect_all({
      {{0x71, 0, 0, 0x01, 0, 0x02, 0, 0}, "g1 = 2"},
      {{0x61, 0, 0, 0x0e, 0, 0x0f, 0, 0}, "g14 = g15"},
      {{0x61, 0, 0, 0x02, 0, 0x85, 0, 0}, "g2 = s5"},
      {{0x73, 0, 0, 0x03, 0x01, 0, 0, 0}, "g3 += 256"},
      {{0x78, 0, 0, 0x03, 0, 0x0a, 0, 0}, "g3 = random 10"},
      {{0x56, 0, 0, 0, 0x04, 0, 0, 0}, "button = 1"},
      {{0x51, 0, 0, 0x81, 0, 0, 0, 0}, "audio = 1"},
      {{0x51, 0, 0, 0x80, 0xc2, 0, 0, 0}, "audio = 0, subpicture = 66"},
  });
}

TEST(VmCommand, RegisterIsSetAndLinkTakenInOneCommand) {
  expect_all({
      {{0x71, 0x04, 0, 0x01, 0, 0x02, 0, 0x02}, "g1 = 2, LinkPGCN 2"},
      {{0x71, 0x01, 0, 0x0f, 0, 0x01, 0, 0x0d}, "g15 = 1, LinkTailPGC"},
      {{0x91, 0x01, 0, 0x05, 0, 0, 0, 0x01}, "g1 = 5; LinkTopCell"},
      {{0x91, 0xa1, 0, 0x05, 0, 0x07, 0, 0x02}, "g1 = 5; if (g1 == 7) LinkNextCell"},
      {{0xb1, 0x21, 0, 0x05, 0x02, 0x03, 0, 0x02}, "if (g2 == g3) { g1 = 5, LinkNextCell }"},
      {{0xd1, 0x21, 0, 0x05, 0x02, 0x03, 0, 0x02}, "if (g2 == g3) { g1 = 5 } LinkNextCell"},
  });
}

TEST(VmCommand, EmptyCommandDoesNothing) {
  expect_all({{{0, 0, 0, 0, 0, 0, 0, 0}, "Nop"}, {{0x20, 0x01, 0, 0, 0, 0, 0, 0}, "Nop"}});
}

TEST(VmCommand, PatternThatIsNoCommandIsShownAsBytes) {
  EXPECT_EQ(decoded({0xff, 0, 0, 0, 0, 0, 0, 0x01}), "unknown ff 00 00 00 00 00 00 01");
  EXPECT_EQ(decoded({0x30, 0x0f, 0, 0, 0, 0, 0, 0}), "unknown 30 0f 00 00 00 00 00 00");
  EXPECT_EQ(decoded({0x20, 0, 0, 0, 0, 0, 0, 0}), "unknown 20 00 00 00 00 00 00 00");
}

TEST(VmCommand, NoPatternIsTooOddToDecode) {
  for (unsigned high = 0; high < 256; ++high)
    for (unsigned second = 0; second < 256; second += 5)
      for (const std::uint8_t rest : vm_bytes{0x00, 0x5a, 0xff, 0x01, 0x80}) {
        const vm_bytes bytes{static_cast<std::uint8_t>(high),
                             static_cast<std::uint8_t>(second),
                             rest,
                             rest,
                             rest,
                             rest,
                             rest,
                             rest};
        ASSERT_FALSE(decoded(bytes).empty()) << hex(bytes);
      }
}

using place = vm_target::place;

vm_target leading_to(place where) {
  vm_target to;
  to.where = where;
  return to;
}

TEST(VmCommand, JumpsTellTheirTargets) {
  vm_target title = leading_to(place::title);
  title.title = 5;
  EXPECT_EQ(target_of({0x30, 0x02, 0, 0, 0, 0x05, 0, 0}), title);
  vm_target chapter = leading_to(place::chapter);
  chapter.title = 99;
  chapter.chapter = 99;
  EXPECT_EQ(target_of({0x30, 0x05, 0, 0x63, 0, 0x63, 0, 0}), chapter);
  vm_target same = leading_to(place::titleset_title);
  same.title = 1;
  EXPECT_EQ(target_of({0x30, 0x03, 0, 0, 0, 0x01, 0, 0}), same);
  EXPECT_EQ(target_of({0x30, 0x01, 0, 0, 0, 0, 0, 0}), leading_to(place::exit));
  same.conditional = true;
  EXPECT_EQ(target_of({0x30, 0x23, 0, 0, 0, 0x01, 0x03, 0x04}), same);
}

TEST(VmCommand, MenusTellTheirTargets) {
  vm_target menu = leading_to(place::titleset_menu);
  menu.titleset = 1;
  menu.title = 1;
  menu.menu = menu_kind::root;
  EXPECT_EQ(target_of({0x30, 0x06, 0, 0x01, 0x01, 0x83, 0, 0}), menu);
  vm_target call = leading_to(place::titleset_menu);
  call.menu = menu_kind::chapter;
  call.call = true;
  call.resume_cell = 1;
  EXPECT_EQ(target_of({0x30, 0x08, 0, 0, 0x01, 0x87, 0, 0}), call);
  vm_target chain = leading_to(place::manager_chain);
  chain.chain = 3;
  EXPECT_EQ(target_of({0x30, 0x06, 0, 0x03, 0, 0xc0, 0, 0}), chain);
  vm_target manager = leading_to(place::manager_menu);
  manager.menu = menu_kind::title;
  EXPECT_EQ(target_of({0x30, 0x06, 0, 0, 0, 0x42, 0, 0}), manager);
  EXPECT_EQ(target_of({0x30, 0x06, 0, 0, 0, 0, 0, 0}), leading_to(place::first_play));
}

TEST(VmCommand, LinksTellTheirTargets) {
  vm_target chain = leading_to(place::chain);
  chain.chain = 2;
  EXPECT_EQ(target_of({0x20, 0x04, 0, 0, 0, 0, 0, 0x02}), chain);
  EXPECT_EQ(target_of({0x71, 0x04, 0, 0x01, 0, 0x02, 0, 0x02}), chain) << "sets a register too";
  chain.conditional = true;
  EXPECT_EQ(target_of({0x20, 0xa4, 0, 0x01, 0, 0x02, 0, 0x02}), chain);
  vm_target tail = leading_to(place::within);
  tail.link = 13;
  EXPECT_EQ(target_of({0x20, 0x01, 0, 0, 0, 0, 0, 0x0d}), tail);
  vm_target top = leading_to(place::within);
  top.link = 1;
  top.button = 2;
  EXPECT_EQ(target_of({0x20, 0x01, 0, 0, 0, 0, 0x08, 0x01}), top);
  vm_target cell = leading_to(place::cell);
  cell.cell = 2;
  cell.button = 1;
  EXPECT_EQ(target_of({0x20, 0x07, 0, 0, 0, 0, 0x04, 0x02}), cell);
  vm_target next = leading_to(place::within);
  next.link = 2;
  EXPECT_EQ(target_of({0xd1, 0x21, 0, 0x05, 0x02, 0x03, 0, 0x02}), next) << "compares to set only";
  next.conditional = true;
  EXPECT_EQ(target_of({0xb1, 0x21, 0, 0x05, 0x02, 0x03, 0, 0x02}), next);
  EXPECT_EQ(target_of({0x20, 0x01, 0, 0, 0, 0, 0, 0x10}), leading_to(place::resume));
}

TEST(VmCommand, WhatSetsOrIsNoCommandLeadsNowhere) {
  for (const vm_bytes& bytes :
       {vm_bytes{0x71, 0, 0, 0x01, 0, 0x02, 0, 0}, vm_bytes{}, vm_bytes{0xff, 1, 2, 3, 4, 5, 6, 7},
        vm_bytes{0x00, 0xa1, 0, 0x0e, 0, 0x01, 0, 0x05}, vm_bytes{0x20, 0x01, 0, 0, 0, 0, 0, 0x04},
        vm_bytes{0x30, 0x0f, 0, 0, 0, 0x07, 0, 0}})
    EXPECT_EQ(target_of(bytes), vm_target()) << hex(bytes);
}

}  // namespace
}  // namespace corvane
