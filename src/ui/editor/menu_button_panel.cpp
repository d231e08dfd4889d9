#include "ui/editor/menu_button_panel.h"

#include "project/menu_rows.h"
#include "ui/editor/editor_slider.h"
#include "ui/editor/verdict_line.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/labelled.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/letter_choice.h"
#include "ui/widgets/pick_list.h"
#include "ui/widgets/wheel.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/gbsizer.h>
#include <wx/sizer.h>
#include <wx/slider.h>
#include <wx/statbmp.h>
#include <wx/statbox.h>
#include <wx/stattext.h>

#include <utility>

namespace corvane {
menu_button_panel::menu_button_panel(wxWindow* parent, tell_event tell, action_help help)
    : wxPanel(parent), tell_(std::move(tell)), help_(std::move(help)) {
  auto* groups = new wxBoxSizer(wxVERTICAL);
  const wxSizerFlags below = wxSizerFlags().Expand().Border(wxTOP, FromDIP(layout::group_gap));
  groups->Add(make_chooser(), wxSizerFlags().Expand());
  groups->Add(make_selected(), below);
  groups->Add(make_advanced(), below);
  SetSizer(groups);
}

wxButton* menu_button_panel::make_button(wxWindow* parent, const char* name, const char* label,
                                         menu_event event) {
  auto* button = new wxButton(parent, wxID_ANY, label);
  name_control(*button, name);
  button->Bind(wxEVT_BUTTON, [this, event = std::move(event)](wxCommandEvent&) { tell_(event); });
  return button;
}

wxSizer* menu_button_panel::make_chooser() {
  auto* box = new wxStaticBoxSizer(wxVERTICAL, this, "buttons");
  wxStaticBox* inside = box->GetStaticBox();
  Combo2_ = make_pick_list(inside, [this] {
    if (const int index = Combo2_->GetSelection(); index != wxNOT_FOUND)
      tell_([index](menu_editor& editor) { editor.choose(index); });
  });
  name_control(*Combo2_, "Combo2");
  Combo2_->SetToolTip("the button that is edited");
  button_ = new wxStaticText(inside, wxID_ANY, "00", wxDefaultPosition, wxDefaultSize,
                             wxST_NO_AUTORESIZE | wxALIGN_CENTRE_HORIZONTAL);
  button_->SetFont(button_->GetFont().Bold());
  button_->SetMinSize(button_->GetBestSize());
  name_control(*button_, "button");
  wxButton* add = make_button(inside, "Command1", "&add button", &menu_editor::add_button);
  wxButton* remove =
      make_button(inside, "deletebutton", "&delete current button", &menu_editor::delete_button);

  const int gap = FromDIP(layout::control_gap);
  auto* upper = new wxBoxSizer(wxHORIZONTAL);
  upper->Add(Combo2_, wxSizerFlags(1).CentreVertical());
  upper->Add(button_, wxSizerFlags().CentreVertical().Border(wxLEFT, gap));
  auto* lower = new wxBoxSizer(wxHORIZONTAL);
  lower->Add(add, wxSizerFlags(1));
  lower->Add(remove, wxSizerFlags(1).Border(wxLEFT, gap));
  const int border = FromDIP(layout::box_border);
  box->Add(upper, wxSizerFlags().Expand().Border(wxALL, border));
  box->Add(lower, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, border));
  return box;
}

// Rows of label, control, label, control.
wxSizer* menu_button_panel::make_selected() {
  auto* box = new wxStaticBoxSizer(wxVERTICAL, this, "selected button");
  selected_ = box->GetStaticBox();
  const int gap = FromDIP(layout::control_gap);
  auto* grid = new wxGridBagSizer(gap, gap);
  grid->SetEmptyCellSize(wxSize(0, 0));  // of rows that are hidden
  add_position(grid);
  Slider1_ = make_editor_slider(selected_, "Slider1", &menu_editor::slide_width, tell_);
  widthpos_ = make_field("widthpos", &menu_editor_controls::widthpos, &menu_editor::type_widthpos);
  add_size(grid, 1, "&width", Slider1_, widthpos_);
  Slider2_ = make_editor_slider(selected_, "Slider2", &menu_editor::slide_height, tell_);
  heightpos_ =
      make_field("heightpos", &menu_editor_controls::heightpos, &menu_editor::type_heightpos);
  add_size(grid, 2, "&height", Slider2_, heightpos_);
  add_action(grid);
  add_colours(grid);
  add_bitmaps(grid);
  grid->AddGrowableCol(1);
  grid->AddGrowableCol(3);
  box->Add(grid, wxSizerFlags().Expand().Border(wxALL, FromDIP(layout::box_border)));
  return box;
}

