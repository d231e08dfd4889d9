#include "ui/disc/findings_window.h"

#include "formats/sanitized.h"
#include "platform/files/files.h"
#include "ui/disc/findings_view.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/controls.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/display.h>
#include <wx/gauge.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {

findings_window::findings_window(wxWindow* main, handlers on)
    : wxDialog(main, wxID_ANY, "findings", wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "findings"),
      on_(std::move(on)) {
  name_control(*this, "findings");
  SetIcons(program_icon());
  const int gap = FromDIP(layout::group_gap);
  auto* groups = new wxBoxSizer(wxVERTICAL);
  groups->Add(make_summary(), wxSizerFlags().Expand());
  groups->Add(make_progress(), wxSizerFlags().Expand().Border(wxTOP, gap));
  findings_view::handlers on_list;
  on_list.selects = [this] { enable_buttons(); };
  on_list.opens = [this] { go_to_selected(); };
  view_ = new findings_view(this, std::move(on_list));
  groups->Add(view_, wxSizerFlags(1).Expand().Border(wxTOP, gap));
  groups->Add(make_buttons(), wxSizerFlags().Expand().Border(wxTOP, gap));
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(groups, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(layout::window_border)));
  SetSizerAndFit(whole);
  groups->Show(progress_, false, true);
  bind_controls();
  SetClientSize(FromDIP(wxSize(layout::findings_width, layout::findings_height)));
  place_beside(*main);
  fill(std::nullopt);
  view_->focus_list();
}

// Beside it, so that what a finding leads to is seen with it. Where there is no room for that, a
// part of the main window is covered.
void findings_window::place_beside(const wxWindow& main) {
  const wxRect screen = wxDisplay(&main).GetClientArea();
  const wxRect beside = main.GetScreenRect();
  const wxSize size = GetSize();
  const int room_left = beside.x - screen.x;
  const int room_right = screen.GetRight() - beside.GetRight();
  const int x = room_right >= room_left ? beside.GetRight() + 1 : beside.x - size.x;
  const auto inside = [](int from, int least, int room, int length) {
    return std::max(least, std::min(from, least + room - length));
  };
  SetPosition({inside(x, screen.x, screen.width, size.x),
               inside(beside.y, screen.y, screen.height, size.y)});
}

wxSizer* findings_window::make_summary() {
  picture_ = new wxStaticBitmap(this, wxID_ANY, icon_picture("found-nothing", layout::button_icon));
  name_control(*picture_, "worst");
  summary_ = new wxStaticText(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                              wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
  summary_->SetFont(summary_->GetFont().Bold());
  summary_->SetMinSize(wxSize(1, -1));
  name_control(*summary_, "summary");
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(picture_, wxSizerFlags().CentreVertical());
  row->Add(summary_, wxSizerFlags(1).CentreVertical().Border(wxLEFT, FromDIP(layout::control_gap)));
  return row;
}

wxSizer* findings_window::make_progress() {
  file_ = new wxStaticText(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                           wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_MIDDLE);
  file_->SetMinSize(wxSize(1, -1));
  name_control(*file_, "file");
  gauge_ = new wxGauge(this, wxID_ANY, progress_steps);
  name_control(*gauge_, "progress");
  wxButton* stop =
      make_button(this, "stop", "s&top", "end the check; what it has found is kept", on_.stop);
  stop->SetBitmap(icon_picture("stop", layout::button_icon));
  const int gap = FromDIP(layout::control_gap);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(file_, wxSizerFlags(2).CentreVertical());
  row->Add(gauge_, wxSizerFlags(3).CentreVertical().Border(wxLEFT, gap));
  row->Add(stop, wxSizerFlags().CentreVertical().Border(wxLEFT, gap));
  progress_ = row;
  return row;
}

wxSizer* findings_window::make_buttons() {
  go_to_ = make_button(this, "goto", "&go to", "open what the selected finding is about (Enter)",
                       [this] { go_to_selected(); });
  copy_ = make_button(this, "copy", "c&opy all", "copy all findings (Ctrl+C: the selected one)",
                      [this] { copy_all(); });
  save_ = make_button(this, "save", "&save as text...", "write all findings into a file", on_.save);
  check_ =
      make_button(this, "check", "chec&k again", "read every file to its end (Ctrl+K)", on_.check);
  auto* close = new wxButton(this, wxID_CLOSE, "&close");
  clean_ = make_button(this, "clean", "c&lean...",
                       "see what a copy of the subtitle file without this would be",
                       [this] { clean_selected(); });
  const wxSizerFlags gap = wxSizerFlags().Border(wxLEFT, FromDIP(layout::control_gap));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(go_to_);
  row->Add(clean_, gap);
  row->Add(copy_, gap);
  row->Add(save_, gap);
  row->AddStretchSpacer();
  row->Add(check_, gap);
  row->Add(close, gap);
  SetEscapeId(wxID_CLOSE);
  return row;
}

void findings_window::bind_controls() {
  Bind(wxEVT_CHAR_HOOK, &findings_window::on_key, this);
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { Close(); }, wxID_CLOSE);
  Bind(wxEVT_CLOSE_WINDOW, &findings_window::on_close, this);
}

