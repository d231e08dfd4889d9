#include "ui/editor/menu_editor_bar.h"

#include "ui/editor/menu_repeat_dialog.h"
#include "ui/widgets/wx_text.h"

#include <wx/frame.h>
#include <wx/menu.h>

#include <optional>
#include <string>
#include <utility>

namespace corvane {
namespace {

bool has_chosen_button(const menu_editor& editor) {
  return editor.controls().Combo2_index >= 0;
}

bool has_buttons(const menu_editor& editor) {
  return !editor.controls().List1.empty();
}

bool has_two_selected(const menu_editor& editor) {
  return editor.selected().size() > 1;
}

bool has_three_selected(const menu_editor& editor) {
  return editor.selected().size() > 2;
}

bool has_shown_button(const menu_editor& editor) {
  return has_chosen_button(editor) && !editor.shows_another();
}

bool has_too_many_looks(const menu_editor& editor) {
  return !editor.are_looks_good();
}

bool shows_another(const menu_editor& editor) {
  return editor.shows_another();
}

/// "undo" with what: "&undo move button 3".
void name_step(wxMenuItem* item, const char* label, const std::optional<std::string>& step,
               const char* keys) {
  wxString text = label;
  if (step)
    text += " " + wx_text(*step);
  text += keys;
  if (item->GetItemLabel() != text)
    item->SetItemLabel(text);
  if (item->IsEnabled() != step.has_value())
    item->Enable(step.has_value());
}

}  // namespace

menu_editor_bar::menu_editor_bar(wxFrame& window, tell_event tell, menu_event pick_action)
    : window_(window), tell_(std::move(tell)), pick_action_(std::move(pick_action)) {
  auto* bar = new wxMenuBar;
  bar->Append(make_buttons_menu(), "butt&ons");
  bar->Append(make_place_menu(), "ad&just");
  window.SetMenuBar(bar);
}

void menu_editor_bar::add(wxMenu* to, const char* label, const char* help,
                          bool (*possible)(const menu_editor&), menu_event event) {
  wxMenuItem* item = to->Append(wxID_ANY, label, help);
  window_.Bind(
      wxEVT_MENU, [this, event = std::move(event)](wxCommandEvent&) { tell_(event); },
      item->GetId());
  items_.push_back({item, possible});
}

wxMenu* menu_editor_bar::make_buttons_menu() {
  auto* menu = new wxMenu;
  add(menu, "&undo\tCtrl+Z", "takes the last step back", nullptr, &menu_editor::undo);
  undo_ = items_.back().shown;
  add(menu, "&redo\tCtrl+Y", "does the step again that was undone last", nullptr,
      &menu_editor::redo);
  redo_ = items_.back().shown;
  menu->AppendSeparator();
  add(menu, "&edit the new button\tF4", "shows the button that was added last, to be changed",
      shows_another, &menu_editor::pick_added);
  add(menu, "pic&k action...\tCtrl+P",
      "picks what the selected buttons do: a title, a chapter or a menu by its name",
      has_shown_button, pick_action_);
  add(menu, "dupli&cate\tCtrl+D", "adds copies of the selected buttons, below or beside them",
      has_chosen_button, &menu_editor::duplicate);
  add(menu, "re&peat...\tCtrl+R", "adds a row, a column or a grid of buttons like the chosen one",
      has_chosen_button, [this](menu_editor& editor) {
        if (const std::optional<repetition> how = ask_repetition(window_, editor))
          editor.repeat(*how);
      });
  add(menu, "de&lete", "removes the selected buttons (Delete in the picture and in the list)",
      has_chosen_button, &menu_editor::delete_selected);
  menu->AppendSeparator();
  add(menu, "select &all", "selects every button (Ctrl+A in the list)", has_buttons,
      &menu_editor::select_all);
  add(menu, "up in the lis&t", "lets the selected buttons come earlier (Ctrl+Up in the list)",
      has_chosen_button, &menu_editor::move_up);
  add(menu, "do&wn in the list", "lets the selected buttons come later (Ctrl+Down in the list)",
      has_chosen_button, &menu_editor::move_down);
  menu->AppendSeparator();
  add(menu, "same loo&k", "gives the other selected buttons the look of the chosen one",
      has_two_selected, &menu_editor::make_same_look);
  add(menu, "&order by look", "puts the buttons of one look behind each other", has_buttons,
      &menu_editor::order_by_look);
  add(menu, "&fewer looks",
      "gives a few buttons another look, where there are too many for spumux to sort out",
      has_too_many_looks, &menu_editor::use_fewer_looks);
  return menu;
}

wxMenu* menu_editor_bar::make_place_menu() {
  auto* menu = new wxMenu;
  const auto align = [&](const char* label, const char* help, alignment to) {
    add(menu, label, help, has_two_selected, [to](menu_editor& editor) { editor.align(to); });
  };
  align("align &left", "brings the selected buttons to their left edge", alignment::left);
  align("align &centre", "brings them to the middle across", alignment::centre);
  align("align &right", "brings them to their right edge", alignment::right);
  align("align &top", "brings them to their upper edge", alignment::top);
  align("align &middle", "brings them to the middle down", alignment::middle);
  align("align &bottom", "brings them to their lower edge", alignment::bottom);
  menu->AppendSeparator();
  const auto along = [&](const char* label, const char* help,
                         void (menu_editor::*command)(direction), direction which) {
    add(menu, label, help, has_three_selected,
        [command, which](menu_editor& editor) { (editor.*command)(which); });
  };
  along("distribute &across", "leaves the outermost two and makes equal gaps between",
        &menu_editor::distribute, direction::across);
  along("distribute &down", "leaves the outermost two and makes equal gaps between",
        &menu_editor::distribute, direction::down);
  along("same gap acr&oss", "repeats the gap between the first two", &menu_editor::make_gaps_equal,
        direction::across);
  along("same gap dow&n", "repeats the gap between the first two", &menu_editor::make_gaps_equal,
        direction::down);
  menu->AppendSeparator();
  add(menu, "same &width", "gives the others the width of the chosen button", has_two_selected,
      &menu_editor::make_same_width);
  add(menu, "same &height", "gives the others the height of the chosen button", has_two_selected,
      &menu_editor::make_same_height);
  menu->AppendSeparator();
  add(menu, "&even lines", "upper and lower edges on even lines, so that none flickers",
      has_chosen_button, &menu_editor::put_on_even_lines);
  return menu;
}

void menu_editor_bar::show(const menu_editor& editor) {
  name_step(undo_, "&undo", editor.undo_name(), "\tCtrl+Z");
  name_step(redo_, "&redo", editor.redo_name(), "\tCtrl+Y");
  for (const bar_item& i : items_)
    if (i.possible != nullptr && i.shown->IsEnabled() != i.possible(editor))
      i.shown->Enable(i.possible(editor));
}

}  // namespace corvane
