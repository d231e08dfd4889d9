// The navigation commands of a DVD's virtual machine: as text, and where they lead.
//
// A command is eight bytes in program chains (pre, post, cell commands) and in buttons. Its three
// highest bits are its kind: 0 control flow, 1 link or jump, 2 set a system register, 3 set a
// general register, 4 to 6 set and link with a comparison in different places. Bits are counted
// from 63 (the highest bit of the first byte) to 0. No pattern fails: one that is no command is
// told as its bytes and leads nowhere.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace corvane {

using vm_bytes = std::array<std::uint8_t, 8>;

/// What the command does: "JumpVTS_TT 2", "g1 = 3, LinkPGCN 3", "if (g1 == 2) LinkPGCN 2", "Exit",
/// "CallSS VTSM root menu, resume at cell 1", "Nop". A pattern that is no command is
/// "unknown" and the bytes.
std::string decoded(const vm_bytes& bytes);

/// "71 00 00 01 00 00 00 00".
std::string hex(const vm_bytes& bytes);

/// Menus that a player's keys, jumps and calls name; values as on the disc.
enum class menu_kind : std::uint8_t {
  none = 0,
  title = 2,
  root = 3,
  subpicture = 4,
  audio = 5,
  angle = 6,
  chapter = 7
};

/// Where a command leads. All numbers are 1-based as on the disc; 0: does not apply.
struct vm_target {
  enum class place : std::uint8_t {
    nowhere,         ///< the next command is done
    exit,            ///< the player stops
    title,           ///< JumpTT: `title` of the disc
    titleset_title,  ///< JumpVTS_TT: `title` of the same titleset
    chapter,         ///< JumpVTS_PTT: `chapter` of `title` of the same titleset
    first_play,      ///< the first-play chain
    manager_menu,    ///< menu `menu` of the video manager
    manager_chain,   ///< menu chain number `chain` of the video manager
    titleset_menu,   ///< menu `menu` of `titleset` (0: the same) for `title`
    chain,           ///< LinkPGCN: `chain` of the same table
    linked_chapter,  ///< LinkPTTN: `chapter` of the title that plays
    program,         ///< LinkPGN: `program` of the chain that plays
    cell,            ///< LinkCN: `cell` of the chain that plays
    within,          ///< `link` 1 to 13: top of cell, next cell, ..., tail of chain
    resume           ///< where the title was left
  };
  place where = place::nowhere;
  int titleset = 0, title = 0, chapter = 0, chain = 0, program = 0, cell = 0, link = 0;
  menu_kind menu = menu_kind::none;
  bool call = false;         ///< CallSS: "resume" comes back
  int resume_cell = 0;       ///< of a call: the cell to come back to; 0: the one that played
  int button = 0;            ///< of a link: the button that is selected there; 0: none is named
  bool conditional = false;  ///< leads there only when a comparison holds

  bool operator==(const vm_target&) const = default;
};

/// Where the command leads: nowhere for one that only sets registers, is no command, or goes on
/// within its list (Goto, Break).
vm_target target_of(const vm_bytes& bytes);

struct vm_command {
  vm_bytes bytes{};
  std::string text() const { return decoded(bytes); }
  vm_target target() const { return target_of(bytes); }

  bool operator==(const vm_command&) const = default;
};

}  // namespace corvane
