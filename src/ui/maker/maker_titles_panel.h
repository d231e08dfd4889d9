// What menus are made of: the titles, which of them get a menu of their chapters, and what becomes
// of what is there already. A page of the menu maker's window.
#pragma once

#include "ui/maker/maker_events.h"
#include "ui/widgets/scrolled_column.h"

#include <vector>

class wxButton;
class wxCheckBox;
class wxCheckListBox;
class wxChoice;
class wxSizer;
class wxStaticText;

namespace corvane {

class maker_titles_panel : public scrolled_column {
 public:
  maker_titles_panel(wxWindow* parent, menus_draft& draft, maker_events on);

  /// Shows what the draft says.
  void show_choices();

 private:
  wxCheckBox* make_check(const char* name, const char* label, const char* tip,
                         std::function<void(menu_wishes&, bool)> take);
  wxSizer* make_titles();
  void make_own_menus(wxSizer& column);
  void take_tick(int row);

  menus_draft& draft_;
  maker_events on_;
  std::vector<menus_draft::offered_title> shown_;
  wxStaticText* none_ = nullptr;
  wxCheckListBox* titles_ = nullptr;
  wxButton* all_ = nullptr;
  wxButton* nothing_ = nullptr;
  wxCheckBox* play_all_ = nullptr;
  wxCheckBox* ends_ = nullptr;
  wxCheckBox* begins_ = nullptr;
  wxCheckBox* jump_table_ = nullptr;
  wxCheckBox* keeps_places_ = nullptr;
  wxStaticText* own_label_ = nullptr;
  wxChoice* own_ = nullptr;
  menu_moves moves_;  ///< that can be kept
};

}  // namespace corvane
