#include "ui/editor/menu_options_panel.h"

#include "ui/editor/editor_slider.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/labelled.h"
#include "ui/widgets/layout.h"

#include <wx/checkbox.h>
#include <wx/sizer.h>
#include <wx/slider.h>
#include <wx/statbox.h>
#include <wx/stattext.h>

#include <utility>

namespace corvane {

menu_options_panel::menu_options_panel(wxWindow* parent, tell_event tell)
    : wxPanel(parent), tell_(std::move(tell)) {
  auto* box = new wxStaticBoxSizer(wxVERTICAL, this, "menu");
  wxStaticBox* inside = box->GetStaticBox();
  Check1_ = make_check(inside, "Check1", "loop &menu",
                       "loop the menu (don't use this if you use a still menu without audio)",
                       &menu_editor::set_loop);
  Check2_ = make_check(inside, "Check2", "ad&vanced", "more advanced options for the menu/buttons",
                       &menu_editor::set_advanced);
  auto* checks = new wxBoxSizer(wxHORIZONTAL);
  checks->Add(Check1_, wxSizerFlags(1));
  checks->Add(Check2_, wxSizerFlags(1));
  const int border = FromDIP(layout::box_border);
  box->Add(checks, wxSizerFlags().Expand().Border(wxALL, border));
  box->Add(make_thickness(inside),
           wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, border));
  box->Add(make_times(inside), wxSizerFlags().Expand());
  SetSizer(box);
}

wxCheckBox* menu_options_panel::make_check(wxWindow* parent, const char* name, const char* label,
                                           const char* tip, void (menu_editor::*set)(bool)) {
  auto* check = new wxCheckBox(parent, wxID_ANY, label);
  name_control(*check, name);
  check->SetToolTip(tip);
  check->Bind(wxEVT_CHECKBOX, [this, set](wxCommandEvent& event) {
    const bool checked = event.IsChecked();
    tell_([set, checked](menu_editor& editor) { (editor.*set)(checked); });
  });
  return check;
}

// One for all buttons of the menu, but only those of some height have a frame: the chosen one says
// whether it can be set.
wxSizer* menu_options_panel::make_thickness(wxWindow* parent) {
  wxStaticText* label = make_label(parent, "&box thickness");
  label->SetToolTip("how thick the frames of all buttons of the menu are, in pixels");
  thickness_ = make_editor_slider(parent, "thickness", &menu_editor::slide_thickness, tell_);
  thickness_value_ = new wxStaticText(parent, wxID_ANY, "000", wxDefaultPosition, wxDefaultSize,
                                      wxST_NO_AUTORESIZE);
  label_leads_to(label, thickness_);
  const int gap = FromDIP(layout::control_gap);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(label, wxSizerFlags().CentreVertical());
  row->Add(thickness_, wxSizerFlags(1).CentreVertical().Border(wxLEFT, gap));
  row->Add(thickness_value_, wxSizerFlags().CentreVertical().Border(wxLEFT, gap));
  frames_ = {label, thickness_, thickness_value_};
  return row;
}

wxSizer* menu_options_panel::make_times(wxWindow* parent) {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  add_time(parent, row, "spu be&gin", "spubegin", &menu_editor_controls::spubegin,
           &menu_editor::set_spubegin);
  add_time(parent, row, "spu e&nd", "spuend", &menu_editor_controls::spuend,
           &menu_editor::set_spuend);
  return row;
}

void menu_options_panel::add_time(wxWindow* parent, wxSizer* row, const char* label,
                                  const char* name, typed_field::value shows,
                                  typed_field::setter sets) {
  wxStaticText* text = make_label(parent, label);
  auto* field = new wxTextCtrl(parent, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                               wxTE_PROCESS_ENTER);
  field->SetInitialSize(field->GetSizeFromTextSize(field->GetTextExtent("00:00:00.00")));
  name_control(*field, name);
  label_leads_to(text, field);
  fields_.emplace_back(field, shows, sets, tell_);
  const int border = FromDIP(layout::box_border);
  row->Add(text, wxSizerFlags().CentreVertical().Border(wxLEFT | wxBOTTOM, border));
  row->Add(field, wxSizerFlags(1).CentreVertical().Border(wxLEFT | wxRIGHT | wxBOTTOM, border));
  times_.insert(times_.end(), {text, field});
}

void menu_options_panel::apply(menu_editor& editor) const {
  for (const typed_field& field : fields_)
    field.apply(editor);
}

bool menu_options_panel::show(const menu_editor_controls& c, bool of_chosen) {
  Check1_->SetValue(c.Check1);
  Check2_->SetValue(c.Check2);
  show_slider(thickness_, c.thickness);
  thickness_->Enable(c.thickness.enabled && of_chosen);
  if (const wxString value = wxString::Format("%d", c.thickness.value);
      thickness_value_->GetLabel() != value)
    thickness_value_->SetLabel(value);
  for (typed_field& field : fields_)
    field.show(c);
  if (times_.front()->IsShown() == c.Check2 && thickness_->IsShown() != c.bitmap_mode)
    return false;
  for (wxWindow* control : times_)
    control->Show(c.Check2);
  for (wxWindow* control : frames_)
    control->Show(!c.bitmap_mode);
  return true;
}

}  // namespace corvane