wxTextCtrl* menu_button_panel::make_field(const char* name, typed_field::value shows,
                                          typed_field::setter sets) {
  auto* field = new wxTextCtrl(selected_, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                               wxTE_PROCESS_ENTER);
  field->SetInitialSize(field->GetSizeFromTextSize(field->GetTextExtent("0000000")));
  name_control(*field, name);
  fields_.emplace_back(field, shows, sets, tell_);
  return field;
}

void menu_button_panel::add_position(wxGridBagSizer* grid) {
  wxStaticText* left_label = make_label(selected_, "&left position");
  wxTextCtrl* left =
      make_field("leftpos", &menu_editor_controls::leftpos, &menu_editor::type_leftpos);
  wxStaticText* y_label = make_label(selected_, "&y position");
  wxTextCtrl* y = make_field("ypos", &menu_editor_controls::ypos, &menu_editor::type_ypos);
  label_leads_to(left_label, left);
  label_leads_to(y_label, y);
  grid->Add(left_label, wxGBPosition(0, 0), wxDefaultSpan, wxALIGN_CENTRE_VERTICAL);
  grid->Add(left, wxGBPosition(0, 1), wxDefaultSpan, wxEXPAND);
  grid->Add(y_label, wxGBPosition(0, 2), wxDefaultSpan, wxALIGN_CENTRE_VERTICAL);
  grid->Add(y, wxGBPosition(0, 3), wxDefaultSpan, wxEXPAND);
}

void menu_button_panel::add_size(wxGridBagSizer* grid, int row, const char* label, wxSlider* slides,
                                 wxTextCtrl* field) {
  wxStaticText* text = make_label(selected_, label);
  label_leads_to(text, field);
  text->MoveAfterInTabOrder(slides);  // its key leads to what follows it: the field
  grid->Add(text, wxGBPosition(row, 0), wxDefaultSpan, wxALIGN_CENTRE_VERTICAL);
  grid->Add(slides, wxGBPosition(row, 1), wxGBSpan(1, 2), wxEXPAND);
  auto* middle = new wxBoxSizer(wxHORIZONTAL);  // a slider may be higher
  middle->Add(field, wxSizerFlags(1).CentreVertical());
  grid->Add(middle, wxGBPosition(row, 3), wxDefaultSpan, wxEXPAND);
}

void menu_button_panel::add_action(wxGridBagSizer* grid) {
  const char* tip = "the command that is executed when the button is pressed";
  wxStaticText* label = make_label(selected_, "ac&tion");
  Combo1_ = new wxComboBox(selected_, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, 0,
                           nullptr, wxTE_PROCESS_ENTER);
  name_control(*Combo1_, "Combo1");
  let_wheel_pass(*Combo1_);
  label->SetToolTip(tip);
  Combo1_->SetToolTip(tip);
  label_leads_to(label, Combo1_);
  fields_.emplace_back(Combo1_, &menu_editor_controls::Combo1, &menu_editor::set_action, tell_);
  Combo1_->Bind(wxEVT_TEXT, [this](wxCommandEvent& event) {
    show_verdict();
    event.Skip();
  });
  wxButton* pick = make_button(selected_, "pickaction", "&pick...", help_.pick);
  pick->SetToolTip("pick a title, a chapter or a menu by its name (Ctrl+P)");
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(Combo1_, wxSizerFlags(1).CentreVertical());
  row->Add(pick, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(layout::control_gap)));
  grid->Add(label, wxGBPosition(3, 0), wxDefaultSpan, wxALIGN_CENTRE_VERTICAL);
  grid->Add(row, wxGBPosition(3, 1), wxGBSpan(1, 3), wxEXPAND);
  verdict_ = new verdict_line(selected_);
  grid->Add(verdict_, wxGBPosition(4, 0), wxGBSpan(1, 4), wxEXPAND);
}

