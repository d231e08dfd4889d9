// Texts of a page: how much room they take, and how they are put on it. Both by the same lines of
// letters, so that what was measured is what is drawn, to the pixel.
//
// Letters are drawn four times as large as they are wanted and taken together, so that they stand
// where they should whatever the system thinks of screens. Lines that were drawn are kept, for the
// next measurement and the next picture.
#pragma once

#include "drawing/letter_drawer.h"
#include "drawing/page_canvas.h"
#include "formats/drawn_page.h"
#include "platform/result.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class text_drawer {
 public:
  /// The letters must outlive it.
  explicit text_drawer(letter_drawer& letters) : letters_(&letters) {}

  /// As `text_measure` says. Letters that cannot be drawn take no room.
  text_extent measure(std::string_view text, const text_style& style, int box_width,
                      double pixel_aspect);

  /// Nothing is changed outside of the text's box, nor in it outside of what `measure` says. Fails,
  /// with a clause, if there are letters that cannot be drawn; the others are.
  failure draw(page_canvas& canvas, const page_text& text, double pixel_aspect);

 private:
  /// A line of letters in the page's pixels; the pen begins at 0, 0 and runs along the baseline.
  struct line_shape {
    page_mask letters;         ///< without a margin
    int above = 0, below = 0;  ///< lines that font and letters reach from the baseline
    failure trouble;           ///< why it has no letters
  };
  struct styled {
    const text_style& style;
    int size = 0;
    double pixel_aspect = 1;
  };
  struct text_block;

  const line_shape& shape_of(const std::string& line, const styled& how);
  line_shape drawn_shape(const std::string& line, const letter_font& font, const styled& how);
  letter_font font_of(const styled& how);
  bool is_narrow(const std::string& line, const styled& how, int box_width);
  int width_of(const std::string& line, const styled& how);
  text_block block_of(std::vector<std::string> lines, const styled& how);
  text_block block_of(std::string_view text, const styled& how, int box_width);
  text_block fitted_block(const page_text& text, styled& how);
  text_block shortened_block(const page_text& text, const styled& how);

  letter_drawer* letters_;
  std::map<std::string, line_shape> kept_;
  std::size_t kept_bytes_ = 0;
  std::map<std::string, bool> families_;
};

}  // namespace corvane
