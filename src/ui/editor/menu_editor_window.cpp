#include "ui/editor/menu_editor_window.h"

#include "examine/item_summary.h"
#include "examine/menu_facts.h"
#include "formats/text.h"
#include "menus/action_choices.h"
#include "menus/menu_problems.h"
#include "platform/files/paths.h"
#include "project/disc_of.h"
#include "project/preferences.h"
#include "ui/editor/menu_action_picker.h"
#include "ui/editor/menu_button_list.h"
#include "ui/editor/menu_button_panel.h"
#include "ui/editor/menu_options_panel.h"
#include "ui/editor/menu_picture.h"
#include "ui/editor/menu_picture_area.h"
#include "ui/editor/menu_problem_line.h"
#include "ui/video/video_strip.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/screen_fit.h"
#include "ui/widgets/scrolled_column.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/display.h>
#include <wx/menu.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace corvane {
namespace {

/// Of the list of buttons below the picture, in pixels at 100 %, and of the height beside it: with
/// less, its wider columns are not worth the rows.
constexpr int least_height_below = 150;
constexpr int least_percent_below = 60;

}  // namespace

tsmenu::tsmenu(wxWindow* main, lent_project lent, bool recall, fact_store* facts)
    : wxFrame(main, wxID_ANY, "titleset menu", wxDefaultPosition, wxDefaultSize,
              wxDEFAULT_FRAME_STYLE | wxFRAME_FLOAT_ON_PARENT, "tsmenu"),
      lent_(std::move(lent)),
      disc_(disc_of(lent_.doc().p)),
      facts_(facts != nullptr ? *facts : own_facts_),
      editor_(lent_.doc(), pictures_),
      life_(*this, *main, lent_.ask(),
            {[this] { area_->strip().release(); }, [this] { return may_close(); },
             [this] { lent_.give_back(); }}) {
  name_control(*this, "tsmenu");
  SetIcons(program_icon());
  if (recall)
    editor_.recallbuttondata();
  make_controls();
  bind_keys();
  Fit();  // gives those a size that are hidden at first
  load_video();
  show_controls();
  fit();
  CentreOnScreen();
  life_.begin();
  lent_.keeps({"titleset menu", [this](project& copy) { editor_.keep_in(copy); }});
  Show();
  FindWindow("Command1")->SetFocus();  // behind the first control
  // Told over the window that it is about.
  CallAfter([this] {
    tell([this](menu_editor& editor) { editor.playback_check(video_size_.x, video_size_.y); });
  });
}

// The editor numbers records; a blank one becomes no button.
void tsmenu::choose(int number) {
  const std::vector<std::string>& records = editor_.controls().List1;
  for (std::size_t i = 0; i < records.size(); ++i)
    if (!trim(records[i]).empty() && --number == 0) {
      tell([i](menu_editor& editor) { editor.choose(static_cast<int>(i)); });
      return;
    }
}

void tsmenu::make_controls() {
  panel_ = new wxPanel(this);
  const tell_event to_model = [this](const menu_event& event) { tell(event); };
  const menu_event pick = [this](menu_editor& editor) { pick_action(editor); };
  bar_.emplace(*this, to_model, pick);
  right_ = new scrolled_column(panel_);
  buttons_ = new menu_button_panel(
      right_, to_model, {pick, [this](const std::string& typed) {
                           return verdict_on_action(disc_, editor_.controls().indexer, typed);
                         }});
  options_ = new menu_options_panel(right_, to_model);
  const words_of_action words = [this](const disc_command& c) {
    return words_of_command(disc_, c);
  };
  area_ = new menu_picture_area(panel_, editor_, to_model, words);
  list_ = new menu_button_list(panel_, to_model, words);
  problems_ = new menu_problem_line(
      panel_, editor_, [this] { return found_problems(); }, to_model);
  auto* columns = new wxBoxSizer(wxHORIZONTAL);
  left_ = new wxBoxSizer(wxVERTICAL);
  left_->Add(area_, wxSizerFlags(1).Expand());
  columns->Add(left_, wxSizerFlags(1).Expand());
  columns->Add(make_right(), wxSizerFlags().Expand().Border(wxLEFT, FromDIP(layout::group_gap)));
  const int border = FromDIP(layout::window_border);
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(columns, wxSizerFlags(1).Expand().Border(wxALL, border));
  whole->Add(problems_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, border));
  panel_->SetSizer(whole);
  panel_->Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    divide();
    event.Skip();
  });
  auto* around = new wxBoxSizer(wxVERTICAL);
  around->Add(panel_, wxSizerFlags(1).Expand());
  SetSizer(around);
}

