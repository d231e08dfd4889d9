// Where on the outline of the selected button the pointer stands: what a drag from there would do.
#pragma once

#include <wx/cursor.h>
#include <wx/gdicmn.h>

#include <vector>

namespace corvane {

/// The edges that a drag takes along. All false with `moves` set: the whole button.
struct outline_grip {
  bool moves = false;
  bool left = false, top = false, right = false, bottom = false;

  bool sizes() const { return left || top || right || bottom; }
  bool holds() const { return moves || sizes(); }
  bool operator==(const outline_grip&) const = default;
};

/// The grip at `p` of an outline `shown`, both in pixels of the picture. `unit` is a pixel at 100 %
/// in pixels of the screen. An outline that may not be sized can still be moved. The grips of the
/// edges reach outside, so that a line three pixels high can be moved as well as sized.
outline_grip grip_at(const wxRect& shown, wxPoint p, bool may_size, int unit = 1);

/// Where a click picks a button that is not selected.
wxRect outline_near(const wxRect& shown, int unit = 1);

/// What the pointer looks like over a grip.
wxStockCursor cursor_of(const outline_grip& grip);

/// The middles of the handles to draw: at the corners, and between them where there is room. Those
/// of a thin button stand off, so that the button is seen between them.
std::vector<wxPoint> handles_of(const wxRect& shown, int unit = 1);

}  // namespace corvane
