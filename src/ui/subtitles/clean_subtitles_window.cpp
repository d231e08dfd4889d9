#include "ui/subtitles/clean_subtitles_window.h"

#include "formats/text.h"
#include "formats/time_text.h"
#include "ui/main_window.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/dialog_buttons.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/labelled.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/screen_fit.h"
#include "ui/widgets/text_column.h"
#include "ui/widgets/text_margins.h"
#include "ui/widgets/wrapped_text.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/dataview.h>
#include <wx/dcclient.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <string>
#include <utility>

namespace corvane {
namespace {

/// A cue's lines in one row of the list.
wxString cue_on_one_line(const std::string& text) {
  return text.empty() ? wxString("(nothing)") : wx_text(replace_all(text, "\n", " / "));
}

wxTextCtrl* read_only_text(wxWindow* parent, const char* name, long style) {
  auto* text = new wxTextCtrl(parent, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                              wxTE_READONLY | style);
  name_control(*text, name);
  return text;
}

}  // namespace

void clean_subtitles_of(main_window& main, int title, int subtitle) {
  std::optional<subtitle_cleaning> model;
  main.run("clean subtitles",
           [&](document& doc) { model = subtitle_cleaning::open(doc, title, subtitle); });
  if (!model)
    return;
  main.open_editor("clean subtitles", [&](lent_project lent) -> wxTopLevelWindow* {
    auto* dialog = new clean_subtitles_window(&main, std::move(lent), std::move(*model));
    dialog->Show();
    return dialog;
  });
}

clean_subtitles_window::clean_subtitles_window(wxWindow* main, lent_project lent,
                                               subtitle_cleaning model)
    : wxDialog(main, wxID_ANY, "Corvane - clean subtitles", wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "cleansubtitles"),
      lent_(std::move(lent)),
      model_(std::move(model)),
      life_(*this, *main, lent_.ask(), {{}, {}, [this] { lent_.give_back(); }}) {
  name_control(*this, "cleansubtitles");
  SetIcons(program_icon());
  const wxSizerFlags next = wxSizerFlags().Expand().Border(wxTOP, FromDIP(layout::group_gap));
  auto* groups = new wxBoxSizer(wxVERTICAL);
  groups->Add(make_heading(), wxSizerFlags().Expand());
  make_list();
  groups->Add(list_, wxSizerFlags(next).Proportion(3));
  groups->Add(make_texts(), wxSizerFlags(next).Proportion(2));
  groups->Add(make_place(), next);
  groups->Add(make_buttons(), wxSizerFlags(next));
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(groups, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(layout::window_border)));
  SetSizerAndFit(whole);
  set_size_on_screen(*this, FromDIP(wxSize(layout::clean_width, layout::clean_height)));
  bind_controls();
  fill();
  CentreOnParent();
  life_.begin();
  list_->SetFocus();
}

wxSizer* clean_subtitles_window::make_heading() {
  auto* text = new wxStaticText(this, wxID_ANY, wxString());
  wxClientDC dc(text);
  dc.SetFont(text->GetFont());
  const int width = layout::clean_width - 2 * layout::window_border;
  text->SetLabelText(wrapped(dc, wx_text(model_.summary()), FromDIP(width)));
  name_control(*text, "summary");
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(text, wxSizerFlags(1));
  return row;
}

void clean_subtitles_window::make_list() {
  list_ = new wxDataViewListCtrl(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxDV_SINGLE);
  name_control(*list_, "cues");
  const int width = FromDIP(layout::clean_text_width);
  list_->AppendColumn(text_column("time", 0, FromDIP(layout::clean_time_width)));
  list_->AppendColumn(text_column("in the file", 1, width));
  list_->AppendColumn(text_column("in the copy", 2, width));
  list_->SetMinSize(FromDIP(wxSize(layout::list_height, layout::clean_list_height)));
}

