// The mouse wheel over controls that hold a value.
#pragma once

class wxWindow;

namespace corvane {

/// From now on the wheel changes the value of `control` (a list, a slider, a spin box, a scroll
/// bar) only once the user has clicked it, and while it has the keyboard. Until then, and after it
/// is left, the wheel scrolls what is around it. Who only scrolls past it changes nothing.
void let_wheel_pass(wxWindow& control);

}  // namespace corvane
