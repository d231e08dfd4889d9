// How the menu editor draws over the picture of a menu: what each button does, an outline of the
// selected one that is seen on any picture, the ways of the arrow keys, the safe area.
//
// Rectangles are in pixels of the picture; `unit` is a pixel at 100 % in them.
#pragma once

#include "menus/button_snapping.h"
#include "menus/menu_geometry.h"
#include "menus/menu_marks.h"

#include <wx/dc.h>
#include <wx/gdicmn.h>
#include <wx/string.h>

#include <vector>

namespace corvane {

/// The place of a button in the picture. Edges that a record has the wrong way round are turned.
wxRect shown_rectangle(const menu_rectangle& in_picture);

/// What is written about a button, and where.
struct shown_mark {
  button_mark mark;
  wxRect place;                 ///< of the button
  wxString text;                ///< as far as there is room for it
  wxRect label;                 ///< around the text
  std::vector<wxRect> clashes;  ///< where others overlap the button
  bool operator==(const shown_mark&) const = default;
};

/// What is to be written about a button: what it does, or what is wrong with it.
wxString text_of_mark(const button_mark& mark);

/// A label around a text of that size.
wxSize label_size(const wxSize& text, int unit);

/// Where a label of that size stands: inside the button behind its frame of `line` pixels where
/// there is room, else above it, else below.
wxRect place_of_label(const wxRect& button, const wxSize& label, int line, const wxSize& picture);

/// The dc must know alpha (wxGCDC).
void draw_mark(wxDC& dc, const shown_mark& mark, int unit);

/// All that draw_mark may paint on.
wxRect extent_of(const shown_mark& mark, int unit);

/// A way of an arrow key, from the button's edge on that side.
struct shown_way {
  wxPoint from, to;
  bool operator==(const shown_way&) const = default;
};
shown_way way_between(arrow_key key, const wxRect& from, const wxRect& to, int unit);
void draw_way(wxDC& dc, const shown_way& way, int unit);
wxRect extent_of(const shown_way& way, int unit);

/// A line to which a dragged button is drawn, over the picture of that scale.
void draw_guide(wxDC& dc, const snap_guide& guide, const picture_scale& scale, int unit);

/// All that draw_guide may paint on.
wxRect extent_of_guide(const snap_guide& guide, const picture_scale& scale, int unit);

/// The rectangles that televisions show (90 %) and texts should keep to (80 %).
void draw_safe_area(wxDC& dc, const wxSize& picture, int unit);

/// `Shape1` and `Shape2`: a light outline within a dark one, with handles where it can be sized.
struct outline_look {
  bool handles = true;
  bool focused = false;  ///< the arrow keys move it
  int unit = 1;
};
void draw_outline(wxDC& dc, const wxRect& place, const outline_look& look);

/// All that draw_outline may paint on.
wxRect outline_extent(const wxRect& place, int unit);

}  // namespace corvane
