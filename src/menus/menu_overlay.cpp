#include "menus/menu_overlay.h"

#include "project/menu_rows.h"
#include "project/offered_colours.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

namespace corvane {
namespace {

constexpr std::size_t dot_bytes = 4;

using dot_colour = std::array<std::uint8_t, dot_bytes>;
constexpr dot_colour nothing_there = {0, 0, 0, 0};

/// The dots of an overlay, to be painted on.
class overlay_canvas {
 public:
  explicit overlay_canvas(overlay_picture& to) : to_(to) {}

  void fill(const rounded_box& shape, const dot_colour& colour) {
    for (const dot_run& run : dots_of(shape, to_.width, to_.height))
      for (std::int64_t x = run.x0; x <= run.x1; ++x)
        set(x, run.y, colour);
  }

  /// The bitmap's own clear dots clear what is below them.
  void paste(const button_bitmap& bitmap, std::int64_t left, std::int64_t top) {
    for (int y = 0; y < bitmap.height; ++y)
      for (int x = 0; x < bitmap.width; ++x)
        if (has(left + x, top + y))
          set(left + x, top + y, dot_of(bitmap, x, y));
  }

 private:
  static dot_colour dot_of(const button_bitmap& bitmap, int x, int y) {
    const auto at = (static_cast<std::size_t>(y) * static_cast<std::size_t>(bitmap.width) +
                     static_cast<std::size_t>(x)) *
                    3;
    const std::uint8_t red = bitmap.rgb[at], green = bitmap.rgb[at + 1], blue = bitmap.rgb[at + 2];
    if (red == 1 && green == 1 && blue == 1)
      return nothing_there;
    return {red, green, blue, 255};
  }
  bool has(std::int64_t x, std::int64_t y) const {
    return x >= 0 && y >= 0 && x < to_.width && y < to_.height;
  }
  void set(std::int64_t x, std::int64_t y, const dot_colour& colour) {
    const auto at = static_cast<std::size_t>(y * to_.width + x) * dot_bytes;
    std::copy(colour.begin(), colour.end(), to_.rgba.begin() + static_cast<std::ptrdiff_t>(at));
  }

  overlay_picture& to_;
};

std::optional<dot_colour> dot_colour_named(const std::string& name) {
  const auto found = std::find_if(offered_colours.begin(), offered_colours.end(),
                                  [&name](const offered_colour& c) { return name == c.name; });
  if (found == offered_colours.end())
    return std::nullopt;
  return dot_colour{found->red, found->green, found->blue, 255};
}

void draw_in_colour(overlay_canvas& canvas, const overlay_button& b, int thickness) {
  const std::optional<dot_colour> colour = dot_colour_named(b.look);
  if (!colour)
    return;
  canvas.fill(filled_shape(b.box), *colour);
  if (const auto inside = cleared_shape(b.box, thickness))
    canvas.fill(*inside, nothing_there);
}

}  // namespace

overlay_button overlay_button_of(std::string_view record, button_state state) {
  const button_record b = parse_button(record);
  const std::string& look = state == button_state::selected ? b.select : b.highlight;
  return {box_of(number_of(b.x0), number_of(b.y0), number_of(b.x1), number_of(b.y1)), look,
          is_bitmap(look)};
}

overlay_picture overlay_of(const std::vector<overlay_button>& buttons, int thickness, int height,
                           bitmap_reader& bitmaps) {
  overlay_picture picture{overlay_width, height, {}};
  picture.rgba.resize(static_cast<std::size_t>(overlay_width) * static_cast<std::size_t>(height) *
                      dot_bytes);
  overlay_canvas canvas(picture);
  for (const overlay_button& b : buttons) {
    if (!b.is_bitmap)
      draw_in_colour(canvas, b, thickness);
    else if (const button_bitmap* const bitmap = bitmaps.read(b.look))
      canvas.paste(*bitmap, b.box.left, b.box.top);
  }
  return picture;
}

button_box extent_of(const overlay_button& b, bitmap_reader& bitmaps) {
  if (!b.is_bitmap)
    return b.box;
  const button_bitmap* const bitmap = bitmaps.read(b.look);
  if (bitmap == nullptr)
    return {b.box.left, b.box.top, b.box.left, b.box.top};
  return {b.box.left, b.box.top, b.box.left + bitmap->width, b.box.top + bitmap->height};
}

}  // namespace corvane
