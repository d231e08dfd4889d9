// A text made to fit into a box: smaller, then in several lines, at last shortened.
#pragma once

#include "formats/drawn_page.h"
#include "menus/maker/menu_design.h"

#include <string>
#include <string_view>

namespace corvane {

struct fitted_text {
  std::string text;  ///< with a "\n" where a line ends
  int size = 0;      ///< lines that an em is high
  bool is_shortened = false;
  bool operator==(const fitted_text&) const = default;
};

/// Whatever the text: what does not fit at the least size and in the most lines is left out, and
/// "…" stands for it. In a box in which not even that fits, the text is empty. Control characters
/// but for "\n" count as blanks, what is no UTF-8 as U+FFFD.
fitted_text fit_text(std::string_view text, const design_text& how, const page_box& box,
                     double pixel_aspect, const text_measure& measure);

}  // namespace corvane
