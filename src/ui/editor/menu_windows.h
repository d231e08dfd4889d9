// What the main window's menu items and buttons for menus and navigation commands do: the command
// of the core, and the window that it asks for.
#pragma once

namespace corvane {

class main_window;

void add_menu(main_window& main);
void edit_menu(main_window& main);

/// Opens the editor on a menu with a button of it chosen (both 1-based; 0: no button).
void edit_menu_at(main_window& main, int menu, int button);

void remove_menu(main_window& main);

/// The same without the picker for the menu that is selected in the main window; nothing when there
/// is none.
void edit_selected_menu(main_window& main);
void remove_selected_menu(main_window& main);

/// What can be done with a menu as a whole: with the one that is selected in the main window, or
/// one that is picked. What has changed beside is told in the status bar, and the menu stays
/// selected.
void move_menu_up(main_window& main);
void move_menu_down(main_window& main);
void copy_menu(main_window& main);
void change_menu_video(main_window& main);
void change_menu_audio(main_window& main);

/// The toolbar's button: edits when there is a menu and adds one otherwise.
void add_or_edit_menu(main_window& main);

void edit_navcommands(main_window& main);

/// The same on the command of a title (1-based), or on the first play with 0.
void edit_navcommands_at(main_window& main, int title);

}  // namespace corvane
