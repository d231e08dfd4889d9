#include "ui/maker/maker_letters_panel.h"

#include "project/menu_rows.h"
#include "ui/maker/maker_colours.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/controls.h"
#include "ui/widgets/labelled.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/search_list.h"
#include "ui/widgets/wx_text.h"

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/clrpicker.h>
#include <wx/fontenum.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace corvane {
namespace {

// The entries of "letters of".
constexpr int of_headings = 0, of_entries = 1;
constexpr int smallest_letters = 8, largest_letters = 120, thickest_edge = 20, thickest_frame = 6;

wxArrayString installed_families() {
  wxArrayString families = wxFontEnumerator::GetFacenames();
  families.Sort();
  for (const char* const always : {"monospace", "serif", "sans"})
    families.Insert(always, 0);
  return families;
}

}  // namespace

maker_letters_panel::maker_letters_panel(wxWindow* parent, menus_draft& draft, maker_events on)
    : scrolled_column(parent), draft_(draft), on_(std::move(on)), fonts_(installed_families()) {
  const int gap = FromDIP(layout::control_gap);
  auto* const grid = new wxFlexGridSizer(2, wxSize(gap, gap));
  grid->AddGrowableCol(1);
  which_ = make_choice(this, "lettersof", "which texts the choices below are about",
                       {"headings", "entries", "back, next, play all"});
  which_->SetSelection(of_entries);
  add(*grid, "&letters of", which_);
  font_ = new search_list(this, "letterfont", fonts_, [this](int entry) { take_font(entry); });
  font_->SetToolTip("the font");
  font_->SetMinSize(wxSize(FromDIP(layout::list_height), -1));
  add(*grid, "&font", font_);
  size_ = make_number("lettersize", smallest_letters, largest_letters,
                      "how high letters are, in lines of the disc's picture");
  add(*grid, "si&ze", size_);
  least_ = make_number("leastsize", smallest_letters, largest_letters,
                       "a text that is too long for its place becomes no smaller than this");
  add(*grid, "&at least", least_);
  bold_ = make_check("letterbold", "&bold");
  italic_ = make_check("letteritalic", "i&talic");
  auto* const kinds = new wxBoxSizer(wxHORIZONTAL);
  kinds->Add(bold_);
  kinds->Add(italic_, wxSizerFlags().Border(wxLEFT, FromDIP(layout::column_gap)));
  grid->AddSpacer(0);
  grid->Add(kinds);
  colour_ = make_colour("lettercolour", "the colour of the letters");
  add(*grid, "colo&ur", colour_);
  outline_ = make_number("outline", 0, thickest_edge, "lines around the letters; 0: none");
  outline_colour_ = make_colour("outlinecolour", "the colour of the lines around the letters");
  add(*grid, "outli&ne", outline_, outline_colour_);
  shadow_ = make_number("shadow", 0, thickest_edge,
                        "how far the shadow of the letters falls, in lines; 0: there is none");
  shadow_colour_ = make_colour("shadowcolour", "the colour of the shadow");
  add(*grid, "sha&dow", shadow_, shadow_colour_);
  align_ = make_choice(this, "letteralign", "where texts stand in their places",
                       {"left", "centre", "right"});
  add(*grid, "ali&gn", align_);
  highlight_ = make_choice(this, "buttonhighlight", "the frame of the button that is chosen",
                           button_colours);
  add(*grid, "button, c&hosen", highlight_);
  select_ =
      make_choice(this, "buttonselect", "the frame of a button as it is pressed", button_colours);
  add(*grid, "button, &pressed", select_);
  frame_ = make_number("buttonframe", 1, thickest_frame, "how thick the frames of buttons are");
  add(*grid, "f&rame", frame_);
  auto* const whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(grid, wxSizerFlags().Expand().Border(wxALL, FromDIP(layout::box_border)));
  hold(whole);
  let_scroll(true);
  which_->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { show_choices(); });
  for (wxChoice* const choice : {align_, highlight_, select_})
    choice->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { take(); });
  show_choices();
}

void maker_letters_panel::add(wxFlexGridSizer& grid, const char* label, wxWindow* control,
                              wxWindow* behind) {
  wxStaticText* const words = make_label(this, label);
  label_leads_to(words, control);
  // The label stands before its control in the order of both.
  words->MoveBeforeInTabOrder(control);
  grid.Add(words, wxSizerFlags().CentreVertical());
  if (behind == nullptr) {
    grid.Add(control, wxSizerFlags().Expand());
    return;
  }
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(control, wxSizerFlags(1).CentreVertical());
  row->Add(behind, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(layout::control_gap)));
  grid.Add(row, wxSizerFlags().Expand());
}

