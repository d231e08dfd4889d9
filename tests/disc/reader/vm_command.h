// The navigation commands of a DVD's virtual machine, as text.
//
// A command is eight bytes in program chains (pre, post, cell commands) and in buttons. Its three
// highest bits are its kind: 0 control flow, 1 link or jump, 2 set a system register, 3 set a
// general register, 4 to 6 set and link with a comparison in different places. Bits are counted
// from 63 (the highest bit of the first byte) to 0.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace corvane::disc {

using vm_bytes = std::array<std::uint8_t, 8>;

/// What the command does: "JumpVTS_TT 2", "g1 = 3, LinkPGCN 3", "if (g1 == 2) LinkPGCN 2", "Exit",
/// "CallSS VTSM root menu, resume at cell 1", "Nop". A pattern that is no command is
/// "unknown" and the bytes.
std::string decoded(const vm_bytes& bytes);

/// "71 00 00 01 00 00 00 00".
std::string hex(const vm_bytes& bytes);

struct vm_command {
  vm_bytes bytes{};
  std::string text() const { return decoded(bytes); }
};

}  // namespace corvane::disc
