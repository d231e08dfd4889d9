// What a window shows that is there for a picture: the picture, or in its place why there is none.
#pragma once

#include <wx/bitmap.h>
#include <wx/image.h>
#include <wx/string.h>

class wxAutoBufferedPaintDC;
class wxRect;
class wxWindow;

namespace corvane {

class picture_or_reason {
 public:
  void show(const wxImage& picture);
  void tell(const wxString& reason);

  /// What is shown, in its own size; not OK where there is a reason instead, or nothing yet.
  const wxImage& picture() const { return picture_; }
  const wxString& reason() const { return reason_; }

  /// All of `window` in black, and on it the picture at `place`, or the reason.
  void paint(wxAutoBufferedPaintDC& dc, const wxWindow& window, const wxRect& place) const;

 private:
  wxImage picture_;
  wxBitmap bitmap_;
  wxString reason_;
};

}  // namespace corvane
