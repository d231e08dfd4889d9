#include "disc/command_reading.h"

#include "disc/menu_numbers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using place = command_lead::place;

TEST(CommandReading, EveryKindOfStatementIsRead) {
  for (const char* const text : {"jump title 1;",
                                 "jump title 1 chapter 65535;",
                                 "jump menu;",
                                 "jump menu entry ptt;",
                                 "jump titleset 2 menu;",
                                 "jump titleset 99 title 3 chapter 2;",
                                 "jump vmgm menu 3;",
                                 "jump vmgm fpc;",
                                 "jump chapter 3;",
                                 "jump pgc 2;",
                                 "jump program 4;",
                                 "jump cell 9;",
                                 "jump cell top;",
                                 "jump next cell;",
                                 "jump prev program;",
                                 "jump up pgc;",
                                 "jump pgc tail;",
                                 "call menu;",
                                 "call menu entry root resume 3;",
                                 "call vmgm menu 2;",
                                 "exit;",
                                 "resume;",
                                 "break;",
                                 "goto there; there:",
                                 "g0=1;",
                                 "g12 = g1 + 2 * s7;",
                                 "counter g3 = 4;",
                                 "audio=1; subtitle = 64; angle=2;",
                                 "button = 1k;",
                                 "g1 += 2; g1 -= 1; g1 |= 0x1F;",
                                 "g1 ^= 3;",
                                 "g2 = random(6);",
                                 "g1 = \"en\";",
                                 "{ exit; }",
                                 "if (g1 == 1) exit;",
                                 "if (g1 eq 1) exit; else { g1=0; resume; }",
                                 "if ((g1 >= 1) && !(g2 lt 3)) exit;",
                                 "if (not g1 == 2 or g2 != 3 and g3 > 4) exit;",
                                 "/* a note */ exit;",
                                 "g1 = (g2 & 3) | (g3 xor 4);",
                                 "if (g1 == 1 | 2) exit;",
                                 "if (g1 or g2 eq 3) exit;",
                                 "if (g1 == 2 or 5 and 3 == g2) exit;",
                                 "exit ; exit;",
                                 "\texit;\n"})
    EXPECT_FALSE(read_commands(text).fault) << text << ": " << *read_commands(text).fault;
}

TEST(CommandReading, WhatDvdauthorCannotReadHasAFault) {
  for (const char* const text : {"",
                                 " ",
                                 ";",
                                 "exit",
                                 "exit;;",
                                 "jump title1;",
                                 "jump title;",
                                 "jump title 100;",
                                 "jump title 0;",
                                 "Jump title 1;",
                                 "jump menu 1",
                                 "jump titleset menu;",
                                 "call menu 1 resume;",
                                 "g13=1;",
                                 "g1=65536;",
                                 "g1=64k;",
                                 "s24=1;",
                                 "{}",
                                 "{ exit;",
                                 "if g1==1 exit;",
                                 "if (g1) exit;",
                                 "if (g1==1)",
                                 "g1 = g2 == 3;",
                                 "g1 = 1 + ;",
                                 "g1 = (1;",
                                 "counter s1 = 2;",
                                 "counter g1 += 2;",
                                 "label",
                                 "goto 3;",
                                 "exit; /* never ends",
                                 "jump next;",
                                 "jump up cell;",
                                 "\"en\";",
                                 "exit; #",
                                 "jump title 1\r;",
                                 "if ((g1 == 1) & (g2 == 2)) exit;"})
    EXPECT_TRUE(read_commands(text).fault) << text;
}

TEST(CommandReading, LeadsAreToldInTheirOrder) {
  const command_reading r = read_commands(
      "if (g1 == 1) jump titleset 2 menu entry root; else { call menu 3; exit; } jump title 4 "
      "chapter 5;");
  ASSERT_FALSE(r.fault);
  ASSERT_THAT(r.leads, SizeIs(3));
  EXPECT_EQ(r.leads[0], (command_lead{false, place::menu_entry, false, 2, 0, "root", {}}));
  EXPECT_EQ(r.leads[1], (command_lead{true, place::menu, false, {}, 3, "", {}}));
  EXPECT_EQ(r.leads[2], (command_lead{false, place::title, false, {}, 4, "", 5}));
  EXPECT_TRUE(r.ends);
  EXPECT_FALSE(r.resumes);
}

TEST(CommandReading, JumpToNothingIsReadAndLeadsNowhere) {
  const command_reading r = read_commands("jump;");
  ASSERT_FALSE(r.fault);
  ASSERT_THAT(r.leads, SizeIs(1));
  EXPECT_EQ(r.leads[0].to, place::nowhere);
}

TEST(CommandReading, FaultSaysWhatIsThereAndWhatIsWanted) {
  EXPECT_EQ(*read_commands("jump title 1").fault, "has nothing where dvdauthor wants \";\"");
  EXPECT_EQ(*read_commands("jump title x;").fault, "has \"x\" where dvdauthor wants a number");
  EXPECT_THAT(*read_commands("jump title 200;").fault, HasSubstr("from 1 to 99"));
}

TEST(CommandReading, HostileTextsEnd) {
  EXPECT_TRUE(read_commands("g1=" + std::string(20'000, '(')).fault);
  EXPECT_TRUE(read_commands(std::string(20'000, '{')).fault);
  EXPECT_TRUE(read_commands("g1=" + std::string(20'000, '!')).fault);
  EXPECT_TRUE(read_commands("g1=" + std::string(20'000, '9') + ";").fault);
  EXPECT_TRUE(read_commands(std::string(20'000, '\0')).fault);
  std::string many = "g1=1";
  for (int i = 0; i < 10'000; ++i)
    many += "+1";
  EXPECT_FALSE(read_commands(many + ";").fault);
}

// Menus under other numbers ---------------------------------------------------------------------

std::string renumbered(const char* command) {
  return with_menu_numbers(command, [](int before) { return before + 10; });
}

TEST(MenuNumbers, EveryMenuThatACommandNamesGetsItsNumberOfNow) {
  EXPECT_EQ(renumbered("jump menu 3"), "jump menu 13");
  EXPECT_EQ(renumbered("  call   menu 03  "), "  call   menu 13  ");
  EXPECT_EQ(renumbered("call menu 1 resume 2"), "call menu 11 resume 2");
  EXPECT_EQ(renumbered("jump titleset 1 menu 2"), "jump titleset 1 menu 12");
  EXPECT_EQ(renumbered("if (g3 == 2) jump menu 2; else { jump menu 3; }"),
            "if (g3 == 2) jump menu 12; else { jump menu 13; }");
  EXPECT_EQ(renumbered("jump menu 0x2;"), "jump menu 12;");
}

TEST(MenuNumbers, WhatNamesNoMenuOfTheTitlesetStays) {
  for (const char* const command :
       {"", "exit", "jump title 3 chapter 2", "call menu", "call last menu", "jump titleset 1 menu",
        "jump titleset 2 menu 3", "jump vmgm menu 3", "jump menu entry root", "Jump Menu 3",
        "jump menu 100", "jump menu", "g1 = 3; exit", "<default>", "jump menu 3 and more"})
    EXPECT_EQ(renumbered(command), command);
}

TEST(MenuNumbers, TheRegisterOfTheJumpTableIsKnownByItsName) {
  EXPECT_TRUE(uses_menu_register("g1=3; call menu"));
  EXPECT_TRUE(uses_menu_register("if (g10 == g1) exit"));
  EXPECT_FALSE(uses_menu_register("g10 = 1; bag1 = 2; g11=1"));
  EXPECT_FALSE(uses_menu_register(""));
}

}  // namespace
}  // namespace corvane
