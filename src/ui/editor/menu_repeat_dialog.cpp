#include "ui/editor/menu_repeat_dialog.h"

#include "ui/widgets/control_name.h"
#include "ui/widgets/dialog_buttons.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/labelled.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/letter_choice.h"
#include "ui/widgets/wheel.h"

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>

namespace corvane {
namespace {

constexpr int most_buttons_of_a_menu = 36;
constexpr int usual_gap = 10, most_gap = 400;  // menu pixels

class repeat_dialog : public wxDialog {
 public:
  repeat_dialog(wxWindow& window, const menu_editor& editor);

  repetition how() const;

 private:
  wxSpinCtrl* make_number(wxSizer* grid, const char* name, const char* label, int value, int least,
                          int most);
  void make_actions(wxSizer* grid);
  void show_outlook();

  const menu_editor& editor_;
  wxSpinCtrl* across_ = nullptr;
  wxSpinCtrl* down_ = nullptr;
  wxSpinCtrl* gap_across_ = nullptr;
  wxSpinCtrl* gap_down_ = nullptr;
  wxChoice* actions_ = nullptr;
  wxStaticText* outlook_ = nullptr;
  wxButton* repeat_ = nullptr;
};

repeat_dialog::repeat_dialog(wxWindow& window, const menu_editor& editor)
    : wxDialog(&window, wxID_ANY, "repeat button " + editor.controls().button), editor_(editor) {
  name_control(*this, "repeat");
  SetIcons(program_icon());
  const int gap = FromDIP(layout::control_gap), border = FromDIP(layout::window_border);
  auto* grid = new wxFlexGridSizer(2, gap, gap);
  grid->AddGrowableCol(1);
  across_ = make_number(grid, "across", "buttons &across", 1, 1, most_buttons_of_a_menu);
  down_ = make_number(grid, "down", "buttons &down", 4, 1, most_buttons_of_a_menu);
  gap_across_ = make_number(grid, "gapacross", "&gap across", usual_gap, 0, most_gap);
  gap_down_ = make_number(grid, "gapdown", "ga&p down", usual_gap, 0, most_gap);
  make_actions(grid);
  outlook_ =
      new wxStaticText(this, wxID_ANY, "\n", wxDefaultPosition, wxDefaultSize, wxST_NO_AUTORESIZE);
  name_control(*outlook_, "outlook");
  outlook_->SetMinSize(outlook_->GetTextExtent("4 of 16 buttons: the others do not fit into the "
                                               "picture") +
                       wxSize(0, outlook_->GetCharHeight()));
  repeat_ = new wxButton(this, wxID_OK, "&repeat");
  repeat_->SetDefault();
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(grid, wxSizerFlags().Expand().Border(wxALL, border));
  whole->Add(outlook_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, border));
  whole->Add(dialog_buttons(repeat_, new wxButton(this, wxID_CANCEL, "&cancel")),
             wxSizerFlags().Right().Border(wxLEFT | wxRIGHT | wxBOTTOM, border));
  SetSizerAndFit(whole);
  CentreOnParent();
  across_->SetFocus();
  show_outlook();
}

wxSpinCtrl* repeat_dialog::make_number(wxSizer* grid, const char* name, const char* label,
                                       int value, int least, int most) {
  wxStaticText* text = make_label(this, label);
  auto* number = new wxSpinCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                                wxSP_ARROW_KEYS, least, most, value);
  name_control(*number, name);
  let_wheel_pass(*number);
  number->Bind(wxEVT_SPINCTRL, [this](wxSpinEvent&) { show_outlook(); });
  number->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { show_outlook(); });
  label_leads_to(text, number);
  grid->Add(text, wxSizerFlags().CentreVertical());
  grid->Add(number, wxSizerFlags().Expand());
  return number;
}

void repeat_dialog::make_actions(wxSizer* grid) {
  wxStaticText* text = make_label(this, "ac&tions");
  actions_ = new wxChoice(this, wxID_ANY);
  for (const char* entry : {"all do the same", "the next title each", "the next chapter each"})
    actions_->Append(entry);
  actions_->SetSelection(static_cast<int>(editor_.usual_repetition()));
  name_control(*actions_, "actions");
  let_wheel_pass(*actions_);
  let_letters_choose(*actions_);
  actions_->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { show_outlook(); });
  label_leads_to(text, actions_);
  grid->Add(text, wxSizerFlags().CentreVertical());
  grid->Add(actions_, wxSizerFlags().Expand());
}

repetition repeat_dialog::how() const {
  repetition r;
  r.across = across_->GetValue();
  r.down = down_->GetValue();
  r.gap_across = gap_across_->GetValue();
  r.gap_down = gap_down_->GetValue();
  r.actions = static_cast<action_count>(actions_->GetSelection());
  return r;
}

void repeat_dialog::show_outlook() {
  if (repeat_ == nullptr)
    return;  // the controls are not all there yet
  const menu_editor::repeat_outlook o = editor_.outlook(how());
  wxString text = wxString::Format("%d of %d buttons", o.made, o.wanted);
  if (o.made == o.wanted)
    text = wxString::Format("%d buttons, this one included", o.made);
  else if (o.no_more_actions)
    text += actions_->GetSelection() == static_cast<int>(action_count::titles)
                ? ": there are no more titles"
                : ": there are no more chapters";
  else if (o.picture_is_full)
    text += ": the others do not fit into the picture";
  outlook_->SetLabelText(text);
  repeat_->Enable(o.made > 1);
}

}  // namespace

std::optional<repetition> ask_repetition(wxWindow& window, const menu_editor& editor) {
  repeat_dialog dialog(window, editor);
  if (dialog.ShowModal() != wxID_OK)
    return std::nullopt;
  return dialog.how();
}

}  // namespace corvane
