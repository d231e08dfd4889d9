// The keys of the menu editor's window.
#include "ui/editor/menu_button_list.h"
#include "ui/editor/menu_editor_window.h"
#include "ui/editor/menu_picture.h"
#include "ui/editor/menu_picture_area.h"

#include <wx/dataview.h>

#include <cstddef>
#include <iterator>

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
    if (!list_->give_up_drag())
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
  if (key == WXK_F6 && (modifiers == wxMOD_NONE || modifiers == wxMOD_SHIFT)) {
    give_keyboard_on(modifiers == wxMOD_SHIFT);
    return true;
  }
  if (list_->has_keyboard())
    return list_->use_key(key, modifiers);
  return FindFocus() == &area_->picture() && use_key_in_picture(key, modifiers);
}

/// From the picture to the list of buttons, to the controls, and round again.
void tsmenu::give_keyboard_on(bool back) {
  wxWindow* const parts[] = {&area_->picture(), &list_->list(), FindWindow("Command1")};
  std::size_t now = 2;
  if (FindFocus() == parts[0])
    now = 0;
  else if (list_->has_keyboard())
    now = 1;
  parts[(now + (back ? 2 : 1)) % std::size(parts)]->SetFocus();
}

// The picture itself knows the arrow keys and those with Shift.
bool tsmenu::use_key_in_picture(int key, int modifiers) {
  if ((key == WXK_DELETE || key == WXK_NUMPAD_DELETE) && modifiers == wxMOD_NONE) {
    tell(&menu_editor::delete_selected);
    return true;
  }
  if ((key == WXK_PAGEUP || key == WXK_PAGEDOWN) && (modifiers & ~wxMOD_SHIFT) == 0) {
    const bool back = key == WXK_PAGEUP, more = modifiers == wxMOD_SHIFT;
    tell([back, more](menu_editor& editor) { editor.press_next(back, more); });
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
