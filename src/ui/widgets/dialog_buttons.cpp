#include "ui/widgets/dialog_buttons.h"

#include "ui/widgets/layout.h"

#include <wx/button.h>
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

}  // namespace corvane
