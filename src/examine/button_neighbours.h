// Which button the arrow keys lead to: the neighbours that spumux gives a menu's buttons, since the
// menu's control file names none.
//
// Another button is above when it lies wholly above, else below, left or right in the same way; one
// that overlaps is none. Its angle is 0 straight up, 90 right, 180 down, 270 left; if the two do
// not stand over or beside each other, by what the gap between their nearest edges makes of that.
// For each key the button wins whose angle is nearest to the key's, then the one that is nearer;
// angles off by 90 degrees or more, and angles below 0 when seen from 270, do not count: of a
// button to the left and above only the upper key is led to. Without a winner the key stays.
#pragma once

#include <span>
#include <vector>

namespace corvane {

/// In pixels; x1 and y1 are the edges as the control file has them.
struct button_edges {
  int x0 = 0, y0 = 0, x1 = 0, y1 = 0;
};

/// Numbers of the buttons that the four keys lead to, 1-based; its own: the key stays.
struct button_neighbours {
  int up = 0, down = 0, left = 0, right = 0;
  bool operator==(const button_neighbours&) const = default;
};

/// Of all buttons of a menu; the time grows with the square of their number.
std::vector<button_neighbours> neighbours_of(std::span<const button_edges> buttons);

/// The buttons (1-based) that no arrow keys lead to from the first, which is the one that a menu
/// begins with.
std::vector<int> buttons_out_of_reach(std::span<const button_edges> buttons);

}  // namespace corvane
