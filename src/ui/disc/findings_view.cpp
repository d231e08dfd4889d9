#include "ui/disc/findings_view.h"

#include "formats/sanitized.h"
#include "tools/finding_list.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/text_column.h"
#include "ui/widgets/text_margins.h"
#include "ui/widgets/wx_text.h"

#include <wx/dataview.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>

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

findings_view::findings_view(wxWindow* owner, handlers on)
    : wxPanel(owner, wxID_ANY), on_(std::move(on)) {
  make_list();
  make_details();
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(list_, wxSizerFlags(3).Expand());
  column->Add(details_, wxSizerFlags(2).Expand().Border(wxTOP, FromDIP(layout::control_gap)));
  SetSizer(column);
}

void findings_view::make_list() {
  list_ = new wxDataViewListCtrl(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxDV_SINGLE);
  name_control(*list_, "findingslist");
  list_->AppendColumn(new wxDataViewColumn("severity", new wxDataViewIconTextRenderer, 0,
                                           FromDIP(layout::findings_severity_width), wxALIGN_LEFT,
                                           wxDATAVIEW_COL_RESIZABLE),
                      wxDataViewIconTextRenderer::GetDefaultType());
  list_->AppendColumn(text_column("where", 1, FromDIP(layout::findings_item_width)));
  list_->AppendColumn(text_column("what was found", 2, FromDIP(layout::findings_item_width)));
  list_->SetMinSize(FromDIP(wxSize(layout::list_height, layout::findings_least_height)));
  list_->Bind(wxEVT_DATAVIEW_SELECTION_CHANGED, [this](wxDataViewEvent&) {
    if (!filling_)
      show_selected();
  });
  // After the event: the toolkit goes on with it, and another window would get the keys.
  list_->Bind(wxEVT_DATAVIEW_ITEM_ACTIVATED,
              [this](wxDataViewEvent&) { CallAfter([this] { on_.opens(); }); });
}

void findings_view::make_details() {
  details_ = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                            wxTE_MULTILINE | wxTE_READONLY | wxTE_RICH2);
  set_text_margins(*details_, FromDIP(wxSize(layout::control_gap, layout::control_gap / 2)));
  name_control(*details_, "details");
  details_->SetMinSize(FromDIP(wxSize(layout::list_height, layout::findings_least_height)));
}

void findings_view::show_findings(std::vector<finding> findings,
                                  std::optional<std::size_t> selected) {
  findings_ = std::move(findings);
  filling_ = true;
  list_->DeleteAllItems();
  for (const finding& f : findings_)
    list_->AppendItem(row_of(f));
  filling_ = false;
  if (selected)
    select(*selected);
  else
    show_selected();
}

void findings_view::select(std::size_t row) {
  filling_ = true;
  list_->SelectRow(static_cast<unsigned>(row));
  list_->EnsureVisible(list_->RowToItem(static_cast<int>(row)));
  filling_ = false;
  show_selected();
}

std::optional<std::size_t> findings_view::selected_row() const {
  const int row = list_->GetSelectedRow();
  return row == wxNOT_FOUND ? std::nullopt : std::optional(static_cast<std::size_t>(row));
}

const finding* findings_view::selected() const {
  const auto row = selected_row();
  return row ? &findings_[*row] : nullptr;
}

void findings_view::show_selected() {
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
  on_.selects();
}

void findings_view::focus_list() {
  list_->SetFocus();
}

bool findings_view::list_has_focus() const {
  const wxWindow* focus = FindFocus();
  return focus != nullptr && (focus == list_ || focus->GetParent() == list_);
}

bool findings_view::details_have_focus() const {
  return details_->HasFocus();
}

}  // namespace corvane
