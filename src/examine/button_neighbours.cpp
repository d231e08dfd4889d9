#include "examine/button_neighbours.h"

#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <numbers>
#include <optional>

namespace corvane {
namespace {

/// Where another button is, in whole degrees and pixels, as spumux counts them.
struct direction {
  int angle = 0, distance = 0;
};

/// The one dimension of two buttons in which they may stand side by side.
struct extent {
  int begin, end;
};

/// How far the other button is aside, for one that is `gap` away in the other dimension.
direction seen_across(extent other, extent own, int gap) {
  if (other.end > own.begin && other.begin < own.end)
    return {0, gap};
  const int before = other.end - own.begin - 1;  // negative when the other ends first
  const int behind = other.begin - own.end + 1;
  const double aside = std::abs(behind) < std::abs(before) ? behind : before;
  const double ahead = gap + 1.0;
  const double degrees = 180 / std::numbers::pi * std::atan(std::abs(aside) / ahead);
  return {static_cast<int>(aside < 0 ? -degrees : degrees),
          static_cast<int>(std::sqrt(aside * aside + ahead * ahead))};
}

std::optional<direction> seen_from(const button_edges& own, const button_edges& other) {
  const extent own_x{own.x0, own.x1}, own_y{own.y0, own.y1};
  const extent other_x{other.x0, other.x1}, other_y{other.y0, other.y1};
  if (other.y1 <= own.y0)
    return seen_across(other_x, own_x, own.y0 - other.y1);
  if (other.y0 >= own.y1) {
    const direction d = seen_across(other_x, own_x, other.y0 - own.y1);
    return direction{180 - d.angle, d.distance};
  }
  if (other.x1 <= own.x0) {
    const direction d = seen_across(other_y, own_y, own.x0 - other.x1);
    return direction{270 - d.angle, d.distance};
  }
  if (other.x0 >= own.x1) {
    const direction d = seen_across(other_y, own_y, other.x0 - own.x1);
    return direction{90 + d.angle, d.distance};
  }
  return std::nullopt;
}

/// The number of the button that a key leads to whose angle is `wanted`.
int neighbour_at(std::span<const button_edges> buttons, std::size_t own, int wanted) {
  int best = static_cast<int>(own) + 1;
  int least_off = 90, least_distance = 0;
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    if (i == own)
      continue;
    const std::optional<direction> d = seen_from(buttons[own], buttons[i]);
    if (!d)
      continue;
    const int off = std::abs(d->angle - wanted);
    if (off < least_off || (off == least_off && off < 90 && d->distance < least_distance)) {
      best = static_cast<int>(i) + 1;
      least_off = off;
      least_distance = d->distance;
    }
  }
  return best;
}

}  // namespace

std::vector<button_neighbours> neighbours_of(std::span<const button_edges> buttons) {
  std::vector<button_neighbours> all;
  for (std::size_t i = 0; i < buttons.size(); ++i)
    all.push_back({neighbour_at(buttons, i, 0), neighbour_at(buttons, i, 180),
                   neighbour_at(buttons, i, 270), neighbour_at(buttons, i, 90)});
  return all;
}

std::vector<int> buttons_out_of_reach(std::span<const button_edges> buttons) {
  const std::vector<button_neighbours> neighbours = neighbours_of(buttons);
  std::vector<bool> reached(buttons.size());
  std::vector<int> waiting;
  const auto go_to = [&](int number) {
    const auto i = static_cast<std::size_t>(number) - 1;
    if (!reached[i])
      waiting.push_back(number);
    reached[i] = true;
  };
  if (!buttons.empty())
    go_to(1);
  while (!waiting.empty()) {
    const button_neighbours& n = neighbours[static_cast<std::size_t>(waiting.back()) - 1];
    waiting.pop_back();
    for (const int number : {n.up, n.down, n.left, n.right})
      go_to(number);
  }
  std::vector<int> left_out;
  for (std::size_t i = 0; i < reached.size(); ++i)
    if (!reached[i])
      left_out.push_back(static_cast<int>(i) + 1);
  return left_out;
}

}  // namespace corvane
