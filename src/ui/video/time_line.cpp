#include "ui/video/time_line.h"

#include "formats/time_text.h"
#include "ui/widgets/wx_text.h"

#include <wx/dcbuffer.h>
#include <wx/dcgraph.h>
#include <wx/settings.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace corvane {
namespace {

const wxColour mark_colour(46, 158, 91);
const wxColour landing_colour(214, 130, 28);

}  // namespace

time_line::time_line(wxWindow* parent, std::function<void(double)> choose)
    : choose_(std::move(choose)) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);  // all of it is drawn, in one go
  Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
         wxBORDER_NONE | wxFULL_REPAINT_ON_RESIZE);
  Bind(wxEVT_PAINT, [this](wxPaintEvent&) { on_paint(); });
  for (const auto& type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_DCLICK, wxEVT_LEFT_UP, wxEVT_MOTION})
    Bind(type, &time_line::on_pointer, this);
  Bind(wxEVT_MOUSE_CAPTURE_LOST, [](wxMouseCaptureLostEvent&) {});
  for (const auto& type : {wxEVT_SET_FOCUS, wxEVT_KILL_FOCUS})
    Bind(type, [this](wxFocusEvent& event) {
      Refresh(false);
      event.Skip();
    });
}

// The window may close in the middle of a drag.
time_line::~time_line() {
  if (HasCapture())
    ReleaseMouse();
}

void time_line::set_length(double seconds) {
  length_ = seconds;
  Refresh(false);
}

void time_line::set_position(double seconds, double landing) {
  position_ = seconds;
  landing_ = landing;
  Refresh(false);
}

void time_line::set_marks(std::vector<double> seconds) {
  marks_ = std::move(seconds);
  Refresh(false);
}

wxSize time_line::DoGetBestClientSize() const {
  return FromDIP(wxSize(200, 30));
}

int time_line::margin() const {
  return FromDIP(8);
}

int time_line::place_of(double seconds) const {
  const int width = std::max(1, GetClientSize().x - 2 * margin());
  const double part = length_ > 0 ? std::clamp(seconds / length_, 0.0, 1.0) : 0;
  return margin() + static_cast<int>(std::lround(part * width));
}

double time_line::time_at(int x) const {
  const int width = std::max(1, GetClientSize().x - 2 * margin());
  return std::clamp(static_cast<double>(x - margin()) / width, 0.0, 1.0) * length_;
}

void time_line::on_pointer(wxMouseEvent& event) {
  const double seconds = time_at(event.GetX());
  if (event.LeftDown() || event.LeftDClick()) {
    SetFocus();
    if (!HasCapture())
      CaptureMouse();
    choose_(seconds);
  } else if (event.Dragging() && HasCapture()) {
    choose_(seconds);
  } else if (event.LeftUp() && HasCapture()) {
    ReleaseMouse();
  }
  SetToolTip(wx_text(time_text(seconds)));
}

// From the top: the marks of chapters, the line with the part before the position filled, the place
// where a chapter would land, the thumb.
void time_line::on_paint() {
  wxAutoBufferedPaintDC paint(this);
  paint.SetBackground(wxBrush(GetParent()->GetBackgroundColour()));
  paint.Clear();
  wxGCDC dc(paint);
  const wxSize size = GetClientSize();
  const int unit = FromDIP(1), middle = size.y * 3 / 5, half = FromDIP(3);
  const wxColour line = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNSHADOW);
  const wxColour filled = wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT);
  const int left = margin(), right = size.x - margin(), at = place_of(position_);
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(line));
  dc.DrawRoundedRectangle(left - half, middle - half, right - left + 2 * half, 2 * half, half);
  if (!IsEnabled())
    return;
  dc.SetBrush(wxBrush(filled));
  dc.DrawRoundedRectangle(left - half, middle - half, at - left + 2 * half, 2 * half, half);
  dc.SetBrush(wxBrush(mark_colour));
  for (const double seconds : marks_) {
    const int x = place_of(seconds), top = middle - half - 7 * unit;
    const std::array<wxPoint, 3> triangle{wxPoint(x - 4 * unit, top), wxPoint(x + 4 * unit, top),
                                          wxPoint(x, middle - half)};
    dc.DrawPolygon(static_cast<int>(triangle.size()), triangle.data());
    dc.DrawRectangle(x - unit / 2, middle - half, unit, 2 * half);
  }
  dc.SetBrush(wxBrush(landing_colour));
  dc.DrawRectangle(place_of(landing_) - unit, middle - half - unit, 2 * unit, 4 * half);
  dc.SetPen(wxPen(HasFocus() ? filled : line, HasFocus() ? 2 * unit : unit));
  dc.SetBrush(*wxWHITE_BRUSH);
  dc.DrawCircle(at, middle, 6 * unit);
}

}  // namespace corvane
