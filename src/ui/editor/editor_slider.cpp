#include "ui/editor/editor_slider.h"

#include "ui/widgets/control_name.h"
#include "ui/widgets/wheel.h"

#include <wx/slider.h>

#include <algorithm>

namespace corvane {

wxSlider* make_editor_slider(wxWindow* parent, const char* name, void (menu_editor::*slide)(int),
                             const tell_event& tell) {
  auto* control = new wxSlider(parent, wxID_ANY, 0, 0, 1);
  name_control(*control, name);
  let_wheel_pass(*control);
  control->Bind(wxEVT_SLIDER, [tell, slide](wxCommandEvent& event) {
    const int value = event.GetInt();
    tell([slide, value](menu_editor& editor) { (editor.*slide)(value); });
  });
  return control;
}

void show_slider(wxSlider* control, const slider& s) {
  if (control->GetMin() != s.minimum || control->GetMax() != s.maximum)
    control->SetRange(s.minimum, std::max(s.maximum, s.minimum + 1));
  if (control->GetValue() != s.value)
    control->SetValue(s.value);
  control->Enable(s.enabled);
}

}  // namespace corvane
