// What the module that reads people's files gives to the program: as decoder_module.h, which says
// how modules work. On Linux it is "corvane-sources.so".
//
// It is a module of its own because FFmpeg's library of containers pulls some forty more libraries
// in (for networks, above all), and doubles what it takes to load the decoders. Who only looks at
// pictures of streams never pays for it.
#pragma once

#include "media/source_reader.h"

extern "C" {

/// Makes a reader. Returns nullptr if memory ran out. FFmpeg is kept from writing to standard
/// error, in the whole program. The caller owns what it gets.
using corvane_source_reader_maker = corvane::source_reader*();

corvane_source_reader_maker corvane_make_source_reader;
}
