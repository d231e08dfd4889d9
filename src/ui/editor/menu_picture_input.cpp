// The pointer and the keys on the picture of a menu.
#include "menus/menu_view.h"
#include "ui/editor/menu_drawing.h"
#include "ui/editor/menu_picture.h"

#include <wx/utils.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace corvane {
namespace {

constexpr int scroll_milliseconds = 30;
constexpr int near_the_edge = 8, most_scrolled = 40;  // pixels at 100 %

}  // namespace

outline_grip menu_picture::grip_under(wxPoint p) const {
  const std::optional<menu_rectangle> edges = editor_.outline();
  if (!edges)
    return {};
  return grip_at(shown_rectangle(scale().to_picture(*edges)), p, editor_.controls().sizes_enabled,
                 unit());
}

/// The faint button at `p`; lines of three pixels are met from a little way off.
int menu_picture::faint_under(wxPoint p) const {
  const menu_point at = scale().to_menu(p.x, p.y);
  const std::vector<faint_button> others = editor_.others();
  const int exact = editor_.button_at(at.x, at.y);
  const picture_scale to = scale();
  const auto met = std::find_if(others.rbegin(), others.rend(), [&](const faint_button& button) {
    return outline_near(shown_rectangle(to.to_picture(button.edges)), unit()).Contains(p);
  });
  return exact >= 0 || met == others.rend() ? exact : met->index;
}

/// The button that a click at `p` is about; -1: none. One that was just added lies over the one it
/// is a copy of, and is what the user means.
int menu_picture::button_under(wxPoint p) const {
  const menu_point at = scale().to_menu(p.x, p.y);
  const int chosen = editor_.controls().Combo2_index;
  for (const faint_button& button : editor_.others())
    if (button.index == chosen && button.edges.contains(at.x, at.y))
      return chosen;
  const std::optional<menu_rectangle> outlined = editor_.outline();
  if (outlined && grip_under(p).holds())
    return editor_.button_at(outlined->x0, outlined->y0);
  return faint_under(p);
}

bool menu_picture::is_outlined(int index) const {
  const std::vector<faint_button> others = editor_.others();
  return editor_.outline() &&
         std::none_of(others.begin(), others.end(),
                      [index](const faint_button& button) { return button.index == index; });
}

// A press on another button picks it, and the drag goes on with that one. With Ctrl or Shift it
// joins the others, or leaves them.
void menu_picture::on_down(wxMouseEvent& event) {
  SetFocus();
  const wxPoint p = event.GetPosition() + origin_;
  const int index = button_under(p);
  if (index < 0 || HasCapture())
    return;
  const bool more = event.ControlDown() || event.ShiftDown();
  pointing_ = true;
  if (more || index != editor_.controls().Combo2_index || !is_outlined(index))
    tell_([index, more](menu_editor& editor) { editor.press(index, more); });
  pointing_ = false;
  if (more)
    return;
  const outline_grip grip = grip_under(p);
  const std::optional<menu_rectangle> edges = editor_.outline();
  if (!grip.holds() || !edges)
    return;
  wishes_.stop();
  pointing_ = true;
  drag_ = drag{grip, scale().to_menu(p.x, p.y), *edges, {}, event.GetPosition()};
  tell_(&menu_editor::begin_drag);
  CaptureMouse();
}

void menu_picture::on_motion(wxMouseEvent& event) {
  if (drag_ && !event.LeftIsDown())
    end_drag();
  if (drag_) {
    drag_->last = event.GetPosition();
    drag_in_sight(event.GetPosition(), {event.ShiftDown(), event.ControlDown()});
    return;
  }
  const wxPoint p = event.GetPosition() + origin_;
  const outline_grip grip = grip_under(p);
  if (grip.holds()) {
    SetCursor(cursor_of(grip));
    return;
  }
  SetCursor(faint_under(p) < 0 ? wxCURSOR_ARROW : wxCURSOR_HAND);
}

