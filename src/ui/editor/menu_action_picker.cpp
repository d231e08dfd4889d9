#include "ui/editor/menu_action_picker.h"

#include "examine/title_lengths.h"
#include "menus/action_choices.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/dialog_buttons.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/labelled.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/screen_fit.h"
#include "ui/widgets/wheel.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/listbox.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/stopwatch.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace corvane {
namespace {

// In pixels at 100 %.
constexpr int actions_width = 460, actions_height = 320;
constexpr int least_actions_width = 240, least_actions_height = 90;

constexpr std::size_t most_rows = 400;  // as many as are found at once
constexpr int rows_of_a_page = 10;
constexpr long idle_milliseconds = 20;  // of looking at files, before keys are dealt with again

class action_dialog : public wxDialog {
 public:
  action_dialog(wxWindow& window, const action_question& question, const disc_description& disc,
                fact_store& facts);

  picked_action picked() const;

 private:
  void make_search(wxSizer* whole);
  void make_list(wxSizer* whole);
  void make_several(wxSizer* whole);
  void make_choices();
  void show_current();
  void fill();
  void show_rows(std::size_t found);
  void show_outlook();
  void take();
  bool go(int key);
  void on_idle(wxIdleEvent& event);
  const action_choice* chosen() const;

  const action_question& question_;
  const disc_description& disc_;
  title_lengths lengths_;
  std::vector<action_choice> choices_;
  std::vector<std::size_t> shown_;
  int open_ = 0;  ///< the title whose chapters are shown
  wxTextCtrl* search_ = nullptr;
  wxListBox* list_ = nullptr;
  wxStaticText* count_ = nullptr;
  wxCheckBox* all_chapters_ = nullptr;
  wxChoice* several_ = nullptr;  ///< null where one button is selected
  wxStaticText* outlook_ = nullptr;
  wxButton* take_ = nullptr;
};

wxString caption_for(const menu_editor& editor) {
  const std::size_t buttons = editor.selected().size();
  return buttons > 1 ? wxString::Format("action of %zu buttons", buttons)
                     : "action of button " + wx_text(editor.controls().button);
}

action_dialog::action_dialog(wxWindow& window, const action_question& question,
                             const disc_description& disc, fact_store& facts)
    : wxDialog(&window, wxID_ANY, question.caption, wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      question_(question),
      disc_(disc),
      lengths_(disc, facts) {
  name_control(*this, "actionpicker");
  SetIcons(program_icon());
  auto* whole = new wxBoxSizer(wxVERTICAL);
  make_search(whole);
  make_list(whole);
  if (question.buttons > 1)
    make_several(whole);
  take_ = new wxButton(this, wxID_OK, "&take");
  take_->SetDefault();
  whole->Add(dialog_buttons(take_, new wxButton(this, wxID_CANCEL, "&cancel")),
             wxSizerFlags().Right().Border(wxALL, FromDIP(layout::window_border)));
  SetSizerAndFit(whole);
  set_size_on_screen(*this,
                     GetClientSize() + FromDIP(wxSize(actions_width - least_actions_width,
                                                      actions_height - least_actions_height)));
  make_choices();
  show_current();
  CentreOnParent();
  search_->SetFocus();
  Bind(wxEVT_IDLE, &action_dialog::on_idle, this);
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { take(); }, wxID_OK);
  // Before the field, which would leave itself with the arrow keys.
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    if (event.HasAnyModifiers() || FindFocus() != search_ || !go(event.GetKeyCode()))
      event.Skip();
  });
}

void action_dialog::make_search(wxSizer* whole) {
  wxStaticText* label = make_label(this, "&find");
  search_ = new wxTextCtrl(this, wxID_ANY);
  search_->SetHint("a name, \"chapter 3\", a time");
  name_control(*search_, "actionsearch");
  label_leads_to(label, search_);
  search_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { fill(); });
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(label, wxSizerFlags().CentreVertical());
  row->Add(search_, wxSizerFlags(1).CentreVertical().Border(wxLEFT, FromDIP(layout::control_gap)));
  whole->Add(row, wxSizerFlags().Expand().Border(wxALL, FromDIP(layout::window_border)));
}

