// Colours of pages as the toolkit has them.
#pragma once

#include "formats/drawn_page.h"

#include <wx/colour.h>

namespace corvane {

inline wxColour wx_colour(const page_colour& colour) {
  return {colour.red, colour.green, colour.blue};
}

/// How little can be seen through it stays.
inline page_colour with_hue(const page_colour& colour, const wxColour& hue) {
  return {hue.Red(), hue.Green(), hue.Blue(), colour.alpha};
}

}  // namespace corvane
