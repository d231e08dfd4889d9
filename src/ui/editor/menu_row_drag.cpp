#include "ui/editor/menu_row_drag.h"

#include <wx/dataview.h>
#include <wx/popupwin.h>
#include <wx/settings.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

namespace corvane {
namespace {

// In pixels at 100 %.
constexpr int least_drag = 4;
constexpr int mark_height = 3;

}  // namespace

menu_row_drag::menu_row_drag(wxDataViewListCtrl& list, wishes on)
    : list_(list), on_(std::move(on)), mark_(new wxPopupWindow(&list, wxBORDER_NONE)) {
  mark_->SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT));
  mark_->SetName("dropmark");
  watch_pointer();
}

#ifdef __WXGTK__

// The tree view's own gestures take the presses and what the pointer does then, so that no event
// of the mouse comes here. A press without modifiers is taken from them, and selects the row.
void menu_row_drag::watch_pointer() {
  gesture_ = gtk_gesture_drag_new(list_.GtkGetTreeView());
  gtk_event_controller_set_propagation_phase(GTK_EVENT_CONTROLLER(gesture_), GTK_PHASE_CAPTURE);
  gtk_gesture_single_set_button(GTK_GESTURE_SINGLE(gesture_), GDK_BUTTON_PRIMARY);
  using drag_step = void (*)(GtkGestureDrag*, gdouble, gdouble, menu_row_drag*);
  const drag_step begin = [](GtkGestureDrag* gesture, gdouble x, gdouble y, menu_row_drag* drag) {
    GdkModifierType modifiers{};
    gtk_get_current_event_state(&modifiers);
    int row_x = 0, row_y = 0;
    gtk_tree_view_convert_widget_to_bin_window_coords(GTK_TREE_VIEW(drag->list_.GtkGetTreeView()),
                                                      static_cast<int>(x), static_cast<int>(y),
                                                      &row_x, &row_y);
    if ((modifiers & gtk_accelerator_get_default_mod_mask()) != 0 || row_y < 0 ||
        !drag->press({static_cast<int>(x), static_cast<int>(y)}))
      gtk_gesture_set_state(GTK_GESTURE(gesture), GTK_EVENT_SEQUENCE_DENIED);
    else
      gtk_gesture_set_state(GTK_GESTURE(gesture), GTK_EVENT_SEQUENCE_CLAIMED);
  };
  const drag_step update = [](GtkGestureDrag*, gdouble x, gdouble y, menu_row_drag* drag) {
    drag->move_to(drag->pressed_at_ + wxPoint(static_cast<int>(x), static_cast<int>(y)));
  };
  const drag_step end = [](GtkGestureDrag*, gdouble, gdouble, menu_row_drag* drag) {
    drag->release();
  };
  using lost_drag = void (*)(GtkGesture*, GdkEventSequence*, menu_row_drag*);
  const lost_drag lost = [](GtkGesture*, GdkEventSequence*, menu_row_drag* drag) {
    drag->give_up();
  };
  g_signal_connect(gesture_, "cancel", G_CALLBACK(lost), this);
  g_signal_connect(gesture_, "drag-begin", G_CALLBACK(begin), this);
  g_signal_connect(gesture_, "drag-update", G_CALLBACK(update), this);
  g_signal_connect(gesture_, "drag-end", G_CALLBACK(end), this);
}

menu_row_drag::~menu_row_drag() {
  g_signal_handlers_disconnect_by_data(gesture_, this);
  g_object_unref(gesture_);
}

#else

void menu_row_drag::watch_pointer() {
  wxWindow* rows = list_.GetMainWindow();
  rows->Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) {
    event.Skip(event.GetModifiers() != wxMOD_NONE || !press(event.GetPosition()));
  });
  rows->Bind(wxEVT_MOTION, [this](wxMouseEvent& event) {
    if (!event.LeftIsDown() && pressed_ >= 0)
      give_up();
    event.Skip(!move_to(event.GetPosition()));
  });
  rows->Bind(wxEVT_LEFT_UP, [this](wxMouseEvent& event) { event.Skip(!release()); });
  rows->Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { give_up(); });
}

