#include "ui/video/video_picture.h"

#include "ui/widgets/wrapped_text.h"

#include <wx/control.h>
#include <wx/dcbuffer.h>
#include <wx/dcgraph.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace corvane {

video_picture::video_picture(wxWindow* parent) : full_size_(parent->FromDIP(wxSize(640, 480))) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
         wxBORDER_NONE | wxFULL_REPAINT_ON_RESIZE);
  Bind(wxEVT_PAINT, [this](wxPaintEvent&) { on_paint(); });
}

void video_picture::set_full_size(wxSize size) {
  full_size_ = FromDIP(size);
  InvalidateBestSize();
}

void video_picture::show_picture(const wxImage& picture) {
  picture_ = picture;
  bitmap_ = wxBitmap(picture);
  reason_.clear();
  Refresh(false);
}

void video_picture::show_reason(const wxString& reason) {
  picture_ = wxImage();
  bitmap_ = wxBitmap();
  reason_ = reason;
  Refresh(false);
}

wxRect video_picture::place() const {
  const wxSize room = GetClientSize();
  const double scale = std::min(static_cast<double>(room.x) / full_size_.x,
                                static_cast<double>(room.y) / full_size_.y);
  const auto scaled = [scale](int length) {
    return std::max(1, static_cast<int>(std::lround(length * scale)));
  };
  const wxSize size(scaled(full_size_.x), scaled(full_size_.y));
  return {wxPoint((room.x - size.x) / 2, (room.y - size.y) / 2), size};
}

void video_picture::on_paint() {
  wxAutoBufferedPaintDC paint(this);
  paint.SetBackground(*wxBLACK_BRUSH);
  paint.Clear();
  if (bitmap_.IsOk()) {
    const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(paint));
    const wxRect at = place();
    context->DrawBitmap(bitmap_, at.x, at.y, at.width, at.height);
  } else {
    paint.SetFont(GetFont());
    paint.SetTextForeground(wxColour(230, 230, 230));
    const wxRect room = wxRect(GetClientSize()).Deflate(FromDIP(20));
    paint.DrawLabel(wrapped(paint, reason_, room.width), room, wxALIGN_CENTRE);
  }
}

}  // namespace corvane
