// The rows of a report that tell of the menus.
#pragma once

#include "report.h"

#include <optional>
#include <string>
#include <vector>

namespace corvane::disc {

/// What a player shows after a command of the project: "title 1 chapter 2", "menu 2", "stopped".
/// `menu` is the one whose button has the command, or from which the title was played that has it.
/// Nothing for commands that may lead anywhere, and for menus without buttons, which a player goes
/// through without a word.
std::optional<std::string> place_after(const std::string& command, int menu,
                                       const asked_disc& asked);

/// Rows of all menus, in the order of the disc. Commands are compared where the buttons have been
/// pressed (walk.h).
std::vector<report_row> menu_rows(const contents& on_disc, const asked_disc* asked);

}  // namespace corvane::disc
