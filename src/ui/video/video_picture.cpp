#include "ui/video/video_picture.h"

#include <wx/dcbuffer.h>

#include <algorithm>
#include <cmath>

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
  shown_.show(picture);
  Refresh(false);
}

void video_picture::show_reason(const wxString& reason) {
  shown_.tell(reason);
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
  shown_.paint(paint, *this, place());
}

}  // namespace corvane
