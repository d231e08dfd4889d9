#include "ui/editor/menu_problem_line.h"

#include "menus/menu_problems.h"
#include "ui/disc/findings_view.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wx_text.h"

#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace corvane {
namespace {

constexpr int rest_milliseconds = 150;  // so that a drag does not wait for it
constexpr std::size_t most_in_the_tip = 12;

std::string tip_of(const std::vector<finding>& problems) {
  std::string tip;
  for (std::size_t i = 0; i < std::min(problems.size(), most_in_the_tip); ++i)
    tip += (i == 0 ? "" : "\n") + std::string(name_of(problems[i].severity)) + ", " +
           problem_text(problems[i], true);
  if (problems.size() > most_in_the_tip)
    tip += "\n...";
  return tip;
}

}  // namespace

menu_problem_line::menu_problem_line(wxWindow* parent, std::function<std::vector<finding>()> look)
    : wxPanel(parent),
      look_(std::move(look)),
      mark_(new wxStaticBitmap(this, wxID_ANY, icon_picture("found-note", layout::button_icon))),
      words_(new wxStaticText(this, wxID_ANY, "no problems", wxDefaultPosition, wxDefaultSize,
                              wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END)) {
  name_control(*words_, "problems");
  mark_->Hide();
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(mark_, wxSizerFlags().CentreVertical().ReserveSpaceEvenIfHidden());
  row->Add(words_, wxSizerFlags(1).CentreVertical().Border(wxLEFT, FromDIP(layout::control_gap)));
  SetSizer(row);
  rested_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { show(); });
}

void menu_problem_line::look_again() {
  if (!rested_.IsRunning())
    rested_.StartOnce(rest_milliseconds);
}

void menu_problem_line::show() {
  const std::vector<finding> problems = look_();
  const wxString line = wx_text(problems_line(problems));
  if (words_->GetLabelText() != line)
    words_->SetLabelText(line);
  const wxString tip = wx_text(tip_of(problems));
  if (words_->GetToolTipText() != tip)
    words_->SetToolTip(tip);
  mark_->Show(!problems.empty());
  if (!problems.empty())
    mark_->SetBitmap(icon_picture(picture_of(problems.front().severity), layout::button_icon));
}

}  // namespace corvane
