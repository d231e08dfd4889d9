#include "ui/widgets/run_lines.h"

#include "ui/widgets/control_name.h"
#include "ui/widgets/controls.h"
#include "ui/widgets/cut_line.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"

#include <wx/button.h>
#include <wx/gauge.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

#include <cmath>
#include <utility>

namespace corvane {

// A hidden mark keeps its room: the line is as high as ever.
said_line::said_line(wxWindow* parent)
    : wxPanel(parent),
      mark_(new wxStaticBitmap(this, wxID_ANY, icon_picture("found-note", layout::button_icon))),
      said_(make_cut_line(this, "said")) {
  name_control(*mark_, "mark");
  mark_->Hide();
  said_->SetFont(said_->GetFont().Bold());
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(mark_, wxSizerFlags().CentreVertical().ReserveSpaceEvenIfHidden());
  row->Add(said_, wxSizerFlags(1).CentreVertical().Border(wxLEFT, FromDIP(layout::control_gap)));
  SetSizer(row);
}

void said_line::say(const std::string& text, const char* picture) {
  show_line(*said_, text);
  mark_->SetBitmap(icon_picture(picture, layout::button_icon));
  mark_->Show(!text.empty());
}

run_line::run_line(wxWindow* parent, const char* label, const char* tip, std::function<void()> stop)
    : wxPanel(parent),
      step_(make_cut_line(this, "step")),
      gauge_(new wxGauge(this, wxID_ANY, progress_steps)),
      stop_(make_button(this, "stop", label, tip, std::move(stop))) {
  name_control(*gauge_, "progress");
  stop_->SetBitmap(icon_picture("stop", layout::button_icon));
  const wxSizerFlags gap =
      wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(layout::control_gap));
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(step_, wxSizerFlags(3).CentreVertical());
  row->Add(gauge_, wxSizerFlags(gap).Proportion(2));
  row->Add(stop_, gap);
  SetSizer(row);
}

void run_line::tell(double percent, const std::string& step) {
  constexpr double whole = 100;
  gauge_->SetValue(static_cast<int>(std::lround(percent * progress_steps / whole)));
  show_line(*step_, step);
}

void run_line::focus_stop() {
  stop_->SetFocus();
}

}  // namespace corvane
