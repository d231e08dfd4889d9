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
};

/// Does the commands of a list in their order, from the first one on. Returns where the player is
/// led, without a condition; nullopt if the list ends before, or is still at work after 10,000
/// commands. A random number is always 1.
std::optional<vm_target> run_commands(std::span<const vm_command> commands,
                                      vm_registers& registers);

}  // namespace corvane
