#include "ui/editor/menu_drawing.h"

#include "menus/menu_geometry.h"
#include "project/offered_colours.h"
#include "ui/editor/outline_grip.h"

#include <wx/brush.h>
#include <wx/pen.h>

#include <algorithm>

namespace corvane {
namespace {

constexpr int handle_edge = 7;

/// A frame of straight lines inside `place`, each pixel painted once.
void draw_frame(wxDC& dc, const wxRect& place, int line, const wxColour& colour) {
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(colour));
  const int across = std::min(line, (place.width + 1) / 2);
  const int down = std::min(line, (place.height + 1) / 2);
  const int between = place.height - 2 * down;
  dc.DrawRectangle(place.x, place.y, place.width, down);
  if (place.height > down)
    dc.DrawRectangle(place.x, place.y + place.height - down, place.width, down);
  if (between > 0) {
    dc.DrawRectangle(place.x, place.y + down, across, between);
    dc.DrawRectangle(place.x + place.width - across, place.y + down, across, between);
  }
}

wxRect grown(wxRect place, int by) {
  return place.Inflate(by);
}

void draw_handle(wxDC& dc, wxPoint middle, const outline_look& look) {
  const int edge = handle_edge * look.unit;
  const wxRect place(middle.x - edge / 2, middle.y - edge / 2, edge, edge);
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(*wxBLACK_BRUSH);
  dc.DrawRectangle(place);
  dc.SetBrush(look.focused ? wxBrush(wxColour(255, 221, 51)) : *wxWHITE_BRUSH);
  dc.DrawRectangle(grown(place, -look.unit));
}

/// Inside the button where there is room, else above it, else below.
wxPoint place_of_number(const wxRect& place, const wxSize& label, const wxSize& picture) {
  wxPoint at = place.GetTopLeft();
  if (place.height < label.y)
    at.y = place.y >= label.y ? place.y - label.y : place.y + place.height;
  at.x = std::clamp(at.x, 0, std::max(0, picture.x - label.x));
  at.y = std::clamp(at.y, 0, std::max(0, picture.y - label.y));
  return at;
}

}  // namespace

wxRect shown_rectangle(const menu_rectangle& in_picture) {
  const auto [left, right] = std::minmax(in_picture.x0, in_picture.x1);
  const auto [top, bottom] = std::minmax(in_picture.y0, in_picture.y1);
  return {left, top, std::max(right - left, 1), std::max(bottom - top, 1)};
}

wxColour button_colour(const std::string& name) {
  const auto found = std::find_if(offered_colours.begin(), offered_colours.end(),
                                  [&name](const offered_colour& c) { return name == c.name; });
  return found == offered_colours.end() ? *wxBLACK
                                        : wxColour(found->red, found->green, found->blue);
}

void draw_look(wxDC& dc, const wxRect& place, const button_look& look) {
  draw_frame(dc, place, look.framed ? look.line : place.height, look.colour);
}

void draw_faint(wxDC& dc, const wxRect& place, int number, const wxSize& picture, int unit) {
  draw_frame(dc, grown(place, unit), unit, wxColour(0, 0, 0, 110));
  draw_frame(dc, place, unit, wxColour(255, 255, 255, 150));
  const wxString text = wxString::Format("%d", number);
  wxSize label = dc.GetTextExtent(text);
  label.IncBy(6 * unit, 2 * unit);
  const wxPoint at = place_of_number(place, label, picture);
  dc.SetBrush(wxBrush(wxColour(0, 0, 0, 120)));
  dc.DrawRectangle(at, label);
  dc.SetTextForeground(wxColour(255, 255, 255, 220));
  dc.DrawText(text, at.x + 3 * unit, at.y + unit);
}

void draw_outline(wxDC& dc, const wxRect& place, const outline_look& look) {
  draw_frame(dc, grown(place, 2 * look.unit), look.unit, *wxBLACK);
  draw_frame(dc, grown(place, look.unit), look.unit, *wxWHITE);
  if (!look.handles)
    return;
  for (const wxPoint& middle : handles_of(place, look.unit))
    draw_handle(dc, middle, look);
}

wxRect outline_extent(const wxRect& place, int unit) {
  return grown(place, (handle_edge + 3) * unit);
}

}  // namespace corvane
