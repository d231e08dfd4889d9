// The picture of a menu with `HScroll1` below and `VScroll1` beside it, and the strip that chooses
// the picture. It keeps the picture's proportions: at its own size where there is room, smaller on
// a small screen.
#pragma once

#include "ui/editor/menu_event.h"

#include <wx/panel.h>

class wxScrollBar;

namespace corvane {

class menu_picture;
class video_strip;

class menu_picture_area : public wxPanel {
 public:
  menu_picture_area(wxWindow* parent, const menu_editor& editor, const tell_event& tell);

  menu_picture& picture() { return *picture_; }
  video_strip& strip() { return *strip_; }

  /// The size of the video, in pixels at 100 %.
  void set_full_size(wxSize size);

  void show(const menu_editor_controls& c);

 protected:
  wxSize DoGetBestClientSize() const override;

 private:
  wxScrollBar* make_scroll(const char* name, long style, const char* tip,
                           void (menu_editor::*scroll)(int), const tell_event& tell);
  wxSize bars() const;
  wxSize around() const;
  void arrange();

  wxSize full_size_;
  menu_picture* picture_ = nullptr;
  wxScrollBar* HScroll1_ = nullptr;
  wxScrollBar* VScroll1_ = nullptr;
  video_strip* strip_ = nullptr;
};

}  // namespace corvane
