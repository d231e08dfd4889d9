// The picture that a page is drawn on, and what is put on it: colours, covered parts of pixels,
// pictures. Without the toolkit, so that the same page is the same bytes on every system, but for
// its letters.
#pragma once

#include "formats/drawn_page.h"
#include "media/picture.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace corvane {

/// `width` x `height` pixels of red, green, blue and alpha, a byte each: rows from the top, nothing
/// between the rows. Colours are not multiplied by alpha.
struct page_canvas {
  int width = 0, height = 0;
  std::vector<std::uint8_t> rgba;

  /// Nothing is on it: all can be seen through.
  page_canvas(int wide, int high);
  page_canvas() = default;

  std::size_t offset(int x, int y) const {
    return (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
            static_cast<std::size_t>(x)) *
           4;
  }
  page_colour at(int x, int y) const;
};

/// How much of each pixel of a part of the canvas something covers, 0 to 255. May lie outside of
/// the canvas.
struct page_mask {
  int left = 0, top = 0, width = 0, height = 0;
  std::vector<std::uint8_t> covered;

  std::uint8_t at(int x, int y) const {
    return covered[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                   static_cast<std::size_t>(x)];
  }
};

/// Puts a colour over a pixel of the canvas, which must have it.
void put_over(page_canvas& canvas, int x, int y, page_colour colour);

/// A colour where the mask covers, within `clip`.
void put_mask(page_canvas& canvas, const page_mask& mask, page_colour colour, const page_box& clip);

/// The whole canvas; gradients are linear, in what a viewer sees; an
/// outward one is as long in each corner.
void put_background(page_canvas& canvas, const colour_background& background, double pixel_aspect);

/// A colour over all that lies in the box.
void put_box(page_canvas& canvas, const page_box& box, page_colour colour);

/// A rectangle with its round corners and its border.
void put_rectangle(page_canvas& canvas, const page_rectangle& rectangle, double pixel_aspect);

/// A picture that is not scaled, with its upper left corner there.
void put_picture(page_canvas& canvas, const picture& shown, int left, int top);

/// What is seen where the canvas stands on this colour.
picture on_colour(const page_canvas& canvas, page_colour below);

}  // namespace corvane
