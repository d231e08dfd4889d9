#include "ui/disc/log_window.h"

#include "ui/widgets/control_name.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/font.h>
#include <wx/gauge.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
namespace {

wxTextCtrl* make_text(wxWindow* parent) {
  auto* text = new wxTextCtrl(parent, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                              wxTE_MULTILINE | wxTE_READONLY | wxTE_DONTWRAP);
  text->SetFont(
      wxFont(wxFontInfo(text->GetFont().GetFractionalPointSize()).Family(wxFONTFAMILY_TELETYPE)));
  return text;
}

}  // namespace

log_window::log_window(std::function<void()> stop)
    : wxFrame(nullptr, wxID_ANY, "Corvane log", wxDefaultPosition, wxDefaultSize,
              wxDEFAULT_FRAME_STYLE, "log") {
  auto* panel = new wxPanel(this);
  Text1_ = make_text(panel);
  ProgressBar1_ = new wxGauge(panel, wxID_ANY, progress_steps);
  stop_ = new wxButton(panel, wxID_ANY, "stop");
  stop_->SetBitmap(icon_picture("stop", layout::button_icon));
  stop_->SetToolTip("stop authoring and end every tool that is running");
  stop_->Disable();
  name_control(*this, "log");
  name_control(*Text1_, "Text1");
  name_control(*ProgressBar1_, "ProgressBar1");
  name_control(*stop_, "stop");
  arrange();
  SetIcons(program_icon());

  stop_->Bind(wxEVT_BUTTON, [stop = std::move(stop)](wxCommandEvent&) { stop(); });
  // Only the program hides the log: while a run is on, it is what the user has of it.
  Bind(wxEVT_CLOSE_WINDOW, [](wxCloseEvent& event) {
    if (event.CanVeto())
      event.Veto();
  });
}

void log_window::arrange() {
  wxWindow* panel = Text1_->GetParent();
  const wxSizerFlags gap = wxSizerFlags().Border(wxALL, FromDIP(layout::control_gap));
  auto* strip = new wxBoxSizer(wxHORIZONTAL);
  strip->Add(ProgressBar1_, wxSizerFlags(gap).Proportion(1).CentreVertical());
  strip->Add(stop_, wxSizerFlags(gap).CentreVertical());
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(Text1_, wxSizerFlags(1).Expand());
  whole->Add(strip, wxSizerFlags().Expand());
  panel->SetSizer(whole);
  SetMinClientSize(FromDIP(wxSize(layout::log_least_width, layout::log_least_height)));
  SetClientSize(FromDIP(wxSize(layout::log_width, layout::log_height)));
}

void log_window::show_text(const std::string& text) {
  const wxString lines = wx_lines(text);
  if (lines == Text1_->GetValue())
    return;
  Text1_->ChangeValue(lines);
  // The first column of the last line: its far end would scroll long lines out of sight.
  Text1_->ShowPosition(Text1_->XYToPosition(0, Text1_->GetNumberOfLines() - 1));
  repaint();
}

void log_window::show_progress(double percent) {
  const double inside = std::isnan(percent) ? 0 : std::clamp(percent, 0.0, 100.0);
  ProgressBar1_->SetValue(static_cast<int>(std::lround(inside * progress_steps / 100)));
}

void log_window::run_is_active(bool active) {
  stop_->Enable(active);
}

void log_window::repaint() {
  for (wxWindow* control :
       {static_cast<wxWindow*>(Text1_), static_cast<wxWindow*>(ProgressBar1_)}) {
    control->Refresh();
    control->Update();
  }
}

}  // namespace corvane
