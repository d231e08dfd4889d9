#include "ui/maker/maker_titles_panel.h"

#include "formats/numbers.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/controls.h"
#include "ui/widgets/labelled.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/checklst.h>
#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <utility>

namespace corvane {

maker_titles_panel::maker_titles_panel(wxWindow* parent, menus_draft& draft, maker_events on)
    : scrolled_column(parent), draft_(draft), on_(std::move(on)), moves_(draft.chosen().moves) {
  const int gap = FromDIP(layout::control_gap);
  auto* const column = new wxBoxSizer(wxVERTICAL);
  column->Add(make_titles(), wxSizerFlags(1).Expand());
  const wxSizerFlags below = wxSizerFlags().Border(wxTOP, gap);
  play_all_ = make_check("playall", "\"&Play all\": titles go on with the next one",
                         "adds an entry that plays all titles; each title then runs on into the "
                         "next one, also when it was chosen by its own entry",
                         [](menu_wishes& w, bool is) { w.choices.play_all = is; });
  column->Add(play_all_, below);
  ends_ = make_check("ends", "titles come &back to the menus at their end",
                     "sets what follows each title; off, what \"nav cmds\" says of them stays",
                     [](menu_wishes& w, bool is) { w.sets_ends = is; });
  column->Add(ends_, below);
  begins_ =
      make_check("begins", "the &disc begins with the menus",
                 "takes away what \"nav cmds\" has as first play, with which the disc begins now",
                 [](menu_wishes& w, bool is) { w.begins_with_menus = is; });
  column->Add(begins_, below);
  jump_table_ = make_check("jumptable", "use &JumpTable: back to the same menu",
                           "titles come back to the menu that they were chosen in and not to the "
                           "first one",
                           [](menu_wishes& w, bool is) { w.jump_table = is; });
  column->Add(jump_table_, below);
  keeps_places_ =
      make_check("keepplaces", "keep the p&laces of buttons that were moved",
                 "buttons that you have moved in the menu editor stay there",
                 [this](menu_wishes& w, bool is) { w.moves = is ? moves_ : menu_moves(); });
  keeps_places_->Show(!moves_.empty());
  column->Add(keeps_places_, below);
  make_own_menus(*column);
  auto* const whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(column, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(layout::box_border)));
  hold(whole);
  let_scroll(true);
  show_choices();
}

wxCheckBox* maker_titles_panel::make_check(const char* name, const char* label, const char* tip,
                                           std::function<void(menu_wishes&, bool)> take) {
  auto* const box = new wxCheckBox(this, wxID_ANY, label);
  name_control(*box, name);
  box->SetToolTip(tip);
  box->Bind(wxEVT_CHECKBOX, [this, box, take = std::move(take)](wxCommandEvent&) {
    draft_.change([&](menu_wishes& w) { take(w, box->GetValue()); });
    on_.changed();
  });
  return box;
}

wxSizer* maker_titles_panel::make_titles() {
  const int gap = FromDIP(layout::control_gap);
  wxStaticText* const label = make_label(this, "&menus of the chapters of");
  titles_ = new wxCheckListBox(this, wxID_ANY);
  name_control(*titles_, "chaptermenus");
  titles_->SetToolTip(
      "a menu with all titles is always made; those that are marked here get one of their chapters "
      "as well");
  titles_->SetMinSize(FromDIP(wxSize(layout::list_height, layout::titles_height)));
  label_leads_to(label, titles_);
  none_ = new wxStaticText(this, wxID_ANY, "No title has two chapters.");
  name_control(*none_, "nochapters");
  titles_->Bind(wxEVT_CHECKLISTBOX, [this](wxCommandEvent& event) { take_tick(event.GetInt()); });
#ifdef __WXGTK__
  // There the toolkit's list of check boxes knows the mouse alone.
  titles_->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    const int row = titles_->GetSelection();
    if (event.GetKeyCode() != WXK_SPACE || row == wxNOT_FOUND) {
      event.Skip();
      return;
    }
    titles_->Check(static_cast<unsigned>(row), !titles_->IsChecked(static_cast<unsigned>(row)));
    take_tick(row);
  });
