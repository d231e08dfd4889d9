// The letters of menus and the colours of their buttons. A page of the menu maker's window.
#pragma once

#include "ui/maker/maker_events.h"
#include "ui/widgets/scrolled_column.h"

#include <functional>

class wxCheckBox;
class wxChoice;
class wxColourPickerCtrl;
class wxFlexGridSizer;
class wxSizer;
class wxSpinCtrl;
class wxStaticText;

namespace corvane {

class search_list;

class maker_letters_panel : public scrolled_column {
 public:
  maker_letters_panel(wxWindow* parent, menus_draft& draft, maker_events on);

  /// Shows what the draft says.
  void show_choices();

 private:
  void add(wxFlexGridSizer& grid, const char* label, wxWindow* control, wxWindow* behind = nullptr);
  wxSpinCtrl* make_number(const char* name, int least, int most, const char* tip);
  wxColourPickerCtrl* make_colour(const char* name, const char* tip);
  wxCheckBox* make_check(const char* name, const char* label);
  void take();
  void take_font(int entry);
  design_text& text_in(menu_design& look) const;
  const design_text& text_in(const menu_design& look) const;

  menus_draft& draft_;
  maker_events on_;
  wxArrayString fonts_;
  wxChoice* which_ = nullptr;
  search_list* font_ = nullptr;
  wxSpinCtrl* size_ = nullptr;
  wxSpinCtrl* least_ = nullptr;
  wxCheckBox* bold_ = nullptr;
  wxCheckBox* italic_ = nullptr;
  wxColourPickerCtrl* colour_ = nullptr;
  wxSpinCtrl* outline_ = nullptr;
  wxColourPickerCtrl* outline_colour_ = nullptr;
  wxSpinCtrl* shadow_ = nullptr;
  wxColourPickerCtrl* shadow_colour_ = nullptr;
  wxChoice* align_ = nullptr;
  wxChoice* highlight_ = nullptr;
  wxChoice* select_ = nullptr;
  wxSpinCtrl* frame_ = nullptr;
};

}  // namespace corvane
