#include "ui/widgets/controls.h"

#include "ui/widgets/control_name.h"
#include "ui/widgets/wheel.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/spinctrl.h>

#include <utility>

namespace corvane {

wxButton* make_button(wxWindow* parent, const char* name, const char* label, const char* tip,
                      std::function<void()> click) {
  auto* const button = new wxButton(parent, wxID_ANY, label);
  name_control(*button, name);
  button->SetToolTip(tip);
  button->Bind(wxEVT_BUTTON, [click = std::move(click)](wxCommandEvent&) { click(); });
  return button;
}

wxChoice* make_choice(wxWindow* parent, const char* name, const char* tip,
                      const std::vector<std::string>& entries) {
  auto* const choice =
      new wxChoice(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wx_rows(entries));
  name_control(*choice, name);
  choice->SetToolTip(tip);
  let_wheel_pass(*choice);
  return choice;
}

wxSpinCtrl* make_spin(wxWindow* parent, const char* name, int least, int most, const char* tip) {
  auto* const field = new wxSpinCtrl(parent, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                                     wxSP_ARROW_KEYS, least, most, least);
  name_control(*field, name);
  field->SetToolTip(tip);
  let_wheel_pass(*field);
  return field;
}

}  // namespace corvane
