// How the menu editor draws buttons over the picture: the selected one as the disc will show it,
// with an outline that is seen on any picture, the others faintly with their numbers.
//
// Rectangles are in pixels of the picture; `unit` is a pixel at 100 % in them.
#pragma once

#include <wx/bitmap.h>
#include <wx/dc.h>
#include <wx/gdicmn.h>

#include <string>

namespace corvane {

/// The place of a button in the picture. Edges that a record has the wrong way round are turned.
struct menu_rectangle;
wxRect shown_rectangle(const menu_rectangle& in_picture);

/// The colour of that name as the disc shows it; an unknown name gives black.
wxColour button_colour(const std::string& name);

/// A bar, or a frame when the button is higher than three menu pixels, as it is drawn for the disc.
struct button_look {
  wxColour colour;
  bool framed = false;
  int line = 1;  ///< of the frame, in pixels of the picture
};
void draw_look(wxDC& dc, const wxRect& place, const button_look& look);

/// A button that is not selected. The dc must know alpha (wxGCDC).
void draw_faint(wxDC& dc, const wxRect& place, int number, const wxSize& picture, int unit);

/// `Shape1` and `Shape2`: a light outline within a dark one, with handles where it can be sized.
struct outline_look {
  bool handles = true;
  bool focused = false;  ///< the arrow keys move it
  int unit = 1;
};
void draw_outline(wxDC& dc, const wxRect& place, const outline_look& look);

/// All that draw_outline and draw_look may paint on.
wxRect outline_extent(const wxRect& place, int unit);

}  // namespace corvane
