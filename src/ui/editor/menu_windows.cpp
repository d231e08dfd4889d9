#include "ui/editor/menu_windows.h"

#include "authoring/material_check.h"
#include "menus/menu_entries.h"
#include "menus/menu_material.h"
#include "menus/menu_picker.h"
#include "menus/navcommands.h"
#include "ui/disc/navcommands_window.h"
#include "ui/editor/menu_editor_window.h"
#include "ui/main_window.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/dialog_buttons.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/listbox.h>
#include <wx/sizer.h>

#include <optional>
#include <string>
#include <utility>

namespace corvane {
namespace {

/// The menu picker: a list of the project's menus, of which the user takes one.
class menuselect : public wxDialog {
 public:
  /// `does`: what taking an entry does, as its button says it.
  menuselect(wxWindow* main, const menu_picker& picker, const char* does);

  /// The entry the user took, 0-based; wxNOT_FOUND when he took none.
  int ask();

 private:
  wxSizer* make_buttons(const char* does);
  void confirm();

  wxListBox* List1_;
};

menuselect::menuselect(wxWindow* main, const menu_picker& picker, const char* does)
    : wxDialog(main, wxID_ANY, wx_text(picker.caption()), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "menuselect"),
      List1_(new wxListBox(this, wxID_ANY, wxDefaultPosition,
                           FromDIP(wxSize(layout::picker_width, layout::picker_height)),
                           wx_rows(picker.entries()),
                           wxLB_SINGLE | wxLB_HSCROLL | wxLB_NEEDED_SB)) {
  name_control(*this, "menuselect");
  SetIcons(program_icon());
  name_control(*List1_, "List1");
  if (!List1_->IsEmpty())
    List1_->SetSelection(0);
  List1_->Bind(wxEVT_LISTBOX_DCLICK, [this](wxCommandEvent&) { confirm(); });
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { confirm(); }, wxID_OK);

  auto* whole = new wxBoxSizer(wxVERTICAL);
  const int border = FromDIP(layout::window_border);
  whole->Add(List1_, wxSizerFlags(1).Expand().Border(wxALL, border));
  whole->Add(make_buttons(does),
             wxSizerFlags().Right().Border(wxLEFT | wxRIGHT | wxBOTTOM, border));
  SetSizerAndFit(whole);
  List1_->SetFocus();
  CentreOnParent();
}

/// The button says what confirming does, since erasing is not asked about again.
wxSizer* menuselect::make_buttons(const char* does) {
  auto* accept = new wxButton(this, wxID_OK, does);
  accept->SetDefault();
  return dialog_buttons(accept, new wxButton(this, wxID_CANCEL, "&cancel"));
}

// GTK takes Enter on an entry for a double click and for the default button, too.
void menuselect::confirm() {
  if (IsModal() && List1_->GetSelection() != wxNOT_FOUND)
    EndModal(wxID_OK);
}

int menuselect::ask() {
  return ShowModal() == wxID_OK ? List1_->GetSelection() : wxNOT_FOUND;
}
/// Shows the picker modally over `main` until an entry is confirmed (double click, Enter, or the
/// button) or the picker is closed. True: the editor is to be shown for the picked menu. False: the
/// menu was erased, or the picker was closed and nothing has changed. What confirming
/// has to tell, it tells over the main window: the picker is gone by then.
bool show_menuselect(wxWindow* main, menu_picker& picker) {
  const char* const does = picker.caption() == picker_erase_caption ? "&erase" : "&edit";
  const int entry = menuselect(main, picker, does).ask();
  return entry != wxNOT_FOUND && picker.confirm(entry);
}

/// `recall`: the menu is not new. `button`: the one that is chosen, 1-based; 0: none.
void show_editor(main_window& main, bool recall, int button = 0) {
  main.open_editor("edit menu", [&](lent_project lent) -> wxTopLevelWindow* {
    auto* editor = new tsmenu(&main, std::move(lent), recall, main.material().facts);
    editor->choose(button);
    return editor;
  });
}

/// One of the commands on a menu as a whole.
struct material_command {
  const char* step;     ///< as "undo" names it
  const char* caption;  ///< of the picker
  const char* does;     ///< on its button
  std::string (*run)(document& doc, int menu);
};

/// As if the user had clicked on it.
void select_menu(const main_window& main, int menu) {
  auto* list = dynamic_cast<wxListBox*>(wxWindow::FindWindowByName("menuslist", &main));
  if (list == nullptr || menu < 1 || menu > static_cast<int>(list->GetCount()))
    return;
  list->SetSelection(menu - 1);
  wxCommandEvent selected(wxEVT_LISTBOX, list->GetId());
  selected.SetEventObject(list);
  list->HandleWindowEvent(selected);
}

/// `now`: which menu it is then.
void run_on_menu(main_window& main, const material_command& command, int (*now)(int, int)) {
  int menu = main.selected_menu();
  std::string note;
  main.run(command.step, [&](document& doc) {
    if (menu == 0 && menu_count(doc.p) > 0)
      menu = menuselect(&main, menu_picker(doc, command.caption), command.does).ask() + 1;
    if (menu > 0)
      note = command.run(doc, menu);
  });
  if (note.empty())
    return;
  select_menu(main, now(menu, menu_count(main.shown_project())));
  main.SetStatusText(wx_text(note));
}

void show_navcommands(main_window& main, int title, navcommands_focus focus) {
  std::optional<navcommands> model;
  main.run("edit navigation commands",
           [&model](document& doc) { model = navcommands::prepare(doc); });
  if (!model)
    return;
  model->select(title - 1);
  main.open_editor("edit navigation commands", [&](lent_project lent) -> wxTopLevelWindow* {
    auto* dialog =
        new navcommands_window(&main, std::move(lent), std::move(*model), main.material().facts);
    dialog->Show();
    dialog->focus_on(focus);
    return dialog;
  });
}

}  // namespace

