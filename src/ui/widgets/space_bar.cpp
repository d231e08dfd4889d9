#include "ui/widgets/space_bar.h"

#include "examine/space_rules.h"
#include "ui/widgets/layout.h"

#include <wx/dcbuffer.h>
#include <wx/dcgraph.h>
#include <wx/settings.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
namespace {

constexpr int bar_height = 12;

const wxColour fits_colour(46, 158, 91), needs_double_colour(214, 130, 28),
    too_much_colour(196, 43, 28);

const wxColour& colour_of(std::uint64_t bytes) {
  if (bytes > double_layer_bytes)
    return too_much_colour;
  return bytes > single_layer_bytes ? needs_double_colour : fits_colour;
}

}  // namespace

space_bar::space_bar(wxWindow* parent) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);  // all of it is drawn, in one go
  Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
         wxBORDER_NONE | wxFULL_REPAINT_ON_RESIZE);
  Bind(wxEVT_PAINT, [this](wxPaintEvent&) { on_paint(); });
}

void space_bar::show_used(std::uint64_t bytes) {
  if (used_ == bytes)
    return;
  used_ = bytes;
  Refresh(false);
}

// What is too much for any disc shows beyond the larger one.
int space_bar::place_of(std::uint64_t bytes) const {
  const double whole =
      std::max(static_cast<double>(double_layer_bytes), 1.02 * static_cast<double>(used_));
  return static_cast<int>(std::lround(static_cast<double>(bytes) / whole * GetClientSize().x));
}

wxSize space_bar::DoGetBestClientSize() const {
  const wxSize labels = GetTextExtent("DVD-5DVD-9");
  return {2 * labels.x, FromDIP(bar_height + layout::label_gap) + labels.y};
}

// The bar, the ends of the two discs as lines across it, and below each line its disc.
void space_bar::on_paint() {
  wxAutoBufferedPaintDC paint(this);
  paint.SetBackground(wxBrush(GetParent()->GetBackgroundColour()));
  paint.Clear();
  wxGCDC dc(paint);
  const int width = GetClientSize().x, height = FromDIP(bar_height), unit = FromDIP(1);
  const wxColour line = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNSHADOW);
  const wxColour text = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNTEXT);
  dc.SetPen(wxPen(line, unit));
  dc.SetBrush(*wxTRANSPARENT_BRUSH);
  dc.DrawRectangle(0, 0, width, height);
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(colour_of(used_)));
  if (const int used = place_of(used_); used_ > 0)
    dc.DrawRectangle(unit, unit, std::max(unit, used - 2 * unit), height - 2 * unit);
  dc.SetFont(GetFont());
  dc.SetTextForeground(text);
  dc.SetBrush(wxBrush(text));
  int free_from = 0;
  for (const auto& [bytes, name] :
       {std::pair(single_layer_bytes, "DVD-5"), std::pair(double_layer_bytes, "DVD-9")}) {
    const int at = std::min(place_of(bytes), width - unit);
    dc.DrawRectangle(at, 0, unit, height + FromDIP(layout::label_gap));
    const int wide = dc.GetTextExtent(name).x;
    const int left = std::clamp(at - wide / 2, free_from, std::max(free_from, width - wide));
    dc.DrawText(name, left, height + FromDIP(layout::label_gap));
    free_from = left + wide + FromDIP(layout::label_gap);
  }
}

}  // namespace corvane
