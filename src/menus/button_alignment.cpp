#include "menus/button_alignment.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace corvane {
namespace {

// One direction of a rectangle.
struct span_of {
  int menu_rectangle::*from;
  int menu_rectangle::*to;

  int begin(const menu_rectangle& r) const { return r.*from; }
  int end(const menu_rectangle& r) const { return r.*to; }
  int size(const menu_rectangle& r) const { return r.*to - r.*from; }
  void move(menu_rectangle& r, int begin) const {
    r.*to += begin - r.*from;
    r.*from = begin;
  }
  void resize(menu_rectangle& r, int size, int most) const {
    r.*from = std::max(0, std::min(r.*from, most - size));
    r.*to = r.*from + size;
  }
};

constexpr span_of columns{&menu_rectangle::x0, &menu_rectangle::x1};
constexpr span_of lines{&menu_rectangle::y0, &menu_rectangle::y1};

const span_of& span_along(direction along) {
  return along == direction::across ? columns : lines;
}

/// The numbers of the places in the order in which they stand.
std::vector<std::size_t> in_order(const std::vector<menu_rectangle>& places, const span_of& along) {
  std::vector<std::size_t> order(places.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    return along.begin(places[a]) < along.begin(places[b]);
  });
  return order;
}

enum class end_of_span { begin, middle, end };

void align(std::vector<menu_rectangle>& places, const span_of& along, end_of_span to) {
  int first = along.begin(places.front()), last = along.end(places.front());
  for (const menu_rectangle& r : places) {
    first = std::min(first, along.begin(r));
    last = std::max(last, along.end(r));
  }
  for (menu_rectangle& r : places) {
    const int room = last - first - along.size(r);
    along.move(r, first + (to == end_of_span::begin    ? 0
                           : to == end_of_span::middle ? room / 2
                                                       : room));
  }
}

}  // namespace

std::vector<menu_rectangle> aligned(std::vector<menu_rectangle> places, alignment to) {
  if (places.empty())
    return places;
  switch (to) {
    case alignment::left:
      align(places, columns, end_of_span::begin);
      break;
    case alignment::centre:
      align(places, columns, end_of_span::middle);
      break;
    case alignment::right:
      align(places, columns, end_of_span::end);
      break;
    case alignment::top:
      align(places, lines, end_of_span::begin);
      break;
    case alignment::middle:
      align(places, lines, end_of_span::middle);
      break;
    case alignment::bottom:
      align(places, lines, end_of_span::end);
      break;
  }
  return places;
}

std::vector<menu_rectangle> distributed(std::vector<menu_rectangle> places, direction along) {
  const span_of& span = span_along(along);
  const std::vector<std::size_t> order = in_order(places, span);
  if (order.size() < 3)
    return places;
  int free = span.begin(places[order.back()]) - span.end(places[order.front()]);
  for (std::size_t i = 1; i + 1 < order.size(); ++i)
    free -= span.size(places[order[i]]);
  const int gaps = static_cast<int>(order.size()) - 1;
  int taken = span.end(places[order.front()]);
  for (std::size_t i = 1; i + 1 < order.size(); ++i) {
    menu_rectangle& r = places[order[i]];
    span.move(r, std::max(0, taken + free * static_cast<int>(i) / gaps));
    taken += span.size(r);
  }
  return places;
}

std::vector<menu_rectangle> with_same_gap(std::vector<menu_rectangle> places, direction along) {
  const span_of& span = span_along(along);
  const std::vector<std::size_t> order = in_order(places, span);
  if (order.size() < 3)
    return places;
  const int gap = span.begin(places[order[1]]) - span.end(places[order[0]]);
  for (std::size_t i = 2; i < order.size(); ++i) {
    int begin = span.end(places[order[i - 1]]) + gap;
    if (along == direction::down && span.begin(places[order[0]]) % 2 == 0)
      begin += begin % 2;
    span.move(places[order[i]], std::max(0, begin));
  }
  return places;
}

std::vector<menu_rectangle> with_same_width(std::vector<menu_rectangle> places, std::size_t as) {
  const int width = columns.size(places.at(as));
  for (menu_rectangle& r : places)
    columns.resize(r, width, largest_x);
  return places;
}

std::vector<menu_rectangle> with_same_height(std::vector<menu_rectangle> places, std::size_t as,
                                             int ymax) {
  const int height = lines.size(places.at(as));
  for (menu_rectangle& r : places)
    lines.resize(r, height, ymax);
  return places;
}

menu_rectangle on_even_lines(menu_rectangle place, int ymax) {
  place.y0 -= place.y0 % 2;
  place.y1 += place.y1 % 2;
  if (place.y1 > ymax)
    place.y1 -= 2;
  if (place.y1 <= place.y0)
    place.y0 = place.y1 - 2;
  return place;
}

}  // namespace corvane
