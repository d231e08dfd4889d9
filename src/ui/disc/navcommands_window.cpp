#include "ui/disc/navcommands_window.h"

#include "formats/text.h"
#include "menus/action_choices.h"
#include "project/disc_of.h"
#include "ui/editor/menu_action_picker.h"
#include "ui/editor/verdict_line.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/dialog_buttons.h"
#include "ui/widgets/fixed_pitch.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wheel.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/combobox.h>
#include <wx/listbox.h>
#include <wx/sizer.h>
#include <wx/statbox.h>
#include <wx/statline.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <optional>
#include <utility>

namespace corvane {
namespace {

constexpr int row_letters = 52;           // a whole row and a scroll bar
constexpr int most_command_letters = 25;  // more than a row keeps

/// A row as the list shows it: its padding lines the commands up, so the TAB needs no stop.
wxString shown_row(const std::string& row) {
  return wx_text(replace_all(row, "\t", "   "));
}

wxArrayString shown_items(const std::vector<std::string>& items) {
  wxArrayString all;
  for (const std::string& item : items)
    all.push_back(wx_text(item));
  return all;
}

}  // namespace

navcommands_window::navcommands_window(wxWindow* main, lent_project lent, navcommands model,
                                       fact_store* facts)
    : wxDialog(main, wxID_ANY, "navigation commands editor", wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "navcommands"),
      lent_(std::move(lent)),
      model_(std::move(model)),
      disc_(disc_of(lent_.doc().p)),
      facts_(facts != nullptr ? *facts : own_facts_),
      life_(*this, *main, lent_.ask(), {{}, {}, [this] { lent_.give_back(); }}) {
  name_control(*this, "navcommands");
  SetIcons(program_icon());
  auto* groups = new wxBoxSizer(wxVERTICAL);
  const wxSizerFlags below = wxSizerFlags().Expand().Border(wxTOP, FromDIP(layout::group_gap));
  groups->Add(make_titles(), wxSizerFlags(1).Expand());
  groups->Add(make_command(), below);
  groups->Add(make_first_play(), below);
  groups->Add(new wxStaticLine(this), below);
  groups->Add(make_help(), below);
  groups->Add(make_buttons(), wxSizerFlags().Right().Border(wxTOP, FromDIP(layout::group_gap)));
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(groups, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(layout::window_border)));
  SetSizerAndFit(whole);
  bind_controls();
  show_verdict();
  CentreOnParent();
  life_.begin();
  lent_.keeps({"navigation commands editor", [this](project& copy) { model_.keep_in(copy); }});
  List1_->SetFocus();
}

void navcommands_window::focus_on(navcommands_focus what) {
  if (what == navcommands_focus::first_play)
    firstplay_->SetFocus();
  if (what != navcommands_focus::selected_command || model_.selected() < 0)
    return;
  List1_->SetSelection(model_.selected());
  List1_->EnsureVisible(model_.selected());
  edit_command();
}

wxSizer* navcommands_window::make_titles() {
  List1_ = new wxListBox(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, 0, nullptr,
                         wxLB_SINGLE | wxLB_HSCROLL | wxLB_NEEDED_SB);
  name_control(*List1_, "List1");
  List1_->SetToolTip(
      "double click on the entry to modify the command after the title is finished (post command)");
  List1_->SetFont(fixed_pitch(List1_->GetFont()));
  for (const std::string& row : model_.List1())
    List1_->Append(shown_row(row));
  List1_->SetMinSize(
      wxSize(row_letters * List1_->GetCharWidth(), FromDIP(layout::commands_height)));
  auto* titles = new wxBoxSizer(wxVERTICAL);
  titles->Add(List1_, wxSizerFlags(1).Expand());
  return titles;
}

