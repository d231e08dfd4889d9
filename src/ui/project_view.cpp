#include "ui/project_view.h"

#include "authoring/last_disc.h"
#include "examine/item_summary.h"
#include "examine/space_text.h"
#include "formats/sanitized.h"
#include "project/disc_of.h"
#include "tools/finding_list.h"
#include "ui/details_panel.h"
#include "ui/disc/findings_view.h"
#include "ui/widgets/choice_again.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/space_bar.h"
#include "ui/widgets/wheel.h"
#include "ui/widgets/wx_text.h"

#include <wx/bmpbuttn.h>
#include <wx/button.h>
#include <wx/choice.h>
#include <wx/listbox.h>
#include <wx/menu.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/time.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace corvane {
namespace {

/// Under the statistics in a dark theme, where black and red could not be read.
wxColour light_ground() {
  return {240, 240, 240};
}

bool is_delete(int key) {
  return key == WXK_DELETE || key == WXK_NUMPAD_DELETE;
}

}  // namespace

project_view::project_view(wxWindow* parent, handlers on) : wxPanel(parent), on_(std::move(on)) {
  // The list is made first: it is where the focus goes at start, not the region, which a turn of
  // the wheel would change.
  wxSizer* titles = make_lists();
  auto* lower = new wxBoxSizer(wxHORIZONTAL);
  lower->Add(make_statistics(), wxSizerFlags(1).Expand());
  lower->Add(make_region(),
             wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(layout::group_gap)));
  auto* groups = new wxBoxSizer(wxVERTICAL);
  // The lines are made when they are first shown.
  notice_ = new wxBoxSizer(wxHORIZONTAL);
  findings_ = new wxBoxSizer(wxHORIZONTAL);
  last_disc_ = new wxBoxSizer(wxHORIZONTAL);
  const wxSizerFlags below = wxSizerFlags().Expand().Border(wxTOP, FromDIP(layout::group_gap));
  groups->Add(notice_, wxSizerFlags().Expand().Border(wxBOTTOM, FromDIP(layout::group_gap)));
  groups->Add(titles, wxSizerFlags(1).Expand());
  groups->Add(findings_, below);
  groups->Add(last_disc_, below);
  groups->Add(lower, below);
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(groups, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(layout::window_border)));
  SetSizer(whole);
  const int line = Comboregion_->GetBestSize().y + FromDIP(layout::group_gap);  // as with a button
  const int menus = FromDIP(layout::menus_height + layout::control_gap);
  least_ = whole->CalcMin() + wxSize(0, 3 * line + menus);
  Bind(wxEVT_PAINT, &project_view::on_first_paint, this);
}

// Nobody waits for it before he sees the window.
void project_view::on_first_paint(wxPaintEvent& event) {
  event.Skip();
  Unbind(wxEVT_PAINT, &project_view::on_first_paint, this);
  CallAfter([this] { make_details(); });
}

void project_view::make_details() {
  details_ = new details_panel(this);
  details_->MoveAfterInTabOrder(menus_ != nullptr ? static_cast<wxWindow*>(menus_) : Frame1_);
  details_place_->AssignWindow(details_);
  details_->SetContainingSizer(lists_and_details_);
  Layout();
  on_.show_details();
}

// The list of menus is as high as its rows, as far as the titles leave room.
bool project_view::Layout() {
  const bool has_room = GetClientSize().x >= FromDIP(layout::details_from_width);
  if (!has_room && details_ != nullptr && details_->IsDescendant(FindFocus()))
    CallAfter(&project_view::focus_list);  // the keys must not stay in what is not seen
  details_place_->Show(has_room);
  if (menus_ == nullptr)
    return wxPanel::Layout();
  const wxSize least = FromDIP(wxSize(layout::list_height, layout::menus_height));
  menus_->SetMinSize(least);
  const bool laid_out = wxPanel::Layout();
  const int row = menus_->GetCharHeight() + FromDIP(layout::menus_row);
  const int wanted = row * static_cast<int>(menus_->GetCount()) + FromDIP(layout::control_gap);
  const int height = lists_and_details_->GetSize().y;
  const int most = std::min(height * layout::menus_percent / 100,
                            height - titles_->GetMinSize().y - FromDIP(layout::control_gap));
  if (std::min(wanted, most) <= least.y)
    return laid_out;
  menus_->SetMinSize(wxSize(least.x, std::min(wanted, most)));
  return wxPanel::Layout();
}

