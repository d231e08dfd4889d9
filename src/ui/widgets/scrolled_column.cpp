#include "ui/widgets/scrolled_column.h"

#include "ui/widgets/layout.h"

#include <wx/settings.h>
#include <wx/sizer.h>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

namespace corvane {

scrolled_column::scrolled_column(wxWindow* parent)
    : wxScrolledWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                       wxVSCROLL | wxTAB_TRAVERSAL | wxBORDER_NONE) {
  SetScrollRate(0, 0);
#ifdef __WXGTK__
  // A bar that comes only once the pointer moves would not tell that there is more.
  gtk_scrolled_window_set_overlay_scrolling(GTK_SCROLLED_WINDOW(GetHandle()), FALSE);
#endif
}

void scrolled_column::hold(wxSizer* controls) {
  SetSizer(controls);
}

void scrolled_column::let_scroll(bool scrolls) {
  if (scrolls == scrolls_)
    return;
  scrolls_ = scrolls;
  SetScrollRate(0, scrolls ? FromDIP(layout::scroll_step) : 0);
  SetMinSize(wxSize(-1, scrolls ? FromDIP(layout::column_least_height) : -1));
  InvalidateBestSize();
}

wxSize scrolled_column::DoGetBestSize() const {
  wxSize best = GetSizer() == nullptr ? wxSize() : GetSizer()->CalcMin();
  if (scrolls_)
    best.x += wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, this);
  return best;
}

}  // namespace corvane