void add_menu(main_window& main) {
  bool added = false;
  main.run("add menu", [&added](document& doc) { added = addmenu_command(doc); });
  if (added)
    show_editor(main, false);
}

void edit_menu(main_window& main) {
  bool picked = false;
  main.run("edit menu", [&](document& doc) {
    if (!editmenu_command(doc))
      return;
    menu_picker picker(doc, picker_edit_caption);
    picked = show_menuselect(&main, picker);
  });
  if (picked)
    show_editor(main, true);
}

// The picker, which is not shown, takes the menu as if it was picked.
void edit_menu_at(main_window& main, int menu, int button) {
  bool picked = false;
  main.run("edit menu", [&](document& doc) {
    picked = editmenu_command(doc) && menu_picker(doc, picker_edit_caption).confirm(menu - 1);
  });
  if (picked)
    show_editor(main, true, button);
}

void remove_menu(main_window& main) {
  main.run("remove menu", [&main](document& doc) {
    if (!remove_menu_command(doc))
      return;
    menu_picker picker(doc, picker_erase_caption);
    show_menuselect(&main, picker);
  });
}

void edit_selected_menu(main_window& main) {
  if (const int menu = main.selected_menu(); menu > 0)
    edit_menu_at(main, menu, 0);
}

void remove_selected_menu(main_window& main) {
  const int menu = main.selected_menu();
  if (menu == 0)
    return;
  main.run("remove menu", [menu](document& doc) {
    if (remove_menu_command(doc))
      menu_picker(doc, picker_erase_caption).confirm(menu - 1);
  });
}

void move_menu_up(main_window& main) {
  run_on_menu(main,
              {"move menu up", "Please select menu to move up", "&move up",
               [](document& doc, int menu) { return move_menu_command(doc, menu, menu - 1); }},
              [](int menu, int) { return menu - 1; });
}

void move_menu_down(main_window& main) {
  run_on_menu(main,
              {"move menu down", "Please select menu to move down", "&move down",
               [](document& doc, int menu) { return move_menu_command(doc, menu, menu + 1); }},
              [](int menu, int) { return menu + 1; });
}

void copy_menu(main_window& main) {
  run_on_menu(main, {"copy menu", "Please select menu to copy", "c&opy", copy_menu_command},
              [](int, int menus) { return menus; });
}

void change_menu_video(main_window& main) {
  run_on_menu(main,
              {"change video of menu", "Please select menu to change the video of", "&choose...",
               menu_video_command},
              [](int menu, int) { return menu; });
}

void change_menu_audio(main_window& main) {
  run_on_menu(main,
              {"change audio of menu", "Please select menu to change the audio of", "&choose...",
               menu_audio_command},
              [](int menu, int) { return menu; });
}

void add_or_edit_menu(main_window& main) {
  if (main.shown_project().menulist.empty())
    add_menu(main);
  else
    edit_menu(main);
}

void edit_navcommands(main_window& main) {
  show_navcommands(main, 0, navcommands_focus::titles);
}

void edit_navcommands_at(main_window& main, int title) {
  show_navcommands(main, title,
                   title > 0 ? navcommands_focus::selected_command : navcommands_focus::first_play);
}

}  // namespace corvane
