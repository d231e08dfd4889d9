// A slider of the menu editor's window: it shows what the model says and tells it what the user
// did.
#pragma once

#include "ui/editor/menu_event.h"

class wxSlider;
class wxWindow;

namespace corvane {

/// `slide` gets each value that the user goes to.
wxSlider* make_editor_slider(wxWindow* parent, const char* name, void (menu_editor::*slide)(int),
                             const tell_event& tell);

/// Range, value, and whether it can be moved.
void show_slider(wxSlider* control, const slider& s);

}  // namespace corvane
