// What stands against a menu while it is edited: what "accept" would refuse, and what the rules of
// the check before a run say of this menu and its buttons.
#pragma once

#include "disc/finding.h"
#include "examine/menu_facts.h"
#include "project/project.h"

#include <span>
#include <string>
#include <vector>

namespace corvane {

/// The worst first; among equals in the order of the buttons. `p` is the project as it would be if
/// menu `menu` (1-based) was accepted now, `facts` what is known of the streams of its menus. Needs
/// no file; what no fact tells is left to the check. That nothing leads to the menu, or from
/// elsewhere, is none of its buttons' and is left to the check, too.
std::vector<finding> menu_problems(const project& p, int menu,
                                   std::span<const menu_facts> facts = {});

/// "button 3: the button's upper edge is 7 ...", with the rule's remedy behind it when `remedy`.
std::string problem_text(const finding& problem, bool remedy);

/// "2 errors, 1 note: button 3: ..." of the worst; "no problems" of none.
std::string problems_line(const std::vector<finding>& problems);

}  // namespace corvane
