// The list of a menu's buttons beside its picture: number, looks, action and place of each. Several
// can be selected; Ctrl with the arrow keys changes their order.
//
// It shows what the editor's model says and tells it what the user did.
#pragma once

#include "ui/editor/menu_event.h"

#include <wx/panel.h>

#include <string>
#include <vector>

class wxDataViewListCtrl;

namespace corvane {

class menu_button_list : public wxPanel {
 public:
  menu_button_list(wxWindow* parent, tell_event tell);

  /// A button that was just added is not selected here, so that a click picks it.
  void show(const menu_editor& editor);

  wxWindow& list();
  bool has_keyboard() const;

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
  void show_row(unsigned number, const shown_row& r);
  void show_selection(const std::vector<int>& wanted);
  std::vector<int> selected_rows() const;
  void tell_selection();

  tell_event tell_;
  wxDataViewListCtrl* list_;
  std::vector<shown_row> rows_;
  bool filling_ = false;
};

}  // namespace corvane
