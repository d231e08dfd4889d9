#include "ui/disc/findings_window.h"

#include "formats/sanitized.h"
#include "platform/files/files.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/dataview.h>
#include <wx/display.h>
#include <wx/gauge.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
namespace {

wxVector<wxVariant> row_of(const finding& f) {
  wxVector<wxVariant> row;
  wxVariant severity;
  severity << wxDataViewIconText(name_of(f.severity),
                                 icon_picture(picture_of(f.severity), layout::button_icon));
  row.push_back(severity);
  row.push_back(wx_text(place_text(f)));
  row.push_back(wx_text(sanitized(f.found)));
  return row;
}

wxDataViewColumn* text_column(const char* title, unsigned model_column, int width) {
  auto* renderer = new wxDataViewTextRenderer;
  renderer->EnableEllipsize(wxELLIPSIZE_END);
  return new wxDataViewColumn(title, renderer, model_column, width, wxALIGN_LEFT,
                              wxDATAVIEW_COL_RESIZABLE);
}

void set_margins(wxTextCtrl& text, wxSize margins) {
#ifdef __WXGTK__
  // The toolkit has them for texts of one line only.
  auto* view = GTK_TEXT_VIEW(gtk_bin_get_child(GTK_BIN(text.GetHandle())));
  gtk_text_view_set_left_margin(view, margins.x);
  gtk_text_view_set_right_margin(view, margins.x);
  gtk_text_view_set_top_margin(view, margins.y);
#else
  text.SetMargins(margins.x, margins.y);
#endif
}

}  // namespace

const char* picture_of(finding_severity severity) {
  switch (severity) {
    case finding_severity::note:
      return "found-note";
    case finding_severity::warning:
      return "found-warning";
    case finding_severity::error:
      break;
  }
  return "found-error";
}

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
  groups->Add(make_list(), wxSizerFlags(1).Expand().Border(wxTOP, gap));
  groups->Add(make_buttons(), wxSizerFlags().Expand().Border(wxTOP, gap));
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(groups, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(layout::window_border)));
  SetSizerAndFit(whole);
  groups->Show(progress_, false, true);
  bind_controls();
  SetClientSize(FromDIP(wxSize(layout::findings_width, layout::findings_height)));
  place_beside(*main);
  fill(std::nullopt);
  list_->SetFocus();
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
      make_button("stop", "s&top", "end the check; what it has found is kept", on_.stop);
  stop->SetBitmap(icon_picture("stop", layout::button_icon));
  const int gap = FromDIP(layout::control_gap);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(file_, wxSizerFlags(2).CentreVertical());
  row->Add(gauge_, wxSizerFlags(3).CentreVertical().Border(wxLEFT, gap));
  row->Add(stop, wxSizerFlags().CentreVertical().Border(wxLEFT, gap));
  progress_ = row;
  return row;
}

wxSizer* findings_window::make_list() {
  list_ = new wxDataViewListCtrl(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxDV_SINGLE);
  name_control(*list_, "findingslist");
  list_->AppendColumn(new wxDataViewColumn("severity", new wxDataViewIconTextRenderer, 0,
                                           FromDIP(layout::findings_severity_width), wxALIGN_LEFT,
                                           wxDATAVIEW_COL_RESIZABLE),
                      wxDataViewIconTextRenderer::GetDefaultType());
  list_->AppendColumn(text_column("where", 1, FromDIP(layout::findings_item_width)));
  list_->AppendColumn(text_column("what was found", 2, FromDIP(layout::findings_item_width)));
  list_->SetMinSize(FromDIP(wxSize(layout::list_height, layout::list_height)));
  details_ = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                            wxTE_MULTILINE | wxTE_READONLY | wxTE_RICH2);
  set_margins(*details_, FromDIP(wxSize(layout::control_gap, layout::control_gap / 2)));
  name_control(*details_, "details");
  details_->SetMinSize(FromDIP(wxSize(layout::list_height, layout::list_height)));
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(list_, wxSizerFlags(3).Expand());
  column->Add(details_, wxSizerFlags(2).Expand().Border(wxTOP, FromDIP(layout::control_gap)));
  return column;
}

wxButton* findings_window::make_button(const char* name, const char* label, const char* tip,
                                       const std::function<void()>& click) {
  auto* button = new wxButton(this, wxID_ANY, label);
  name_control(*button, name);
  button->SetToolTip(tip);
  button->Bind(wxEVT_BUTTON, [click](wxCommandEvent&) { click(); });
  return button;
}

