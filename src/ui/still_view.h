// A picture that fills its window as far as its proportions allow, or a reason why there is none.
#pragma once

#include <wx/bitmap.h>
#include <wx/gdicmn.h>
#include <wx/image.h>
#include <wx/window.h>

namespace corvane {

class still_view : public wxWindow {
 public:
  still_view(wxWindow* parent, const char* name);

  /// The picture is shown in these proportions, whatever its pixels are.
  void show(const wxImage& picture, wxSize proportions);

  /// A text in the picture's place.
  void show_reason(const wxString& reason);

  const wxImage& picture() const { return picture_; }  ///< null when there is none
  const wxString& reason() const { return reason_; }   ///< empty when there is a picture

 private:
  void on_paint(wxPaintEvent& event);
  void paint_reason(wxDC& dc, const wxRect& to) const;
  wxRect place() const;

  wxImage picture_;
  wxSize proportions_{4, 3};
  wxString reason_;
  wxBitmap scaled_;
};

}  // namespace corvane
