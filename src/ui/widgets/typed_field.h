// A field of the menu editor that the user types into. What was typed counts once the field is
// left, with Enter, or when anything else happens in the window.
#pragma once

#include "ui/editor/menu_event.h"

#include <wx/combobox.h>
#include <wx/textctrl.h>

#include <functional>
#include <string>

namespace corvane {

class typed_field {
 public:
  using setter = void (menu_editor::*)(const std::string&);
  using value = std::string menu_editor_controls::*;

  /// The field shows `shows` of the model's controls and hands what was typed to `sets`.
  typed_field(wxTextCtrl* field, value shows, setter sets, const tell_event& tell);
  typed_field(wxComboBox* field, value shows, setter sets, const tell_event& tell);

  /// Shows the model's value, whatever was typed.
  void show(const menu_editor_controls& c);

  /// Shows nothing, whatever the model's value: it is not what the field is about.
  void show_nothing();

  /// Hands what was typed to the model; false when the field shows the model's value.
  bool apply(menu_editor& editor) const;

 private:
  void bind(const tell_event& tell);

  wxWindow* window_;
  wxTextEntry* entry_;
  value value_;
  setter set_;
  wxString shown_;
};

}  // namespace corvane
