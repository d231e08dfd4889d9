#include "ui/subtitles/language_window.h"

#include "ui/main_window.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/dialog_buttons.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/labelled.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/search_list.h"
#include "ui/widgets/wx_text.h"

#include <wx/bmpbuttn.h>
#include <wx/button.h>
#include <wx/listbox.h>
#include <wx/sizer.h>
#include <wx/statbox.h>
#include <wx/stattext.h>

#include <optional>
#include <utility>

namespace corvane {
namespace {

wxArrayString languages() {
  wxArrayString all;
  for (const std::string_view entry : language_entries)
    all.push_back(wx_text(entry));
  return all;
}

}  // namespace

void edit_languages(main_window& main) {
  std::optional<language> model;
  main.run("edit language tags", [&model](document& doc) { model = language::open(doc); });
  if (model)
    main.open_editor("edit language tags", [&](lent_project lent) -> wxTopLevelWindow* {
      auto* dialog = new language_window(&main, std::move(lent), std::move(*model));
      dialog->Show();
      return dialog;
    });
}

language_window::language_window(wxWindow* main, lent_project lent, language model)
    : wxDialog(main, wxID_ANY, "language tags", wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "language"),
      lent_(std::move(lent)),
      model_(std::move(model)),
      life_(*this, *main, lent_.ask(), {{}, {}, [this] { lent_.give_back(); }}) {
  name_control(*this, "language");
  SetIcons(program_icon());
  auto* groups = new wxBoxSizer(wxVERTICAL);
  groups->Add(make_tags(), wxSizerFlags(1).Expand());
  groups->Add(make_buttons(), wxSizerFlags().Right().Border(wxTOP, FromDIP(layout::group_gap)));
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(groups, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(layout::window_border)));
  SetSizerAndFit(whole);
  bind_controls();
  show_tags();
  CentreOnParent();
  life_.begin();
  lent_.keeps({"language tags", [this](project& copy) { model_.keep_in(copy); }});
  List1_->SetFocus();
}

wxSizer* language_window::make_tags() {
  auto* box = new wxStaticBoxSizer(wxVERTICAL, this, "edit language tags");
  wxStaticBox* Frame1 = box->GetStaticBox();
  name_control(*Frame1, "Frame1");
  const int border = FromDIP(layout::box_border);
  const wxSizerFlags below = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, border);
  box->Add(make_list(Frame1), wxSizerFlags(1).Expand().Border(wxALL, border));
  box->Add(make_language(Frame1), below);
  box->Add(make_adders(Frame1), below);
  return box;
}

wxSizer* language_window::make_list(wxWindow* parent) {
  List1_ = new wxListBox(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, 0, nullptr,
                         wxLB_SINGLE | wxLB_HSCROLL | wxLB_NEEDED_SB);
  name_control(*List1_, "List1");
  List1_->SetMinSize(FromDIP(wxSize(layout::tags_width, layout::tags_height)));
  Command3_ = new wxBitmapButton(parent, wxID_ANY, icon_picture("remove", layout::button_icon));
  name_control(*Command3_, "Command3");
  Command3_->SetToolTip("remove the selected tag");
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(List1_, wxSizerFlags(1).Expand());
  row->Add(Command3_, wxSizerFlags().Top().Border(wxLEFT, FromDIP(layout::box_border)));
  return row;
}

wxSizer* language_window::make_language(wxWindow* parent) {
  wxStaticText* label = make_label(parent, "&language");
  Combo1_ = new search_list(parent, "Combo1", languages(), [this](int entry) {
    model_.pick(std::string(language_entries[static_cast<std::size_t>(entry)]));
    show_tags();
  });
  label_leads_to(label, Combo1_);
  stream_ = new wxStaticText(parent, wxID_ANY, wxString());
  name_control(*stream_, "stream");
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(label, wxSizerFlags().CentreVertical());
  row->Add(Combo1_, wxSizerFlags(1).CentreVertical().Border(wxLEFT, FromDIP(layout::control_gap)));
  auto* rows = new wxBoxSizer(wxVERTICAL);
  rows->Add(stream_, wxSizerFlags().Expand());
  rows->Add(row, wxSizerFlags().Expand().Border(wxTOP, FromDIP(layout::control_gap)));
  return rows;
}

wxSizer* language_window::make_adders(wxWindow* parent) {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(make_button(parent, "Command1", "add &audio tag", &language::add_audio_tag),
           wxSizerFlags(1));
  row->Add(make_button(parent, "Command2", "add &sub tag", &language::add_sub_tag),
           wxSizerFlags(1).Border(wxLEFT, FromDIP(layout::control_gap)));
  return row;
}

wxButton* language_window::make_button(wxWindow* parent, const char* name, const char* label,
                                       void (language::*event)()) {
  auto* button = new wxButton(parent, wxID_ANY, label);
  name_control(*button, name);
  button->Bind(wxEVT_BUTTON, [this, event](wxCommandEvent&) { tell(event); });
  return button;
}

wxSizer* language_window::make_buttons() {
  auto* Command4 = new wxButton(this, wxID_OK, "acc&ept");
  name_control(*Command4, "Command4");
  return dialog_buttons(Command4, new wxButton(this, wxID_CANCEL, "&cancel"));
}

void language_window::bind_controls() {
  List1_->Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) {
    model_.select(List1_->GetSelection());
    show_tags();
  });
  List1_->Bind(wxEVT_CHAR_HOOK, &language_window::on_list_key, this);
  Command3_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { tell(&language::remove); });
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { accept(); }, wxID_OK);
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { Close(); }, wxID_CANCEL);
}

void language_window::on_list_key(wxKeyEvent& event) {
  const int key = event.HasAnyModifiers() ? WXK_NONE : event.GetKeyCode();
  const bool none = List1_->GetSelection() == wxNOT_FOUND;
  if (key == WXK_DELETE || key == WXK_NUMPAD_DELETE)
    tell(&language::remove);
  else if (key == WXK_RETURN || key == WXK_NUMPAD_ENTER)
    Combo1_->SetFocus();
  else if (key == WXK_DOWN && none && !List1_->IsEmpty()) {  // GTK would go to the second row
    model_.select(0);
    show_tags();
  } else
    event.Skip();
}

void language_window::tell(void (language::*event)()) {
  (model_.*event)();
  show_tags();
}

void language_window::show_tags() {
  const wxArrayString rows = wx_rows(model_.List1());
  if (rows != List1_->GetStrings())
    List1_->Set(rows);
  if (List1_->GetSelection() != model_.selected())
    List1_->SetSelection(model_.selected());
  if (model_.selected() >= 0)
    List1_->EnsureVisible(model_.selected());
  Combo1_->show(wx_text(model_.Combo1()));
  Command3_->Enable(model_.selected() >= 0);
  stream_->SetLabel(wx_text(model_.stream()));
}

// A file that is missing is told then, over this window.
void language_window::accept() {
  if (life_.during([this] { model_.accept(); }))
    life_.leave();
}

}  // namespace corvane