wxSizer* project_view::make_lists() {
  lists_ = new wxBoxSizer(wxVERTICAL);
  titles_ = make_titles();
  lists_->Add(titles_, wxSizerFlags(1).Expand());
  lists_and_details_ = new wxBoxSizer(wxHORIZONTAL);
  lists_and_details_->Add(lists_, wxSizerFlags(layout::lists_share).Expand());
  details_place_ = lists_and_details_->Add(
      1, 1,
      wxSizerFlags(layout::details_share).Expand().Border(wxLEFT, FromDIP(layout::group_gap)));
  return lists_and_details_;
}

// With the first menu: most projects begin without one.
void project_view::make_menus() {
  const wxSize least = FromDIP(wxSize(layout::list_height, layout::menus_height));
  menus_ = new wxListBox(this, wxID_ANY, wxDefaultPosition, least, 0, nullptr,
                         wxLB_SINGLE | wxLB_HSCROLL | wxLB_NEEDED_SB);
  name_control(*menus_, "menuslist");
  menus_->Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) { show_menu_details(); });
  menus_->Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
    event.Skip();
    if (!shows_menu_)
      show_menu_details();
  });
  menus_->Bind(wxEVT_KEY_DOWN, &project_view::on_menu_key, this);
  menus_->Bind(wxEVT_LISTBOX_DCLICK, [this](wxCommandEvent&) { CallAfter(on_.edit_menu); });
  menus_->Bind(wxEVT_CONTEXT_MENU,
               [this](wxContextMenuEvent&) { show_context_menu(*menus_, on_.menu_context); });
  menus_->Bind(wxEVT_RIGHT_DOWN, [this](wxMouseEvent& event) {
    if (const int row = menus_->HitTest(event.GetPosition()); row != wxNOT_FOUND) {
      menus_->SetSelection(row);
      menus_->SetFocus();
      show_menu_details();
    }
    event.Skip();
  });
  menus_->MoveAfterInTabOrder(Frame1_);
  lists_->Add(menus_, wxSizerFlags().Expand().Border(wxTOP, FromDIP(layout::control_gap)));
}

// The toolkit moves the focus about as windows go.
void project_view::show_menu_details() {
  if (IsBeingDeleted())
    return;
  shows_menu_ = true;
  if (menus_->GetSelection() == wxNOT_FOUND && !menus_->IsEmpty())
    menus_->SetSelection(0);
  on_.show_details();
}

void project_view::show_title_details() {
  if (IsBeingDeleted())
    return;
  shows_menu_ = false;
  on_.show_details();
}

finding_item project_view::shown_item() const {
  using whole = finding_item::whole_kind;
  const wxListBox& list = shows_menu_ ? *menus_ : *List1_;
  const int row = list.GetSelection();
  if (row == wxNOT_FOUND)
    return {};
  return {shows_menu_ ? whole::menu : whole::title, row + 1};
}

wxBitmapButton* project_view::make_mover(wxWindow* parent, const char* name, const char* picture,
                                         const char* tip, const std::function<void()>& move) {
  auto* button = new wxBitmapButton(parent, wxID_ANY, icon_picture(picture, layout::button_icon));
  name_control(*button, name);
  button->SetToolTip(tip);
  button->Bind(wxEVT_BUTTON, [move](wxCommandEvent&) { move(); });
  return button;
}

