#include "ui/editor/menu_drawing.h"

#include "ui/editor/outline_grip.h"
#include "ui/widgets/wx_text.h"

#include <wx/brush.h>
#include <wx/pen.h>

#include <algorithm>
#include <cmath>

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

constexpr int label_side = 3, label_top = 1;  // between a label's edge and its text
constexpr int arrow_aside = 4;                // of a way, so that the way back stands beside it
constexpr int arrow_length = 9, arrow_half = 4;

const wxColour label_ground(16, 18, 22, 205), trouble_ground(170, 0, 0, 225);
const wxColour label_text(255, 255, 255);
const wxColour clash_ground(255, 0, 0, 110), trouble_line(255, 40, 40);
const wxColour way_dark(0, 0, 0, 190), way_light(80, 220, 255);

wxString listed_numbers(const std::vector<int>& indexes) {
  wxString text;
  for (const int index : indexes)
    text += (text.empty() ? "" : ", ") + wxString::Format("%d", index + 1);
  return text;
}

bool is_trouble(const button_mark& mark) {
  return !mark.is_reached || !mark.overlaps.empty();
}

/// The head of an arrow that ends at `to`.
std::vector<wxPoint> arrow_head(const shown_way& way, int unit) {
  const double dx = way.to.x - way.from.x, dy = way.to.y - way.from.y;
  const double length = std::max(1.0, std::hypot(dx, dy));
  const double along_x = dx / length * unit, along_y = dy / length * unit;
  const auto at = [&](double back, double aside) {
    return wxPoint(static_cast<int>(std::lround(way.to.x - back * along_x - aside * along_y)),
                   static_cast<int>(std::lround(way.to.y - back * along_y + aside * along_x)));
  };
  return {way.to, at(arrow_length, arrow_half), at(arrow_length, -arrow_half)};
}

void draw_dashed_frame(wxDC& dc, const wxRect& place, int unit, const wxColour& colour) {
  dc.SetBrush(*wxTRANSPARENT_BRUSH);
  dc.SetPen(wxPen(wxColour(0, 0, 0, 160), unit));
  dc.DrawRectangle(place);
  dc.SetPen(wxPen(colour, unit, wxPENSTYLE_SHORT_DASH));
  dc.DrawRectangle(place);
}

}  // namespace

wxRect shown_rectangle(const menu_rectangle& in_picture) {
  const auto [left, right] = std::minmax(in_picture.x0, in_picture.x1);
  const auto [top, bottom] = std::minmax(in_picture.y0, in_picture.y1);
  return {left, top, std::max(right - left, 1), std::max(bottom - top, 1)};
}

wxString text_of_mark(const button_mark& mark) {
  wxString wrong;
  if (!mark.overlaps.empty())
    wrong = "overlaps " + listed_numbers(mark.overlaps);
  if (!mark.is_reached)
    wrong += (wrong.empty() ? "" : ", ") + wxString("no arrow key leads here");
  if (wrong.empty())
    return wx_text(mark.words);
  return wxString::Format("%d: ", mark.index + 1) + wrong;
}

wxRect place_of_label(const wxRect& button, const wxSize& label, int line, const wxSize& picture) {
  const bool inside = button.width >= label.x + 2 * line && button.height >= label.y + 2 * line;
  wxPoint at = button.GetTopLeft();
  if (inside)
    at += wxPoint(line, line);
  else
    at.y = button.y >= label.y ? button.y - label.y : button.y + button.height;
  at.x = std::clamp(at.x, 0, std::max(0, picture.x - label.x));
  at.y = std::clamp(at.y, 0, std::max(0, picture.y - label.y));
  return {at, label};
}

wxSize label_size(const wxSize& text, int unit) {
  return text + wxSize(2 * label_side * unit, 2 * label_top * unit);
}

