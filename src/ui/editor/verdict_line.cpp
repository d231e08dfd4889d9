#include "ui/editor/verdict_line.h"

#include "ui/widgets/control_name.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wx_text.h"

#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

namespace corvane {

verdict_line::verdict_line(wxWindow* parent)
    : wxPanel(parent),
      mark_(new wxStaticBitmap(this, wxID_ANY, icon_picture("found-note", layout::button_icon))),
      words_(new wxStaticText(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                              wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END)) {
  mark_->Hide();
  name_control(*words_, "verdict");
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(mark_, wxSizerFlags().CentreVertical().ReserveSpaceEvenIfHidden());
  row->Add(words_, wxSizerFlags(1).CentreVertical().Border(wxLEFT, FromDIP(layout::control_gap)));
  SetSizer(row);
}

void verdict_line::show(const action_verdict& verdict) {
  const wxString words = wx_text(verdict.text);
  if (words_->GetLabelText() != words)
    words_->SetLabelText(words);
  if (words_->GetToolTipText() != words)
    words_->SetToolTip(words);
  const char* const picture =
      verdict.what == action_verdict::kind::wrong ? "found-error" : "found-note";
  mark_->SetBitmap(icon_picture(picture, layout::button_icon));
  mark_->Show(verdict.what != action_verdict::kind::fine);
}

}  // namespace corvane