wxSpinCtrl* maker_letters_panel::make_number(const char* name, int least, int most,
                                             const char* tip) {
  wxSpinCtrl* const field = make_spin(this, name, least, most, tip);
  field->Bind(wxEVT_SPINCTRL, [this](wxSpinEvent&) { take(); });
  return field;
}

wxColourPickerCtrl* maker_letters_panel::make_colour(const char* name, const char* tip) {
  auto* const picker = new wxColourPickerCtrl(this, wxID_ANY);
  name_control(*picker, name);
  picker->SetToolTip(tip);
  picker->Bind(wxEVT_COLOURPICKER_CHANGED, [this](wxColourPickerEvent&) { take(); });
  return picker;
}

wxCheckBox* maker_letters_panel::make_check(const char* name, const char* label) {
  auto* const box = new wxCheckBox(this, wxID_ANY, label);
  name_control(*box, name);
  box->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) { take(); });
  return box;
}

const design_text& maker_letters_panel::text_in(const menu_design& look) const {
  const int which = which_->GetSelection();
  return which == of_headings ? look.heading : which == of_entries ? look.entry : look.way;
}
design_text& maker_letters_panel::text_in(menu_design& look) const {
  const int which = which_->GetSelection();
  return which == of_headings ? look.heading : which == of_entries ? look.entry : look.way;
}

void maker_letters_panel::take() {
  draft_.change_look([this](menu_design& look) {
    design_text& text = text_in(look);
    text.style.size = size_->GetValue();
    text.least_size = least_->GetValue();
    text.style.bold = bold_->GetValue();
    text.style.italic = italic_->GetValue();
    text.style.colour = with_hue(text.style.colour, colour_->GetColour());
    text.style.outline = outline_->GetValue();
    text.style.outline_colour = with_hue(text.style.outline_colour, outline_colour_->GetColour());
    text.style.shadow = shadow_->GetValue();
    text.style.shadow_colour = with_hue(text.style.shadow_colour, shadow_colour_->GetColour());
    text.align = static_cast<page_align>(align_->GetSelection());
    design_look& buttons = which_->GetSelection() == of_entries ? look.entry_look : look.way_look;
    if (which_->GetSelection() != of_headings) {
      buttons.highlight = utf8_of(highlight_->GetStringSelection());
      buttons.select = utf8_of(select_->GetStringSelection());
    }
    look.frame = frame_->GetValue();
  });
  on_.changed();
}

void maker_letters_panel::take_font(int entry) {
  const std::string family = utf8_of(fonts_[static_cast<std::size_t>(entry)]);
  draft_.change_look([&](menu_design& look) {
    // What is there on every system comes last, for where this one is not.
    text_in(look).style.families = {family};
    if (family != "sans" && family != "serif" && family != "monospace")
      text_in(look).style.families.emplace_back("sans");
  });
  on_.changed();
}

void maker_letters_panel::show_choices() {
  const menu_design& look = draft_.look();
  const design_text& text = text_in(look);
  const auto show_number = [](wxSpinCtrl& field, int value) {
    if (field.GetValue() != value)
      field.SetValue(value);
  };
  const auto used = std::ranges::find_if(text.style.families, [this](const std::string& family) {
    return fonts_.Index(wx_text(family), false) != wxNOT_FOUND;
  });
  font_->show(used == text.style.families.end() ? wxString("sans") : wx_text(*used));
  show_number(*size_, text.style.size);
  show_number(*least_, text.least_size);
  bold_->SetValue(text.style.bold);
  italic_->SetValue(text.style.italic);
  colour_->SetColour(wx_colour(text.style.colour));
  show_number(*outline_, text.style.outline);
  outline_colour_->SetColour(wx_colour(text.style.outline_colour));
  show_number(*shadow_, text.style.shadow);
  shadow_colour_->SetColour(wx_colour(text.style.shadow_colour));
  align_->SetSelection(static_cast<int>(text.align));
  const bool is_button = which_->GetSelection() != of_headings;
  const design_look& buttons =
      which_->GetSelection() == of_entries ? look.entry_look : look.way_look;
  highlight_->SetStringSelection(wx_text(buttons.highlight));
  select_->SetStringSelection(wx_text(buttons.select));
  highlight_->Enable(is_button);
  select_->Enable(is_button);
  show_number(*frame_, look.frame);
}

}  // namespace corvane
