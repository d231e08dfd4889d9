// The pages that the program's designs give for discs of all kinds, for tests that measure them and
// for people who look at them.
#pragma once

#include "disc/disc_description.h"
#include "drawing/fitted_picture.h"
#include "menus/maker/menu_design.h"
#include "menus/maker/menu_plan.h"
#include "menus/maker/page_layout.h"
#include "menus/menu_overlay.h"

#include <memory>
#include <string>
#include <vector>

namespace corvane::drawing_test {

/// A disc to make menus of: "1", "7" and "40" titles, the "chapters" of one with 99, titles with
/// odd "names", which are very long, of Asia, or run from right to left.
struct disc_kind {
  std::string name;
  disc_description disc;
};
std::vector<disc_kind> kinds_of_discs();

/// A page of a disc's menus: "titles 1", "chapters 2".
struct designed_page {
  std::string name;
  planned_menu menu;
  laid_out_menu laid_out;
};

/// Of the menu of titles and the menu of one title's chapters the first two pages and the last one;
/// those between are like the second.
std::vector<designed_page> designed_pages(const menu_design& design, const page_form& form,
                                          const disc_description& disc,
                                          const text_measure& measure);

/// Button `number` (1-based, of the entries and then the ways) as the run draws it.
overlay_button shown_button(const menu_design& design, const designed_page& page, int number,
                            button_state state);

/// A landscape, as a film might show it: another one for each number.
std::shared_ptr<const shaped_picture> landscape(unsigned number);
/// The one of a film's picture.
std::shared_ptr<const shaped_picture> landscape_of(const std::string& file, double seconds);

}  // namespace corvane::drawing_test
