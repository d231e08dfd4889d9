#include "ui/import/import_log_window.h"

#include "ui/disc/log_page.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/screen_fit.h"

#include <wx/button.h>
#include <wx/sizer.h>

namespace corvane {

import_log_window::import_log_window(wxWindow* owner, const std::string& file)
    : wxDialog(owner, wxID_ANY, "log of the import", wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "importlog"),
      page_(new log_page(this, file)) {
  name_control(*this, "importlog");
  SetIcons(program_icon());
  const int border = FromDIP(layout::window_border);
  auto* const close = new wxButton(this, wxID_CLOSE, "cl&ose");
  auto* const whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(page_, wxSizerFlags(1).Expand().Border(wxALL, border));
  whole->Add(close, wxSizerFlags().Right().Border(wxLEFT | wxRIGHT | wxBOTTOM, border));
  SetSizer(whole);
  SetMinClientSize(FromDIP(wxSize(layout::log_least_width, layout::log_least_height)));
  set_size_on_screen(*this, FromDIP(wxSize(layout::log_width, layout::log_height)));
  CentreOnParent();
  SetEscapeId(wxID_CLOSE);
  Bind(wxEVT_CHAR_HOOK, &import_log_window::on_key, this);
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { Close(); }, wxID_CLOSE);
  Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { Destroy(); });
  page_->show_log();
  Show();
}

void import_log_window::on_key(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  if (key == 'F' && event.GetModifiers() == wxMOD_CONTROL)
    page_->ask_what_to_find();
  else if (key == WXK_F3)
    page_->find_again(event.ShiftDown());
  else
    event.Skip();
}

}  // namespace corvane
