#include "menus/button_snapping.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace corvane {
namespace {

using guide_kind = snap_guide::kind;

/// Across or down: the edges of what is dragged, and the lines that draw them.
struct snap_line {
  guide_kind what;
  int at;
  bool of_middles;
  int from, to;  // the line's extent across
};

struct dragged_point {
  int at;
  bool is_middle;
};

int middle_of(int from, int to) {
  return from + (to - from) / 2;
}

menu_rectangle inset(int ymax, int divisor) {
  const int side = 720 / divisor;
  int top = (ymax + 1 + divisor - 1) / divisor;
  top += top % 2;
  return {side, top, 720 - side, ymax + 1 - top};
}

class axis_snapping {
 public:
  axis_snapping(std::vector<dragged_point> points, std::vector<snap_line> lines)
      : points_(std::move(points)), lines_(std::move(lines)) {}

  /// The least move that brings a point onto a line; nullopt if none is near.
  std::optional<int> move() const {
    std::optional<int> least;
    for_pairs([&](const dragged_point& p, const snap_line& l) {
      const int by = l.at - p.at;
      if (std::abs(by) <= snap_reach && (!least || std::abs(by) < std::abs(*least)))
        least = by;
    });
    return least;
  }

  /// The lines on which a point stands after the move, each once; from `from` to `to` at least.
  std::vector<snap_guide> guides(int moved, bool upright, int from, int to) const {
    std::vector<snap_guide> found;
    for_pairs([&](const dragged_point& p, const snap_line& l) {
      if (p.at + moved != l.at)
        return;
      const snap_guide guide{l.what, upright, l.at, std::min(from, l.from), std::max(to, l.to)};
      const auto same = std::find_if(found.begin(), found.end(), [&](const snap_guide& g) {
        return g.at == guide.at && g.what == guide.what;
      });
      if (same == found.end()) {
        found.push_back(guide);
      } else {
        same->from = std::min(same->from, guide.from);
        same->to = std::max(same->to, guide.to);
      }
    });
    return found;
  }

 private:
  template <typename F>
  void for_pairs(F f) const {
    for (const dragged_point& p : points_)
      for (const snap_line& l : lines_)
        if (p.is_middle == l.of_middles)
          f(p, l);
  }

  std::vector<dragged_point> points_;
  std::vector<snap_line> lines_;
};

axis_snapping across(const menu_rectangle& place, std::span<const menu_rectangle> others, int ymax,
                     const snapped_parts& parts) {
  std::vector<dragged_point> points;
  if (parts.left)
    points.push_back({place.x0, false});
  if (parts.right)
    points.push_back({place.x1, false});
  if (parts.centre)
    points.push_back({middle_of(place.x0, place.x1), true});
  std::vector<snap_line> lines;
  for (const menu_rectangle& r : others) {
    for (const int edge : {r.x0, r.x1})
      lines.push_back({guide_kind::button, edge, false, r.y0, r.y1});
    lines.push_back({guide_kind::button, middle_of(r.x0, r.x1), true, r.y0, r.y1});
  }
  for (const menu_rectangle& r : {action_safe_rectangle(ymax), title_safe_rectangle(ymax)})
    for (const int edge : {r.x0, r.x1})
      lines.push_back({guide_kind::safe_area, edge, false, r.y0, r.y1});
  lines.push_back({guide_kind::picture_middle, 360, true, 0, ymax});
  return {std::move(points), std::move(lines)};
}

menu_rectangle turned(const menu_rectangle& r) {
  return {r.y0, r.x0, r.y1, r.x1};
}

axis_snapping down(const menu_rectangle& place, std::span<const menu_rectangle> others, int ymax,
                   const snapped_parts& parts) {
  std::vector<dragged_point> points;
  if (parts.top)
    points.push_back({place.y0, false});
  if (parts.bottom)
    points.push_back({place.y1, false});
  if (parts.middle)
    points.push_back({middle_of(place.y0, place.y1), true});
  std::vector<snap_line> lines;
  for (const menu_rectangle& other : others) {
    const menu_rectangle r = turned(other);
    for (const int edge : {r.x0, r.x1})
      lines.push_back({guide_kind::button, edge, false, r.y0, r.y1});
    lines.push_back({guide_kind::button, middle_of(r.x0, r.x1), true, r.y0, r.y1});
  }
  for (const menu_rectangle& area : {action_safe_rectangle(ymax), title_safe_rectangle(ymax)}) {
    const menu_rectangle r = turned(area);
    for (const int edge : {r.x0, r.x1})
      lines.push_back({guide_kind::safe_area, edge, false, r.y0, r.y1});
  }
  lines.push_back({guide_kind::picture_middle, (ymax + 1) / 2, true, 0, largest_x});
  return {std::move(points), std::move(lines)};
}

/// To the even line above.
int to_even_line(const menu_rectangle& place, const snapped_parts& parts) {
  if (parts.top)
    return -std::abs(place.y0 % 2);
  return parts.bottom ? -std::abs(place.y1 % 2) : 0;
}

}  // namespace

menu_rectangle action_safe_rectangle(int ymax) {
  return inset(ymax, 20);
}

menu_rectangle title_safe_rectangle(int ymax) {
  return inset(ymax, 10);
}

snapping snapped(const menu_rectangle& place, std::span<const menu_rectangle> others, int ymax,
                 const snapped_parts& parts) {
  const axis_snapping x = across(place, others, ymax, parts), y = down(place, others, ymax, parts);
  snapping s;
  const std::optional<int> dx = x.move(), dy = y.move();
  s.dx = dx.value_or(0);
  s.dy = dy ? *dy : to_even_line(place, parts);
  if (dx)
    s.guides = x.guides(s.dx, true, place.y0 + s.dy, place.y1 + s.dy);
  if (dy) {
    const auto lying = y.guides(s.dy, false, place.x0 + s.dx, place.x1 + s.dx);
    s.guides.insert(s.guides.end(), lying.begin(), lying.end());
  }
  return s;
}

}  // namespace corvane
