#include "ui/menu_windows.h"

#include "menus/menu_entries.h"
#include "menus/menu_picker.h"
#include "menus/navcommands.h"
#include "ui/main_window.h"
#include "ui/menuselect.h"
#include "ui/navcommands_window.h"

#include <optional>
#include <utility>

namespace corvane {
void remove_menu(main_window& main) {
  main.run([&main](workbench& w) {
    if (!remove_menu_command(w))
      return;
    menu_picker picker(w, picker_erase_caption);
    show_menuselect(&main, picker);
  });
}

void edit_navcommands(main_window& main) {
  std::optional<navcommands> model;
  main.run([&model](workbench& w) { model = navcommands::prepare(w); });
  if (model)
    main.lend([&](workbench&, std::function<void()> closed) -> wxTopLevelWindow* {
      auto* dialog = new navcommands_window(&main, std::move(*model), std::move(closed));
      dialog->Show();
      return dialog;
    });
}

}  // namespace corvane