void action_dialog::make_list(wxSizer* whole) {
  const int border = FromDIP(layout::window_border), gap = FromDIP(layout::control_gap);
  list_ = new wxListBox(this, wxID_ANY, wxDefaultPosition,
                        FromDIP(wxSize(least_actions_width, least_actions_height)), 0, nullptr,
                        wxLB_SINGLE | wxLB_NEEDED_SB);
  name_control(*list_, "actionlist");
  list_->Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) { show_outlook(); });
  list_->Bind(wxEVT_LISTBOX_DCLICK, [this](wxCommandEvent&) { take(); });
  all_chapters_ = new wxCheckBox(this, wxID_ANY, "c&hapters of all titles");
  name_control(*all_chapters_, "allchapters");
  all_chapters_->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) { fill(); });
  count_ = new wxStaticText(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                            wxST_NO_AUTORESIZE | wxALIGN_RIGHT);
  name_control(*count_, "actioncount");
  auto* below = new wxBoxSizer(wxHORIZONTAL);
  below->Add(all_chapters_, wxSizerFlags().CentreVertical());
  below->Add(count_, wxSizerFlags(1).CentreVertical().Border(wxLEFT, gap));
  whole->Add(list_, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT, border));
  whole->Add(below, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, border));
}

void action_dialog::make_several(wxSizer* whole) {
  const int border = FromDIP(layout::window_border), gap = FromDIP(layout::control_gap);
  wxStaticText* label = make_label(this, "&selected buttons");
  several_ = new wxChoice(this, wxID_ANY);
  for (const char* entry : {"all do the same", "the next title each", "the next chapter each"})
    several_->Append(entry);
  several_->SetSelection(static_cast<int>(action_count::same));
  name_control(*several_, "several");
  let_wheel_pass(*several_);
  label_leads_to(label, several_);
  several_->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { show_outlook(); });
  outlook_ = new wxStaticText(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                              wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
  name_control(*outlook_, "actionoutlook");
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(label, wxSizerFlags().CentreVertical());
  row->Add(several_, wxSizerFlags().CentreVertical().Border(wxLEFT, gap));
  row->Add(outlook_, wxSizerFlags(1).CentreVertical().Border(wxLEFT, gap));
  whole->Add(row, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, border));
}

void action_dialog::make_choices() {
  choices_ = command_choices(
      disc_, [this](int title) { return lengths_.text(title); }, question_.from);
}

/// The list begins on what is done now.
void action_dialog::show_current() {
  const auto current = choice_of_command(choices_, question_.now);
  if (current && choices_[*current].chapter != 0)
    open_ = choices_[*current].title;
  fill();
  if (!current)
    return;
  const auto at = std::find(shown_.begin(), shown_.end(), *current);
  if (at == shown_.end())
    return;
  list_->SetSelection(static_cast<int>(at - shown_.begin()));
  list_->EnsureVisible(list_->GetSelection());
  show_outlook();
}

void action_dialog::fill() {
  shown_ =
      shown_choices(choices_, {utf8_of(search_->GetValue()), open_, all_chapters_->GetValue()});
  const std::size_t found = shown_.size();
  shown_.resize(std::min(found, most_rows));
  show_rows(found);
  if (!shown_.empty()) {
    list_->SetSelection(0);
    list_->EnsureVisible(0);
  }
  show_outlook();
}

void action_dialog::show_rows(std::size_t found) {
  list_->Set(wx_rows(choice_lines(choices_, shown_)));
  wxString count;
  if (found == 0)
    count = "nothing is found";
  else if (found > shown_.size())
    count = wxString::Format("%zu of %zu are shown: type more", shown_.size(), found);
  count_->SetLabelText(count);
}

