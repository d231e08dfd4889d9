// What stands where on a menu that was planned, as a design has it: the picture of the page, and
// the places of its buttons.
#pragma once

#include "formats/drawn_page.h"
#include "menus/maker/menu_design.h"
#include "menus/maker/menu_plan.h"
#include "menus/maker/page_rows.h"
#include "menus/menu_geometry.h"
#include "platform/files/paths.h"

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace corvane {

/// Places that the user has given buttons, by `move_key`.
using menu_moves = std::map<std::string, menu_rectangle, std::less<>>;

/// What the button is whose place it is: an entry wherever it stands, a way of one page. `button`:
/// 0-based, of the entries and then the ways.
std::string move_key(const planned_menu& menu, std::size_t button);

struct laid_out_menu {
  drawn_page page;
  /// Of the entries, then of the ways: the edges that a button's record has. They do not overlap.
  std::vector<menu_rectangle> buttons;
  std::vector<std::string> notes;  ///< texts that were shortened, moves that were not kept
};

/// All is within the title-safe area and on even lines, but for what the user has moved. With an
/// entry its text and picture move along. A move after which buttons would overlap, or one would
/// leave the picture, is not kept and noted.
laid_out_menu lay_out(const menu_design& design, const planned_menu& menu, const page_form& form,
                      const text_measure& measure, const menu_moves& moves = {},
                      path_style style = native_style());

}  // namespace corvane
