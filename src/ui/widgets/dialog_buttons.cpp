#include "ui/widgets/dialog_buttons.h"

#include "ui/widgets/control_name.h"
#include "ui/widgets/layout.h"

#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/sizer.h>

namespace corvane {

// The toolkit's own row has a border of its own, which shifts it against the controls above.
wxSizer* dialog_buttons(wxButton* accept, wxButton* cancel) {
#ifdef __WXMSW__
  wxButton *first = accept, *last = cancel;
#else
  wxButton *first = cancel, *last = accept;
#endif
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(first);
  row->Add(last, wxSizerFlags().Border(wxLEFT, first->FromDIP(layout::control_gap)));
  return row;
}

wxButton* make_close_button(wxDialog& dialog) {
  auto* const close = new wxButton(&dialog, wxID_CLOSE, "&close");
  name_control(*close, "close");
  dialog.SetEscapeId(wxID_CLOSE);
  dialog.Bind(
      wxEVT_BUTTON, [&dialog](wxCommandEvent&) { dialog.Close(); }, wxID_CLOSE);
  return close;
}

}  // namespace corvane