#endif
  const auto button = [this](const char* name, const char* text, bool has) {
    auto* const made = new wxButton(this, wxID_ANY, text);
    name_control(*made, name);
    made->Bind(wxEVT_BUTTON, [this, has](wxCommandEvent&) {
      draft_.let_all_have_menus(has);
      on_.changed();
    });
    return made;
  };
  all_ = button("allchapters", "&all of them", true);
  nothing_ = button("nochapter", "&none", false);
  auto* const buttons = new wxBoxSizer(wxHORIZONTAL);
  buttons->Add(all_);
  buttons->Add(nothing_, wxSizerFlags().Border(wxLEFT, gap));
  auto* const column = new wxBoxSizer(wxVERTICAL);
  column->Add(label);
  column->Add(titles_, wxSizerFlags(1).Expand().Border(wxTOP, FromDIP(layout::label_gap)));
  column->Add(none_, wxSizerFlags().Border(wxTOP, gap));
  column->Add(buttons, wxSizerFlags().Border(wxTOP, gap));
  return column;
}

void maker_titles_panel::make_own_menus(wxSizer& column) {
  own_label_ = make_label(this, "menus that are there");
  own_ = make_choice(this, "ownmenus",
                     "what becomes of menus that were not made here; undo brings them back",
                     {"stay, before the new ones", "are replaced by the new ones"});
  label_leads_to(own_label_, own_);
  own_->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) {
    draft_.change([this](menu_wishes& w) { w.replaces_own = own_->GetSelection() == 1; });
    on_.changed();
  });
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  const int gap = FromDIP(layout::control_gap);
  row->Add(own_label_, wxSizerFlags().CentreVertical());
  row->Add(own_, wxSizerFlags(1).CentreVertical().Border(wxLEFT, gap));
  column.Add(row, wxSizerFlags().Expand().Border(wxTOP, gap));
}

void maker_titles_panel::take_tick(int row) {
  if (row < 0 || row >= static_cast<int>(shown_.size()))
    return;
  draft_.let_have_menu(shown_[static_cast<std::size_t>(row)].title,
                       titles_->IsChecked(static_cast<unsigned>(row)));
  on_.changed();
}

void maker_titles_panel::show_choices() {
  const std::vector<menus_draft::offered_title> offered = draft_.titles();
  if (offered.size() != shown_.size()) {
    wxArrayString texts;
    for (const menus_draft::offered_title& title : offered)
      texts.Add(wx_text(title.text));
    titles_->Set(texts);
    if (!texts.empty())
      titles_->SetSelection(0);
  }
  shown_ = offered;
  for (std::size_t i = 0; i < offered.size(); ++i)
    if (titles_->IsChecked(static_cast<unsigned>(i)) != offered[i].has_menu)
      titles_->Check(static_cast<unsigned>(i), offered[i].has_menu);
  const menu_wishes& now = draft_.chosen();
  titles_->Enable(!offered.empty());
  all_->Enable(!offered.empty());
  nothing_->Enable(!offered.empty());
  none_->Show(offered.empty());
  play_all_->SetValue(now.choices.play_all);
  ends_->SetValue(now.sets_ends);
  begins_->SetValue(now.begins_with_menus);
  begins_->Show(draft_.disc_begins_elsewhere());
  jump_table_->SetValue(draft_.uses_jump_table());
  keeps_places_->SetValue(!now.moves.empty());
  own_label_->SetLabel(wx_text("your own menu" + std::string(draft_.own_menus() == 1 ? "" : "s") +
                               " (" + trimmed(draft_.own_menus()) + ")"));
  own_label_->Show(draft_.own_menus() > 0);
  own_->Show(draft_.own_menus() > 0);
  own_->SetSelection(now.replaces_own || draft_.erases_menus() ? 1 : 0);
  own_->Enable(!draft_.erases_menus());
  if (IsShownOnScreen()) {
    FitInside();
    Layout();
  }
}

}  // namespace corvane
