// The keys of the menu editor's window.
#include "ui/editor/menu_button_list.h"
#include "ui/editor/menu_editor_window.h"
#include "ui/editor/menu_picture.h"
#include "ui/editor/menu_picture_area.h"

namespace corvane {
namespace {

constexpr int large_step = 10;  // menu pixels

struct key_direction {
  int dx = 0, dy = 0;
};

key_direction direction_of(int key) {
  switch (key) {
    case WXK_LEFT:
      return {-1, 0};
    case WXK_RIGHT:
      return {1, 0};
    case WXK_UP:
      return {0, -1};
    case WXK_DOWN:
      return {0, 1};
    default:
      return {};
  }
}

}  // namespace

void tsmenu::bind_keys() {
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    if (!use_key(event))
      event.Skip();
  });
}

// A field keeps its keys but for Escape; a list that is open gets them before this window.
bool tsmenu::use_key(const wxKeyEvent& event) {
  const int key = event.GetKeyCode(), modifiers = event.GetModifiers();
  if (key == WXK_ESCAPE && modifiers == wxMOD_NONE) {
    Close();
    return true;
  }
  // Also where the menu bar offers nothing yet: what stands typed becomes a step.
  if (key == 'Z' && modifiers == wxMOD_CONTROL) {
    tell(&menu_editor::undo);
    return true;
  }
  if ((key == 'Z' && modifiers == (wxMOD_CONTROL | wxMOD_SHIFT)) ||
      (key == 'Y' && modifiers == wxMOD_CONTROL)) {
    tell(&menu_editor::redo);
    return true;
  }
  if (list_->has_keyboard())
    return list_->use_key(key, modifiers);
  return FindFocus() == &area_->picture() && use_key_in_picture(key, modifiers);
}

// The picture itself knows the arrow keys and those with Shift.
bool tsmenu::use_key_in_picture(int key, int modifiers) {
  if ((key == WXK_DELETE || key == WXK_NUMPAD_DELETE) && modifiers == wxMOD_NONE) {
    tell(&menu_editor::delete_selected);
    return true;
  }
  const key_direction to = direction_of(key);
  if ((to.dx == 0 && to.dy == 0) || (modifiers & wxMOD_CONTROL) == 0)
    return false;
  const int dx = to.dx * large_step, dy = to.dy * large_step;
  if (modifiers == wxMOD_CONTROL)
    tell([dx, dy](menu_editor& editor) { editor.move_by(dx, dy); });
  else if (modifiers == (wxMOD_CONTROL | wxMOD_SHIFT))
    tell([dx, dy](menu_editor& editor) { editor.size_by(dx, dy); });
  else
    return false;
  return true;
}

}  // namespace corvane
