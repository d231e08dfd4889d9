// The options of the menu in its editor: whether it loops, and with "advanced" when its buttons
// come and go.
#pragma once

#include "ui/widgets/typed_field.h"

#include <wx/panel.h>

#include <vector>

class wxCheckBox;
class wxSizer;
class wxStaticText;

namespace corvane {

class menu_options_panel : public wxPanel {
 public:
  menu_options_panel(wxWindow* parent, tell_event tell);

  /// True when other controls are shown than before, which need another room.
  bool show(const menu_editor_controls& c);

  /// Hands what was typed to the model.
  void apply(menu_editor& editor) const;

 private:
  wxCheckBox* make_check(wxWindow* parent, const char* name, const char* label, const char* tip,
                         void (menu_editor::*set)(bool));
  wxSizer* make_times(wxWindow* parent);
  void add_time(wxWindow* parent, wxSizer* row, const char* label, const char* name,
                typed_field::value shows, typed_field::setter sets);

  tell_event tell_;
  std::vector<typed_field> fields_;
  wxCheckBox* Check1_ = nullptr;
  wxCheckBox* Check2_ = nullptr;
  std::vector<wxWindow*> times_;  ///< both fields and their labels
};

}  // namespace corvane
