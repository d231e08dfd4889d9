#include "ui/editor/menu_view_bar.h"

#include "ui/widgets/control_name.h"
#include "ui/widgets/labelled.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/letter_choice.h"
#include "ui/widgets/wheel.h"

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <utility>

namespace corvane {

menu_view_bar::menu_view_bar(wxWindow* parent, std::function<void()> changed)
    : wxPanel(parent), changed_(std::move(changed)) {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  pressed_ = make_check("showpressed", "show p&ressed",
                        "each button as it looks while it is pressed (its select colour)");
  safe_area_ = make_check("safearea", "sa&fe area",
                          "what every television shows (90 %) and where texts should stand (80 %)");
  true_shape_ =
      make_check("trueshape", "e&xact shape",
                 "the picture in the proportions in which a television shows it; otherwise each "
                 "dot of the disc is a square");
  const wxSizerFlags next =
      wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(layout::group_gap));
  for (wxCheckBox* check : {pressed_, safe_area_, true_shape_})
    row->Add(check, next);
  ways_ = make_choice(row, "showways", "arrow &keys",
                      "where the arrow keys of a player lead from button to button",
                      {"not shown", "of the button", "of all"});
  zoom_ =
      make_choice(row, "zoom", "&zoom",
                  "how large the picture is (Ctrl+plus, Ctrl+minus, Ctrl+0, Ctrl and the wheel)",
                  {"fit", "100 %", "200 %", "300 %", "400 %"});
  SetSizer(row);
}

wxCheckBox* menu_view_bar::make_check(const char* name, const char* label, const char* tip) {
  auto* check = new wxCheckBox(this, wxID_ANY, label);
  name_control(*check, name);
  check->SetToolTip(tip);
  check->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) { changed_(); });
  return check;
}

wxChoice* menu_view_bar::make_choice(wxSizer* row, const char* name, const char* label,
                                     const char* tip, const std::vector<wxString>& entries) {
  wxStaticText* text = make_label(this, label);
  auto* choice = new wxChoice(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                              static_cast<int>(entries.size()), entries.data());
  name_control(*choice, name);
  choice->SetToolTip(tip);
  choice->SetSelection(0);
  let_wheel_pass(*choice);
  let_letters_choose(*choice);
  label_leads_to(text, choice);
  choice->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { changed_(); });
  const wxSizerFlags next = wxSizerFlags().CentreVertical();
  row->Add(text, wxSizerFlags(next).Border(wxRIGHT, FromDIP(layout::control_gap)));
  row->Add(choice, wxSizerFlags(next).Border(wxRIGHT, FromDIP(layout::group_gap)));
  return choice;
}

view_choice menu_view_bar::chosen() const {
  view_choice c;
  c.picture.pressed = pressed_->GetValue();
  c.picture.safe_area = safe_area_->GetValue();
  c.picture.ways = static_cast<shown_ways>(ways_->GetSelection());
  c.true_shape = true_shape_->GetValue();
  c.zoom = zoom_->GetSelection();
  return c;
}

void menu_view_bar::choose_shape(bool true_shape) {
  true_shape_->SetValue(true_shape);
}

void menu_view_bar::choose_zoom(int zoom) {
  zoom_->SetSelection(zoom);
}

}  // namespace corvane