wxSizer* project_view::make_titles() {
  auto* box = new wxStaticBoxSizer(wxHORIZONTAL, this, "0 titles loaded");
  Frame1_ = box->GetStaticBox();
  name_control(*Frame1_, "Frame1");
  // Its least size; made without one, it would be measured for nothing.
  const wxSize least = FromDIP(wxSize(layout::list_height, layout::titles_height));
  List1_ = new wxListBox(Frame1_, wxID_ANY, wxDefaultPosition, least, 0, nullptr,
                         wxLB_SINGLE | wxLB_HSCROLL | wxLB_NEEDED_SB);
  name_control(*List1_, "List1");
  List1_->Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) {
    on_.select(List1_->GetSelection());
    show_title_details();
  });
  List1_->Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
    event.Skip();
    if (shows_menu_)
      show_title_details();
  });
  List1_->Bind(wxEVT_KEY_DOWN, &project_view::on_key, this);
  List1_->Bind(wxEVT_LISTBOX_DCLICK, [this](wxCommandEvent&) { CallAfter(on_.open); });
  List1_->Bind(wxEVT_CONTEXT_MENU,
               [this](wxContextMenuEvent&) { show_context_menu(*List1_, on_.context); });
  List1_->Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) {
    dragged_ = List1_->HitTest(event.GetPosition());
    event.Skip();
  });
  List1_->Bind(wxEVT_LEFT_UP, [this](wxMouseEvent& event) {
    event.Skip();
    on_dragged(event);
  });
  List1_->Bind(wxEVT_RIGHT_DOWN, [this](wxMouseEvent& event) {
    const int row = List1_->HitTest(event.GetPosition());
    if (row != wxNOT_FOUND && row != List1_->GetSelection()) {
      List1_->SetSelection(row);
      on_.select(row);
      show_title_details();
    }
    event.Skip();
  });
  auto* movers = new wxBoxSizer(wxVERTICAL);
  movers->Add(make_mover(Frame1_, "titleup", "up", "move the selected title up", on_.titleup));
  movers->AddSpacer(FromDIP(layout::control_gap));
  movers->Add(
      make_mover(Frame1_, "titledown", "down", "move the selected title down", on_.titledown));
  const int border = FromDIP(layout::box_border);
  box->Add(List1_, wxSizerFlags(1).Expand().Border(wxALL, border));
  box->Add(movers, wxSizerFlags().Centre().Border(wxTOP | wxBOTTOM | wxRIGHT, border));
  return box;
}

/// A text of a line, which is cut where there is no room for it.
wxStaticText* project_view::make_line_text(const char* name, long cut) {
  auto* text = new wxStaticText(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                                wxST_NO_AUTORESIZE | cut);
  text->SetMinSize(wxSize(1, -1));
  name_control(*text, name);
  return text;
}

/// The keys go through the lines from above, whichever was made first.
void project_view::order_lines() {
  wxWindow* before = Comboregion_;
  for (wxSizer* line : {notice_, findings_, last_disc_})
    for (wxSizerItem* item : line->GetChildren()) {
      item->GetWindow()->MoveAfterInTabOrder(before);
      before = item->GetWindow();
    }
}

// The text is for the pointer, the button for the keys.
void project_view::make_findings() {
  findings_picture_ = new wxStaticBitmap(this, wxID_ANY, wxBitmapBundle(), wxDefaultPosition,
                                         FromDIP(wxSize(layout::button_icon, layout::button_icon)));
  name_control(*findings_picture_, "findingspicture");
  findings_text_ = make_line_text("findingstext", wxST_ELLIPSIZE_END);
  findings_text_->SetCursor(wxCursor(wxCURSOR_HAND));
  findings_text_->Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) { on_.findings(); });
  auto* show = new wxButton(this, wxID_ANY, "&show findings");
  name_control(*show, "showfindings");
  show->SetToolTip("what was found, what a viewer would see of it and what to do");
  show->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { on_.findings(); });
  const int gap = FromDIP(layout::control_gap);
  findings_->Add(findings_picture_, wxSizerFlags().CentreVertical());
  findings_->Add(findings_text_, wxSizerFlags(1).CentreVertical().Border(wxLEFT, gap));
  findings_->Add(show, wxSizerFlags().CentreVertical().Border(wxLEFT, gap));
  order_lines();
}

