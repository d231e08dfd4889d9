// What the module that plays sound gives to the program: as decoder_module.h, which says how
// modules work. On Linux it is "corvane-sound.so".
//
// It is a module of its own because SDL pulls some fifty libraries in, for whatever sound servers
// there are. Who hears nothing never pays for it.
#pragma once

#include "media/sound_output.h"

extern "C" {

/// Makes an output, or returns nullptr where nothing can play sound. The caller owns what it gets.
using corvane_sound_output_maker = corvane::sound_output*();

corvane_sound_output_maker corvane_make_sound_output;
}
