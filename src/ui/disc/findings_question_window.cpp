#include "ui/disc/findings_question_window.h"

#include "tools/finding_list.h"
#include "ui/disc/findings_view.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/dialog_buttons.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wrapped_text.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/dcclient.h>
#include <wx/display.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

#include <utility>

namespace corvane {
namespace {

const char* picture_of_worst(const findings_question& question) {
  return picture_of(question.findings.empty() ? finding_severity::warning
                                              : question.findings.front().severity);
}

/// A reason can have the names of files in it, of any length.
wxString lines_of(wxWindow& owner, const std::string& text) {
  wxClientDC dc(&owner);
  dc.SetFont(owner.GetFont());
  const int beside = layout::tool_icon + layout::group_gap + 2 * layout::window_border;
  return wrapped(dc, wx_text(text), owner.FromDIP(layout::findings_question_width - beside));
}

}  // namespace

findings_question_window::findings_question_window(
    wxWindow* owner, const findings_question& question,
    std::function<bool(const finding&)> leads_somewhere)
    : wxDialog(owner, wxID_ANY, program_name, wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "findingsquestion"),
      leads_somewhere_(std::move(leads_somewhere)) {
  name_control(*this, "findingsquestion");
  findings_view::handlers on;
  on.selects = [this] {
    const finding* f = view_->selected();
    go_to_->Enable(f != nullptr && leads_somewhere_(*f));
  };
  on.opens = [this] { go_to_selected(); };
  const int gap = FromDIP(layout::group_gap);
  auto* groups = new wxBoxSizer(wxVERTICAL);
  groups->Add(make_heading(question), wxSizerFlags().Expand());
  view_ = new findings_view(this, std::move(on));
  groups->Add(view_, wxSizerFlags(1).Expand().Border(wxTOP, gap));
  groups->Add(make_buttons(question.may_go_on), wxSizerFlags().Expand().Border(wxTOP, gap));
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(groups, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(layout::window_border)));
  SetSizer(whole);
  SetMinClientSize(whole->CalcMin());
  fit_screen(*owner);
  Bind(wxEVT_CHAR_HOOK, &findings_question_window::on_key, this);
  view_->show_findings(question.findings,
                       question.findings.empty() ? std::nullopt : std::optional<std::size_t>(0));
  view_->focus_list();
}

void findings_question_window::fit_screen(const wxWindow& owner) {
  SetClientSize(FromDIP(wxSize(layout::findings_question_width, layout::findings_height)));
  wxSize size = GetSize();
  size.DecTo(wxDisplay(&owner).GetClientArea().GetSize());
  SetSize(size);
  CentreOnParent();
}

wxSizer* findings_question_window::make_heading(const findings_question& question) {
  auto* picture = new wxStaticBitmap(this, wxID_ANY,
                                     icon_picture(picture_of_worst(question), layout::tool_icon));
  name_control(*picture, "worst");
  auto* text = new wxStaticText(this, wxID_ANY, wxString());
  text->SetFont(text->GetFont().Bold());
  text->SetLabelText(lines_of(*text, question.text));
  name_control(*text, "question");
  auto* counts = new wxStaticText(
      this, wxID_ANY, wx_text(finding_list(question.findings, files_read::whole).counts()));
  name_control(*counts, "counts");
  auto* lines = new wxBoxSizer(wxVERTICAL);
  lines->Add(text);
  lines->Add(counts, wxSizerFlags().Border(wxTOP, FromDIP(layout::control_gap) / 2));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(picture, wxSizerFlags().CentreVertical());
  row->Add(lines, wxSizerFlags(1).CentreVertical().Border(wxLEFT, FromDIP(layout::group_gap)));
  return row;
}

wxSizer* findings_question_window::make_buttons(bool may_go_on) {
  go_to_ = new wxButton(this, wxID_ANY, "&go to");
  name_control(*go_to_, "goto");
  go_to_->SetToolTip("author nothing, and open what the selected finding is about (double click)");
  go_to_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { go_to_selected(); });
  auto* cancel = new wxButton(this, wxID_CANCEL, "&cancel");
  name_control(*cancel, "cancel");
  cancel->SetToolTip("author nothing (Enter, Escape)");
  cancel->SetDefault();
  SetEscapeId(wxID_CANCEL);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(go_to_);
  row->AddStretchSpacer();
  if (!may_go_on) {
    row->Add(cancel);
    return row;
  }
  auto* anyway = new wxButton(this, wxID_OK, "&author anyway");
  name_control(*anyway, "anyway");
  anyway->SetToolTip("begin the run as the project is");
  row->Add(dialog_buttons(anyway, cancel));
  return row;
}

// List and text would take Enter for themselves.
void findings_question_window::on_key(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  if (!event.HasAnyModifiers() && (key == WXK_RETURN || key == WXK_NUMPAD_ENTER) &&
      (view_->list_has_focus() || view_->details_have_focus()))
    EndModal(wxID_CANCEL);
  else
    event.Skip();
}

void findings_question_window::go_to_selected() {
  const finding* f = view_->selected();
  if (f == nullptr || !leads_somewhere_(*f) || !IsModal())
    return;
  to_repair_ = *f;
  EndModal(wxID_CANCEL);
}

}  // namespace corvane