menu_row_drag::~menu_row_drag() = default;

#endif

wxRect menu_row_drag::rect_of(int row) const {
  return list_.GetItemRect(list_.RowToItem(row), list_.GetColumn(0));
}

int menu_row_drag::row_at(const wxPoint& p) const {
  for (int row = 0; row < list_.GetItemCount(); ++row) {
    const wxRect r = rect_of(row);
    if (!r.IsEmpty() && p.y >= r.GetTop() && p.y <= r.GetBottom())
      return row;
  }
  return -1;
}

/// The row before which something dropped at this height comes.
int menu_row_drag::row_before(int y) const {
  int before = -1;
  for (int row = 0; row < list_.GetItemCount(); ++row) {
    const wxRect r = rect_of(row);
    if (r.IsEmpty())
      continue;  // out of sight
    if (before < 0 || y > r.GetTop() + r.height / 2)
      before = before < 0 && y <= r.GetTop() + r.height / 2 ? row : row + 1;
  }
  return std::max(before, 0);
}

void menu_row_drag::select_alone(int row) {
  list_.UnselectAll();
  list_.SelectRow(static_cast<unsigned>(row));
  list_.SetCurrentItem(list_.RowToItem(row));
  on_.select(row);
}

bool menu_row_drag::press(const wxPoint& p) {
  give_up();
  const int row = row_at(p);
  if (row < 0)
    return false;
  pressed_ = row;
  pressed_at_ = p;
  kept_ = list_.GetSelectedItemsCount() > 1 && list_.IsRowSelected(static_cast<unsigned>(row));
  list_.SetFocus();
  if (kept_)
    return true;
#ifdef __WXGTK__
  select_alone(row);
  return true;
#else
  return false;
#endif
}

bool menu_row_drag::move_to(const wxPoint& p) {
  if (pressed_ < 0)
    return false;
  const int moved = std::max(std::abs(p.x - pressed_at_.x), std::abs(p.y - pressed_at_.y));
  if (!dragging_ && moved < list_.FromDIP(least_drag))
    return false;
  dragging_ = true;
  scroll_at_edge(p.y);
  before_ = row_before(p.y);
  show_mark();
  return true;
}

/// Rows out of sight come into it.
void menu_row_drag::scroll_at_edge(int y) {
  int first = -1, last = -1;
  for (int row = 0; row < list_.GetItemCount(); ++row)
    if (!rect_of(row).IsEmpty()) {
      first = first < 0 ? row : first;
      last = row;
    }
  if (first > 0 && y < rect_of(first).GetTop())
    list_.EnsureVisible(list_.RowToItem(first - 1));
  else if (last >= 0 && last + 1 < list_.GetItemCount() && y > rect_of(last).GetBottom())
    list_.EnsureVisible(list_.RowToItem(last + 1));
}

void menu_row_drag::show_mark() {
  const bool last = before_ >= list_.GetItemCount();
  const wxRect r = rect_of(last ? list_.GetItemCount() - 1 : before_);
  const wxWindow& rows = *list_.GetMainWindow();
  const int height = list_.FromDIP(mark_height);
  const int y = (last ? r.GetBottom() : r.GetTop()) - height / 2;
  mark_->SetSize(
      wxRect(rows.ClientToScreen(wxPoint(0, y)), wxSize(rows.GetClientSize().x, height)));
  if (!mark_->IsShown())
    mark_->Show();
}

bool menu_row_drag::release() {
  const bool was_dragged = dragging_, was_kept = kept_;
  const int row = pressed_, before = before_;
  give_up();
  if (was_dragged) {
    on_.move_before(before);
  } else if (was_kept) {
    select_alone(row);
  }
  return was_kept;
}

void menu_row_drag::give_up() {
  pressed_ = before_ = -1;
  kept_ = dragging_ = false;
  mark_->Hide();
}

}  // namespace corvane
