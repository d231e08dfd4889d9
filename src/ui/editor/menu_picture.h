// `MediaPlayer1` with `Shape1` and `Shape2`: the picture of a menu and its buttons over it. The
// pointer moves and sizes the selected button and picks another one; the arrow keys move it by a
// pixel, with Shift size it.
//
// It shows what the editor's model says and tells it what the user did; it decides nothing itself.
#pragma once

#include "ui/editor/menu_event.h"
#include "ui/editor/outline_grip.h"

#include <wx/bitmap.h>
#include <wx/image.h>
#include <wx/window.h>

#include <optional>
#include <string>
#include <vector>

namespace corvane {

class menu_picture : public wxWindow {
 public:
  menu_picture(wxWindow* parent, const menu_editor& editor, tell_event tell);

  /// A picture of the video. It is drawn as large as this window is.
  void show_picture(const wxImage& picture);

  /// Why there is no picture; then the buttons stand over a plain background.
  void show_reason(const wxString& reason);

  /// The bitmaps that the selected button is drawn with; null: it is drawn in its colour.
  void show_look(const wxBitmap& highlight);

  /// Draws what has changed since the last time.
  void show_buttons();

 private:
  /// All that the outline is drawn from.
  struct drawn {
    wxRect place;
    bool bitmap = false;
    std::string colour;
    int line = 0;
    bool framed = false;
    bool sizes = false;
    bool focused = false;
    bool operator==(const drawn&) const = default;
  };
  struct drag {
    outline_grip grip;
    menu_point from;  ///< the pointer at its start
    menu_rectangle edges;
  };

  picture_scale scale() const;
  std::optional<drawn> now() const;
  int unit() const;
  void compose();
  void paint_reason(wxDC& dc);
  void paint_others(wxDC& dc);
  const wxBitmap& look_for(wxSize size);
  void draw_selected(wxDC& dc, const drawn& d);
  void on_paint(wxPaintEvent& event);
  void on_down(wxMouseEvent& event);
  void on_motion(wxMouseEvent& event);
  void on_key(wxKeyEvent& event);
  outline_grip grip_under(wxPoint p) const;
  int faint_under(wxPoint p) const;
  int button_under(wxPoint p) const;
  bool is_outlined(int index) const;
  void drag_to(wxPoint p);
  void end_drag();

  const menu_editor& editor_;
  tell_event tell_;
  wxBitmap picture_;
  wxString reason_;
  wxBitmap highlight_, scaled_look_;
  wxBitmap base_;  ///< the picture with the faint buttons, composed when one of them changes
  std::vector<faint_button> composed_;
  std::optional<drawn> drawn_;
  std::optional<drag> drag_;
};

}  // namespace corvane
