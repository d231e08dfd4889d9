#include "drawing/page_canvas.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace corvane {
namespace {

constexpr int opaque = 255;

std::uint8_t byte_of(double value) {
  return static_cast<std::uint8_t>(std::clamp(std::lround(value), 0L, 255L));
}

page_box within(const page_canvas& canvas, const page_box& box) {
  const int left = std::max(0, box.left), top = std::max(0, box.top);
  return {left, top, std::max(0, std::min(canvas.width, box.right()) - left),
          std::max(0, std::min(canvas.height, box.bottom()) - top)};
}

page_colour faded(page_colour colour, int covered) {
  colour.alpha = static_cast<std::uint8_t>((colour.alpha * covered + opaque / 2) / opaque);
  return colour;
}

page_colour between(const page_colour& from, const page_colour& to, double part) {
  const auto mixed = [part](std::uint8_t a, std::uint8_t b) { return byte_of(a + (b - a) * part); };
  return {mixed(from.red, to.red), mixed(from.green, to.green), mixed(from.blue, to.blue),
          mixed(from.alpha, to.alpha)};
}

/// A box with round corners, measured in pixels across and lines down.
struct round_box {
  double left, top, right, bottom;
  double across, down;  ///< radii of the corners

  bool holds(double x, double y) const {
    if (x < left || x >= right || y < top || y >= bottom)
      return false;
    const double to_side = std::min(x - left, right - x), to_edge = std::min(y - top, bottom - y);
    if (to_side >= across || to_edge >= down)
      return true;
    const double u = 1 - to_side / across, v = 1 - to_edge / down;
    return u * u + v * v <= 1;
  }

  /// How much of a pixel lies in it, 0 to 1.
  double part_of(int x, int y) const {
    const auto overlap = [](double a, double b, int at) {
      return std::max(0.0, std::min<double>(b, at + 1) - std::max<double>(a, at));
    };
    const bool beside_corners = (x >= left + across && x + 1 <= right - across) ||
                                (y >= top + down && y + 1 <= bottom - down);
    if (beside_corners)
      return overlap(left, right, x) * overlap(top, bottom, y);
    constexpr int steps = 8;
    int inside = 0;
    for (int row = 0; row < steps; ++row)
      for (int column = 0; column < steps; ++column)
        inside += holds(x + (column + 0.5) / steps, y + (row + 0.5) / steps) ? 1 : 0;
    return static_cast<double>(inside) / (steps * steps);
  }
};

round_box inset(const page_rectangle& rectangle, double lines, double pixel_aspect) {
  const page_box& box = rectangle.box;
  const double most = std::min(box.height / 2.0, box.width * pixel_aspect / 2.0);
  const double radius = std::max(0.0, std::min<double>(rectangle.radius, most) - lines);
  const double aside = lines / pixel_aspect;
  return {box.left + aside,     box.top + lines,       box.right() - aside,
          box.bottom() - lines, radius / pixel_aspect, radius};
}

/// The fill where the inner box is, the border where only the outer one is, as one colour.
page_colour colour_of(const page_rectangle& rectangle, double outer, double inner) {
  const double filled = inner * rectangle.colour.alpha / opaque;
  const double framed = rectangle.border > 0
                            ? std::max(0.0, outer - inner) * rectangle.border_colour.alpha / opaque
                            : 0;
  const double alpha = filled + framed;
  if (alpha <= 0)
    return {0, 0, 0, 0};
  page_colour mixed = between(rectangle.colour, rectangle.border_colour, framed / alpha);
  mixed.alpha = byte_of(alpha * opaque);
  return mixed;
}

}  // namespace

page_canvas::page_canvas(int wide, int high)
    : width(wide),
      height(high),
      rgba(static_cast<std::size_t>(wide) * static_cast<std::size_t>(high) * 4) {}

page_colour page_canvas::at(int x, int y) const {
  const std::size_t i = offset(x, y);
  return {rgba[i], rgba[i + 1], rgba[i + 2], rgba[i + 3]};
}

