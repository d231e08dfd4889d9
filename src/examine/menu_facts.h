// What of the menus' streams decides about their buttons: how long they are, and of which
// proportions the disc has the menus.
//
// Proportions stand once on a disc for all menus of a titleset. dvdauthor takes those that its XML
// states, else those of the first menu whose stream names any that it knows. A menu of 16:9 has its
// buttons several times, for each way in which displays show it, and all together have room for 36
// (dvdauthor 0.7.2, measured; it puts more of them one over the other and says nothing).
#pragma once

#include "disc/disc_description.h"
#include "examine/file_facts.h"

#include <optional>
#include <span>
#include <vector>

namespace corvane {

class fact_store;

inline constexpr int most_menu_buttons = 36;
/// Of a menu of 16:9: wide displays, and narrow ones by letterbox or by pan and scan.
inline constexpr int most_wide_buttons = most_menu_buttons / 3;

struct menu_facts {
  std::optional<double> seconds;  ///< how long the stream is; not set: not known
  std::optional<bool> is_wide;    ///< 16:9, else 4:3; not set: not known, or it names neither
};

/// From a file of a menu's video. `seconds` only of one that was read whole.
menu_facts menu_facts_of(const file_facts& file);

/// What the beginnings of the menus' files tell of their proportions, up to the first menu of all
/// that names any. Reads those that `store` does not know.
std::vector<menu_facts> facts_of_first_menus(const disc_description& d, fact_store& store);

/// How often the disc has each button of a menu of the titleset: 3 times in a menu of 16:9, else
/// once. `facts`: of each of `menus`, as far as they are known; when nothing tells, once.
int copies_of_buttons(const std::vector<disc_menu>& menus, int titleset,
                      std::span<const menu_facts> facts);

}  // namespace corvane
