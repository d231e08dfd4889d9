// The menu picker's window `menuselect`: a list of the project's menus, of which the user takes
// one.
#pragma once

class wxWindow;

namespace corvane {

class menu_picker;

/// Shows the picker modally over `main` until an entry is confirmed (double click, Enter, or the
/// button) or the picker is closed. True: the editor is to be shown for the picked menu. False: the
/// menu was erased, or the picker was closed and nothing has changed.
bool show_menuselect(wxWindow* main, menu_picker& picker);

}  // namespace corvane
