#include "ui/video/chapters_editor_window.h"

#include "ui/video/video_player.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/fixed_pitch.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/display.h>
#include <wx/listbox.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/statbox.h>
#include <wx/textctrl.h>

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace corvane {

chapters_editor_window::chapters_editor_window(wxWindow* dialog, wx_prompts& ask, vchapters model,
                                               std::function<void()> closed)
    : wxFrame(dialog, wxID_ANY, "chapters editor", wxDefaultPosition, wxDefaultSize,
              wxDEFAULT_FRAME_STYLE | wxFRAME_FLOAT_ON_PARENT, "vchapters"),
      model_(std::move(model)),
      life_(*this, *dialog, ask, {[this] { player_->release(); }, {}, std::move(closed)}) {
  name_control(*this, "vchapters");
  SetIcons(program_icon());
  make_controls();
  bind_controls();
  player_->open(model_.video());
  show_rows();
  fit();
  CentreOnScreen();
  life_.begin();
  Show();
  List1_->SetFocus();
}

void chapters_editor_window::make_controls() {
  panel_ = new wxPanel(this);
  auto* frame = new wxStaticBoxSizer(wxHORIZONTAL, panel_, "visual chapters editor");
  wxStaticBox* Frame1 = frame->GetStaticBox();
  name_control(*Frame1, "Frame1");
  player_ = new video_player(Frame1, [this] { ready(); });
  const int border = FromDIP(layout::box_border);
  frame->Add(player_, wxSizerFlags(1).Expand().Border(wxALL, border));
  frame->Add(make_right(Frame1),
             wxSizerFlags().Expand().Border(wxTOP | wxRIGHT | wxBOTTOM, border));
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(frame, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(layout::window_border)));
  panel_->SetSizer(whole);
  auto* around = new wxBoxSizer(wxVERTICAL);
  around->Add(panel_, wxSizerFlags(1).Expand());
  SetSizer(around);
}

wxSizer* chapters_editor_window::make_right(wxWindow* parent) {
  List1_ = new wxListBox(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, 0, nullptr,
                         wxLB_SINGLE | wxLB_NEEDED_SB);
  name_control(*List1_, "List1");
  List1_->SetToolTip("double click on a time to go there");
  List1_->SetFont(fixed_pitch(List1_->GetFont()));
  List1_->SetMinSize(wxSize(FromDIP(layout::chapter_times_width), -1));
  Command1_ = make_button(parent, "Command1", "a&dd chapter", &chapters_editor_window::add);
  Command1_->SetToolTip("adds the time of the picture shown (Insert)");
  Command1_->Disable();  // until there is a picture
  wxButton* remove = make_button(parent, "remove", "&remove", &chapters_editor_window::remove);
  remove->SetToolTip("removes the selected time, but never the first one (Delete)");
  wxButton* accept = make_button(parent, "accept", "&accept", &chapters_editor_window::accept);
  auto* column = new wxBoxSizer(wxVERTICAL);
  const wxSizerFlags below = wxSizerFlags().Expand().Border(wxTOP, FromDIP(layout::control_gap));
  column->Add(List1_, wxSizerFlags(1).Expand());
  column->Add(Command1_, below);
  column->Add(remove, below);
  column->Add(accept, wxSizerFlags().Expand().Border(wxTOP, 2 * FromDIP(layout::group_gap)));
  return column;
}

wxButton* chapters_editor_window::make_button(wxWindow* parent, const char* name,
                                              const wxString& label,
                                              void (chapters_editor_window::*clicked)()) {
  auto* button = new wxButton(parent, wxID_ANY, label);
  name_control(*button, name);
  button->Bind(wxEVT_BUTTON, [this, clicked](wxCommandEvent&) { (this->*clicked)(); });
  return button;
}

void chapters_editor_window::bind_controls() {
  List1_->Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) { model_.select(List1_->GetSelection()); });
  List1_->Bind(wxEVT_LISTBOX_DCLICK, [this](wxCommandEvent&) { seek(); });
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    if (!use_key(event))
      event.Skip();
  });
}

// As large as the video wants; on a smaller screen the picture gets smaller. The user can make it
// half as large, as long as nothing below it is cut.
void chapters_editor_window::fit() {
  const wxSize added_by_window_managers = FromDIP(wxSize(8, 48));
  const wxSize most = wxDisplay(this).GetClientArea().GetSize() - added_by_window_managers;
  wxSize wanted = GetSizer()->CalcMin();
  wxSize least = wanted - player_->picture_size() / 2;
  player_->let_shrink();
  least.IncTo(GetSizer()->CalcMin());
  wanted.DecTo(most);
  least.DecTo(most);
  SetMinClientSize(least);
  SetClientSize(wanted);
  Layout();
}

// A text field keeps its keys, a list those that move in it, a button its Space.
bool chapters_editor_window::use_key(const wxKeyEvent& event) {
  const wxWindow* focus = FindFocus();
  const int key = event.GetKeyCode();
  const bool in_list = focus != nullptr && focus == List1_;
  if (dynamic_cast<const wxTextCtrl*>(focus) != nullptr)
    return false;
  if (dynamic_cast<const wxButton*>(focus) != nullptr && key == WXK_SPACE)
    return false;
  if (in_list && (key == WXK_HOME || key == WXK_END || key == WXK_PAGEUP || key == WXK_PAGEDOWN))
    return false;
  if (key == WXK_INSERT)
    add();
  else if (key == WXK_DELETE)
    remove();
  else if (in_list && (key == WXK_RETURN || key == WXK_NUMPAD_ENTER))
    seek();
  else
    return player_->use_key(event);
  return true;
}

// The keys are the player's, unless the user has begun to work with the list; its first row is
// selected by the toolkit.
void chapters_editor_window::ready() {
  Command1_->Enable();
  const wxWindow* focus = FindFocus();
  if ((focus == nullptr || focus == List1_) && model_.selected() <= 0)
    player_->focus();
}

void chapters_editor_window::show_rows() {
  List1_->Set(wx_rows(model_.List1()));
  show_marks();
}

void chapters_editor_window::show_marks() {
  std::vector<double> marks;
  for (std::size_t row = 0; row < model_.List1().size(); ++row)
    if (const std::optional<double> seconds = model_.position_of(static_cast<int>(row)))
      marks.push_back(*seconds);
  player_->set_marks(marks);
}

void chapters_editor_window::add() {
  const std::optional<double> position = player_->position();
  if (!position)
    return;
  model_.add(*position);
  List1_->Append(wx_text(model_.List1().back()));
  const int row = static_cast<int>(List1_->GetCount()) - 1;
  List1_->EnsureVisible(row);
  show_marks();
  player_->note(model_.left_out(row)
                    ? "A disc leaves it out: a later time stands above. Sort the dialog's lines."
                    : "");
}

void chapters_editor_window::remove() {
  const int row = model_.selected();
  model_.remove();
  if (model_.selected() == row)
    return;
  List1_->Delete(static_cast<unsigned>(row));
  List1_->SetSelection(wxNOT_FOUND);
  show_marks();
}

void chapters_editor_window::seek() {
  if (const std::optional<double> seconds = model_.position_of(List1_->GetSelection()))
    player_->seek(*seconds);
}

void chapters_editor_window::accept() {
  model_.accept();
  life_.leave();
}

}  // namespace corvane