// What ends the window stays in sight, whatever the screen.
wxSizer* tsmenu::make_right() {
  auto* Command2 = new wxButton(panel_, wxID_ANY, "acc&ept");
  name_control(*Command2, "Command2");
  Command2->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { accept(); });
  const int gap = FromDIP(layout::group_gap);
  auto* groups = new wxBoxSizer(wxVERTICAL);
  groups->Add(buttons_, wxSizerFlags().Expand());
  groups->Add(options_, wxSizerFlags().Expand().Border(wxTOP, gap));
  right_->hold(groups);
  beside_ = new wxBoxSizer(wxVERTICAL);
  beside_->Add(make_heading(), wxSizerFlags().Expand());
  beside_->Add(list_, wxSizerFlags(1).Expand().Border(wxTOP, gap));
  beside_->Add(right_, wxSizerFlags().Expand().Border(wxTOP, gap));
  beside_->Add(Command2, wxSizerFlags().Right().Border(wxTOP, gap));
  return beside_;
}

/// "menu", `indexer` and the name of the video.
wxSizer* tsmenu::make_heading() {
  auto* number =
      new wxStaticText(panel_, wxID_ANY, wxString::Format("%d", editor_.controls().indexer));
  number->SetFont(number->GetFont().Bold());
  name_control(*number, "indexer");
  const std::string video = stored_from_native(editor_.video());
  auto* name = new wxStaticText(panel_, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                                wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_MIDDLE);
  name->SetLabelText(wx_text(file_name_of(video)));
  name->SetToolTip(wx_text(editor_.video()));
  name_control(*name, "video");
  const int gap = FromDIP(layout::control_gap);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(new wxStaticText(panel_, wxID_ANY, "menu"));
  row->Add(number, wxSizerFlags().Border(wxLEFT, gap));
  row->Add(name, wxSizerFlags(1).Border(wxLEFT, 2 * gap));
  return row;
}

void tsmenu::load_video() {
  const result<wxSize> opened = area_->strip().open(editor_.video());
  if (!opened) {
    area_->picture().show_reason("The video cannot be shown.\n\n" + wx_text(editor_.video()) +
                                 "\n" + wx_text(opened.error));
    return;
  }
  settings& prefs = lent_.doc().prefs;
  area_->strip().offer_sound(editor_.audio(), plays_menu_sound(prefs),
                             [&prefs](bool on) { keep_menu_sound(prefs, on); });
  video_size_ = *opened;
  // A video of another size is shown as large as the disc's player shows it.
  const int height =
      video_size_.y == 480 || video_size_.y == 576 ? video_size_.y : editor_.ymax() + 1;
  area_->set_video(height, area_->strip().proportions());
}

// The window is as large as its controls and the video want. On a screen that is too small for it
// the picture and the list get smaller, and what stands beside the picture scrolls.
void tsmenu::fit() {
  const wxRect screen = wxDisplay(this).GetClientArea();
  wxSize most = most_client_size(*this);
  most.y -= GetMenuBar()->GetSize().y;
  const int border = 3 * FromDIP(layout::window_border) + problems_->GetBestSize().y;
  put_list(false);
  right_->let_scroll(false);
  const int all_beside = beside_->CalcMin().y + border;
  const bool scrolls = all_beside > most.y;
  right_->let_scroll(scrolls);
  beside_->GetItem(list_)->SetProportion(scrolls ? 0 : 1);
  beside_->GetItem(right_)->SetProportion(scrolls ? 1 : 0);
  wxSize wanted = GetSizer()->CalcMin();
  wxSize least = wanted - area_->GetBestSize() / 2;
  wanted.y = std::max(wanted.y, all_beside);
  least.y = std::max(least.y, beside_->CalcMin().y + border);
  wanted.DecTo(most);
  least.DecTo(most);
  SetMinClientSize(least);
  if (IsShown())
    wanted.IncTo(GetClientSize());  // the user may have made it larger
  if (wanted != GetClientSize())
    SetClientSize(wanted);
  if (IsShown() && GetRect().GetBottom() > screen.GetBottom())
    Move(GetPosition().x, std::max(screen.y, screen.GetBottom() - GetSize().y));
  divide();
  Layout();
}

