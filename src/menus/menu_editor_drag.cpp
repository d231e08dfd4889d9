// Drags in the editor's picture: all selected buttons move, drawn to the lines near them.
#include "formats/text.h"
#include "menus/menu_editor_event.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace corvane {
namespace {

constexpr int far_away = 100000;           // further than any picture
constexpr std::size_t most_drawing = 200;  // of the buttons of a menu that a file gives thousands

menu_rectangle around_all(const std::vector<menu_rectangle>& places) {
  menu_rectangle all = places.front();
  for (const menu_rectangle& r : places) {
    all.x0 = std::min(all.x0, r.x0);
    all.y0 = std::min(all.y0, r.y0);
    all.x1 = std::max(all.x1, r.x1);
    all.y1 = std::max(all.y1, r.y1);
  }
  return all;
}

menu_rectangle moved_place(menu_rectangle r, int dx, int dy) {
  return {r.x0 + dx, r.y0 + dy, r.x1 + dx, r.y1 + dy};
}

/// By how much a span may move and stay between 0 and `most`.
int bounded_move(int by, int from, int to, int most) {
  return std::clamp(by, std::min(0, -from), std::max(0, most - to));
}

}  // namespace

void menu_editor::hold(drag_ways ways) {
  if (drag_)
    drag_->ways = ways;
}

const std::vector<snap_guide>& menu_editor::guides() const {
  static const std::vector<snap_guide> none;
  return drag_ ? drag_->guides : none;
}

// Of a drag each move is reckoned from where it began: then what draws it also lets go of it.
void menu_editor::move_selected_to(int x0, int y0) {
  if (shown_ != c_.Combo2_index)
    choose(c_.Combo2_index);
  std::vector<menu_rectangle> starts = places_of(selected_);
  if (drag_) {
    if (drag_->buttons != selected_) {
      drag_->buttons = selected_;
      drag_->starts = starts;
    }
    starts = drag_->starts;
  }
  const auto chosen = std::find(selected_.begin(), selected_.end(), c_.Combo2_index);
  if (chosen == selected_.end())
    return;
  const menu_rectangle origin = starts[static_cast<std::size_t>(chosen - selected_.begin())];
  int dx = std::clamp(x0, -far_away, far_away) - origin.x0;
  int dy = std::clamp(y0, -far_away, far_away) - origin.y0;
  const menu_rectangle all = around_all(starts);
  if (drag_) {
    if (drag_->ways.keeps_direction)
      (std::abs(dx) >= std::abs(dy) ? dy : dx) = 0;
    const bool across = dx != 0, down = dy != 0;
    const menu_point by =
        draw_to_lines(moved_place(all, dx, dy), {across, across, across, down, down, down});
    dx += by.x;
    dy += by.y;
  }
  dx = bounded_move(dx, all.x0, all.x1, largest_x);
  dy = bounded_move(dy, all.y0, all.y1, ymax_);
  for (menu_rectangle& start : starts)
    start = moved_place(start, dx, dy);
  put(selected_, starts);
}

menu_point menu_editor::draw_to_lines(menu_rectangle dragged, const snapped_parts& parts) {
  drag_->guides.clear();
  if (drag_->ways.free)
    return {};
  snapping s = snapped(dragged, places_of_others(), ymax_, parts);
  drag_->guides = std::move(s.guides);
  return {s.dx, s.dy};
}

/// Of the buttons that are not selected.
std::vector<menu_rectangle> menu_editor::places_of_others() const {
  std::vector<menu_rectangle> places;
  for (std::size_t i = 0; i < c_.List1.size() && places.size() < most_drawing; ++i)
    if (!is_selected(static_cast<int>(i)) && !trim(c_.List1[i]).empty())
      places.push_back(edges_of(c_.List1[i]));
  return places;
}

}  // namespace corvane
