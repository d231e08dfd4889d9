#include "ui/disc/reading_box.h"

#include "project/prompts.h"
#include "ui/widgets/layout.h"

#include <wx/app.h>
#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/gauge.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/stopwatch.h>
#include <wx/utils.h>

#include <algorithm>
#include <memory>

namespace corvane {
namespace {

constexpr int moment_milliseconds = 1000;  // shorter waits need no box

class reading_box : public wxDialog {
 public:
  reading_box(wxWindow& owner, const reading_texts& texts)
      : wxDialog(&owner, wxID_ANY, program_name) {
    auto* const column = new wxBoxSizer(wxVERTICAL);
    auto* const text = new wxStaticText(this, wxID_ANY, texts.what);
    auto* const past = new wxButton(this, wxID_CANCEL, texts.past);
    gauge_ = new wxGauge(this, wxID_ANY, progress_steps);
    gauge_->SetMinSize(FromDIP(wxSize(360, -1)));
    past->SetToolTip(texts.tip);
    const int space = FromDIP(12);
    column->Add(text, wxSizerFlags().Border(wxALL, space));
    column->Add(gauge_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, space));
    column->Add(past, wxSizerFlags().Right().Border(wxALL, space));
    SetSizerAndFit(column);
    CentreOnParent();
    Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { ended_ = true; });
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { ended_ = true; });
  }

  void show_part(double part) {
    gauge_->SetValue(std::clamp(static_cast<int>(part * progress_steps), 0, progress_steps));
  }
  bool ended() const { return ended_; }

 private:
  wxGauge* gauge_ = nullptr;
  bool ended_ = false;
};

}  // namespace

double part_read(std::uint64_t read, std::uint64_t all) {
  return all > 0 ? static_cast<double>(read) / static_cast<double>(all) : 1;
}

bool read_with_box(wxWindow& owner, const reading_texts& texts, const std::function<bool()>& step,
                   const std::function<double()>& part) {
  const wxBusyCursor busy;
  wxStopWatch reading_for;
  std::unique_ptr<reading_box> box;
  while (step()) {
    if (!box && reading_for.Time() > moment_milliseconds) {
      box = std::make_unique<reading_box>(owner, texts);
      box->Show();
    }
    if (!box)
      continue;
    box->show_part(part());
    wxSafeYield(box.get(), true);
    if (box->ended())
      return false;
  }
  return true;
}

}  // namespace corvane