wxSizer* clean_subtitles_window::make_texts() {
  const int gap = FromDIP(layout::control_gap);
  auto* both = new wxBoxSizer(wxHORIZONTAL);
  both->Add(make_text("in the &file:", "before", before_), wxSizerFlags(1).Expand());
  both->AddSpacer(FromDIP(layout::group_gap));  // a border would be of the second one's width
  both->Add(make_text("in the &copy:", "after", after_), wxSizerFlags(1).Expand());
  auto* label = make_label(this, "wh&y:");
  why_ = read_only_text(this, "why", 0);
  label_leads_to(label, why_);
  auto* reason = new wxBoxSizer(wxHORIZONTAL);
  reason->Add(label, wxSizerFlags().CentreVertical());
  reason->Add(why_, wxSizerFlags(1).CentreVertical().Border(wxLEFT, gap));
  auto* all = new wxBoxSizer(wxVERTICAL);
  all->Add(both, wxSizerFlags(1).Expand());
  all->Add(reason, wxSizerFlags().Expand().Border(wxTOP, gap));
  return all;
}

wxSizer* clean_subtitles_window::make_text(const char* label, const char* name, wxTextCtrl*& text) {
  auto* words = make_label(this, label);
  text = read_only_text(this, name, wxTE_MULTILINE);
  text->SetMinSize(FromDIP(wxSize(layout::list_height, layout::clean_text_height)));
  set_text_margins(*text, FromDIP(wxSize(layout::control_gap, layout::label_gap)));
  label_leads_to(words, text);
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(words);
  column->Add(text, wxSizerFlags(1).Expand().Border(wxTOP, FromDIP(layout::label_gap)));
  return column;
}

wxSizer* clean_subtitles_window::make_place() {
  const int gap = FromDIP(layout::control_gap);
  auto* label = make_label(this, "&save it as:");
  place_ = read_only_text(this, "place", 0);
  label_leads_to(label, place_);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(label, wxSizerFlags().CentreVertical());
  row->Add(place_, wxSizerFlags(1).CentreVertical().Border(wxLEFT, gap));
  return row;
}

wxSizer* clean_subtitles_window::make_buttons() {
  auto* choose = new wxButton(this, wxID_ANY, "choose &place...");
  name_control(*choose, "chooseplace");
  choose->SetToolTip("choose another folder or name for the cleaned copy");
  choose->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { choose_place(); });
  auto* write = new wxButton(this, wxID_OK, "save and &use the copy");
  name_control(*write, "usecopy");
  write->SetToolTip("write the copy; the title has it instead of the file, which stays as it is");
  auto* cancel = new wxButton(this, wxID_CANCEL, "ca&ncel");
  name_control(*cancel, "cancel");
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(choose);
  row->AddStretchSpacer();
  row->Add(dialog_buttons(write, cancel));
  write->SetDefault();
  return row;
}

void clean_subtitles_window::bind_controls() {
  list_->Bind(wxEVT_DATAVIEW_SELECTION_CHANGED, [this](wxDataViewEvent&) { show_selected(); });
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { write(); }, wxID_OK);
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { Close(); }, wxID_CANCEL);
}

void clean_subtitles_window::fill() {
  for (const cleaned_cue& cue : model_.changes()) {
    wxVector<wxVariant> row;
    row.push_back(wx_text(time_text(cue.begin)));
    row.push_back(cue_on_one_line(cue.before));
    row.push_back(cue_on_one_line(cue.after));
    list_->AppendItem(row);
  }
  list_->SelectRow(0);
  show_selected();
  place_->ChangeValue(wx_text(model_.copy()));
}

void clean_subtitles_window::show_selected() {
  const int row = list_->GetSelectedRow();
  const cleaned_cue cue =
      row == wxNOT_FOUND ? cleaned_cue() : model_.changes()[static_cast<std::size_t>(row)];
  before_->ChangeValue(wx_lines(cue.before));
  after_->ChangeValue(wx_lines(cue.after));
  why_->ChangeValue(wx_text(cue.why));
  why_->SetToolTip(wx_text(cue.why));
}

void clean_subtitles_window::choose_place() {
  life_.during([this] {
    model_.choose_place();
    place_->ChangeValue(wx_text(model_.copy()));
  });
}

void clean_subtitles_window::write() {
  bool done = false;
  if (life_.during([&] { done = model_.write_and_use(); }) && done)
    life_.leave();
}

}  // namespace corvane