void project_view::make_last_disc() {
  last_disc_text_ = make_line_text("lastdisc", wxST_ELLIPSIZE_MIDDLE);
  const auto button = [this](const char* name, const char* label, const char* tip,
                             const std::function<void()>& clicked) {
    auto* made = new wxButton(this, wxID_ANY, label);
    name_control(*made, name);
    made->SetToolTip(tip);
    made->Bind(wxEVT_BUTTON, [clicked](wxCommandEvent&) { clicked(); });
    return made;
  };
  play_ = button("playdisc", "&play", "the disc, in a player of the system", on_.play);
  const wxSizerFlags behind =
      wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(layout::control_gap));
  last_disc_->Add(last_disc_text_, wxSizerFlags(1).CentreVertical());
  last_disc_->Add(button("openfolder", "open fo&lder", "where the disc is", on_.open_folder),
                  behind);
  last_disc_->Add(play_, behind);
  last_disc_->Add(button("lastlog", "lo&g", "of the last run", on_.show_log), behind);
  order_lines();
}

void project_view::show_last_disc(const last_disc& disc) {
  if (last_disc_text_ == nullptr)
    make_last_disc();
  last_disc_text_->SetLabelText(wx_text(disc.text));
  last_disc_text_->SetToolTip(wx_text(disc.text));
  play_->Enable(disc.is_there);
  GetSizer()->Show(last_disc_, true, true);
  Layout();
}

wxSizer* project_view::make_statistics() {
  auto* box = new wxStaticBoxSizer(wxVERTICAL, this, "statistics");
  wxStaticBox* Frame2 = box->GetStaticBox();
  name_control(*Frame2, "Frame2");
  dvdsizetext_ = new wxStaticText(Frame2, wxID_ANY, "0 titles\n0 menus\n0 gig total");
  name_control(*dvdsizetext_, "dvdsizetext");
  if (wxSystemSettings::GetAppearance().IsUsingDarkBackground())
    dvdsizetext_->SetBackgroundColour(light_ground());
  space_ = new space_bar(Frame2);
  name_drawn_control(*space_, "spacepicture", control_role::picture);
  space_->SetToolTip("what titles and menus take of a DVD-5 (one layer) and a DVD-9 (two)");
  space_text_ = new wxStaticText(Frame2, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                                 wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
  space_text_->SetMinSize(wxSize(1, -1));
  name_control(*space_text_, "spacetext");
  auto* room = new wxBoxSizer(wxVERTICAL);
  room->Add(space_, wxSizerFlags().Expand());
  room->Add(space_text_, wxSizerFlags().Expand().Border(wxTOP, FromDIP(layout::label_gap)));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(dvdsizetext_, wxSizerFlags().CentreVertical());
  row->Add(room, wxSizerFlags(1).CentreVertical().Border(wxLEFT, FromDIP(layout::column_gap)));
  box->Add(row, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(layout::box_border)));
  return box;
}

wxSizer* project_view::make_region() {
  auto* Label1 = new wxStaticText(this, wxID_ANY, "DVD format:");
  name_control(*Label1, "Label1");
  globalregion_ = new wxStaticText(this, wxID_ANY, "NTSC");
  name_control(*globalregion_, "globalregion");
  globalregion_->SetFont(globalregion_->GetFont().Bold());
  const wxString regions[] = {"NTSC", "PAL"};
  Comboregion_ = new wxChoice(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, 2, regions);
  name_control(*Comboregion_, "Comboregion");
  let_wheel_pass(*Comboregion_);
  tell_choice_again(*Comboregion_,
                    [this] { on_.region(utf8_of(Comboregion_->GetStringSelection())); });
  Comboregion_->SetToolTip("click to change preference");
  Comboregion_->Bind(wxEVT_CHOICE,
                     [this](wxCommandEvent& event) { on_.region(utf8_of(event.GetString())); });
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  const wxSizerFlags gap =
      wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(layout::control_gap));
  row->Add(Label1, gap);
  row->Add(globalregion_, gap);
  row->Add(Comboregion_, wxSizerFlags().CentreVertical());
  return row;
}

