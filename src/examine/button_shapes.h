// The shapes that a run draws of a menu's buttons, in dots of the overlay: in one place for the
// commands that draw them (authoring/menu_overlays.h), for what a disc is foreseen to show
// (examine/button_looks.h), and for the picture of the menu editor (menus/menu_overlay.h).
#pragma once

#include "disc/disc_description.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace corvane {

/// The edges of a button as it is asked for, in whole dots.
struct button_box {
  std::int64_t left = 0, top = 0, right = 0, bottom = 0;
  bool operator==(const button_box&) const = default;
};

/// Halves go to the even neighbour; edges are kept within a thousand million.
button_box box_of(const text_number& x0, const text_number& y0, const text_number& x1,
                  const text_number& y1);
button_box box_of(const disc_button& b);

/// A rectangle with rounded corners, both ends included.
struct rounded_box {
  std::int64_t left = 0, top = 0, right = 0, bottom = 0;
  bool operator==(const rounded_box&) const = default;
};

/// What of a button is filled with its colour.
rounded_box filled_shape(const button_box& b);

/// What is cleared again inside, so that a frame is left; nothing of a bar of up to three lines.
/// A frame thicker than its button gives a shape without an inside, of which nothing is painted.
std::optional<rounded_box> cleared_shape(const button_box& b, int thickness);

/// Dots of one line, both ends included.
struct dot_run {
  std::int64_t y = 0, x0 = 0, x1 = 0;
  bool operator==(const dot_run&) const = default;
};

/// The dots that GraphicsMagick 1.3.40 paints of such a shape with the radii 2 and 3 and without
/// smoothing (measured), as far as they lie in a picture of this size; from the top.
std::vector<dot_run> dots_of(const rounded_box& shape, int width, int height);

}  // namespace corvane
