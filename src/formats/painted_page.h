// How pages of menus become pictures: handed in by programs that can draw (drawing/page_painting.h)
// to whoever makes menus and cannot.
#pragma once

#include "formats/drawn_page.h"
#include "platform/result.h"

#include <functional>
#include <string>
#include <vector>

namespace corvane {

struct painted_page {
  std::string png;  ///< the bytes of a PNG file; what is transparent is a video's place
  /// Pictures that could not be had, and why: sentences without a full stop. Plain boxes stand for
  /// them.
  std::vector<std::string> missing;
};

/// Belongs to one thread.
struct page_painter {
  text_measure measure;

  /// Has the pictures of films and files read that the page needs, so that painting it is quick;
  /// that may take seconds. May be called in another thread, while nothing else of it is.
  std::function<void(const drawn_page&)> fetch;

  /// Fails when memory runs out.
  std::function<result<painted_page>(const drawn_page&)> paint;
};

}  // namespace corvane