void project_view::on_key(wxKeyEvent& event) {
  const int key = event.HasAnyModifiers() ? WXK_NONE : event.GetKeyCode();
  if (is_delete(key)) {
    if (!delete_was_held())
      on_.remove();
  } else if (key == WXK_INSERT || key == WXK_NUMPAD_INSERT)
    on_.insert();
  else if (!enter_list(key))
    event.Skip();
}

/// Selects the first title with the key that goes down, as long as none is: the toolkit would go to
/// the second one, since it takes the first for where the keys stand. Returns false if it is
/// another key.
bool project_view::enter_list(int key) {
  const bool down = key == WXK_DOWN || key == WXK_NUMPAD_DOWN;
  if (!down || List1_->IsEmpty() || List1_->GetSelection() != wxNOT_FOUND)
    return false;
  List1_->SetSelection(0);
  on_.select(0);
  show_title_details();
  return true;
}

void project_view::on_dragged(const wxMouseEvent& event) {
  const int from = std::exchange(dragged_, wxNOT_FOUND), to = List1_->HitTest(event.GetPosition());
  if (from != wxNOT_FOUND && to != wxNOT_FOUND && from != to && from == List1_->GetSelection())
    CallAfter([this, to] { on_.move(to); });
}

/// Whether this Delete still belongs to those that have removed the last menu: held down, the key
/// would go on with the titles.
bool project_view::delete_was_held() {
  constexpr int pause = 700;  // milliseconds; a key that is held comes sooner
  const wxLongLong now = wxGetLocalTimeMillis();
  const bool held = now - menus_went_at_ < pause;
  if (held)
    menus_went_at_ = now;
  return held;
}

void project_view::on_menu_key(wxKeyEvent& event) {
  const int key = event.HasAnyModifiers() ? WXK_NONE : event.GetKeyCode();
  if (is_delete(key))
    on_.remove_menu();
  else if (key == WXK_INSERT || key == WXK_NUMPAD_INSERT)
    CallAfter(on_.add_menu);
  else if (key == WXK_RETURN || key == WXK_NUMPAD_ENTER)
    CallAfter(on_.edit_menu);
  else
    event.Skip();
}

void project_view::show_context_menu(wxWindow& list, const std::function<wxMenu*()>& context) {
  const std::unique_ptr<wxMenu> menu(context());
  if (menu)
    list.PopupMenu(menu.get());
}

void project_view::show_project(const project& p) {
  show_titles(p);
  show_menus(p);
  show_statistics(p);
  globalregion_->SetLabel(wx_text(p.globalregion));
  Comboregion_->SetSelection(p.globalregion == "PAL" ? 1 : 0);
  Comboregion_->Enable(p.Comboregion_enabled);
  Layout();
}

void project_view::focus_titles() {
  shows_menu_ = false;
  List1_->SetFocus();
}

void project_view::focus_list() {
  if (shows_menu_)
    menus_->SetFocus();
  else
    focus_titles();
}

void project_view::show_findings(const finding_list& findings) {
  const wxString line = wx_text(findings.headline());
  if (findings_text_ == nullptr) {
    if (line.empty())
      return;
    make_findings();
    GetSizer()->Show(findings_, false, true);
  }
  if (!line.empty()) {
    findings_picture_->SetBitmap(
        icon_picture(picture_of(findings.findings().front().severity), layout::button_icon));
    findings_text_->SetLabelText(line);
    findings_text_->SetToolTip(line);
  }
  if (findings_text_->IsShown() != !line.empty()) {
    GetSizer()->Show(findings_, !line.empty(), true);
    Layout();
  }
}

