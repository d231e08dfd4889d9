// What the module with the toolkit's letters gives to the program. Only it and what finds it
// include this. It is made and found as the modules of media are (media/decoder_module.h): on Linux
// as "corvane-letters.so", where the toolkit is linked statically as a part of the program.
//
// In a program with windows it uses the toolkit that is running; in any other one it starts it, as
// one without a display, for as long as the program runs.
#pragma once

#include "drawing/letter_drawer.h"

extern "C" {

/// Returns nullptr if the toolkit cannot be started. The caller owns what it gets.
using corvane_letter_drawer_maker = corvane::letter_drawer*();

corvane_letter_drawer_maker corvane_make_letter_drawer;
}
