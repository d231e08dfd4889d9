// The bits of a navigation command, read by position. Used by its readers only.
#pragma once

#include "formats/vm_command.h"

#include <cstdint>

namespace corvane {

/// `(63, 3)` are the three highest.
class vm_bits {
 public:
  explicit vm_bits(const vm_bytes& bytes) {
    for (const std::uint8_t b : bytes)
      all_ = all_ << 8 | b;
  }
  unsigned operator()(unsigned highest, unsigned count) const {
    return static_cast<unsigned>(all_ >> (highest + 1 - count) & ((std::uint64_t{1} << count) - 1));
  }
  bool set(unsigned bit) const { return (all_ >> bit & 1) != 0; }

 private:
  std::uint64_t all_ = 0;
};

}  // namespace corvane