wxSizer* navcommands_window::make_command() {
  auto* name_label = new wxStaticText(this, wxID_ANY, "Title name");
  Text1_ =
      new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, wxTE_READONLY);
  name_control(*Text1_, "Text1");
  auto* command_label = new wxStaticText(this, wxID_ANY, "&Post command");
  Combo1_ = new wxComboBox(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                           shown_items(model_.Combo1_items()), wxCB_DROPDOWN | wxTE_PROCESS_ENTER);
  name_control(*Combo1_, "Combo1");
  let_wheel_pass(*Combo1_);
  Combo1_->SetMaxLength(most_command_letters);
  Combo1_->ChangeValue(wx_text(model_.Combo1()));
  Combo1_->Disable();  // until there is a row that it belongs to

  auto* columns = new wxFlexGridSizer(2, FromDIP(layout::control_gap), FromDIP(layout::group_gap));
  columns->AddGrowableCol(0, 1);
  columns->AddGrowableCol(1, 1);
  columns->Add(name_label);
  columns->Add(command_label);
  columns->Add(Text1_, wxSizerFlags().Expand());
  columns->Add(Combo1_, wxSizerFlags().Expand());
  return columns;
}

wxSizer* navcommands_window::make_first_play() {
  auto* box = new wxStaticBoxSizer(wxVERTICAL, this, "first play");
  firstplay_ =
      new wxComboBox(box->GetStaticBox(), wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                     shown_items(model_.firstplay_items()), wxCB_DROPDOWN | wxTE_PROCESS_ENTER);
  name_control(*firstplay_, "firstplay");
  let_wheel_pass(*firstplay_);
  firstplay_->SetToolTip("sets the first thing that is played when the dvd begins.");
  firstplay_->ChangeValue(wx_text(model_.firstplay()));
  box->Add(firstplay_, wxSizerFlags().Expand().Border(wxALL, FromDIP(layout::box_border)));
  return box;
}

/// What the command does, and the button that picks another one.
wxSizer* navcommands_window::make_help() {
  verdict_ = new verdict_line(this);
  auto* pick = new wxButton(this, wxID_ANY, "p&ick...");
  name_control(*pick, "pickcommand");
  pick->SetToolTip("pick a title, a chapter or a menu by its name (Ctrl+P)");
  pick->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { pick_command(); });
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(verdict_, wxSizerFlags(1).CentreVertical());
  row->Add(pick, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(layout::group_gap)));
  return row;
}

wxSizer* navcommands_window::make_buttons() {
  auto* Command1 = new wxButton(this, wxID_OK, "&accept");
  name_control(*Command1, "Command1");
  return dialog_buttons(Command1, new wxButton(this, wxID_CANCEL, "&cancel"));
}

void navcommands_window::bind_controls() {
  List1_->Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) { select(); });
  // After the event: GTK takes Enter on a row for a double click, and then activates what has the
  // focus.
  List1_->Bind(wxEVT_LISTBOX_DCLICK,
               [this](wxCommandEvent&) { CallAfter([this] { edit_command(); }); });
  List1_->Bind(wxEVT_CHAR_HOOK, &navcommands_window::on_list_key, this);
  Combo1_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { change_command(); });
  Combo1_->Bind(wxEVT_COMBOBOX, [this](wxCommandEvent&) { change_command(); });
  // Back to the list, so that Enter, a command, Enter, Down goes through all titles. That is why
  // there is no default button.
  Combo1_->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { List1_->SetFocus(); });
  firstplay_->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { accept(); });
  for (const auto& type : {wxEVT_TEXT, wxEVT_COMBOBOX})
    firstplay_->Bind(type, [this](wxCommandEvent&) { work_on(true); });
  for (wxWindow* field : {static_cast<wxWindow*>(List1_), static_cast<wxWindow*>(Combo1_),
                          static_cast<wxWindow*>(firstplay_)})
    field->Bind(wxEVT_SET_FOCUS, [this, field](wxFocusEvent& event) {
      work_on(field == firstplay_);
      event.Skip();
    });
  Bind(wxEVT_CHAR_HOOK, &navcommands_window::on_key, this);
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { accept(); }, wxID_OK);
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { Close(); }, wxID_CANCEL);
}

