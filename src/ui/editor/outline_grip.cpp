#include "ui/editor/outline_grip.h"

namespace corvane {
namespace {

constexpr int reach_outside = 7;
constexpr int reach_inside = 4;
constexpr int large_enough = 16;  ///< from here on the edges' grips reach inside too
constexpr int stand_off = 5;
constexpr int room_between = 28;

/// How far the grip of an edge reaches inside a button of that extent. A thin one gives up some of
/// the room outside, or it could not be moved.
int reach(int extent, int unit) {
  if (extent >= large_enough * unit)
    return reach_inside * unit;
  return extent >= large_enough / 2 * unit ? 0 : -2 * unit;
}

}  // namespace

outline_grip grip_at(const wxRect& shown, wxPoint p, bool may_size, int unit) {
  outline_grip grip;
  if (!may_size) {
    wxRect around = shown;
    grip.moves = around.Inflate(2 * unit).Contains(p);
    return grip;
  }
  wxRect around = shown;
  if (!around.Inflate(reach_outside * unit).Contains(p))
    return grip;
  const int x = reach(shown.width, unit);
  const int y = reach(shown.height, unit);
  grip.left = p.x < shown.GetLeft() + x;
  grip.right = p.x > shown.GetRight() - x;
  grip.top = p.y < shown.GetTop() + y;
  grip.bottom = p.y > shown.GetBottom() - y;
  grip.moves = !grip.sizes();
  return grip;
}

wxRect outline_near(const wxRect& shown, int unit) {
  wxRect around = shown;
  return around.Inflate(3 * unit);
}

wxStockCursor cursor_of(const outline_grip& grip) {
  if (!grip.holds())
    return wxCURSOR_ARROW;
  if (grip.moves)
    return wxCURSOR_SIZING;
  if ((grip.left && grip.top) || (grip.right && grip.bottom))
    return wxCURSOR_SIZENWSE;
  if ((grip.left && grip.bottom) || (grip.right && grip.top))
    return wxCURSOR_SIZENESW;
  return grip.left || grip.right ? wxCURSOR_SIZEWE : wxCURSOR_SIZENS;
}

std::vector<wxPoint> handles_of(const wxRect& shown, int unit) {
  wxRect place = shown;
  place.Inflate(shown.width < large_enough * unit ? stand_off * unit : 0,
                shown.height < large_enough * unit ? stand_off * unit : 0);
  const wxPoint middle(place.x + place.width / 2, place.y + place.height / 2);
  std::vector<wxPoint> handles = {place.GetTopLeft(), place.GetTopRight(), place.GetBottomRight(),
                                  place.GetBottomLeft()};
  if (place.width >= room_between * unit) {
    handles.emplace_back(middle.x, place.GetTop());
    handles.emplace_back(middle.x, place.GetBottom());
  }
  if (place.height >= room_between * unit) {
    handles.emplace_back(place.GetLeft(), middle.y);
    handles.emplace_back(place.GetRight(), middle.y);
  }
  return handles;
}

}  // namespace corvane