/// Where the width limits the picture there is room below it, which is the list's if it is enough.
void tsmenu::divide() {
  const int height =
      panel_->GetSize().y - 3 * FromDIP(layout::window_border) - problems_->GetBestSize().y;
  const int width = panel_->GetSize().x - 2 * FromDIP(layout::window_border) -
                    FromDIP(layout::group_gap) - beside_->CalcMin().x;
  const int gap = FromDIP(layout::group_gap);
  put_list(false);
  const int picture = area_->height_in(width);
  const int below = height - picture - gap;
  const int beside = height - beside_->CalcMin().y + list_->GetMinSize().y;
  if (right_->scrolls() || below < FromDIP(least_height_below) ||
      below < beside * least_percent_below / 100)
    return;
  put_list(true);
  area_->SetMinSize(wxSize(-1, picture));
}

void tsmenu::put_list(bool below) {
  const bool is_below = left_->GetItem(list_) != nullptr;
  if (is_below == below)
    return;
  const wxSizerFlags flags = wxSizerFlags(1).Expand().Border(wxTOP, FromDIP(layout::group_gap));
  constexpr std::size_t under_the_heading = 1;
  left_->GetItem(area_)->SetProportion(below ? 0 : 1);
  if (below) {
    beside_->Detach(list_);
    beside_->InsertStretchSpacer(2);
    left_->Add(list_, flags);
  } else {
    area_->SetMinSize(wxDefaultSize);
    left_->Detach(list_);
    beside_->Remove(2);
    beside_->Insert(under_the_heading, list_, flags);
  }
}

// A field that is left because the window closes is discarded with it.
void tsmenu::tell(const menu_event& event) {
  life_.during([&] {
    buttons_->apply(editor_);
    options_->apply(editor_);
    if (event)
      event(editor_);
    if (show_controls())
      fit();
  });
}

/// True when the controls need another room.
bool tsmenu::show_controls() {
  const menu_editor_controls& c = editor_.controls();
  const bool of_chosen = !editor_.shows_another();
  const bool other_buttons = buttons_->show(c, of_chosen);
  const bool other_options = options_->show(c, of_chosen);
  area_->show(c);
  for (const char* bar : {"HScroll1", "VScroll1"})
    FindWindow(bar)->Enable(of_chosen);
  list_->show(editor_);
  problems_->look_again();
  bar_->show(editor_);
  return other_buttons || other_options;
}

/// Of the menu as it would be if it was accepted now.
std::vector<finding> tsmenu::found_problems() const {
  project copy = lent_.doc().p;
  editor_.keep_in(copy);
  return menu_problems(copy, editor_.controls().indexer, facts_of_first_menus(disc_, facts_));
}

// Not while the controls show another button's values.
void tsmenu::pick_action(menu_editor& editor) {
  if (editor.controls().Combo2_index < 0 || editor.shows_another())
    return;
  if (const std::optional<picked_action> action = ask_action(*this, editor, disc_, facts_))
    editor.set_actions(action->command, action->how);
}

// What stood typed in a field may have been refused just now; the user was told, and sees what the
// field holds instead before it is accepted.
void tsmenu::accept() {
  bool accepted = false;
  const int refusals = editor_.refusals();
  tell([&accepted, refusals](menu_editor& editor) {
    accepted = editor.refusals() == refusals && editor.accept();
  });
  if (accepted)
    life_.leave();
}

bool tsmenu::may_close() {
  const bool may = editor_.may_close();
  if (!may && show_controls())
    fit();
  return may;
}

}  // namespace corvane