void navcommands_window::on_list_key(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  const bool none = List1_->GetSelection() == wxNOT_FOUND;
  if (key == WXK_RETURN || key == WXK_NUMPAD_ENTER)
    edit_command();
  else if (key == WXK_DOWN && none && !List1_->IsEmpty()) {  // GTK would go to the second row
    List1_->SetSelection(0);
    select();
  } else
    event.Skip();
}

void navcommands_window::select() {
  const int row = List1_->GetSelection();
  Combo1_->Enable(row != wxNOT_FOUND);
  if (row == wxNOT_FOUND)
    return;
  model_.select(row);
  Text1_->ChangeValue(wx_text(model_.Text1()));
  Combo1_->ChangeValue(wx_text(model_.Combo1()));
  work_on(false);
}

void navcommands_window::edit_command() {
  select();
  if (!Combo1_->IsEnabled())
    return;
  Combo1_->SetFocus();
  Combo1_->SelectAll();
}

void navcommands_window::change_command() {
  const int row = List1_->GetSelection();
  if (row == wxNOT_FOUND)
    return;
  const std::string text = utf8_of(Combo1_->GetValue());
  if (!life_.during([&] { model_.set_command(text); }))
    return;
  if (model_.Combo1() != text)  // refused
    Combo1_->ChangeValue(wx_text(model_.Combo1()));
  List1_->SetString(static_cast<unsigned>(row),
                    shown_row(model_.List1()[static_cast<std::size_t>(row)]));
  work_on(false);
}

void navcommands_window::work_on(bool first_play) {
  at_first_play_ = first_play;
  show_verdict();
}

/// Without a title that is selected there is no other command.
bool navcommands_window::is_of_first_play() const {
  return at_first_play_ || model_.selected() < 0 || List1_->GetSelection() == wxNOT_FOUND;
}

lead_source navcommands_window::source() const {
  if (is_of_first_play())
    return {{map_place::kind::first_play, 0}, 0};
  return {{map_place::kind::title, model_.selected() + 1}, 0};
}

/// As it is typed, and as it stands.
void navcommands_window::show_verdict() {
  const lead_source from = source();
  const wxComboBox& field = is_of_first_play() ? *firstplay_ : *Combo1_;
  action_verdict verdict = verdict_on_command(disc_, from, utf8_of(field.GetValue()));
  if (!verdict.text.empty())
    verdict.text = (is_of_first_play() ? name_of(from.place) : "after " + name_of(from.place)) +
                   ": " + verdict.text;
  verdict_->show(verdict);
}

void navcommands_window::pick_command() {
  const bool first_play = is_of_first_play();
  wxComboBox& field = first_play ? *firstplay_ : *Combo1_;
  const lead_source from = source();
  const wxString caption =
      first_play ? wxString("first play") : "command after " + wx_text(name_of(from.place));
  std::optional<picked_action> picked;
  life_.during([&] {
    picked = ask_action(*this, {caption, from, utf8_of(field.GetValue()), 1, {}}, disc_, facts_);
  });
  if (!picked)
    return;
  field.SetFocus();
  field.SetValue(wx_text(picked->command));  // as if it was typed
  field.SelectAll();
}

void navcommands_window::on_key(wxKeyEvent& event) {
  if (event.GetKeyCode() == 'P' && event.GetModifiers() == wxMOD_CONTROL)
    pick_command();
  else
    event.Skip();
}

void navcommands_window::accept() {
  const std::string first = utf8_of(firstplay_->GetValue());
  if (!life_.during([&] { model_.set_firstplay(first); }))
    return;
  if (model_.firstplay() != first) {  // refused
    firstplay_->ChangeValue(wx_text(model_.firstplay()));
    return;
  }
  model_.accept();
  life_.leave();
}

}  // namespace corvane
