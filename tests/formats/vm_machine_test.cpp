// Navigation commands done: registers, conditions, arithmetic, and where they lead.
#include "formats/vm_machine.h"

#include "support/made_command.h"

#include <gtest/gtest.h>

#include <vector>

namespace corvane {
namespace {

using testing_support::made_command;

/// g<target> op= value; 1 is "=".
vm_command set(int op, int target, int value) {
  return made_command({0x70 | op, 0, 0, target, value >> 8, value & 255, 0, 0});
}
vm_command set_from(int op, int target, int source) {
  return made_command({0x60 | op, 0, 0, target, 0, source, 0, 0});
}
const vm_command exit_command = made_command({0x30, 0x01, 0, 0, 0, 0, 0, 0});
vm_command jump_title(int title) {
  return made_command({0x30, 0x02, 0, 0, 0, title, 0, 0});
}
vm_command link_if_equal(int general, int value, int chain) {
  return made_command({0x20, 0xA4, 0, general, value >> 8, value & 255, 0, chain});
}

using place = vm_target::place;

TEST(VmMachine, ListThatLeadsNowhereEnds) {
  vm_registers registers;
  EXPECT_FALSE(run_commands({}, registers).to);
  const std::vector<vm_command> nothing = {made_command({0, 0, 0, 0, 0, 0, 0, 0}), set(1, 3, 9)};
  EXPECT_FALSE(run_commands(nothing, registers).to);
  EXPECT_EQ(registers.general[3], 9);
}

TEST(VmMachine, FirstCommandWhoseConditionHoldsLeads) {
  const std::vector<vm_command> table = {set(1, 1, 3), link_if_equal(1, 2, 2),
                                         link_if_equal(1, 3, 3), exit_command};
  vm_registers registers;
  const auto to = run_commands(table, registers).to;
  ASSERT_TRUE(to);
  EXPECT_EQ(to->where, place::chain);
  EXPECT_EQ(to->chain, 3);
  EXPECT_FALSE(to->conditional);
}

TEST(VmMachine, CommandThatSetsAndLinksDoesBoth) {
  vm_registers registers;
  const std::vector<vm_command> one = {made_command({0x71, 0x04, 0, 1, 0, 3, 0, 3})};
  const auto to = run_commands(one, registers).to;
  ASSERT_TRUE(to);
  EXPECT_EQ(to->chain, 3);
  EXPECT_EQ(registers.general[1], 3);
}

TEST(VmMachine, ArithmeticEndsAtTheBoundsOfARegister) {
  struct {
    int op, value, before, after;
  } const cases[] = {{1, 7, 5, 7},         {3, 7, 5, 12}, {3, 1, 65535, 65535}, {4, 7, 5, 0},
                     {5, 300, 300, 65535}, {6, 2, 5, 2},  {6, 0, 5, 65535},     {7, 3, 5, 2},
                     {7, 0, 5, 65535},     {8, 9, 5, 1},  {9, 6, 5, 4},         {10, 6, 5, 7},
                     {11, 6, 5, 3}};
  for (const auto& c : cases) {
    vm_registers registers;
    registers.general[2] = static_cast<std::uint16_t>(c.before);
    const std::vector<vm_command> one = {set(c.op, 2, c.value)};
    EXPECT_FALSE(run_commands(one, registers).to);
    EXPECT_EQ(registers.general[2], c.after) << c.op << " " << c.value;
  }
}

TEST(VmMachine, ExchangeTakesBothWays) {
  vm_registers registers;
  registers.general[2] = 20;
  registers.general[4] = 40;
  const std::vector<vm_command> one = {set_from(2, 2, 4)};
  run_commands(one, registers);
  EXPECT_EQ(registers.general[2], 40);
  EXPECT_EQ(registers.general[4], 20);
}

TEST(VmMachine, ComparisonsCompare) {
  const bool holds[8][3] = {{true, true, true},  {true, true, true},  {false, true, false},
                            {true, false, true}, {false, true, true}, {false, false, true},
                            {true, true, false}, {true, false, false}};
  for (int op = 1; op < 8; ++op)
    for (int i = 0; i < 3; ++i) {
      vm_registers registers;
      registers.general[1] = static_cast<std::uint16_t>(5 + i);  // against 6
      const std::vector<vm_command> one = {made_command({0x20, 0x84 | op << 4, 0, 1, 0, 6, 0, 2})};
      const bool both = ((5 + i) & 6) != 0;
      EXPECT_EQ(run_commands(one, registers).to.has_value(), op == 1 ? both : holds[op][i])
          << op << " " << 5 + i;
    }
}

TEST(VmMachine, GotoAndBreakStayWithinTheList) {
  const auto go_to = [](int line) { return made_command({0, 0x01, 0, 0, 0, 0, 0, line}); };
  vm_registers registers;
  const std::vector<vm_command> over = {go_to(3), exit_command, jump_title(2)};
  const auto to = run_commands(over, registers).to;
  ASSERT_TRUE(to);
  EXPECT_EQ(to->where, place::title);
  const std::vector<vm_command> broken = {made_command({0, 0x02, 0, 0, 0, 0, 0, 0}), exit_command};
  EXPECT_FALSE(run_commands(broken, registers).to);
  const std::vector<vm_command> beyond = {go_to(9), exit_command};
  EXPECT_FALSE(run_commands(beyond, registers).to);
}

TEST(VmMachine, ListThatNeverEndsIsLeft) {
  vm_registers registers;
  const std::vector<vm_command> endless = {made_command({0, 0x01, 0, 0, 0, 0, 0, 1})};
  const vm_end end = run_commands(endless, registers);
  EXPECT_FALSE(end.to);
  EXPECT_TRUE(end.endless);
  EXPECT_EQ(end.steps, 10'000);
  EXPECT_FALSE(run_commands({}, registers).endless);
}

TEST(VmMachine, WhatIsNotKnownIsGuessed) {
  const auto guessed = [](const std::vector<vm_command>& commands) {
    vm_registers registers;
    registers.known = 1U << 1;
    run_commands(commands, registers);
    return registers.guessed;
  };
  EXPECT_FALSE(guessed({link_if_equal(1, 5, 3)}));
  EXPECT_TRUE(guessed({link_if_equal(2, 5, 3)}));
  EXPECT_FALSE(guessed({set(1, 2, 9), link_if_equal(2, 9, 3)})) << "it is set before";
  EXPECT_TRUE(guessed({set(3, 2, 9)})) << "it is added to";
  EXPECT_TRUE(guessed({set_from(1, 3, 2)}));
  EXPECT_FALSE(guessed({set_from(1, 3, 1), link_if_equal(3, 0, 3)}));
  EXPECT_TRUE(guessed({set(8, 1, 6)})) << "a random number";
  EXPECT_TRUE(guessed({set_from(1, 3, 0x81)})) << "the audio stream";
  EXPECT_FALSE(guessed({set_from(1, 3, 0x88)})) << "the button";
  EXPECT_FALSE(guessed({jump_title(1)}));
}

TEST(VmMachine, ButtonIsSetAndRead) {
  vm_registers registers;
  const std::vector<vm_command> commands = {
      made_command({0x56, 0, 0, 0, 3 << 2, 0, 0, 0}),  // button = 3
      made_command({0x61, 0, 0, 5, 0, 0x88, 0, 0})};   // g5 = s8
  EXPECT_FALSE(run_commands(commands, registers).to);
  EXPECT_EQ(registers.system[8], 3 << 10);
  EXPECT_EQ(registers.general[5], 3 << 10);
}

}  // namespace
}  // namespace corvane
