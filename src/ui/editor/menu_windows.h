// What the main window's menu items and buttons for menus and navigation commands do: the command
// of the core, and the window that it asks for.
#pragma once

namespace corvane {

class main_window;

void add_menu(main_window& main);
void edit_menu(main_window& main);
void remove_menu(main_window& main);

/// The toolbar's button: edits when there is a menu and adds one otherwise.
void add_or_edit_menu(main_window& main);

void edit_navcommands(main_window& main);

}  // namespace corvane