// The toolkit may keep the last motion before it to itself.
void menu_picture::on_up(wxMouseEvent& event) {
  if (drag_ && event.GetPosition() != drag_->last)
    drag_to(event.GetPosition() + origin_, {event.ShiftDown(), event.ControlDown()});
  end_drag();
}

void menu_picture::drag_to(wxPoint p, drag_ways ways) {
  const drag d = *drag_;
  const menu_point at = scale().to_menu(p.x, p.y);
  const int dx = at.x - d.from.x;
  const int dy = at.y - d.from.y;
  if (d.grip.moves) {
    tell_([&](menu_editor& editor) {
      editor.hold(ways);
      editor.move_to(d.edges.x0 + dx, d.edges.y0 + dy);
    });
    return;
  }
  const dragged_edges which{d.grip.left, d.grip.top, d.grip.right, d.grip.bottom};
  const int x = (d.grip.left ? d.edges.x0 : d.edges.x1) + dx;
  const int y = (d.grip.top ? d.edges.y0 : d.edges.y1) + dy;
  tell_([&](menu_editor& editor) {
    editor.hold(ways);
    editor.drag_edges(which, x, y);
  });
}

/// The drag goes on at a place of this window, or beyond it: then the picture scrolls there as long
/// as the pointer stays.
void menu_picture::drag_in_sight(wxPoint in_window, drag_ways ways) {
  drag_->ways = ways;
  const wxSize room = GetClientSize();
  const int within = FromDIP(near_the_edge), most = FromDIP(most_scrolled);
  const wxPoint before = origin_;
  scroll_to(origin_ + wxPoint(scroll_of_drag({0, room.x}, in_window.x, within, most),
                              scroll_of_drag({0, room.y}, in_window.y, within, most)));
  if (origin_ == before)
    drag_scrolls_.Stop();
  else if (!drag_scrolls_.IsRunning())
    drag_scrolls_.Start(scroll_milliseconds);
  drag_to(in_window + origin_, ways);
}

void menu_picture::go_on_scrolling() {
  if (drag_)
    drag_in_sight(ScreenToClient(wxGetMousePosition()), drag_->ways);
  else
    drag_scrolls_.Stop();
}

void menu_picture::end_drag() {
  drag_scrolls_.Stop();
  if (std::exchange(drag_, std::nullopt))
    tell_(&menu_editor::end_drag);
  pointing_ = false;
  if (HasCapture())
    ReleaseMouse();
}

// With Ctrl it zooms; else it scrolls a picture that is larger than this window.
void menu_picture::on_wheel(wxMouseEvent& event) {
  constexpr int step = 60;
  const int way = event.GetWheelRotation() > 0 ? 1 : -1;
  if (event.ControlDown()) {
    wishes_.zoom_by(way);
    return;
  }
  const bool across = event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL || event.ShiftDown();
  const int by = (event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL ? way : -way) * FromDIP(step);
  scroll_to(origin_ + (across ? wxPoint(by, 0) : wxPoint(0, by)));
}

void menu_picture::on_key(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  if (key == WXK_TAB) {
    Navigate(event.ShiftDown() ? wxNavigationKeyEvent::IsBackward
                               : wxNavigationKeyEvent::IsForward);
    return;
  }
  if (key == WXK_SPACE && event.GetModifiers() == wxMOD_NONE) {
    wishes_.play_or_pause();
    return;
  }
  const int dx = key == WXK_RIGHT ? 1 : key == WXK_LEFT ? -1 : 0;
  const int dy = key == WXK_DOWN ? 1 : key == WXK_UP ? -1 : 0;
  if ((dx == 0 && dy == 0) || (event.GetModifiers() & ~wxMOD_SHIFT) != 0) {
    event.Skip();
    return;
  }
  if (event.ShiftDown())
    tell_([dx, dy](menu_editor& editor) { editor.size_by(dx, dy); });
  else
    tell_([dx, dy](menu_editor& editor) { editor.move_by(dx, dy); });
}

}  // namespace corvane