const action_choice* action_dialog::chosen() const {
  const int row = list_->GetSelection();
  return row == wxNOT_FOUND || row >= static_cast<int>(shown_.size())
             ? nullptr
             : &choices_[shown_[static_cast<std::size_t>(row)]];
}

void action_dialog::show_outlook() {
  const action_choice* const choice = chosen();
  if (take_ != nullptr)
    take_->Enable(choice != nullptr);
  if (several_ == nullptr)
    return;
  several_->Enable(choice != nullptr && choice->title != 0);
  wxString words;
  if (choice != nullptr) {
    const picked_action action = picked();
    const int given = question_.outlook(action);
    if (given < question_.buttons)
      words = wxString::Format("%d of %d: no more %s", given, question_.buttons,
                               action.how == action_count::titles ? "titles" : "chapters");
  }
  if (outlook_->GetLabelText() != words)
    outlook_->SetLabelText(words);
}

picked_action action_dialog::picked() const {
  const action_choice* const choice = chosen();
  picked_action action;
  if (choice == nullptr)
    return action;
  action.command = choice->command;
  if (several_ != nullptr && several_->IsEnabled())
    action.how = static_cast<action_count>(several_->GetSelection());
  return action;
}

// GTK takes Enter on an entry for a double click and for the default button, too.
void action_dialog::take() {
  if (IsModal() && chosen() != nullptr)
    EndModal(wxID_OK);
}

/// A key of the search field that goes through the list.
bool action_dialog::go(int key) {
  int by = 0;
  if (key == WXK_UP || key == WXK_NUMPAD_UP)
    by = -1;
  else if (key == WXK_DOWN || key == WXK_NUMPAD_DOWN)
    by = 1;
  else if (key == WXK_PAGEUP || key == WXK_NUMPAD_PAGEUP)
    by = -rows_of_a_page;
  else if (key == WXK_PAGEDOWN || key == WXK_NUMPAD_PAGEDOWN)
    by = rows_of_a_page;
  else
    return false;
  if (shown_.empty())
    return true;
  const int last = static_cast<int>(shown_.size()) - 1;
  list_->SetSelection(std::clamp(list_->GetSelection() + by, 0, last));
  list_->EnsureVisible(list_->GetSelection());
  show_outlook();
  return true;
}

// Lengths come while the user looks; the row that he is on stays the one.
void action_dialog::on_idle(wxIdleEvent& event) {
  event.Skip();
  if (lengths_.is_done())
    return;
  const wxStopWatch watch;
  while (lengths_.step() && watch.Time() < idle_milliseconds)
    continue;
  if (!lengths_.is_done())
    event.RequestMore();
  const std::vector<std::string> before = choice_lines(choices_, shown_);
  make_choices();
  const std::vector<std::string> now = choice_lines(choices_, shown_);
  for (std::size_t i = 0; i < now.size(); ++i)
    if (now[i] != before[i])
      list_->SetString(static_cast<unsigned>(i), wx_text(now[i]));
}

}  // namespace

std::optional<picked_action> ask_action(wxWindow& window, const action_question& question,
                                        const disc_description& disc, fact_store& facts) {
  action_dialog dialog(window, question, disc, facts);
  if (dialog.ShowModal() != wxID_OK)
    return std::nullopt;
  return dialog.picked();
}

std::optional<picked_action> ask_action(wxWindow& window, const menu_editor& editor,
                                        const disc_description& disc, fact_store& facts) {
  const menu_editor_controls& c = editor.controls();
  return ask_action(window,
                    {caption_for(editor),
                     {{map_place::kind::menu, c.indexer}, c.Combo2_index + 1},
                     c.Combo1,
                     static_cast<int>(editor.selected().size()),
                     [&editor](const picked_action& action) {
                       return editor.outlook_of_actions(action.command, action.how);
                     }},
                    disc, facts);
}

}  // namespace corvane
