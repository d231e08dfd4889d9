// The map of a disc in its window: drawn, zoomed, moved about, with a selected node and row, and
// arrows that are dragged from a row to another node.
//
// It changes nothing itself; what the user asks for is handed on.
#pragma once

#include "ui/map/map_drawing.h"

#include <wx/window.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class wxKeyEvent;
class wxMouseEvent;

namespace corvane {

class map_canvas : public wxWindow {
 public:
  /// `exit`: the row, 1-based; 0: the node itself.
  struct handlers {
    std::function<void(const map_place&, int exit)> open;  ///< a double click, or Enter
    std::function<void(const map_place&, int exit, const wxPoint& at)> context;
    /// An arrow was dragged from a row to a node.
    std::function<void(const map_place& from, int exit, const map_place& to)> lead;
    std::function<void()> selected;  ///< another node or row is
    std::function<void()> zoomed;
  };

  map_canvas(wxWindow* parent, handlers on);
  ~map_canvas() override;

  /// Shows another map; the selected node stays if it is there still, and so does the place that is
  /// seen.
  void show_map(drawn_map map);
  const drawn_map& shown_map() const { return map_; }

  /// Null: nothing is there.
  const map_card* selected_card() const;
  int selected_exit() const { return highlight_.exit; }
  void select(const map_place& place, int exit);

  /// Nodes that do not say this are drawn faintly; the next one that does, from the selected one
  /// on or behind it, is selected. False: none does. An empty text: nothing is looked for.
  bool find(const std::string& words, bool behind);

  /// 1: a unit of the layout is a pixel at 100 %.
  double zoom() const { return zoom_; }
  void zoom_by(double factor);  ///< around the middle
  void zoom_fully() { set_zoom(1, middle()); }
  void fit();  ///< all of it can be seen

  void let_commands(bool enabled) { commands_enabled_ = enabled; }

  /// Whether something was being dragged; it is let go.
  bool cancel_drag();

  /// Where the middle of a node's head is, or that of a row, in pixels of the window.
  wxPoint place_on_window(const map_place& place, int exit) const;

  bool AcceptsFocus() const override { return IsEnabled(); }

 private:
  struct hit {
    std::optional<std::size_t> node;
    int exit = 0;
  };
  void on_paint();
  void on_key(wxKeyEvent& event);
  bool do_key(int key, bool control, bool shift);
  bool move_selection(bool back);
  void move_exit(int by);
  void on_left_down(wxMouseEvent& event);
  void on_motion(wxMouseEvent& event);
  void on_left_up(wxMouseEvent& event);
  void on_right_down(wxMouseEvent& event);
  void on_double_click(wxMouseEvent& event);
  void on_wheel(wxMouseEvent& event);
  void end_drag();
  void drag_arrow(const wxPoint& pointer);
  hit hit_at(const wxPoint& pointer) const;
  map_point on_map(const wxPoint& pointer) const;
  wxPoint middle() const;
  double scale() const;
  double fitting_zoom() const;
  void set_zoom(double zoom, const wxPoint& around);
  void pan(double dx, double dy);
  void keep_in_sight();
  void select_node(std::optional<std::size_t> node, int exit);
  void see(std::size_t node);
  int exits_of(std::size_t node) const;
  std::optional<std::size_t> index_of(const map_place& place) const;

  handlers on_;
  drawn_map map_;
  map_highlight highlight_;
  double zoom_ = 1;
  map_point origin_;        ///< of the layout, at the window's upper left corner
  bool is_placed_ = false;  ///< the place that is seen was chosen
  bool commands_enabled_ = true;
  enum class drag { none, pan, arrow } drag_ = drag::none;
  wxPoint pressed_at_, dragged_to_;
  bool has_moved_ = false;
  hit pressed_on_;
};

}  // namespace corvane
