// Builds the main window's menu bar and toolbar from their tables.
#pragma once

#include "ui/commands.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

class wxMenu;
class wxMenuItem;
class wxToolBar;

namespace corvane {

class command_bars {
 public:
  /// Makes both and sets them into the window; choosing an item runs its command on it.
  explicit command_bars(main_window& window);

  /// The menu item of that name (a name of main_menus()). Returns nullptr if there is none.
  wxMenuItem* item(const std::string& name) const;

  /// The drop-down of the tool with that caption. Returns nullptr if it has none.
  wxMenu* drop_down(const std::string& tool_caption) const;

  /// A new menu of what can be done with a selected title or menu.
  std::unique_ptr<wxMenu> context_menu(const std::vector<drop_item>& items);

  /// All of it but "help" on or off (a run is on).
  void enable(bool enabled);

 private:
  void make_menus();
  void make_tools();
  wxMenu* make_drop_down(const tool& t);

  main_window& window_;
  wxToolBar* Toolbar1_ = nullptr;
  std::map<std::string, wxMenuItem*> items_;
  std::map<std::string, wxMenu*> drop_downs_;
};

}  // namespace corvane
