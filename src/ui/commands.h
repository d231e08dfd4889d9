// The tables of the main window: its menu bar and its toolbar, each item with the command it runs.
//
// An item without a command is disabled: it stands in its place before the function behind it does.
#pragma once

#include <vector>

namespace corvane {

class main_window;

/// What choosing an item does; null: nothing yet.
using action = void (*)(main_window&);

/// A `submenu` is filled by the window; it and a separator have no command.
enum class item_kind { command, check, label, separator, submenu };

struct menu_item {
  const char* name;     ///< the command's name
  const char* caption;  ///< what the user reads, "&" before its mnemonic
  const char* keys;     ///< accelerator ("Ctrl+O"), "" for none
  item_kind kind;
  action run;
};

struct menu {
  const char* name;
  const char* caption;  ///< as an item's
  std::vector<menu_item> items;
};

struct drop_item {
  const char* key;
  const char* caption;
  action run;
};

/// A key for a command that has no item with it in the menu bar.
struct command_key {
  const char* keys;
  const char* does;  ///< as the user guide says it
  action run;
};

struct tool {
  const char* picture;  ///< name for icon_picture
  const char* caption;
  const char* tip;          ///< beside the pointer
  const char* description;  ///< in the status bar
  action run;
  std::vector<drop_item> drop;  ///< items of the button's drop-down; empty: none
};

/// The menu bar, left to right.
const std::vector<menu>& main_menus();

/// The further keys of the window.
const std::vector<command_key>& main_keys();

/// The menu of a title in the list; an item without a key is a separator.
const std::vector<drop_item>& title_items();
/// The menu of a menu in the list, likewise.
const std::vector<drop_item>& menu_items();

/// Toolbar1, left to right.
const std::vector<tool>& main_tools();

}  // namespace corvane