void put_over(page_canvas& canvas, int x, int y, page_colour colour) {
  if (colour.alpha == 0)
    return;
  std::uint8_t* const pixel = &canvas.rgba[canvas.offset(x, y)];
  const std::array<int, 3> above{colour.red, colour.green, colour.blue};
  const int over = colour.alpha * opaque, under = pixel[3] * (opaque - colour.alpha);
  const int whole = over + under;  // of opaque * opaque
  for (std::size_t i = 0; i < above.size(); ++i)
    pixel[i] = static_cast<std::uint8_t>((above[i] * over + pixel[i] * under + whole / 2) / whole);
  pixel[3] = static_cast<std::uint8_t>((whole + opaque / 2) / opaque);
}

void put_mask(page_canvas& canvas, const page_mask& mask, page_colour colour,
              const page_box& clip) {
  const page_box part = within(canvas, clip);
  const int left = std::max(part.left, mask.left), top = std::max(part.top, mask.top);
  const int right = std::min(part.right(), mask.left + mask.width);
  const int bottom = std::min(part.bottom(), mask.top + mask.height);
  for (int y = top; y < bottom; ++y)
    for (int x = left; x < right; ++x)
      if (const int covered = mask.at(x - mask.left, y - mask.top); covered != 0)
        put_over(canvas, x, y, faded(colour, covered));
}

void put_background(page_canvas& canvas, const colour_background& background, double pixel_aspect) {
  using direction = colour_background::direction;
  const double wide = canvas.width * pixel_aspect, high = canvas.height;
  for (int y = 0; y < canvas.height; ++y)
    for (int x = 0; x < canvas.width; ++x) {
      const double right = (x + 0.5) * pixel_aspect, down = y + 0.5;
      double part = 0;
      switch (background.towards) {
        case direction::down:
          part = down / high;
          break;
        case direction::right:
          part = right / wide;
          break;
        case direction::down_right:
          part = (right + down) / (wide + high);
          break;
        case direction::up_right:
          part = (right + high - down) / (wide + high);
          break;
        case direction::outward:
          part = std::hypot(right / wide - 0.5, down / high - 0.5) / std::hypot(0.5, 0.5);
          break;
      }
      put_over(canvas, x, y, between(background.from, background.to, part));
    }
}

void put_box(page_canvas& canvas, const page_box& box, page_colour colour) {
  const page_box part = within(canvas, box);
  for (int y = part.top; y < part.bottom(); ++y)
    for (int x = part.left; x < part.right(); ++x)
      put_over(canvas, x, y, colour);
}

void put_rectangle(page_canvas& canvas, const page_rectangle& rectangle, double pixel_aspect) {
  const round_box outer = inset(rectangle, 0, pixel_aspect);
  const round_box inner = inset(rectangle, std::max(0, rectangle.border), pixel_aspect);
  const page_box part = within(canvas, rectangle.box);
  for (int y = part.top; y < part.bottom(); ++y)
    for (int x = part.left; x < part.right(); ++x)
      put_over(canvas, x, y, colour_of(rectangle, outer.part_of(x, y), inner.part_of(x, y)));
}

void put_picture(page_canvas& canvas, const picture& shown, int left, int top) {
  const page_box part = within(canvas, {left, top, shown.width, shown.height});
  for (int y = part.top; y < part.bottom(); ++y)
    for (int x = part.left; x < part.right(); ++x) {
      const std::uint8_t* const rgb =
          &shown.rgb[(static_cast<std::size_t>(y - top) * static_cast<std::size_t>(shown.width) +
                      static_cast<std::size_t>(x - left)) *
                     3];
      put_over(canvas, x, y, {rgb[0], rgb[1], rgb[2], opaque});
    }
}

picture on_colour(const page_canvas& canvas, page_colour below) {
  page_canvas whole(canvas.width, canvas.height);
  below.alpha = opaque;
  picture seen{canvas.width, canvas.height, {}};
  seen.rgb.reserve(canvas.rgba.size() / 4 * 3);
  for (int y = 0; y < canvas.height; ++y)
    for (int x = 0; x < canvas.width; ++x) {
      put_over(whole, x, y, below);
      put_over(whole, x, y, canvas.at(x, y));
      const page_colour colour = whole.at(x, y);
      seen.rgb.insert(seen.rgb.end(), {colour.red, colour.green, colour.blue});
    }
  return seen;
}

}  // namespace corvane
