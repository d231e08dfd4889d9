// The options of the menu in its editor: whether it loops, how thick the frames of its buttons are,
// and with "advanced" when its buttons come and go.
#pragma once

#include "ui/widgets/typed_field.h"

#include <wx/panel.h>

#include <vector>

class wxCheckBox;
class wxSizer;
class wxSlider;
class wxStaticText;

namespace corvane {

class menu_options_panel : public wxPanel {
 public:
  menu_options_panel(wxWindow* parent, tell_event tell);

  /// `of_chosen`: the values are the chosen button's. True when other controls are shown than
  /// before, which need another room.
  bool show(const menu_editor_controls& c, bool of_chosen);

  /// Hands what was typed to the model.
  void apply(menu_editor& editor) const;

 private:
  wxCheckBox* make_check(wxWindow* parent, const char* name, const char* label, const char* tip,
                         void (menu_editor::*set)(bool));
  wxSizer* make_thickness(wxWindow* parent);
  wxSizer* make_times(wxWindow* parent);
  void add_time(wxWindow* parent, wxSizer* row, const char* label, const char* name,
                typed_field::value shows, typed_field::setter sets);

  tell_event tell_;
  std::vector<typed_field> fields_;
  wxCheckBox* Check1_ = nullptr;
  wxCheckBox* Check2_ = nullptr;
  wxSlider* thickness_ = nullptr;
  wxStaticText* thickness_value_ = nullptr;
  std::vector<wxWindow*> frames_;  ///< what tells and sets it; not shown for a bitmap
  std::vector<wxWindow*> times_;   ///< both fields and their labels
};

}  // namespace corvane
