// Navigation commands read as dvdauthor reads them: whether it can, and where they lead.
//
// disc/disc_command.h knows the commands that the editors offer. Typed ones may be whole programs
// ("if (g2 == 1) jump menu 2; else exit;"); dvdauthor looks at them when everything has been
// multiplexed, so they are read here first.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// One jump or call of a command.
struct command_lead {
  enum class place {
    title,
    menu,        ///< by its number
    menu_entry,  ///< "menu", "menu entry root": the one that a player's key leads to
    first_play,
    chapter,  ///< of the title that the command belongs to
    within,   ///< another cell, program or program chain of the same titleset
    nowhere,  ///< names no place: dvdauthor refuses it
  };

  bool is_call = false;  ///< else a jump
  place to = place::nowhere;
  bool of_disc = false;         ///< "vmgm": a menu or title of the whole disc
  std::optional<int> titleset;  ///< named in the command, 1-based; not set: its own
  int number = 0;               ///< of the title or menu, 1-based
  std::string entry;            ///< "root", "ptt", ...; empty: none named
  std::optional<int> chapter;   ///< 1-based
  bool operator==(const command_lead&) const = default;
};

/// Where the text names a menu of a titleset by its number.
struct menu_number {
  std::size_t at = 0, length = 0;  ///< of the digits, in bytes
  int number = 0;                  ///< 1-based
  std::optional<int> titleset;     ///< named before it; not set: its own
};

struct command_reading {
  std::optional<std::string> fault;  ///< why dvdauthor cannot read it, as a clause
  std::vector<command_lead> leads;   ///< in the order of the text
  std::vector<menu_number> menus;    ///< likewise
  bool ends = false;                 ///< holds "exit": the disc stops
  bool resumes = false;              ///< holds "resume": back into the title
  bool falls_through = true;         ///< may come to its end without leading anywhere
};

/// Reads commands, each with its ";" ("jump title 1;"). Any text, in time that grows with its
/// length; one whose brackets are nested more than a hundred deep has a fault.
command_reading read_commands(std::string_view text);

}  // namespace corvane
