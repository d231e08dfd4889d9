#include "ui/widgets/find_bar.h"

#include "ui/widgets/control_name.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <utility>

namespace corvane {

find_bar::find_bar(wxWindow* parent, std::function<bool(const std::string&, bool)> find,
                   std::function<void()> done)
    : wxPanel(parent), find_(std::move(find)), done_(std::move(done)) {
  auto* label = new wxStaticText(this, wxID_ANY, "&find");
  words_ = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                          wxTE_PROCESS_ENTER);
  name_control(*words_, "find");
  auto* next = new wxButton(this, wxID_ANY, "&next");
  auto* previous = new wxButton(this, wxID_ANY, "&previous");
  none_ = new wxStaticText(this, wxID_ANY, "not found");
  none_->Hide();

  auto* row = new wxBoxSizer(wxHORIZONTAL);
  const wxSizerFlags gap =
      wxSizerFlags().CentreVertical().Border(wxALL, FromDIP(layout::control_gap));
  row->Add(label, gap);
  row->Add(words_, wxSizerFlags(gap).Proportion(1));
  row->Add(next, gap);
  row->Add(previous, gap);
  row->Add(none_, wxSizerFlags(gap).ReserveSpaceEvenIfHidden());
  SetSizer(row);

  words_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { none_->Hide(); });
  words_->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { this->find(wxGetKeyState(WXK_SHIFT)); });
  next->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { this->find(false); });
  previous->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { this->find(true); });
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    if (event.GetKeyCode() == WXK_ESCAPE)
      leave();
    else
      event.Skip();
  });
  Hide();
}

void find_bar::ask() {
  Show();
  GetParent()->Layout();
  words_->SetFocus();
  words_->SelectAll();
}

void find_bar::find(bool backwards) {
  if (words_->IsEmpty())
    ask();
  else
    none_->Show(!find_(utf8_of(words_->GetValue()), backwards));
}

void find_bar::leave() {
  Hide();
  GetParent()->Layout();
  done_();
}

}  // namespace corvane
