#include "ui/subtitles/subtitles_window.h"

#include "ui/main_window.h"
#include "ui/subtitles/cue_preview.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/dialog_buttons.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/labelled.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/display.h>
#include <wx/listbox.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/utils.h>

#include <utility>

namespace corvane {
namespace {

/// Takes long when the system lists its fonts for the first time.
font_list fonts_of_system() {
  const wxBusyCursor busy;
  return system_fonts();
}

}  // namespace

void edit_subtitles(main_window& main) {
  edit_subtitles_at(main, 0, std::nullopt);
}

void edit_subtitles_at(main_window& main, int subtitle, std::optional<double> seconds) {
  std::optional<Subtitles> model;
  main.run("edit subtitles",
           [&model](document& doc) { model = Subtitles::open(doc, fonts_of_system()); });
  if (!model)
    return;
  model->select(subtitle - 1);
  main.open_editor("edit subtitles", [&](lent_project lent) -> wxTopLevelWindow* {
    auto* dialog = new subtitles_window(&main, main.app(), std::move(lent), std::move(*model));
    if (seconds)
      dialog->show_cue_at(*seconds);
    dialog->Show();
    return dialog;
  });
}

subtitles_window::subtitles_window(wxWindow* main, const std::string& app, lent_project lent,
                                   Subtitles model)
    : wxDialog(main, wxID_ANY, "Corvane - subtitles", wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "Subtitles"),
      lent_(std::move(lent)),
      model_(std::move(model)),
      life_(*this, *main, lent_.ask(),
            {[this] { preview_->release(); }, {}, [this] { lent_.give_back(); }}) {
  name_control(*this, "Subtitles");
  SetIcons(program_icon());
  auto* columns = new wxBoxSizer(wxHORIZONTAL);
  columns->Add(make_left(), wxSizerFlags().Expand());
  preview_ = new cue_preview(this, app, model_.fonts(), model_.video());
  columns->Add(preview_, wxSizerFlags(1).Expand().Border(wxLEFT, FromDIP(layout::group_gap)));
  auto* whole = new wxBoxSizer(wxVERTICAL);
  const int border = FromDIP(layout::window_border);
  whole->Add(columns, wxSizerFlags(1).Expand().Border(wxALL, border));
  whole->Add(make_buttons(), wxSizerFlags().Right().Border(wxLEFT | wxRIGHT | wxBOTTOM, border));
  show_model();
  SetSizerAndFit(whole);
  widen();
  bind_controls();
  CentreOnParent();
  life_.begin();
  lent_.keeps({"subtitles", [this](project& copy) { model_.keep_in(copy); }});
  list1_->SetFocus();
}

void subtitles_window::show_cue_at(double seconds) {
  preview_->go_to(seconds);
}

/// For a large preview, as far as the screen allows.
void subtitles_window::widen() {
  wxSize size = GetClientSize();
  size.x += FromDIP(layout::preview_width - layout::preview_least_width);
  const wxSize around = GetSize() - GetClientSize();
  size.DecTo(wxDisplay(GetParent()).GetClientArea().GetSize() - around);
  size.IncTo(GetClientSize());
  SetClientSize(size);
}

wxSizer* subtitles_window::make_left() {
  const int gap = FromDIP(layout::control_gap);
  auto* left = new wxBoxSizer(wxVERTICAL);
  left->Add(make_heading(), wxSizerFlags().Expand());
  list1_ = new wxListBox(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, 0, nullptr,
                         wxLB_SINGLE | wxLB_HSCROLL | wxLB_NEEDED_SB);
  name_control(*list1_, "list1");
  list1_->SetMinSize(FromDIP(wxSize(layout::list_height, layout::subtitles_height)));
  left->Add(list1_, wxSizerFlags(1).Expand().Border(wxTOP, gap));
  left->Add(make_commands(), wxSizerFlags().Expand().Border(wxTOP, gap));
  options_ = new subtitle_options_panel(this, model_,
                                        [this](const subtitle_event& event) { tell(event); });
  left->Add(options_, wxSizerFlags().Expand().Border(wxTOP, FromDIP(layout::group_gap)));
  return left;
}

wxSizer* subtitles_window::make_heading() {
  auto* Label1 = new wxStaticText(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                                  wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_MIDDLE);
  name_control(*Label1, "Label1");
  Label1->SetLabelText(wx_text(model_.label()));
  Label1->SetToolTip(wx_text(model_.label()));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(Label1, wxSizerFlags(1));
  return row;
}

wxSizer* subtitles_window::make_commands() {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(make_command("Command1", "&add text subtitle", &Subtitles::add_file), wxSizerFlags(1));
  row->Add(make_command("Command2", "reset subtitles to &none", &Subtitles::reset),
           wxSizerFlags(1).Border(wxLEFT, FromDIP(layout::control_gap)));
  return row;
}

wxButton* subtitles_window::make_command(const char* name, const char* label,
                                         void (Subtitles::*command)()) {
  auto* button = new wxButton(this, wxID_ANY, label);
  name_control(*button, name);
  button->Bind(wxEVT_BUTTON, [this, command](wxCommandEvent&) { tell(command); });
  return button;
}

wxSizer* subtitles_window::make_buttons() {
  auto* accept = new wxButton(this, wxID_OK, "acc&ept");
  name_control(*accept, "accept");
  auto* close = new wxButton(this, wxID_CANCEL, "&close, keep files");
  close->SetToolTip(
      "files that were added stay, those that were reset are gone; how they are drawn is as "
      "before");
  return dialog_buttons(accept, close);
}

void subtitles_window::bind_controls() {
  list1_->Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) {
    const int row = list1_->GetSelection();
    tell([row](Subtitles& model) { model.select(row); });
  });
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { accept(); }, wxID_OK);
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { Close(); }, wxID_CANCEL);
}

void subtitles_window::tell(const subtitle_event& event) {
  life_.during([&] {
    event(model_);
    show_model();
  });
}

void subtitles_window::show_model() {
  show_files();
  options_->show(model_);
  preview_->show(model_.file(), model_.shown(), model_.region());
}

void subtitles_window::show_files() {
  const wxArrayString names = wx_rows(model_.list1());
  if (names != list1_->GetStrings())
    list1_->Set(names);
  if (list1_->GetSelection() != model_.selected())
    list1_->SetSelection(model_.selected());
  list1_->EnsureVisible(model_.selected());
}

// A file that is missing is told then, over this window.
void subtitles_window::accept() {
  if (life_.during([this] { model_.accept(); }))
    life_.leave();
}

}  // namespace corvane
