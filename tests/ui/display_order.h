// Waiting for the display by asking it, instead of for a while: what was asked of it before is done
// when the answer is there.
#pragma once

namespace corvane::testing_support {

/// Returns when the window manager has dealt with everything that the display sent it before: it
/// passes clicks on to the windows, moves the keyboard's focus, and places new windows. Gives up
/// after two seconds; without a window manager there is nothing to wait for.
void wait_for_window_manager();

}  // namespace corvane::testing_support