wxChoice* menu_button_panel::make_colour_list(const char* name, text_setter pick) {
  auto* list =
      new wxChoice(selected_, wxID_ANY, wxDefaultPosition, wxDefaultSize, wx_rows(button_colours));
  name_control(*list, name);
  let_wheel_pass(*list);
  let_letters_choose(*list);
  list->Bind(wxEVT_CHOICE, [this, pick](wxCommandEvent& event) {
    const std::string colour = utf8_of(event.GetString());
    tell_([pick, colour](menu_editor& editor) { (editor.*pick)(colour); });
  });
  return list;
}

void menu_button_panel::add_colours(wxGridBagSizer* grid) {
  wxStaticText* highlight = make_label(selected_, "h&ighlight");
  Colorhighlight_ = make_colour_list("Colorhighlight", &menu_editor::set_highlight);
  wxStaticText* select = make_label(selected_, "&select");
  ColorSelect_ = make_colour_list("ColorSelect", &menu_editor::set_select);
  label_leads_to(highlight, Colorhighlight_);
  label_leads_to(select, ColorSelect_);
  grid->Add(highlight, wxGBPosition(5, 0), wxDefaultSpan, wxALIGN_CENTRE_VERTICAL);
  grid->Add(Colorhighlight_, wxGBPosition(5, 1), wxDefaultSpan, wxEXPAND);
  grid->Add(select, wxGBPosition(5, 2), wxDefaultSpan, wxALIGN_CENTRE_VERTICAL);
  grid->Add(ColorSelect_, wxGBPosition(5, 3), wxDefaultSpan, wxEXPAND);
  primitive_ = {highlight, Colorhighlight_, select, ColorSelect_};
}

wxStaticBitmap* menu_button_panel::make_image(const char* name, const char* tip) {
  auto* image = new wxStaticBitmap(selected_, wxID_ANY, wxBitmap());
  name_control(*image, name);
  image->SetToolTip(tip);
  return image;
}

void menu_button_panel::add_bitmaps(wxGridBagSizer* grid) {
  Image1_ = make_image("Image1", "the highlight bitmap");
  Image2_ = make_image("Image2", "the select bitmap");
  wxButton* removebmp = make_button(selected_, "removebmp", "remove &bmp", &menu_editor::removebmp);
  removebmp->SetToolTip("revert back to a primitive underline/box");
  auto* pictures = new wxBoxSizer(wxHORIZONTAL);
  pictures->Add(Image1_, wxSizerFlags(1).Centre());
  pictures->Add(Image2_, wxSizerFlags(1).Centre());
  auto* row = new wxBoxSizer(wxVERTICAL);
  row->Add(pictures, wxSizerFlags().Expand());
  row->Add(removebmp, wxSizerFlags().Right().Border(wxTOP, FromDIP(layout::control_gap)));
  grid->Add(row, wxGBPosition(6, 0), wxGBSpan(1, 4), wxEXPAND);
  bitmap_ = {Image1_, Image2_, removebmp};
}

wxSizer* menu_button_panel::make_advanced() {
  auto* box = new wxStaticBoxSizer(wxHORIZONTAL, this, "advanced button control");
  advanced_ = box->GetStaticBox();
  name_control(*advanced_, "advanced");
  // The file may have changed since it was shown.
  wxButton* use = make_button(advanced_, "bmphighlight", "&use bmp button", [this](menu_editor& e) {
    highlight_ = select_ = {};
    e.bmphighlight();
  });
  use->SetToolTip("use a 2 bit rle bmp image as the button");
  wxButton* change = make_button(advanced_, "bmpselect", "&change select", [this](menu_editor& e) {
    select_ = {};
    e.bmpselect();
  });
  change->SetToolTip(
      "by default, the select buton is the same as the highlight.  This can be changed here");
  const int border = FromDIP(layout::box_border);
  box->Add(use, wxSizerFlags(1).Border(wxALL, border));
  box->Add(change, wxSizerFlags(1).Border(wxRIGHT | wxTOP | wxBOTTOM, border));
  return box;
}

}  // namespace corvane
