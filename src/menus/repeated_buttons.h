// "Repeat": a button again and again in a row, a column or a grid, with the next title or chapter
// each. Pure arithmetic.
#pragma once

#include "menus/menu_geometry.h"

#include <string>
#include <vector>

namespace corvane {

enum class action_count {
  same,      ///< all do the same
  titles,    ///< the next title each
  chapters,  ///< the next chapter each, and behind a title's last one the next title's first
};

struct repetition {
  int across = 1, down = 1;          ///< how many, the first one counted
  int gap_across = 0, gap_down = 0;  ///< between them, in menu pixels
  action_count actions = action_count::chapters;
};

/// Where they stand, the first one included, by rows; those that would reach out of the picture are
/// left out. Where the first stands on even lines all do: the way down is made even.
std::vector<menu_rectangle> repeated_places(const menu_rectangle& first, const repetition& how,
                                            int ymax);

/// What they do, the first one included: at most `count`, fewer when there are no more titles or
/// chapters. `chapters`: of each title. An action that names no title is repeated as it is.
std::vector<std::string> repeated_actions(const std::string& first, action_count how,
                                          const std::vector<int>& chapters, std::size_t count);

/// What is most likely wanted of a button that does this: of one that begins a title, and names no
/// chapter or the only one, the titles; else the chapters.
action_count usual_count(const std::string& first, const std::vector<int>& chapters);

}  // namespace corvane
