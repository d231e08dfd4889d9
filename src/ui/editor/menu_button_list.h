// The list of a menu's buttons beside its picture: number, looks, action and place of each. Several
// can be selected; dragging them, or Ctrl with the arrow keys, changes their order.
//
// It shows what the editor's model says and tells it what the user did.
#pragma once

#include "menus/menu_marks.h"
#include "ui/editor/menu_event.h"
#include "ui/editor/menu_row_drag.h"

#include <wx/panel.h>

#include <optional>
#include <string>
#include <vector>

class wxDataViewListCtrl;

namespace corvane {

class menu_button_list : public wxPanel {
 public:
  /// `words`: what a button does.
  menu_button_list(wxWindow* parent, tell_event tell, words_of_action words);

  /// A button that was just added is not selected here, so that a click picks it.
  void show(const menu_editor& editor);

  wxWindow& list();
  bool has_keyboard() const;

  /// Whether rows were dragged; they stay where they are.
  bool give_up_drag();

  /// Uses the keys that do more than select; false: it is none of them.
  bool use_key(int key, int modifiers);

 private:
  /// What a row is drawn from.
  struct shown_row {
    std::string highlight, select, action, place;
    bool operator==(const shown_row&) const = default;
  };

  void make_columns();
  void bind_list();
  void share_width(int width);
  void show_row(unsigned number, const shown_row& r);
  void show_selection(const std::vector<int>& wanted);
  std::vector<int> selected_rows() const;
  void tell_selection();
  void move_selected_before(int row);

  tell_event tell_;
  words_of_action words_;
  wxDataViewListCtrl* list_;
  std::optional<menu_row_drag> drag_;
  std::vector<shown_row> rows_;
  int width_shared_ = 0;  ///< for which the columns have their widths
  bool filling_ = false;
};

}  // namespace corvane
