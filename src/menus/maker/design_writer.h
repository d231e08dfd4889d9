// A design as a text again, and with its entries in another order.
#pragma once

#include "menus/maker/menu_design.h"

#include <string>

namespace corvane {

/// `read_design` (menus/maker/menu_design.h) gives the same design back; pictures have their full
/// paths.
std::string written_design(const menu_design& design);

/// The design with its entries arranged so, on as many rows and columns as look well. Of the
/// arrangement that it has already it is as it was.
menu_design arranged(menu_design design, menu_arrangement arrangement);

/// With so many columns and rows, or, where that is more than a page has room for, as many rows as
/// it has room for.
menu_design with_entries(menu_design design, int columns, int rows);

}  // namespace corvane
