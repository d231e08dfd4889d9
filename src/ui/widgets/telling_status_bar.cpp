#include "ui/widgets/telling_status_bar.h"

#include <wx/control.h>

namespace corvane {
namespace {

constexpr int around_text = 6;  // at most what a pane has beside its text

}  // namespace

// The toolkit's own tips for what was shortened do not come with GTK.
telling_status_bar::telling_status_bar(wxWindow* parent, const std::vector<int>& widths)
    : wxStatusBar(parent, wxID_ANY, wxSTB_DEFAULT_STYLE & ~wxSTB_SHOW_TIPS) {
  SetFieldsCount(static_cast<int>(widths.size()), widths.data());
  // Once the panes have their new widths.
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    CallAfter([this] { show_tip(); });
    event.Skip();
  });
}

void telling_status_bar::DoUpdateStatusText(int pane) {
  wxStatusBar::DoUpdateStatusText(pane);
  show_tip();
}

void telling_status_bar::show_tip() {
  wxString tip;
  for (int pane = 0; pane < GetFieldsCount(); ++pane) {
    const wxString text = GetStatusText(pane);
    wxRect place;
    if (text.empty() || !GetFieldRect(pane, place) ||
        GetTextExtent(text).x <= place.width - FromDIP(around_text))
      continue;
    tip += (tip.empty() ? "" : "\n") + text;
  }
  if (GetToolTipText() != tip)
    SetToolTip(tip);
}

}  // namespace corvane
