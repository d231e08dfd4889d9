// Navigation commands made of their bytes.
#pragma once

#include "formats/vm_command.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace corvane::testing_support {

inline vm_command made_command(std::array<int, 8> bytes) {
  vm_command command;
  for (std::size_t i = 0; i < bytes.size(); ++i)
    command.bytes[i] = static_cast<std::uint8_t>(bytes[i]);
  return command;
}

}  // namespace corvane::testing_support