wxSizer* findings_window::make_buttons() {
  go_to_ = make_button("goto", "&go to", "open what the selected finding is about (Enter)",
                       [this] { go_to_selected(); });
  copy_ = make_button("copy", "c&opy all", "copy all findings (Ctrl+C: the selected one)",
                      [this] { copy_all(); });
  save_ = make_button("save", "&save as text...", "write all findings into a file", on_.save);
  check_ = make_button("check", "chec&k again", "read every file to its end (Ctrl+K)", on_.check);
  auto* close = new wxButton(this, wxID_CLOSE, "&close");
  const wxSizerFlags gap = wxSizerFlags().Border(wxLEFT, FromDIP(layout::control_gap));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(go_to_);
  row->Add(copy_, gap);
  row->Add(save_, gap);
  row->AddStretchSpacer();
  row->Add(check_, gap);
  row->Add(close, gap);
  SetEscapeId(wxID_CLOSE);
  return row;
}

void findings_window::bind_controls() {
  list_->Bind(wxEVT_DATAVIEW_SELECTION_CHANGED, [this](wxDataViewEvent&) {
    if (!filling_)
      show_selected();
  });
  // After the event: the toolkit goes on with it, and another window would get the keys.
  list_->Bind(wxEVT_DATAVIEW_ITEM_ACTIVATED,
              [this](wxDataViewEvent&) { CallAfter([this] { go_to_selected(); }); });
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
  const wxWindow* focus = FindFocus();
  const bool on_list = focus != nullptr && (focus == list_ || focus->GetParent() == list_);
  if (control && key == 'K')
    on_.check();
  else if (control && key == 'C' && !details_->HasFocus())
    copy_selected();
  else if (on_list && !event.HasAnyModifiers() && (key == WXK_RETURN || key == WXK_NUMPAD_ENTER))
    CallAfter([this] { go_to_selected(); });
  else
    event.Skip();
}

void findings_window::on_close(wxCloseEvent& /*event*/) {
  on_.closed();
  Destroy();
}

const finding* findings_window::selected() const {
  const int row = list_->GetSelectedRow();
  return row == wxNOT_FOUND ? nullptr : &findings_.findings()[static_cast<std::size_t>(row)];
}

void findings_window::show_findings(const finding_list& findings) {
  if (findings == findings_)
    return;
  const int row = list_->GetSelectedRow();
  const auto instead =
      findings.row_instead(findings_, row == wxNOT_FOUND ? 0 : static_cast<std::size_t>(row));
  findings_ = findings;
  fill(instead);
}

void findings_window::fill(std::optional<std::size_t> selected) {
  filling_ = true;
  list_->DeleteAllItems();
  for (const finding& f : findings_.findings())
    list_->AppendItem(row_of(f));
  if (selected) {
    list_->SelectRow(static_cast<unsigned>(*selected));
    list_->EnsureVisible(list_->RowToItem(static_cast<int>(*selected)));
  }
  filling_ = false;
  const auto& all = findings_.findings();
  picture_->SetBitmap(icon_picture(all.empty() ? "found-nothing" : picture_of(all.front().severity),
                                   layout::button_icon));
  summary_->SetLabelText(wx_text(findings_.summary()));
  summary_->SetToolTip(wx_text(findings_.summary()));
  show_selected();
}

void findings_window::show_selected() {
  const finding* f = selected();
  details_->Clear();
  const wxTextAttr plain(details_->GetForegroundColour(), wxNullColour, details_->GetFont());
  const wxTextAttr strong(details_->GetForegroundColour(), wxNullColour,
                          details_->GetFont().Bold());
  bool first = true;
  for (const finding_detail& detail :
       f == nullptr ? std::vector<finding_detail>() : details_of(*f)) {
    if (!first)
      details_->AppendText("\n");
    first = false;
    details_->SetDefaultStyle(strong);
    if (!detail.label.empty()) {
      details_->AppendText(wx_text(detail.label + ": "));
      details_->SetDefaultStyle(plain);
    }
    details_->AppendText(wx_text(detail.text));
  }
  details_->SetInsertionPoint(0);
  details_->ShowPosition(0);
  enable_buttons();
}

void findings_window::enable_buttons() {
  const finding* f = selected();
  const bool none = findings_.findings().empty();
  go_to_->Enable(commands_enabled_ && f != nullptr && on_.leads_somewhere(*f));
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
  list_->SetFocus();
}

// An activated row leads nowhere while its button is off, but for an editor that is raised.
void findings_window::go_to_selected() {
  if (const finding* f = selected())
    on_.go_to(*f);
}

void findings_window::copy_all() {
  copy_to_clipboard(wx_text(findings_.text()));
}

void findings_window::copy_selected() {
  if (const finding* f = selected())
    copy_to_clipboard(wx_text(text_of(*f) + "\n"));
}

}  // namespace corvane
