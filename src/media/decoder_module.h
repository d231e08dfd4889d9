// What the module with the decoders gives to the program. Only it and what finds it include this.
//
// On Linux it is a shared object, "corvane-decoders.so", loaded when the first decoder is asked for
// (decoder_module_posix.cpp); where FFmpeg is linked statically it is a part of the program
// (decoder_module_static.cpp). It has one function with C linkage for each kind of decoder; what it
// gives is used through an abstract class that the program knows. To add a kind: its class in a
// header without FFmpeg, as picture_decoder.h is; its body in a file of the module, with the
// function; and a caller beside make_picture_decoder in both bodies. What takes people's files
// apart is a second module, built the same way (source_module.h); so is what plays sound.
//
// Program and modules are built and installed together and use one C++ library; nothing else may
// load them. What they made may live as long as it likes: no module is ever unloaded.
#pragma once

#include "media/picture_decoder.h"

extern "C" {

/// Makes a decoder. Returns nullptr if FFmpeg was built without it. FFmpeg is kept from writing to
/// standard error, in the whole program. The caller owns what it gets.
using corvane_decoder_maker = corvane::picture_decoder*(corvane::picture_coding coding);

corvane_decoder_maker corvane_make_decoder;
}
