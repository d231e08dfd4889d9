// A picture scaled for a box of a page, whose pixels are of another shape.
#pragma once

#include "formats/drawn_page.h"
#include "media/picture.h"

namespace corvane {

/// A decoded picture, with the shape of its pixels: width over height as they are shown.
struct shaped_picture {
  picture pixels;
  double pixel_aspect = 1;
};

struct fitted_picture {
  picture pixels;
  int left = 0, top = 0;  ///< where it stands in the box: 0 unless it is smaller
};

/// The picture for a box of `width` x `height` pixels, at least 1 x 1, of this shape: as large as
/// the box and cut (`fill`), or whole and in its middle (`fit`). What is round stays round, to half
/// a pixel of the picture's edge. Pixels are means of what they cover. A picture without pixels
/// gives none.
fitted_picture fitted(const shaped_picture& source, int width, int height, double pixel_aspect,
                      page_fit fit);

}  // namespace corvane
