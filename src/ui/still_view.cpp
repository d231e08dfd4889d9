#include "ui/still_view.h"

#include "ui/control_name.h"
#include "ui/layout.h"
#include "ui/shown_text.h"
#include "ui/wrapped_text.h"

#include <wx/dcbuffer.h>

#include <algorithm>

namespace corvane {

still_view::still_view(wxWindow* parent, const char* name) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_NONE);
  name_control(*this, name);
  Bind(wxEVT_PAINT, &still_view::on_paint, this);
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    Refresh(false);
    event.Skip();
  });
}

void still_view::show(const wxImage& picture, wxSize proportions) {
  picture_ = picture;
  proportions_ = proportions;
  reason_.clear();
  scaled_ = wxBitmap();
  Refresh(false);
}

void still_view::show_reason(const wxString& reason) {
  picture_ = wxImage();
  reason_ = reason;
  Refresh(false);
}

/// The largest place of the right proportions, in the middle.
wxRect still_view::place() const {
  const wxSize room = GetClientSize();
  const int width = std::min(room.x, room.y * proportions_.x / proportions_.y);
  const int height = width * proportions_.y / proportions_.x;
  return wxRect(wxSize(std::max(1, width), std::max(1, height))).CentreIn(wxRect(room));
}

void still_view::on_paint(wxPaintEvent&) {
  wxAutoBufferedPaintDC dc(this);
  dc.SetBackground(wxBrush(GetParent()->GetBackgroundColour()));
  dc.Clear();
  const wxRect to = place();
  if (!picture_.IsOk()) {
    paint_reason(dc, to);
    return;
  }
  if (!scaled_.IsOk() || scaled_.GetSize() != to.GetSize())
    scaled_ = wxBitmap(picture_.Scale(to.width, to.height, wxIMAGE_QUALITY_BILINEAR));
  dc.DrawBitmap(scaled_, to.GetTopLeft());
}

void still_view::paint_reason(wxDC& dc, const wxRect& to) const {
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(wxColour(52, 56, 64)));
  dc.DrawRectangle(to);
  const wxRect room = wxRect(to).Deflate(FromDIP(2 * layout::window_border));
  dc.SetFont(GetFont());
  dc.SetTextForeground(wxColour(230, 230, 230));
  dc.DrawLabel(wrapped(dc, reason_, room.width), room, wxALIGN_CENTRE);
}

}  // namespace corvane
