#include "ui/editor/menu_problem_line.h"

#include "menus/menu_problems.h"
#include "ui/disc/findings_view.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
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

/// A button for a cure; hidden until there is need of it.
wxButton* make_cure(wxWindow* parent, const char* label, const char* name, const tell_event& tell,
                    menu_event event) {
  auto* cure =
      new wxButton(parent, wxID_ANY, label, wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
  name_control(*cure, name);
  cure->Bind(wxEVT_BUTTON, [tell, event = std::move(event)](wxCommandEvent&) { tell(event); });
  cure->Hide();
  return cure;
}

}  // namespace

menu_problem_line::menu_problem_line(wxWindow* parent, const menu_editor& editor,
                                     std::function<std::vector<finding>()> look,
                                     const tell_event& tell)
    : wxPanel(parent),
      editor_(editor),
      look_(std::move(look)),
      mark_(new wxStaticBitmap(this, wxID_ANY, icon_picture("found-note", layout::button_icon))),
      words_(new wxStaticText(this, wxID_ANY, "no problems", wxDefaultPosition, wxDefaultSize,
                              wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END)),
      order_(make_cure(this, "order by look", "orderbylook", tell, &menu_editor::order_by_look)),
      fewer_(make_cure(this, "fewer looks", "fewerlooks", tell, &menu_editor::use_fewer_looks)) {
  name_control(*words_, "problems");
  mark_->Hide();
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(mark_, wxSizerFlags().CentreVertical().ReserveSpaceEvenIfHidden());
  row->Add(words_, wxSizerFlags(1).CentreVertical().Border(wxLEFT, FromDIP(layout::control_gap)));
  order_->SetToolTip("puts the buttons of one look behind each other, so that spumux is soon done");
  for (wxButton* cure : {order_, fewer_})
    row->Add(cure, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(layout::control_gap)));
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
  show_cures(editor_.cures_for_looks());
}

void menu_problem_line::show_cures(const look_cures& cures) {
  if (cures.fewer)
    fewer_->SetToolTip(wx_text(text_of(*cures.fewer)));
  if (order_->IsShown() == cures.order && fewer_->IsShown() == cures.fewer.has_value())
    return;
  order_->Show(cures.order);
  fewer_->Show(cures.fewer.has_value());
  GetParent()->Layout();
}

}  // namespace corvane
