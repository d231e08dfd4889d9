// `MediaPlayer1` with `Shape1` and `Shape2`: the picture of a menu and its buttons over it, each in
// its own look, as the disc will show them, with what it does. The pointer moves and sizes the
// selected button and picks another one; the arrow keys move it by a pixel, with Shift size it.
//
// It shows what the editor's model says and tells it what the user did; it decides nothing itself.
// A picture that is larger than this window is scrolled, and scrolls along with a button that is
// dragged, moved or picked beyond what is seen of it.
#pragma once

#include "menus/menu_marks.h"
#include "menus/menu_overlay.h"
#include "ui/editor/file_pictures.h"
#include "ui/editor/menu_drawing.h"
#include "ui/editor/menu_event.h"
#include "ui/editor/outline_grip.h"

#include <wx/image.h>
#include <wx/timer.h>
#include <wx/window.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

enum class shown_ways { none, chosen, all };

/// What the picture shows besides the menu as it is highlighted.
struct picture_options {
  bool pressed = false;                ///< the select looks
  shown_ways ways = shown_ways::none;  ///< where the arrow keys lead
  bool safe_area = false;
  bool operator==(const picture_options&) const = default;
};

/// What the user asks for over the picture that is not the editor's.
struct picture_wishes {
  std::function<void()> play_or_pause;     ///< Space
  std::function<void()> stop;              ///< a button is taken hold of
  std::function<void(int steps)> zoom_by;  ///< Ctrl and the wheel: in (1) or out (-1)
};

class menu_picture : public wxWindow {
 public:
  /// `words`: what a button does.
  menu_picture(wxWindow* parent, const menu_editor& editor, tell_event tell, words_of_action words,
               picture_wishes wishes);

  /// A picture of the video. It is drawn as large as set_view says.
  void show_picture(const wxImage& picture);

  /// Why there is no picture; then the buttons stand over a plain background.
  void show_reason(const wxString& reason);

  /// Draws what has changed since the last time.
  void show_buttons();

  void set_options(const picture_options& options);

  /// How large the whole picture is shown.
  void set_view(wxSize shown);

 private:
  /// All that the outline is drawn from.
  struct drawn {
    wxRect place;
    bool sizes = false;
    bool focused = false;
    bool operator==(const drawn&) const = default;
  };
  /// All that the dots of the buttons are drawn from.
  struct drawn_dots {
    std::vector<overlay_button> buttons;
    int thickness = 0;
    bool operator==(const drawn_dots&) const = default;
  };
  struct drag {
    outline_grip grip;
    menu_point from;  ///< the pointer at its start
    menu_rectangle edges;
    drag_ways ways;
    wxPoint last;  ///< in this window, where the pointer was seen last
  };

  picture_scale scale() const;
  wxRect place_of(int index) const;
  std::optional<drawn> outline_now() const;
  int unit() const;
  void draw_anew(const wxRect& in_picture);
  void draw_all_anew();
  void show_dots();
  void show_marks();
  void show_ways();
  void show_outline();
  void show_others();
  void show_guides();
  wxRect in_view(const button_box& dots) const;
  shown_mark measured(const button_mark& mark, const wxDC& dc) const;
  void arrange_scrolling();
  void scroll_to(wxPoint origin);
  void follow_outline();
  void go_on_scrolling();
  void on_scroll(wxScrollWinEvent& event);
  void paint_part(wxDC& dc, const wxRect& part);
  void paint_over(wxDC& dc, const wxRect& part);
  void paint_reason(wxDC& dc);
  void on_paint(wxPaintEvent& event);
  void on_down(wxMouseEvent& event);
  void on_motion(wxMouseEvent& event);
  void on_up(wxMouseEvent& event);
  void on_wheel(wxMouseEvent& event);
  void on_key(wxKeyEvent& event);
  outline_grip grip_under(wxPoint p) const;
  int faint_under(wxPoint p) const;
  int button_under(wxPoint p) const;
  bool is_outlined(int index) const;
  void drag_to(wxPoint p, drag_ways ways);
  void drag_in_sight(wxPoint in_window, drag_ways ways);
  void end_drag();

  const menu_editor& editor_;
  tell_event tell_;
  words_of_action words_;
  picture_wishes wishes_;
  picture_options options_;
  wxImage picture_;
  wxString reason_;
  wxSize view_;     ///< of the whole picture
  wxPoint origin_;  ///< the place in it that this window's corner shows
  file_bitmaps bitmaps_;
  overlay_picture overlay_;
  drawn_dots dots_;
  std::vector<shown_mark> marks_;
  std::vector<shown_way> ways_;
  std::optional<drawn> outline_;
  std::vector<wxRect> also_selected_;  ///< the places of the other selected buttons
  std::vector<snap_guide> guides_;
  std::optional<drag> drag_;
  std::optional<menu_rectangle> followed_;  ///< the outline that is in sight, in menu pixels
  bool pointing_ = false;                   ///< the pointer does something: it is in sight
  wxTimer drag_scrolls_;
};

}  // namespace corvane