void project_view::make_notice() {
  notice_text_ = make_line_text("notice", wxST_ELLIPSIZE_END);
  notice_action_ = new wxButton(this, wxID_ANY, wxString());
  name_control(*notice_action_, "noticeaction");
  notice_action_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
    notice_text_->SetLabelText(wxString());  // it comes again if it is still so
    let_notice_stand(false);
    if (notice_act_)
      CallAfter(notice_act_);
  });
  auto* away = new wxButton(this, wxID_ANY, "&hide");
  name_control(*away, "hidenotice");
  away->SetToolTip("puts this line away");
  away->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { let_notice_stand(false); });
  const int gap = FromDIP(layout::control_gap);
  notice_->Add(notice_text_, wxSizerFlags(1).CentreVertical());
  notice_->Add(notice_action_, wxSizerFlags().CentreVertical().Border(wxLEFT, gap));
  notice_->Add(away, wxSizerFlags().CentreVertical().Border(wxLEFT, gap));
  order_lines();
}

void project_view::let_notice_stand(bool stands) {
  GetSizer()->Show(notice_, stands, true);
  if (stands)
    notice_action_->Show(!notice_action_->GetLabel().empty());
  Layout();
}

void project_view::show_notice(const std::string& text, const wxString& action,
                               std::function<void()> act) {
  const wxString shown = wx_text(text);
  if (notice_text_ == nullptr) {
    if (shown.empty())
      return;
    make_notice();
  }
  if (shown == notice_text_->GetLabelText())
    return;
  notice_text_->SetLabelText(shown);
  notice_text_->SetToolTip(shown);
  notice_action_->SetLabel(action);
  notice_act_ = std::move(act);
  let_notice_stand(!text.empty());
}

void project_view::show_titles(const project& p) {
  if (Frame1_->GetLabel() != wx_text(p.Frame1))
    Frame1_->SetLabel(wx_text(p.Frame1));
  wxArrayString rows;
  for (const std::string& row : p.List1)
    rows.push_back(wx_text(row));
  if (rows != List1_->GetStrings())  // setting them anew would lose the scroll position
    List1_->Set(rows);
  if (List1_->GetSelection() != p.selected)
    List1_->SetSelection(p.selected);
  if (p.selected >= 0)
    List1_->EnsureVisible(p.selected);
}

// The keys must not stay in a list that goes.
void project_view::show_menus(const project& p) {
  const disc_description d = disc_of(p);
  wxArrayString rows;
  for (int menu = 1; menu <= d.menu_count(); ++menu)
    rows.push_back(wx_text(sanitized(menu_line(d, menu))));
  if (menus_ == nullptr && rows.empty())
    return;
  if (menus_ == nullptr)
    make_menus();
  if (rows == menus_->GetStrings())
    return;
  const int selected = std::min(menus_->GetSelection(), static_cast<int>(rows.size()) - 1);
  menus_->Set(rows);
  menus_->SetSelection(selected);
  if (rows.empty() && shows_menu_) {
    shows_menu_ = false;
    menus_went_at_ = wxGetLocalTimeMillis();
    CallAfter(on_.no_menus);
  }
  menus_->Show(!rows.empty());
}

void project_view::show_statistics(const project& p) {
  dvdsizetext_->SetLabel(wx_lines(p.dvdsizetext));
  dvdsizetext_->SetForegroundColour(p.dvdsizetext_red ? *wxRED : *wxBLACK);
  space_->show_used(p.dvdsize_bytes);
  if (const wxString text = wx_text(space_text(p.dvdsize_bytes));
      text != space_text_->GetLabelText()) {
    space_text_->SetLabelText(text);
    space_text_->SetToolTip(text);
  }
}

}  // namespace corvane
