// The navigation commands of a DVD's virtual machine, done: what they set, and where they lead.
#pragma once

#include "formats/vm_command.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>

namespace corvane {

struct vm_registers {
  std::array<std::uint16_t, 16> general{};
  /// Those that commands read and set: 1 audio, 2 subpicture and 3 angle stream, 8 the button that
  /// is highlighted, times 1024. Others keep what they hold.
  std::array<std::uint16_t, 24> system{};
  /// Bit n: general register n holds what it is said to hold; others are only taken to.
  std::uint16_t known = 0xFFFF;
  /// A register was read that is not known, a system register but 8, or a random number, which is
  /// always 1 here.
  bool guessed = false;
};

/// How a list of commands ended.
struct vm_end {
  std::optional<vm_target> to;  ///< where the player is led, without a condition; or the list ended
  bool endless = false;         ///< it is still at work after 10,000 commands
  int steps = 0;                ///< commands that were done
};

/// Does the commands of a list in their order, from the first one on.
vm_end run_commands(std::span<const vm_command> commands, vm_registers& registers);

}  // namespace corvane
