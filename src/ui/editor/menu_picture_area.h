// The picture of a menu with `HScroll1` below and `VScroll1` beside it, the strip that chooses the
// picture, and what is shown in it. The picture fills the room in its proportions, up to four times
// its size, or has the size that the user chose and is scrolled. A picture of another shape has its
// parent lay itself out anew.
#pragma once

#include "menus/menu_marks.h"
#include "ui/editor/menu_event.h"

#include <wx/panel.h>

class wxScrollBar;

namespace corvane {

class menu_picture;
class menu_view_bar;
class video_strip;

class menu_picture_area : public wxPanel {
 public:
  /// `words`: what a button does.
  menu_picture_area(wxWindow* parent, const menu_editor& editor, const tell_event& tell,
                    const words_of_action& words);

  menu_picture& picture() { return *picture_; }
  video_strip& strip() { return *strip_; }

  /// The lines of the video and its proportions on a television (0 x 0: not known). One of 16:9 is
  /// shown in them at first, another one with square dots.
  void set_video(int lines, wxSize proportions);

  void show(const menu_editor_controls& c);

  /// The height in which the picture fills a width, with all that stands around it.
  int height_in(int width) const;

 protected:
  wxSize DoGetBestClientSize() const override;

 private:
  wxScrollBar* make_scroll(const char* name, long style, const char* tip,
                           void (menu_editor::*scroll)(int), const tell_event& tell);
  wxSize bars() const;
  wxSize around() const;
  void arrange();
  void show_view();
  void zoom_by(int steps);
  void zoom_to(int zoom);
  void on_key(wxKeyEvent& event);
  double fitted_scale() const;

  int lines_;
  wxSize proportions_;
  wxSize full_size_;  ///< of the picture at 100 %
  menu_picture* picture_ = nullptr;
  wxScrollBar* HScroll1_ = nullptr;
  wxScrollBar* VScroll1_ = nullptr;
  video_strip* strip_ = nullptr;
  menu_view_bar* bar_ = nullptr;
};

}  // namespace corvane