// GTK activates the row that was gone to, not the selected one. The list goes on with an event that
// it gets, and another window would have the keys.
void findings_window::on_key(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  const bool control = event.GetModifiers() == wxMOD_CONTROL;
  if (control && key == 'K')
    on_.check();
  else if (control && key == 'C' && !view_->details_have_focus())
    copy_selected();
  else if (view_->list_has_focus() && !event.HasAnyModifiers() &&
           (key == WXK_RETURN || key == WXK_NUMPAD_ENTER))
    CallAfter([this] { go_to_selected(); });
  else
    event.Skip();
}

void findings_window::on_close(wxCloseEvent& /*event*/) {
  on_.closed();
  Destroy();
}

void findings_window::show_findings(const finding_list& findings) {
  if (findings == findings_)
    return;
  const auto instead = findings.row_instead(findings_, view_->selected_row().value_or(0));
  findings_ = findings;
  fill(instead);
}

void findings_window::fill(std::optional<std::size_t> selected) {
  const auto& all = findings_.findings();
  view_->show_findings(all, selected);
  picture_->SetBitmap(icon_picture(all.empty() ? "found-nothing" : picture_of(all.front().severity),
                                   layout::button_icon));
  summary_->SetLabelText(wx_text(findings_.summary()));
  summary_->SetToolTip(wx_text(findings_.summary()));
}

void findings_window::select(const finding& f) {
  const auto& all = findings_.findings();
  const auto found = std::find(all.begin(), all.end(), f);
  if (found != all.end())
    view_->select(static_cast<std::size_t>(found - all.begin()));
}

void findings_window::enable_buttons() {
  const finding* f = view_->selected();
  const bool none = findings_.findings().empty();
  go_to_->Enable(commands_enabled_ && f != nullptr && on_.leads_somewhere(*f));
  clean_->Enable(commands_enabled_ && f != nullptr && on_.can_clean && on_.can_clean(*f));
  copy_->Enable(!none);
  save_->Enable(commands_enabled_ && !none);
  check_->Enable(commands_enabled_ && !file_->IsShown());
}

void findings_window::show_progress(const std::optional<check_progress>& progress) {
  if (progress) {
    const double part = std::clamp(progress->part, 0.0, 1.0);
    gauge_->SetValue(static_cast<int>(std::lround(part * progress_steps)));
    const std::string name = text_of(path_of(progress->file).filename());
    file_->SetLabelText(name.empty() ? wxString() : "reading " + wx_text(sanitized(name)));
  }
  if (file_->IsShown() == progress.has_value())
    return;
  GetSizer()->Show(progress_, progress.has_value(), true);
  Layout();
  enable_buttons();
}

void findings_window::let_commands(bool enabled) {
  commands_enabled_ = enabled;
  enable_buttons();
}

void findings_window::come_back() {
  Raise();
  view_->focus_list();
}

// An activated row leads nowhere while its button is off, but for an editor that is raised.
void findings_window::go_to_selected() {
  if (const finding* f = view_->selected())
    on_.go_to(*f);
}

void findings_window::clean_selected() {
  if (const finding* f = view_->selected())
    on_.clean(*f);
}

void findings_window::copy_all() {
  copy_to_clipboard(wx_text(findings_.text()));
}

void findings_window::copy_selected() {
  if (const finding* f = view_->selected())
    copy_to_clipboard(wx_text(text_of(*f) + "\n"));
}

}  // namespace corvane
