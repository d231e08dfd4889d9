#include "examine/button_shapes.h"

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {

// To whole pixels, halves to the even neighbour: nearbyint does that in the rounding mode that
// every program starts in.
std::int64_t rounded_edge(const text_number& edge) {
  const double limit = 1e9;
  return static_cast<std::int64_t>(std::nearbyint(std::clamp(edge.value, -limit, limit)));
}

/// By how much a line is shorter at each end, `off` lines from the nearer one of the upper and the
/// lower edge. The radii are at most half of the shape.
std::int64_t inset_of_line(std::int64_t off, std::int64_t width, std::int64_t height) {
  if (2 * off >= std::min<std::int64_t>(6, height))
    return 0;
  return off == 0 && width != 2 ? 2 : 1;
}

}  // namespace

button_box box_of(const text_number& x0, const text_number& y0, const text_number& x1,
                  const text_number& y1) {
  return {rounded_edge(x0), rounded_edge(y0), rounded_edge(x1), rounded_edge(y1)};
}

button_box box_of(const disc_button& b) {
  return box_of(b.x0, b.y0, b.x1, b.y1);
}

rounded_box filled_shape(const button_box& b) {
  return {b.left, b.top, b.right - 2, b.bottom - 1};
}

std::optional<rounded_box> cleared_shape(const button_box& b, int thickness) {
  constexpr int bar = 3;
  if (b.bottom - b.top <= bar)
    return std::nullopt;
  const std::int64_t t = thickness;
  return rounded_box{b.left + 1 + t, b.top + 1 + t, b.right - 3 - t, b.bottom - 2 - t};
}

std::vector<dot_run> dots_of(const rounded_box& shape, int width, int height) {
  std::vector<dot_run> runs;
  const std::int64_t across = shape.right - shape.left, down = shape.bottom - shape.top;
  if (across <= 0 || down <= 0)
    return runs;
  const std::int64_t last = std::min<std::int64_t>(shape.bottom, height - 1);
  for (std::int64_t y = std::max<std::int64_t>(shape.top, 0); y <= last; ++y) {
    const std::int64_t inset =
        inset_of_line(std::min(y - shape.top, shape.bottom - y), across, down);
    const std::int64_t x0 = std::max<std::int64_t>(shape.left + inset, 0);
    const std::int64_t x1 = std::min<std::int64_t>(shape.right - inset, width - 1);
    if (shape.left + inset <= shape.right - inset && x0 <= x1)
      runs.push_back({y, x0, x1});
  }
  return runs;
}

}  // namespace corvane
