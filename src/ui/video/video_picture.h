// The picture of a video, in its proportions and as large as its room allows, on black.
#pragma once

#include "ui/widgets/picture_or_reason.h"

#include <wx/window.h>

namespace corvane {

class video_picture : public wxWindow {
 public:
  explicit video_picture(wxWindow* parent);

  /// The proportions in which pictures are shown: 4 x 3. They are also what is asked for as room,
  /// in pixels at 100 %.
  void set_full_size(wxSize size);

  void show_picture(const wxImage& picture);

  /// Shows a text in the picture's place.
  void show_reason(const wxString& reason);

  /// What was shown last, in its own size; not OK when there is none.
  const wxImage& shown_picture() const { return shown_.picture(); }
  const wxString& reason() const { return shown_.reason(); }

  /// Nothing is done to it by key.
  bool AcceptsFocus() const override { return false; }

 protected:
  wxSize DoGetBestClientSize() const override { return full_size_; }

 private:
  wxRect place() const;
  void on_paint();

  wxSize full_size_;
  picture_or_reason shown_;
};

}  // namespace corvane
