#include "ui/widgets/picture_or_reason.h"

#include "ui/widgets/wrapped_text.h"

#include <wx/control.h>
#include <wx/dcbuffer.h>
#include <wx/dcgraph.h>

#include <memory>

namespace corvane {

void picture_or_reason::show(const wxImage& picture) {
  picture_ = picture;
  bitmap_ = wxBitmap(picture);
  reason_.clear();
}

void picture_or_reason::tell(const wxString& reason) {
  picture_ = wxImage();
  bitmap_ = wxBitmap();
  reason_ = reason;
}

void picture_or_reason::paint(wxAutoBufferedPaintDC& dc, const wxWindow& window,
                              const wxRect& place) const {
  dc.SetBackground(*wxBLACK_BRUSH);
  dc.Clear();
  if (bitmap_.IsOk()) {
    const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
    context->DrawBitmap(bitmap_, place.x, place.y, place.width, place.height);
    return;
  }
  dc.SetFont(window.GetFont());
  dc.SetTextForeground(wxColour(230, 230, 230));
  const wxRect room = wxRect(window.GetClientSize()).Deflate(window.FromDIP(20));
  dc.DrawLabel(wrapped(dc, reason_, room.width), room, wxALIGN_CENTRE);
}

}  // namespace corvane
