// The window "disc": what was found on a disc that was verified, worst first, and below it all that
// is on the disc, as text that can be copied and saved.
#pragma once

#include "authoring/verify_command.h"

namespace corvane {

class main_window;

/// "verify disc...": asks for a disc, reads all of it with a progress box, and shows the window
/// until it is closed.
void verify_disc(main_window& main);

}  // namespace corvane
