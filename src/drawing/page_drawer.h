// Pages of menus, drawn.
//
// What stands on a page is laid out elsewhere (formats/drawn_page.h); pictures of films and files
// are handed in. Only letters need the toolkit, which is loaded as a drawer is made
// (drawing/letter_drawer.h) and needs no display.
#pragma once

#include "drawing/drawn_text.h"
#include "drawing/fitted_picture.h"
#include "drawing/letter_drawer.h"
#include "drawing/page_canvas.h"
#include "formats/drawn_page.h"
#include "platform/result.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The picture of a file (native path), so many seconds from its beginning; or why there is none.
using page_picture_source = std::function<result<std::shared_ptr<const shaped_picture>>(
    const std::string& file, double seconds)>;

/// A file whose picture could not be had, and why (a clause). The page has a plain box there.
struct missing_picture {
  std::string file;
  double seconds = 0;
  std::string why;
};

struct page_drawing {
  page_canvas canvas;  ///< opaque, unless the page's background is a video
  std::vector<missing_picture> missing;
  failure trouble;  ///< why not all letters are there, a clause
};

/// Belongs to one thread, as `letter_drawer` does.
class page_drawer {
 public:
  explicit page_drawer(std::unique_ptr<letter_drawer> letters);

  /// As `text_measure` (formats/drawn_page.h) says.
  text_extent measure(std::string_view text, const text_style& style, int box_width,
                      double pixel_aspect);

  /// A page without pixels gives none; more than 4096 across or down are taken for so many.
  page_drawing draw(const drawn_page& page, const page_picture_source& pictures);

 private:
  std::unique_ptr<letter_drawer> letters_;
  text_drawer texts_;
};

/// Fails as `make_letter_drawer` does.
result<std::unique_ptr<page_drawer>> make_page_drawer();

}  // namespace corvane
