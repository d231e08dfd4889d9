// Dragging the selected rows of a list to another place in it: a line shows where they would come.
//
// A press on one of several selected rows keeps them selected, so that they can be dragged
// together; let go without a drag it selects that row alone. Esc gives the drag up.
#pragma once

#include <wx/gdicmn.h>

#include <functional>

class wxDataViewListCtrl;
class wxMouseEvent;
class wxPopupWindow;
#ifdef __WXGTK__
struct _GtkGesture;
#endif

namespace corvane {

class menu_row_drag {
 public:
  struct wishes {
    std::function<void(int)> select;       ///< this row alone
    std::function<void(int)> move_before;  ///< the selected rows before this one, or behind all
  };

  /// The list must live longer, and `on` be of use as long.
  menu_row_drag(wxDataViewListCtrl& list, wishes on);
  menu_row_drag(const menu_row_drag&) = delete;
  menu_row_drag& operator=(const menu_row_drag&) = delete;
  ~menu_row_drag();

  bool is_on() const { return dragging_; }
  void give_up();

 private:
  // Places are those of the rows' window. True: the list is not to see it.
  bool press(const wxPoint& p);
  bool move_to(const wxPoint& p);
  bool release();

  void watch_pointer();
  void select_alone(int row);
  int row_at(const wxPoint& p) const;
  int row_before(int y) const;
  wxRect rect_of(int row) const;
  void show_mark();
  void scroll_at_edge(int y);

  wxDataViewListCtrl& list_;
  wishes on_;
  wxPopupWindow* mark_;
#ifdef __WXGTK__
  _GtkGesture* gesture_ = nullptr;
#endif
  wxPoint pressed_at_;
  int pressed_ = -1;   ///< the row; -1: none
  bool kept_ = false;  ///< the press was kept from the list
  bool dragging_ = false;
  int before_ = -1;
};

}  // namespace corvane
