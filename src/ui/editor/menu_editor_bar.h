// The menu bar of the menu editor's window: what can be done to the buttons besides their controls.
#pragma once

#include "ui/editor/menu_event.h"

#include <vector>

class wxFrame;
class wxMenu;
class wxMenuItem;

namespace corvane {

class menu_editor_bar {
 public:
  /// Gives the window its menu bar; what the user picks in it is told. `pick_action` lets him pick
  /// the action of the selected buttons.
  menu_editor_bar(wxFrame& window, tell_event tell, menu_event pick_action);

  /// Enables what can be done now, and names what would be undone and redone.
  void show(const menu_editor& editor);

 private:
  struct bar_item {
    wxMenuItem* shown;
    bool (*possible)(const menu_editor&);
  };

  wxMenu* make_buttons_menu();
  wxMenu* make_place_menu();
  void add(wxMenu* to, const char* label, const char* help, bool (*possible)(const menu_editor&),
           menu_event event);

  wxFrame& window_;
  tell_event tell_;
  menu_event pick_action_;
  std::vector<bar_item> items_;
  wxMenuItem* undo_ = nullptr;
  wxMenuItem* redo_ = nullptr;
};

}  // namespace corvane
