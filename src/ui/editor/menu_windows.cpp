#include "ui/editor/menu_windows.h"

#include "menus/menu_entries.h"
#include "menus/menu_picker.h"
#include "menus/navcommands.h"
#include "ui/disc/navcommands_window.h"
#include "ui/editor/menu_editor_window.h"
#include "ui/editor/menuselect.h"
#include "ui/main_window.h"

#include <optional>
#include <utility>

namespace corvane {
namespace {

/// `recall`: the menu is not new.
void show_editor(main_window& main, bool recall) {
  main.open_editor(
      [&main, recall](document& doc, std::function<void()> closed) -> wxTopLevelWindow* {
        return new tsmenu(&main, doc, recall, std::move(closed));
      });
}

}  // namespace

void add_menu(main_window& main) {
  bool added = false;
  main.run([&added](document& doc) { added = addmenu_command(doc); });
  if (added)
    show_editor(main, false);
}

void edit_menu(main_window& main) {
  bool picked = false;
  main.run([&](document& doc) {
    if (!editmenu_command(doc))
      return;
    menu_picker picker(doc, picker_edit_caption);
    picked = show_menuselect(&main, picker);
  });
  if (picked)
    show_editor(main, true);
}

void remove_menu(main_window& main) {
  main.run([&main](document& doc) {
    if (!remove_menu_command(doc))
      return;
    menu_picker picker(doc, picker_erase_caption);
    show_menuselect(&main, picker);
  });
}

void add_or_edit_menu(main_window& main) {
  if (main.shown_project().menulist.empty())
    add_menu(main);
  else
    edit_menu(main);
}

void edit_navcommands(main_window& main) {
  std::optional<navcommands> model;
  main.run([&model](document& doc) { model = navcommands::prepare(doc); });
  if (model)
    main.open_editor([&](document&, std::function<void()> closed) -> wxTopLevelWindow* {
      auto* dialog = new navcommands_window(&main, std::move(*model), std::move(closed));
      dialog->Show();
      return dialog;
    });
}

}  // namespace corvane