void draw_mark(wxDC& dc, const shown_mark& mark, int unit) {
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(clash_ground));
  for (const wxRect& clash : mark.clashes)
    dc.DrawRectangle(clash);
  const bool trouble = is_trouble(mark.mark);
  if (trouble)
    draw_dashed_frame(dc, grown(mark.place, unit), unit, trouble_line);
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(trouble ? trouble_ground : label_ground));
  dc.DrawRectangle(mark.label);
  dc.SetTextForeground(label_text);
  dc.DrawText(mark.text, mark.label.x + label_side * unit, mark.label.y + label_top * unit);
}

wxRect extent_of(const shown_mark& mark, int unit) {
  wxRect all = mark.label;
  all.Union(grown(mark.place, 3 * unit));
  for (const wxRect& clash : mark.clashes)
    all.Union(clash);
  return grown(all, unit);
}

shown_way way_between(arrow_key key, const wxRect& from, const wxRect& to, int unit) {
  const auto middle = [](const wxRect& r) {
    return wxPoint(r.x + r.width / 2, r.y + r.height / 2);
  };
  shown_way way{middle(from), middle(to)};
  const int aside = arrow_aside * unit;
  switch (key) {
    case arrow_key::up:
      way = {{way.from.x + aside, from.y}, {way.to.x + aside, to.y + to.height}};
      break;
    case arrow_key::down:
      way = {{way.from.x - aside, from.y + from.height}, {way.to.x - aside, to.y}};
      break;
    case arrow_key::left:
      way = {{from.x, way.from.y - aside}, {to.x + to.width, way.to.y - aside}};
      break;
    case arrow_key::right:
      way = {{from.x + from.width, way.from.y + aside}, {to.x, way.to.y + aside}};
      break;
  }
  return way;
}

void draw_way(wxDC& dc, const shown_way& way, int unit) {
  const std::vector<wxPoint> head = arrow_head(way, unit);
  dc.SetPen(wxPen(way_dark, 4 * unit));
  dc.DrawLine(way.from, way.to);
  dc.SetBrush(wxBrush(way_light));
  dc.SetPen(wxPen(way_dark, 2 * unit));
  dc.DrawPolygon(static_cast<int>(head.size()), head.data());
  dc.SetPen(wxPen(way_light, 2 * unit));
  dc.DrawLine(way.from, way.to);
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.DrawPolygon(static_cast<int>(head.size()), head.data());
}

wxRect extent_of(const shown_way& way, int unit) {
  return grown(wxRect(way.from, way.to), (arrow_length + 4) * unit);
}

void draw_safe_area(wxDC& dc, const wxSize& picture, int unit) {
  dc.SetTextForeground(label_text);
  for (const int percent : {90, 80}) {
    const wxSize size(picture.x * percent / 100, picture.y * percent / 100);
    const wxRect place(wxPoint((picture.x - size.x) / 2, (picture.y - size.y) / 2), size);
    draw_dashed_frame(dc, place, unit, wxColour(120, 255, 120));
    const wxString text = wxString::Format(percent == 90 ? "%d %% shown" : "%d %% texts", percent);
    const wxRect label(wxPoint(place.GetRight() - dc.GetTextExtent(text).x - 8 * unit, place.y),
                       label_size(dc.GetTextExtent(text), unit));
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(label_ground));
    dc.DrawRectangle(label);
    dc.DrawText(text, label.x + label_side * unit, label.y + label_top * unit);
  }
}

wxRect extent_of_guide(const snap_guide& guide, const picture_scale& scale, int unit) {
  const menu_rectangle line = guide.upright
                                  ? menu_rectangle{guide.at, guide.from, guide.at, guide.to}
                                  : menu_rectangle{guide.from, guide.at, guide.to, guide.at};
  return grown(shown_rectangle(scale.to_picture(line)), unit);
}

void draw_guide(wxDC& dc, const snap_guide& guide, const picture_scale& scale, int unit) {
  const wxRect line = extent_of_guide(guide, scale, unit);
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(*wxBLACK));
  dc.DrawRectangle(line);
  dc.SetBrush(wxBrush(wxColour(255, 80, 255)));
  dc.DrawRectangle(guide.upright ? wxRect(line).Deflate(unit, 0) : wxRect(line).Deflate(0, unit));
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
